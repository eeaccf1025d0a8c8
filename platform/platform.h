#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>

namespace corvane {

enum class Buttons { Ok, YesNo, YesNoCancel };
enum class Answer { Ok, Yes, No, Cancel };

// What a file dialog shows. `filter` has the form "label|patterns|label|patterns|"; `filterIndex` counts
// from 1.
struct FileRequest {
  std::string title;
  std::string filter;
  std::string defaultExtension;
  int filterIndex = 1;
  std::filesystem::path directory;
};

struct FileChoice {
  enum class Outcome { Chosen, Cancelled, Failed };
  Outcome outcome = Outcome::Cancelled;
  std::filesystem::path path;
  int error = 0;  // errno when Failed
};

// A page being printed. Lengths are in picture pixels at the size the printer prints them (96 to the inch).
class PrintJob {
 public:
  virtual ~PrintJob() = default;
  virtual float PageWidth() const = 0;
  virtual float PageHeight() const = 0;
  virtual void Picture(const std::filesystem::path& bitmap, float left, float top, float width,
                       float height) = 0;
  // Plain text in a fixed pitch, over as many pages as it takes.
  virtual void Text(const std::string& text) = 0;
  // Ends the document; 0 or an errno. A document that is printed to a file replaces the old one only if it is
  // whole.
  virtual int End() = 0;
};

// Values of the user's settings by their keys.
using Settings = std::map<std::string, std::string>;

// What the program needs of the desktop beyond its own windows. Used from one thread.
class Platform {
 public:
  virtual ~Platform() = default;

  // Shows a message box and waits for its answer. The busy cursor is reset first, always.
  Answer Message(const std::string& text, const std::string& title, Buttons buttons = Buttons::Ok) {
    BusyCursor(false);
    return DoMessage(text, title, buttons);
  }

  virtual FileChoice OpenFile(const FileRequest& request) = 0;
  // Asks before an existing file is chosen; adds the default extension to a name without one.
  virtual FileChoice SaveFile(const FileRequest& request) = 0;

  virtual std::string Setting(const std::string& key, const std::string& fallback) = 0;
  // Keeps all of them or none; 0 or an errno.
  virtual int SaveSettings(const Settings& values) = 0;
  virtual std::filesystem::path DocumentsDir() = 0;

  // The print dialog; null when it was cancelled.
  virtual std::unique_ptr<PrintJob> Print(const std::string& documentName) = 0;
  // The help file at a topic ("" = its contents).
  virtual void OpenHelp(const std::filesystem::path& file, const std::string& topic) = 0;

  virtual void BusyCursor(bool busy) = 0;
  // Lets the window system deliver waiting events. Cheap to call once per row; never nests.
  virtual void Yield() = 0;

 protected:
  virtual Answer DoMessage(const std::string& text, const std::string& title, Buttons buttons) = 0;
};

}  // namespace corvane
