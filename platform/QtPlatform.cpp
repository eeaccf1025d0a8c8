#include "platform/QtPlatform.h"

#include <QApplication>
#include <QMessageBox>
#include <QStandardPaths>

#include "platform/FileDialogs.h"
#include "platform/QtPrintJob.h"
#include "platform/QtText.h"
#include "platform/SettingsStore.h"

namespace corvane {
namespace {

constexpr int kYieldMilliseconds = 10;

QMessageBox::StandardButtons ButtonsOf(Buttons buttons) {
  switch (buttons) {
    case Buttons::YesNo:
      return QMessageBox::Yes | QMessageBox::No;
    case Buttons::YesNoCancel:
      return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case Buttons::Ok:
      break;
  }
  return QMessageBox::Ok;
}

// A box that ended without a button counts as the answer that does nothing.
Answer AnswerOf(int pressed, Buttons buttons) {
  if (buttons == Buttons::Ok) return Answer::Ok;
  if (pressed == QMessageBox::Yes) return Answer::Yes;
  if (pressed == QMessageBox::No || buttons == Buttons::YesNo) return Answer::No;
  return Answer::Cancel;
}

}  // namespace

QtPlatform::~QtPlatform() {
  QtPlatform::BusyCursor(false);
  delete help_;
}

Answer QtPlatform::DoMessage(const std::string& text, const std::string& title, Buttons buttons) {
  QMessageBox box(QMessageBox::NoIcon, ToQt(title), ToQt(text), ButtonsOf(buttons),
                  QApplication::activeWindow());
  box.setTextFormat(Qt::PlainText);
  return AnswerOf(box.exec(), buttons);
}

FileChoice QtPlatform::OpenFile(const FileRequest& request) {
  BusyCursor(false);
  return ShowOpenDialog(request, DocumentsDir());
}

FileChoice QtPlatform::SaveFile(const FileRequest& request) {
  BusyCursor(false);
  return ShowSaveDialog(request, DocumentsDir());
}

std::string QtPlatform::Setting(const std::string& key, const std::string& fallback) {
  return StoredSetting(key, fallback);
}

int QtPlatform::SaveSettings(const Settings& values) { return StoreSettings(values); }

std::filesystem::path QtPlatform::DocumentsDir() {
  const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  return ToPath(QFileInfo(documents).isDir() ? documents : QDir::homePath());
}

std::unique_ptr<PrintJob> QtPlatform::Print(const std::string& documentName) {
  BusyCursor(false);
  return ShowPrintDialog(documentName);
}

void QtPlatform::OpenHelp(const std::filesystem::path& file, const std::string& topic) {
  if (help_.isNull()) help_ = new HelpViewer;
  if (!help_->Load(file)) {
    Message("Can't read the help file " + file.string() + ".", "HELP ERROR");
    return;
  }
  help_->ShowTopic(ToQt(topic));
}

void QtPlatform::BusyCursor(bool busy) {
  if (busy == busy_) return;
  busy_ = busy;
  if (busy) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
  } else {
    QApplication::restoreOverrideCursor();
  }
}

void QtPlatform::Yield() {
  if (yielding_ || (sinceYield_.isValid() && !sinceYield_.hasExpired(kYieldMilliseconds))) return;
  yielding_ = true;
  QCoreApplication::processEvents();
  yielding_ = false;
  sinceYield_.start();
}

}  // namespace corvane
