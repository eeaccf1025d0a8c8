#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QTextBrowser>
#include <QWidget>
#include <filesystem>
#include <string_view>

namespace corvane {

// False for a manual that was cut: a whole one ends where its HTML does.
bool IsWholeManual(std::string_view bytes);

// The manual: one HTML file whose topics are anchors.
class HelpViewer : public QWidget {
 public:
  HelpViewer();
  // False when the file can't be read or was cut; the old text stays then.
  bool Load(const std::filesystem::path& file);
  // Shows the window at a topic ("" or an unknown one: the contents).
  void ShowTopic(const QString& topic);

 private:
  // Serves the manual alone: no link leads to another file.
  class Page : public QTextBrowser {
   public:
    QVariant loadResource(int type, const QUrl& name) override;
    QString html;
  };

  QWidget* MakeBar();
  void Find(QTextDocument::FindFlags flags);

  Page* page_;
  QLineEdit* txbFind_;
  QLabel* lblFound_;
};

}  // namespace corvane
