#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "platform/platform.h"

namespace corvane {

// A platform for fuzz targets and benchmarks: nobody answers, messages are counted.
class QuietPlatform : public Platform {
 public:
  int messages = 0;
  bool busy = false;

  FileChoice OpenFile(const FileRequest&) override { return {}; }
  FileChoice SaveFile(const FileRequest&) override { return {}; }
  std::string Setting(const std::string&, const std::string& fallback) override { return fallback; }
  int SaveSettings(const Settings&) override { return 0; }
  std::filesystem::path DocumentsDir() override { return {}; }
  std::unique_ptr<PrintJob> Print(const std::string&) override { return nullptr; }
  void OpenHelp(const std::filesystem::path&, const std::string&) override {}
  void BusyCursor(bool on) override { busy = on; }
  void Yield() override {}

 protected:
  Answer DoMessage(const std::string&, const std::string&, Buttons) override {
    ++messages;
    return Answer::Ok;
  }
};

}  // namespace corvane
