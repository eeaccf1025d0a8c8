#include "platform/FileDialogs.h"

#include <QApplication>
#include <QFileDialog>
#include <QStandardPaths>
#include <QUrl>
#include <algorithm>

#include "platform/QtText.h"

namespace corvane {
namespace {

constexpr QSize kSize(780, 500);  // room for whole sizes and dates

struct Filter {
  QString label;
  QStringList patterns;
};

QList<Filter> FiltersOf(const std::string& text) {
  const QStringList parts = ToQt(text).split('|');
  QList<Filter> filters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) filters.append({parts[i], parts[i + 1].split(';')});
  return filters;
}

QStringList NameFilters(const QList<Filter>& filters) {
  QStringList names;
  for (const Filter& filter : filters)
    names.append(filter.label.trimmed() + " (" + filter.patterns.join(' ') + ')');
  return names;
}

QString ExtensionFor(const Filter& filter, const QString& preferred) {
  if (filter.patterns.contains("*." + preferred)) return preferred;
  const QString pattern = filter.patterns.value(0);
  return pattern.startsWith("*.") ? pattern.mid(2) : preferred;
}

QList<QUrl> Places(const QString& directory) {
  const QStringList candidates = {QDir::homePath(),
                                  QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation),
                                  QStandardPaths::writableLocation(QStandardPaths::PicturesLocation),
                                  QStandardPaths::writableLocation(QStandardPaths::DesktopLocation),
                                  directory,
                                  QDir::rootPath()};
  QList<QUrl> places;
  for (const QString& place : candidates) {
    const QUrl url = QUrl::fromLocalFile(QDir::cleanPath(place));
    if (QFileInfo(place).isDir() && !places.contains(url)) places.append(url);
  }
  return places;
}

class Dialog : public QFileDialog {
 public:
  Dialog(const FileRequest& request, const std::filesystem::path& fallback)
      : QFileDialog(QApplication::activeWindow(), ToQt(request.title)), filters_(FiltersOf(request.filter)) {
    setOptions(DontUseNativeDialog | HideNameFilterDetails);
    const QString wanted = ToQt(request.directory);
    const QString directory = QFileInfo(wanted).isDir() ? wanted : ToQt(fallback);
    setDirectory(directory);
    setSidebarUrls(Places(directory));
    setNameFilters(NameFilters(filters_));
    resize(kSize);
    const int last = std::max(1, static_cast<int>(filters_.size()));
    const int chosen = std::clamp(request.filterIndex, 1, last) - 1;
    selectNameFilter(nameFilters().value(chosen));
  }

  FileChoice Ask() {
    if (exec() != QDialog::Accepted || selectedFiles().isEmpty()) return {};
    return {FileChoice::Outcome::Chosen, ToPath(QDir::cleanPath(selectedFiles().first())), 0};
  }

  // The filter's extension follows the choice of the filter.
  void AddExtensions(const QString& preferred) {
    // The dialog names a filter by its label or by label and patterns.
    const auto follow = [this, preferred](const QString& chosen) {
      for (const Filter& filter : filters_)
        if (chosen.startsWith(filter.label.trimmed())) setDefaultSuffix(ExtensionFor(filter, preferred));
    };
    connect(this, &QFileDialog::filterSelected, this, follow);
    follow(selectedNameFilter());
  }

 private:
  QList<Filter> filters_;
};

}  // namespace

FileChoice ShowOpenDialog(const FileRequest& request, const std::filesystem::path& fallback) {
  Dialog dialog(request, fallback);
  dialog.setAcceptMode(QFileDialog::AcceptOpen);
  dialog.setFileMode(QFileDialog::ExistingFile);
  return dialog.Ask();
}

FileChoice ShowSaveDialog(const FileRequest& request, const std::filesystem::path& fallback) {
  Dialog dialog(request, fallback);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setFileMode(QFileDialog::AnyFile);
  dialog.AddExtensions(ToQt(request.defaultExtension));
  return dialog.Ask();
}

}  // namespace corvane
