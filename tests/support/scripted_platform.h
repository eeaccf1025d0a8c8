#pragma once

#include <gmock/gmock.h>

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/platform.h"

namespace corvane {

// What a print job was told.
struct PrintRecord {
  struct PlacedPicture {
    std::filesystem::path bitmap;
    float left, top, width, height;
  };
  std::vector<PlacedPicture> pictures;
  std::vector<std::string> texts;
  bool ended = false;
};

// A platform that follows a script and is strict about it: a message or a file dialog that nobody announced
// fails the test, and so does an announced one that never came.
class ScriptedPlatform : public Platform {
 public:
  ~ScriptedPlatform() override { VerifyScript(); }

  // Messages, in order. `text` is the exact text or a matcher such as HasSubstr.
  void Expect(std::string title, testing::Matcher<const std::string&> text, Answer answer = Answer::Ok);
  // File dialogs, in order. The path must be one the dialog could return.
  void ChooseToOpen(const std::filesystem::path& path) { openChoices_.push_back({Outcome::Chosen, path, 0}); }
  void CancelOpen() { openChoices_.push_back({Outcome::Cancelled, {}, 0}); }
  void FailOpen(int error) { openChoices_.push_back({Outcome::Failed, {}, error}); }
  void ChooseToSave(const std::filesystem::path& path) { saveChoices_.push_back({Outcome::Chosen, path, 0}); }
  void CancelSave() { saveChoices_.push_back({Outcome::Cancelled, {}, 0}); }
  void FailSave(int error) { saveChoices_.push_back({Outcome::Failed, {}, error}); }

  // Fails the test for whatever was announced and has not come, and forgets it.
  void VerifyScript();

  std::vector<FileRequest> openRequests;
  std::vector<FileRequest> saveRequests;

  Settings settings;
  int settingsError = 0;  // what keeps them from being saved
  std::filesystem::path documentsDir;

  float pageWidth = 760;
  float pageHeight = 1060;
  bool printIsCancelled = false;
  int printError = 0;
  std::vector<std::shared_ptr<PrintRecord>> prints;
  std::vector<std::pair<std::filesystem::path, std::string>> helpCalls;  // file, topic

  bool busy = false;
  std::function<void(bool busy)> onBusy;  // runs when the cursor changes
  int yields = 0;
  std::function<void()> onYield;  // runs in the middle of whatever yields

  FileChoice OpenFile(const FileRequest& request) override;
  FileChoice SaveFile(const FileRequest& request) override;
  std::string Setting(const std::string& key, const std::string& fallback) override;
  int SaveSettings(const Settings& values) override;
  std::filesystem::path DocumentsDir() override { return documentsDir; }
  std::unique_ptr<PrintJob> Print(const std::string& documentName) override;
  void OpenHelp(const std::filesystem::path& file, const std::string& topic) override {
    helpCalls.emplace_back(file, topic);
  }
  void BusyCursor(bool on) override {
    if (on != std::exchange(busy, on) && onBusy) onBusy(on);
  }
  void Yield() override {
    ++yields;
    if (onYield) onYield();
  }

 protected:
  Answer DoMessage(const std::string& text, const std::string& title, Buttons buttons) override;

 private:
  using Outcome = FileChoice::Outcome;
  struct ExpectedMessage {
    std::string title;
    testing::Matcher<const std::string&> text;
    Answer answer;
  };
  std::deque<ExpectedMessage> expected_;
  std::deque<FileChoice> openChoices_;
  std::deque<FileChoice> saveChoices_;
};

}  // namespace corvane
