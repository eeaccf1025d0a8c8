#pragma once

#include <QDialog>
#include <QFileDialog>
#include <QMessageBox>
#include <QString>
#include <QTemporaryDir>
#include <QTimer>
#include <deque>
#include <filesystem>
#include <functional>

#include "app/ApplicationDesk.h"
#include "core/modcv.h"
#include "platform/QtPlatform.h"

namespace corvane {

// Drives the real program and takes pictures of it. Every picture is a numbered file in the output folder.
class TourGuide {
 public:
  TourGuide(std::filesystem::path samples, std::filesystem::path output);

  // The program as main() starts it, up to its first main window.
  void Start();

  // The main window on screen.
  QWidget& Shown() const;
  void Picture(const QString& name, QWidget& window);
  void Picture(const QString& name) { Picture(name, Shown()); }

  // Chooses a menu item by its name ("mnuFileSel_0").
  void Choose(const char* item);
  // Presses a button of a dialog.
  void Press(QWidget& dialog, const char* button);
  // A control of a window by its name; one that does not exist is a failure of the tour.
  template <class Control>
  Control* Find(QWidget& window, const char* name) {
    auto* control = window.findChild<Control*>(name);
    if (!control) Fail(QString("%1 has no %2").arg(window.objectName(), name));
    return control;
  }
  // Moves the pointer over a control and clicks it there.
  void ClickAt(QWidget& control, QPoint place);

  // What the user does in the dialogs that the next command opens, in order. A handler must close its dialog.
  void Expect(std::function<void(QDialog&)> user) { users_.push_back(std::move(user)); }
  // A file dialog that takes a path, with a picture where `picture` names one.
  void ExpectFile(const std::filesystem::path& path, const QString& picture = {});
  // A dialog whose picture is taken and which is then left by a button.
  void ExpectDialog(const QString& picture, const char* button);
  // A message box that is read, pictured and closed.
  void ExpectMessage(const QString& picture) { ExpectQuestion(picture, QMessageBox::Ok); }
  // One that is answered.
  void ExpectQuestion(const QString& picture, QMessageBox::StandardButton answer);

  std::filesystem::path Sample(const std::string& name) const { return samples_ / name; }
  // A file to save; one that an earlier tour left is removed.
  std::filesystem::path Output(const std::string& name) const;

  void Fail(const QString& what);
  bool Failed() const { return failed_; }
  // Lets the windows paint and the timers run.
  void Settle();
  // Waits until `done`, at most some seconds.
  void WaitUntil(const std::function<bool()>& done);

  ModCV cv;
  QtPlatform os;
  ApplicationDesk desk{cv, os};

 private:
  void LookForDialog();

  std::filesystem::path samples_;
  std::filesystem::path output_;
  QTemporaryDir appDir_;
  QTimer lookout_;
  std::deque<std::function<void(QDialog&)>> users_;
  QDialog* seen_ = nullptr;
  int pictures_ = 0;
  bool failed_ = false;
};

}  // namespace corvane
