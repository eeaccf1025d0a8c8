#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QTextBrowser>
#include <QWidget>
#include <filesystem>

namespace corvane {

// The manual: one HTML file whose topics are anchors.
class HelpViewer : public QWidget {
 public:
  HelpViewer();
  // False when the file can't be read; the old text stays then.
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
