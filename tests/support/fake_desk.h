#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <vector>

#include "platform/desk.h"

namespace corvane {

// A desk without windows: a lambda stands for what the user does in a dialog. A dialog without one fails the
// test.
class FakeDesk : public Desk {
 public:
  std::map<Dialog, std::function<void()>> dialogs;
  std::vector<Dialog> shown;
  std::vector<Window> replacedBy;

  void Replace(Window next) override { replacedBy.push_back(next); }
  void ShowModal(Dialog dialog) override {
    shown.push_back(dialog);
    const auto user = dialogs.find(dialog);
    if (user == dialogs.end()) {
      ADD_FAILURE() << "unexpected dialog " << static_cast<int>(dialog);
      return;
    }
    user->second();
  }
};

}  // namespace corvane
