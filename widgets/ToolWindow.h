#pragma once

#include <QAction>
#include <QMainWindow>
#include <QToolBar>
#include <functional>
#include <span>
#include <string>

#include "core/modcv.h"
#include "platform/built_windows.h"
#include "platform/desk.h"
#include "platform/platform.h"

namespace corvane {

// One row of a menu; its index is its place in the table. "-" is a separator.
struct MenuItem {
  const char* text;
  const char* shortcut = "";
  bool check = false;
  // What the item opens: it stays disabled while the program lacks that window.
  bool built = true;
};

constexpr MenuItem Leading(const char* text, Window to, const char* shortcut = "") {
  return {text, shortcut, false, IsBuilt(to)};
}
constexpr MenuItem Leading(const char* text, Dialog to, const char* shortcut = "") {
  return {text, shortcut, false, IsBuilt(to)};
}

// One button of the toolbar: the menu item that it is. "-" as key is a gap.
struct ToolKey {
  const char* key;
  const char* tip = "";
  const char* menu = "";
  int index = 0;
};

// A main window. Its menus and its toolbar are tables; a button is its menu item's own action, so the two
// cannot differ. Items are named `mnuFileSel_0`, buttons `Toolbar1_open`.
class ToolWindow : public QMainWindow {
  Q_OBJECT

 public:
  // `name` is the window's, and the anchor of the help file that F1 opens.
  ToolWindow(const char* name, ModCV& store, Platform& platform, Desk& windows);

  // Reads the store; called once, before the window is shown.
  virtual void Open() = 0;
  // Applies the unload rules (settings, working files) once and asks nothing.
  void Unload();

 protected:
  // Marks a long command for as long as it lives: menus and buttons do nothing, and closing the window waits
  // for its end.
  class Run {
   public:
    explicit Run(ToolWindow& window) : window_(window) { window_.running_ = true; }
    ~Run() { window_.EndRun(); }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

   private:
    ToolWindow& window_;
  };

  using Handler = std::function<void(int index)>;
  // `name` is the control array's ("mnuFileSel"), `title` the menu's caption.
  void AddMenu(const char* name, const char* title, std::span<const MenuItem> items, Handler handler);
  void AddHelpMenu();
  // After the menus.
  void AddToolbar(std::span<const ToolKey> keys);
  QAction* Item(const char* menu, int index) const;
  // Enables an item as far as what it opens exists.
  void EnableItem(const char* menu, int index, bool enabled);

  // `command` on a button's click, unless a run is on. Buttons that cancel a run are connected directly.
  template <class Button, class Command>
  void OnClick(Button* button, Command command) {
    connect(button, &Button::clicked, this, [this, command] {
      if (!running_) command();
    });
  }

  // Gives way to another main window, which opens at this one's place.
  void SwitchTo(Window next);
  // File > Exit.
  void Exit() { close(); }

  bool Running() const { return running_; }
  // The user wants to close the window while a run is on; it closes once the run has ended.
  virtual void CancelRun() {}
  // The question, if any, before the program ends by this window's Exit or close box.
  virtual bool MayExit() { return true; }
  // What the window leaves behind when it unloads.
  virtual void OnUnload();

  void mnuHelpSel_Click(int index);
  void closeEvent(QCloseEvent* event) override;

  ModCV& cv;
  Platform& os;
  Desk& desk;
  QToolBar* Toolbar1 = nullptr;

 private:
  void Choose(QAction* action, const Handler& handler, int index);
  void EndRun();
  void OpenHelp(const QString& topic);

  bool running_ = false;
  bool closeAsked_ = false;
  bool unloaded_ = false;
};

}  // namespace corvane
