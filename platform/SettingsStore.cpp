#include "platform/SettingsStore.h"

#include <QFileInfo>
#include <QLockFile>
#include <QSettings>

#include "platform/QtText.h"

namespace corvane {
namespace {

constexpr int kLockMilliseconds = 500;

class Store : public QSettings {
 public:
  Store() : QSettings(QSettings::NativeFormat, QSettings::UserScope, "Corvane", "Corvane_2") {
    setFallbacksEnabled(false);
    beginGroup("Startup");
  }
  QString LockName() const { return fileName() + ".lock"; }
};

// QSettings waits for its lock without an end, so the lock is tried first.
bool LockIsFree(const Store& store) {
  QLockFile lock(store.LockName());
  return lock.tryLock(kLockMilliseconds);
}

}  // namespace

std::string StoredSetting(const std::string& key, const std::string& fallback) {
  const Store store;
  const QVariant value = store.value(ToQt(key));
  return value.isValid() ? value.toString().toStdString() : fallback;
}

void StoreSetting(const std::string& key, const std::string& value) {
  Store store;
  const QFileInfo file(store.fileName());
  if (file.exists() && !file.isFile()) return;
  QDir().mkpath(file.absolutePath());
  if (!LockIsFree(store)) return;
  store.setValue(ToQt(key), ToQt(value));
  store.sync();
}

void RemoveStaleSettingsLock() {
  const QString name = Store().LockName();
  if (QFileInfo(name).isFile()) QFile::remove(name);
}

}  // namespace corvane
