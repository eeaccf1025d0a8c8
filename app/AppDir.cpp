#include "app/AppDir.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <QFile>
#include <cerrno>
#include <optional>
#include <system_error>

#include "core/bitmap_file.h"
#include "core/safe_write.h"
#include "core/working_files.h"
#include "platform/QtText.h"

namespace corvane {
namespace {

constexpr char kLockFile[] = "corvane.lock";
constexpr char kPointer[] = "cancel32.ico";
constexpr std::size_t kColorHeaderSize = 54;
constexpr qint64 kLargestShipped = 16 << 20;
// The copies inside the program, for a folder whose own are damaged.
constexpr char kBuiltIn[] = ":/shipped";

std::vector<std::string> ShippedFiles() {
  std::vector<std::string> names = {kGrayTemplate, kColorTemplate, kPointer, kHelpFile};
  names.insert(names.end(), std::begin(kPalettes), std::end(kPalettes));
  return names;
}

unsigned Field(const std::string& bytes, std::size_t at, int size) {
  unsigned value = 0;
  for (int i = size - 1; i >= 0; --i) value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
  return value;
}

bool IsTemplate(const std::string& bytes, std::size_t length, unsigned bits) {
  return bytes.size() == length && bytes[0] == 'B' && bytes[1] == 'M' && Field(bytes, 10, 4) == length &&
         Field(bytes, 14, 4) == 40 && Field(bytes, 26, 2) == 1 && Field(bytes, 28, 2) == bits &&
         Field(bytes, 30, 4) == 0;
}

bool HasGrayPalette(const std::string& bytes) {
  for (unsigned level = 0; level < 256; ++level)
    if (Field(bytes, 54 + 4 * level, 3) != level * 0x010101u) return false;
  return true;
}

std::optional<std::string> IntactFile(const QString& path, const std::string& name) {
  QFile file(path);
  if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly)) return std::nullopt;
  std::string bytes = file.read(kLargestShipped).toStdString();
  if (!IsIntact(name, bytes)) return std::nullopt;
  return bytes;
}

// Writes the shipped files that are missing or damaged in `folder`. One that can't be had or written is
// reported by the command that needs it.
void Refill(const std::filesystem::path& folder, const std::filesystem::path& installed) {
  for (const std::string& name : ShippedFiles()) {
    if (IntactFile(ToQt(folder / name), name)) continue;
    for (const QString& source : {ToQt(installed), QString(kBuiltIn)}) {
      const auto bytes = IntactFile(source + '/' + ToQt(name), name);
      if (!bytes) continue;
      SafeWrite(folder / name, {Bytes(reinterpret_cast<const unsigned char*>(bytes->data()), bytes->size())});
      break;
    }
  }
}

}  // namespace

bool IsIntact(const std::string& name, const std::string& bytes) {
  if (name == kGrayTemplate) return IsTemplate(bytes, kBitmapHeaderSize, 8) && HasGrayPalette(bytes);
  if (name == kColorTemplate) return IsTemplate(bytes, kColorHeaderSize, 24);
  if (name == kPointer) return bytes.size() > 22 && Field(bytes, 0, 4) == 0x10000;
  if (name == kHelpFile) return !bytes.empty();
  return IsTemplate(bytes, kBitmapHeaderSize, 8);
}

AppDir::AppDir(const std::filesystem::path& program, const std::filesystem::path& data) {
  std::error_code ignored;
  const std::filesystem::path installed = program / "../share/corvane";
  const bool isInstalled = std::filesystem::exists(installed / kGrayTemplate, ignored) &&
                           !std::filesystem::exists(program / kGrayTemplate, ignored);
  bool taken = !isInstalled && Take(program);
  if (!taken) {
    std::filesystem::create_directories(data, ignored);
    taken = Take(data);
  }
  if (taken && state_ == State::Ready) Refill(path_, installed);
}

AppDir::~AppDir() {
  if (lock_ >= 0) close(lock_);
}

// False where the folder can't be written.
bool AppDir::Take(const std::filesystem::path& folder) {
  path_ = folder;
  if (access(folder.c_str(), W_OK | X_OK) != 0) return false;
  lock_ = open((folder / kLockFile).c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0644);
  if (lock_ < 0) return false;
  // A file system without locks must not keep the program from starting.
  const bool held = flock(lock_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
  state_ = held ? State::AlreadyRunning : State::Ready;
  return true;
}

}  // namespace corvane
