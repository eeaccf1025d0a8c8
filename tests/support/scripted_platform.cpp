#include "tests/support/scripted_platform.h"

#include <gtest/gtest.h>

namespace corvane {

namespace {

bool HasButton(Buttons buttons, Answer answer) {
  switch (buttons) {
    case Buttons::Ok:
      return answer == Answer::Ok;
    case Buttons::YesNo:
      return answer == Answer::Yes || answer == Answer::No;
    default:
      return answer != Answer::Ok;
  }
}

// The answer that does the least.
Answer SafeAnswer(Buttons buttons) {
  return buttons == Buttons::Ok ? Answer::Ok : buttons == Buttons::YesNo ? Answer::No : Answer::Cancel;
}

FileChoice TakeChoice(std::deque<FileChoice>& choices, const FileRequest& request) {
  if (choices.empty()) {
    ADD_FAILURE() << "unexpected file dialog \"" << request.title << '"';
    return {};
  }
  FileChoice choice = choices.front();
  choices.pop_front();
  return choice;
}

class RecordingPrintJob : public PrintJob {
 public:
  RecordingPrintJob(std::shared_ptr<PrintRecord> record, const ScriptedPlatform& os)
      : record_(std::move(record)), os_(os) {}
  float PageWidth() const override { return os_.pageWidth; }
  float PageHeight() const override { return os_.pageHeight; }
  void Picture(const std::filesystem::path& bitmap, float left, float top, float width,
               float height) override {
    record_->pictures.push_back({bitmap, left, top, width, height});
  }
  void Text(const std::string& text) override { record_->texts.push_back(text); }
  int End() override {
    record_->ended = true;
    return os_.printError;
  }

 private:
  std::shared_ptr<PrintRecord> record_;
  const ScriptedPlatform& os_;
};

}  // namespace

void ScriptedPlatform::Expect(std::string title, testing::Matcher<const std::string&> text, Answer answer) {
  expected_.push_back({std::move(title), std::move(text), answer});
}

void ScriptedPlatform::VerifyScript() {
  for (const ExpectedMessage& message : expected_)
    ADD_FAILURE() << "message \"" << message.title << "\" (" << testing::PrintToString(message.text)
                  << ") was not shown";
  if (!openChoices_.empty()) ADD_FAILURE() << openChoices_.size() << " file(s) to open were not asked for";
  if (!saveChoices_.empty()) ADD_FAILURE() << saveChoices_.size() << " file(s) to save were not asked for";
  expected_.clear();
  openChoices_.clear();
  saveChoices_.clear();
}

Answer ScriptedPlatform::DoMessage(const std::string& text, const std::string& title, Buttons buttons) {
  if (expected_.empty()) {
    ADD_FAILURE() << "unexpected message \"" << title << "\": " << text;
    return SafeAnswer(buttons);
  }
  const ExpectedMessage message = expected_.front();
  expected_.pop_front();
  EXPECT_EQ(title, message.title);
  EXPECT_THAT(text, message.text);
  if (HasButton(buttons, message.answer)) return message.answer;
  ADD_FAILURE() << "message \"" << title << "\" has no button for the expected answer";
  return SafeAnswer(buttons);
}

FileChoice ScriptedPlatform::OpenFile(const FileRequest& request) {
  openRequests.push_back(request);
  return TakeChoice(openChoices_, request);
}

FileChoice ScriptedPlatform::SaveFile(const FileRequest& request) {
  saveRequests.push_back(request);
  return TakeChoice(saveChoices_, request);
}

int ScriptedPlatform::SaveSettings(const Settings& values) {
  if (settingsError == 0)
    for (const auto& [key, value] : values) settings[key] = value;
  return settingsError;
}

std::string ScriptedPlatform::Setting(const std::string& key, const std::string& fallback) {
  const auto found = settings.find(key);
  return found == settings.end() ? fallback : found->second;
}

std::unique_ptr<PrintJob> ScriptedPlatform::Print(const std::string&) {
  if (printIsCancelled) return nullptr;
  prints.push_back(std::make_shared<PrintRecord>());
  return std::make_unique<RecordingPrintJob>(prints.back(), *this);
}

}  // namespace corvane
