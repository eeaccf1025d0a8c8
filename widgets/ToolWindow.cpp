#include "widgets/ToolWindow.h"

#include <QApplication>
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
    {.text = "&About Corvane", .opens = Dialog::About},
};

constexpr int kIconSize = 24;

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
    if (item.opens.index() != 0) openers_.emplace_back(item.opens, action);
    connect(action, &QAction::triggered, this,
            [this, action, item, handler, i] { Choose(action, item, [&] { handler(i); }); });
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
    QAction* action = *key.menu ? Item(key.menu, key.index) : Item(key.opens);
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

QAction* ToolWindow::Item(Target opens) const {
  for (const auto& [target, action] : openers_)
    if (target == opens) return action;
  return nullptr;
}

void ToolWindow::Choose(QAction* action, const MenuItem& item, const std::function<void()>& command) {
  // The toolkit has already toggled the check mark; it is put back, because the command decides.
  if (action->isCheckable()) action->setChecked(!action->isChecked());
  if (running_) return;
  if (const auto* next = std::get_if<Window>(&item.opens)) return Leave(*next);
  if (const auto* dialog = std::get_if<Dialog>(&item.opens)) return ShowModal(*dialog);
  command();
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

ToolWindow::Run::Run(ToolWindow& window) : window_(window) {
  window_.running_ = true;
  qApp->installEventFilter(this);
}

ToolWindow::Run::~Run() {
  window_.running_ = false;
  if (std::exchange(window_.closeAsked_, false))
    QMetaObject::invokeMethod(&window_, &QWidget::close, Qt::QueuedConnection);
}

bool ToolWindow::Run::eventFilter(QObject* watched, QEvent* event) {
  const auto* widget = qobject_cast<QWidget*>(watched);
  if (!widget || widget->window() != &window_) return false;
  switch (event->type()) {
    case QEvent::ShortcutOverride:
      event->accept();  // as if the control had a use for the key: no shortcut fires
      return true;
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
      return true;
    default:
      return false;
  }
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
  os.SaveSettings({{"SaveDir", cv.SaveDir.string()}});
  if (!cv.KeepTempFiles) DeleteSlotBitmaps(cv);
}

}  // namespace corvane
