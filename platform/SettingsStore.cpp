#include "platform/SettingsStore.h"

#include <QSettings>
#include <QStandardPaths>
#include <cerrno>

#include "base/safe_write.h"
#include "base/settings_text.h"
#include "platform/QtText.h"

namespace corvane {
namespace {

constexpr char kSection[] = "Startup";
constexpr std::int64_t kLargestFile = 1 << 20;

QString FileName() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/Corvane/Corvane_2.conf";
}

// The toolkit's own reader would wait at a pipe of this name, and takes whatever there is into memory.
bool IsSettingsFile(const QString& name) {
  const QFileInfo file(name);
  return file.isFile() && file.size() <= kLargestFile;
}

}  // namespace

std::string StoredSetting(const std::string& key, const std::string& fallback) {
  const QString name = FileName();
  if (!IsSettingsFile(name)) return fallback;
  const QSettings settings(name, QSettings::IniFormat);
  const QVariant value = settings.value(QString(kSection) + '/' + ToQt(key));
  return value.isValid() ? value.toString().toStdString() : fallback;
}

int StoreSettings(const Settings& values) {
  const QString name = FileName();
  std::string text;
  if (QFileInfo::exists(name)) {
    if (!IsSettingsFile(name)) return EINVAL;
    const InputFile file(ToPath(name));
    text.resize(static_cast<std::size_t>(file.Size()));
    if (file.Error() != 0) return file.Error();
    if (file.ReadAt(0, text.data(), text.size()) != text.size()) return EIO;
  }
  QDir().mkpath(QFileInfo(name).absolutePath());
  text = WithSettings(text, kSection, values);
  return SafeWrite(ToPath(name), {Bytes(reinterpret_cast<const unsigned char*>(text.data()), text.size())});
}

}  // namespace corvane
