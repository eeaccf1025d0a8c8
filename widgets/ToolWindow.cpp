#include "widgets/ToolWindow.h"

#include <QCloseEvent>
#include <QMenuBar>
#include <QShortcut>
#include <QToolButton>
#include <utility>

#include "core/working_files.h"
#include "widgets/ToolIcons.h"
#include "widgets/controls.h"

namespace corvane {
namespace {

constexpr MenuItem kHelpMenu[] = {
    {"&Corvane Help"},
    {"-"},
    Leading("&About Corvane", Dialog::About),
};

constexpr int kIconSize = 24;
constexpr char kNotBuilt[] = "notBuilt";

QString ItemName(const char* menu, int index) { return QStringLiteral("%1_%2").arg(menu).arg(index); }

}  // namespace

ToolWindow::ToolWindow(const char* name, ModCV& store, Platform& platform, Desk& windows)
    : cv(store), os(platform), desk(windows) {
  setObjectName(QLatin1String(name));
  setContextMenuPolicy(Qt::NoContextMenu);
  auto* f1 = new QShortcut(QKeySequence(Qt::Key_F1), this);
  connect(f1, &QShortcut::activated, this, [this] { OpenHelp(objectName()); });
}

void ToolWindow::AddMenu(const char* name, const char* title, std::span<const MenuItem> items,
                         Handler handler) {
  QMenu* menu = Named(menuBar()->addMenu(QLatin1String(title)), name);
  for (int i = 0; i < static_cast<int>(items.size()); ++i) {
    const MenuItem& item = items[static_cast<std::size_t>(i)];
    const bool separator = std::string_view(item.text) == "-";
    QAction* action = separator ? menu->addSeparator() : menu->addAction(QLatin1String(item.text));
    action->setObjectName(ItemName(name, i));
    if (separator) continue;
    action->setCheckable(item.check);
    if (*item.shortcut) action->setShortcut(QKeySequence(QLatin1String(item.shortcut)));
    action->setProperty(kNotBuilt, !item.built);
    action->setEnabled(item.built);
    connect(action, &QAction::triggered, this, [this, action, handler, i] { Choose(action, handler, i); });
  }
}

void ToolWindow::AddHelpMenu() {
  AddMenu("mnuHelpSel", "&Help", kHelpMenu, [this](int index) { mnuHelpSel_Click(index); });
}

void ToolWindow::AddToolbar(std::span<const ToolKey> keys) {
  Toolbar1 = Named(addToolBar(QString()), "Toolbar1", "Toolbar");
  Toolbar1->setMovable(false);
  Toolbar1->setIconSize(QSize(kIconSize, kIconSize));
  for (const ToolKey& key : keys) {
    if (std::string_view(key.key) == "-") {
      Toolbar1->addSeparator();
      continue;
    }
    QAction* action = Item(key.menu, key.index);
    action->setIcon(ToolIcon(key.key));
    action->setIconVisibleInMenu(false);
    action->setToolTip(QLatin1String(key.tip));
    Toolbar1->addAction(action);
    QWidget* button = Toolbar1->widgetForAction(action);
    Named(button, (std::string("Toolbar1_") + key.key).c_str(), QLatin1String(key.tip));
    button->setFocusPolicy(Qt::NoFocus);
  }
}

QAction* ToolWindow::Item(const char* menu, int index) const {
  return findChild<QAction*>(ItemName(menu, index));
}

void ToolWindow::EnableItem(const char* menu, int index, bool enabled) {
  QAction* action = Item(menu, index);
  action->setEnabled(enabled && !action->property(kNotBuilt).toBool());
}

void ToolWindow::Choose(QAction* action, const Handler& handler, int index) {
  // The toolkit has moved the mark already; whether it moves is for the handler to say.
  if (action->isCheckable()) action->setChecked(!action->isChecked());
  if (!running_) handler(index);
}

void ToolWindow::SwitchTo(Window next) {
  cv.WindowLeft = x();
  cv.WindowTop = y();
  desk.Replace(next);
}

void ToolWindow::mnuHelpSel_Click(int index) {
  switch (index) {
    case 0:
      return OpenHelp({});
    case 2:
      return desk.ShowModal(Dialog::About);
  }
}

void ToolWindow::OpenHelp(const QString& topic) { os.OpenHelp(cv.AppDir / kHelpFile, topic.toStdString()); }

void ToolWindow::EndRun() {
  running_ = false;
  if (std::exchange(closeAsked_, false))
    QMetaObject::invokeMethod(this, &QWidget::close, Qt::QueuedConnection);
}

void ToolWindow::closeEvent(QCloseEvent* event) {
  if (unloaded_) return event->accept();
  if (running_) {
    closeAsked_ = true;
    CancelRun();
    return event->ignore();
  }
  if (!MayExit()) return event->ignore();
  cv.KeepTempFiles = false;
  Unload();
  event->accept();
}

void ToolWindow::Unload() {
  if (std::exchange(unloaded_, true)) return;
  OnUnload();
}

void ToolWindow::OnUnload() {
  os.SaveSetting("SaveDir", cv.SaveDir.string());
  if (!cv.KeepTempFiles) DeleteSlotBitmaps(cv);
}

}  // namespace corvane
