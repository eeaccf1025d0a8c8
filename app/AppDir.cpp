#include "app/AppDir.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <QFile>
#include <algorithm>
#include <cerrno>
#include <optional>
#include <system_error>

#include "base/safe_write.h"
#include "core/working_files.h"
#include "formats/bitmap_format.h"
#include "platform/HelpViewer.h"
#include "platform/QtText.h"

namespace corvane {
namespace {

constexpr char kLockFile[] = "corvane.lock";
constexpr char kPointer[] = "cancel32.ico";
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

bool HasGrayPalette(const std::string& bytes) {
  for (unsigned level = 0; level < 256; ++level)
    if (Field(bytes, 54 + 4 * level, 3) != level * 0x010101u) return false;
  return true;
}

std::optional<std::string> IntactFile(const QString& path, const std::string& name) {
  QFile file(path);
  if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly)) return std::nullopt;
  std::string bytes = file.read(std::min(file.size(), kLargestShipped)).toStdString();
  if (!IsIntact(name, bytes)) return std::nullopt;
  return bytes;
}

// The file as it ships: the installed one, or else the program's own copy.
std::optional<std::string> ShippedFile(const std::filesystem::path& installed, const std::string& name) {
  auto bytes = IntactFile(ToQt(installed / name), name);
  return bytes ? bytes : IntactFile(QString(kBuiltIn) + '/' + ToQt(name), name);
}

// Writes the shipped files that `folder` lacks: missing or damaged ones, and where it is the user's own those
// that differ from what `installed` has. One that can't be read or written is reported by the command that
// needs it.
void RefillFiles(const std::filesystem::path& folder, const std::filesystem::path& installed, bool usersOwn) {
  for (const std::string& name : ShippedFiles()) {
    const auto present = IntactFile(ToQt(folder / name), name);
    if (present && !usersOwn) continue;
    const auto bytes = ShippedFile(installed, name);
    if (!bytes || bytes == present) continue;
    SafeWrite(folder / name, {Bytes(reinterpret_cast<const unsigned char*>(bytes->data()), bytes->size())});
  }
}

}  // namespace

bool IsIntact(const std::string& name, const std::string& bytes) {
  const Bytes content(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
  if (name == kGrayTemplate) return IsDisplayTemplate(content) && HasGrayPalette(bytes);
  if (name == kColorTemplate) return IsColorTemplate(content);
  if (name == kPointer) return bytes.size() > 22 && Field(bytes, 0, 4) == 0x10000;
  if (name == kHelpFile) return IsWholeManual(bytes);
  return IsDisplayTemplate(content);
}

AppDir::AppDir(const std::filesystem::path& program, const std::filesystem::path& data)
    : installed_(program / "../share/corvane") {
  std::error_code ignored;
  const bool isInstalled = std::filesystem::exists(installed_ / kGrayTemplate, ignored) &&
                           !std::filesystem::exists(program / kGrayTemplate, ignored);
  usersOwn_ = isInstalled || !Take(program);
  if (usersOwn_) {
    std::filesystem::create_directories(data, ignored);
    if (!Take(data)) return;
  }
  for (const auto& folder : {program / "samples", installed_ / "samples"})
    if (samples_.empty() && std::filesystem::is_directory(folder, ignored))
      samples_ = folder.lexically_normal();
  if (state_ == State::Ready) RefillFiles(path_, installed_, usersOwn_);
}

bool AppDir::MayStart(Platform& os) const {
  if (state_ == State::AlreadyRunning) os.Message("Corvane is already running.", "CORVANE");
  if (state_ == State::NotWritable)
    os.Message("Can't write to the folder " + path_.string() + ".", "CORVANE");
  return state_ == State::Ready;
}

void AppDir::Refill() {
  std::error_code ignored;
  std::filesystem::create_directories(path_, ignored);
  if (!std::filesystem::exists(path_ / kLockFile, ignored)) {
    const int lost = lock_;
    if (Take(path_)) close(lost);
  }
  RefillFiles(path_, installed_, usersOwn_);
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
