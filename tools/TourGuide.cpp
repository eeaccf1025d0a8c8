#include "tools/TourGuide.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QLineEdit>
#include <QMessageBox>
#include <QMouseEvent>
#include <QTextStream>
#include <regex>
#include <system_error>
#include <utility>

#include "app/frmCVSplash.h"
#include "core/startup.h"
#include "core/working_files.h"
#include "platform/QtText.h"

namespace corvane {
namespace {

constexpr int kLookMilliseconds = 20;
constexpr int kPatienceMilliseconds = 10000;

void RemoveOldPictures(const std::filesystem::path& folder) {
  const std::regex ours("[0-9]{2}-.*\\.png");
  for (const auto& entry : std::filesystem::directory_iterator(folder))
    if (std::regex_match(entry.path().filename().string(), ours)) std::filesystem::remove(entry.path());
}

}  // namespace

TourGuide::TourGuide(std::filesystem::path samples, std::filesystem::path output)
    : samples_(std::filesystem::absolute(samples)), output_(std::filesystem::absolute(output)) {
  std::filesystem::create_directories(output_);
  RemoveOldPictures(output_);
  cv.AppDir = ToPath(appDir_.path());
  const std::filesystem::path shipped = ToPath(QApplication::applicationDirPath());
  for (const char* name :
       {kGrayTemplate, kColorTemplate, kPalettes[0], kPalettes[1], kPalettes[2], kHelpFile, "cancel32.ico"})
    std::filesystem::copy_file(shipped / name, cv.AppDir / name);
  QObject::connect(&lookout_, &QTimer::timeout, &lookout_, [this] { LookForDialog(); });
  lookout_.start(kLookMilliseconds);
}

void TourGuide::Start() {
  frmCVSplash splash(desk);
  splash.show();
  cv.DefaultDir = samples_;
  StartUp(cv, os);
  cv.SaveDir = output_;
  Settle();
  Picture("splash", splash);
  WaitUntil([this] { return desk.Shown() != nullptr; });
}

QWidget& TourGuide::Shown() const { return *desk.Shown(); }

void TourGuide::Picture(const QString& name, QWidget& window) {
  Settle();
  const QString file = QString("%1-%2.png").arg(++pictures_, 2, 10, QChar('0')).arg(name);
  if (!window.grab().save(ToQt(output_ / ToPath(file)))) Fail("cannot write " + file);
  QTextStream(stdout) << file << Qt::endl;
}

void TourGuide::Choose(const char* item) {
  auto* action = Find<QAction>(Shown(), item);
  if (!action) return;
  if (!action->isEnabled()) return Fail(QString("%1 is disabled").arg(item));
  action->trigger();
  Settle();
  if (!users_.empty()) Fail(QString("%1 opened too few dialogs").arg(item));
  users_.clear();
}

void TourGuide::Press(QWidget& dialog, const char* button) {
  if (auto* found = Find<QAbstractButton>(dialog, button)) found->click();
}

void TourGuide::ClickAt(QWidget& control, QPoint place) {
  const QPointF at = place;
  const QPointF onScreen = control.mapToGlobal(at);
  const auto send = [&](QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons held) {
    QMouseEvent event(type, at, onScreen, button, held, Qt::NoModifier);
    QApplication::sendEvent(&control, &event);
  };
  send(QEvent::MouseMove, Qt::NoButton, Qt::NoButton);
  send(QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton);
  send(QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoButton);
  Settle();
}

void TourGuide::ExpectFile(const std::filesystem::path& path, const QString& picture) {
  Expect([this, path, picture](QDialog& dialog) {
    auto* name = Find<QLineEdit>(dialog, "fileNameEdit");
    if (!name) return dialog.reject();
    if (!picture.isEmpty()) Picture(picture, dialog);
    name->setText(ToQt(path));
    dialog.accept();
  });
}

void TourGuide::ExpectDialog(const QString& picture, const char* button) {
  Expect([this, picture, button](QDialog& dialog) {
    Picture(picture, dialog);
    Press(dialog, button);
  });
}

void TourGuide::ExpectQuestion(const QString& picture, QMessageBox::StandardButton answer) {
  Expect([this, picture, answer](QDialog& dialog) {
    auto* box = qobject_cast<QMessageBox*>(&dialog);
    auto* button = box ? box->button(answer) : nullptr;
    Picture(picture, dialog);
    if (button) return button->click();
    Fail("expected a message with another button, got " + dialog.windowTitle());
    dialog.reject();
  });
}

std::filesystem::path TourGuide::Output(const std::string& name) const {
  std::error_code ignored;
  std::filesystem::remove(output_ / name, ignored);
  return output_ / name;
}

void TourGuide::Fail(const QString& what) {
  QTextStream(stderr) << "tour: " << what << Qt::endl;
  failed_ = true;
}

void TourGuide::Settle() {
  for (int round = 0; round < 3; ++round) QApplication::processEvents();
}

void TourGuide::WaitUntil(const std::function<bool()>& done) {
  QElapsedTimer waited;
  waited.start();
  while (!done() && !waited.hasExpired(kPatienceMilliseconds))
    QApplication::processEvents(QEventLoop::WaitForMoreEvents);
  if (!done()) Fail("waited in vain");
}

void TourGuide::LookForDialog() {
  auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
  if (dialog && dialog->objectName() == "frmSave16") return;  // asks nothing of the user
  // A picture lets events run, this timer's own among them.
  if (dialog == seen_) return;
  seen_ = dialog;
  if (!dialog) return;
  QObject::connect(dialog, &QObject::destroyed, &lookout_, [this, dialog] {
    if (seen_ == dialog) seen_ = nullptr;
  });
  if (users_.empty()) {
    Fail("unexpected dialog " + dialog->windowTitle());
    Picture("unexpected", *dialog);
    return dialog->reject();
  }
  const auto user = std::exchange(users_.front(), {});
  users_.pop_front();
  user(*dialog);
}

}  // namespace corvane
