#pragma once

#include <QAction>
#include <QMainWindow>
#include <QToolBar>
#include <functional>
#include <span>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "core/modcv.h"
#include "platform/desk.h"
#include "platform/platform.h"

namespace corvane {

// The window or dialog that a menu item opens, if that is all it does.
using Target = std::variant<std::monostate, Window, Dialog>;

// One row of a menu; its index is its place in the table. "-" is a separator.
struct MenuItem {
  const char* text;
  const char* shortcut = "";
  bool check = false;
  Target opens = {};
};

// One button of the toolbar: the menu item at a place, or the one that opens `opens`. "-" as key is a gap.
struct ToolKey {
  const char* key;
  const char* tip = "";
  const char* menu = "";
  int index = 0;
  Target opens = {};
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
  // A long command, as long as the object lives: the window takes no keys and no mouse buttons, its commands
  // do nothing, and closing it waits for the end.
  class Run : public QObject {
   public:
    explicit Run(ToolWindow& window);
    ~Run() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

   private:
    ToolWindow& window_;
  };

  using Handler = std::function<void(int index)>;
  // `name` is the control array's ("mnuFileSel"), `title` the menu's caption. Rows with work of their own go
  // to `handler`, the others to Leave or ShowModal.
  void AddMenu(const char* name, const char* title, std::span<const MenuItem> items, Handler handler = {});
  void AddHelpMenu();
  // After the menus.
  void AddToolbar(std::span<const ToolKey> keys);
  QAction* Item(const char* menu, int index) const;
  QAction* Item(Target opens) const;
  void EnableItem(const char* menu, int index, bool enabled) { Item(menu, index)->setEnabled(enabled); }
  void EnableItem(Target opens, bool enabled) { Item(opens)->setEnabled(enabled); }

  // `command` on a button's click, unless a run is on. Buttons that cancel a run are connected directly.
  template <class Button, class Command>
  void OnClick(Button* button, Command command) {
    connect(button, &Button::clicked, this, [this, command] {
      if (!running_) command();
    });
  }

  // Gives way to another main window, which opens at this one's place.
  void SwitchTo(Window next);
  // The same by a menu item: a window first keeps what it shows.
  virtual void Leave(Window next) { SwitchTo(next); }
  virtual void ShowModal(Dialog dialog) { desk.ShowModal(dialog); }
  // File > Exit.
  void Exit() { close(); }

  bool Running() const { return running_; }
  // The window will close when the run ends.
  bool IsClosing() const { return closeAsked_; }
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
  void Choose(QAction* action, const MenuItem& item, const std::function<void()>& command);
  void OpenHelp(const QString& topic);

  std::vector<std::pair<Target, QAction*>> openers_;
  bool running_ = false;
  bool closeAsked_ = false;
  bool unloaded_ = false;
};

}  // namespace corvane
