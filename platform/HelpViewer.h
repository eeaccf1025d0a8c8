#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTextBrowser>
#include <QWidget>
#include <filesystem>
#include <string_view>

namespace corvane {

// False for a manual that was cut: a whole one ends where its HTML does.
bool IsWholeManual(std::string_view bytes);

// The manual: one HTML file whose topics are anchors and whose pictures are data URLs. A list beside the page
// names the topics, which are its second headings, and follows the page.
class HelpViewer : public QWidget {
 public:
  HelpViewer();
  // False when the file can't be read or was cut; the old text stays then.
  bool Load(const std::filesystem::path& file);
  // Shows the window at a topic ("" or an unknown one: the contents).
  void ShowTopic(const QString& topic);

 private:
  // Serves the manual alone: no link leads to another file. Lines are no longer than is easy to read.
  class Page : public QTextBrowser {
   public:
    Page();
    QVariant loadResource(int type, const QUrl& name) override;
    QString html;

   protected:
    void resizeEvent(QResizeEvent* event) override;
  };

  QWidget* MakeBar();
  void ListTopics();
  void SelectTopicInSight();
  void ShowTopicOf(QListWidgetItem* item);
  void StartInSight(bool backward);
  void Find(QTextDocument::FindFlags flags);

  Page* page_;
  QListWidget* lstTopics_;
  QLineEdit* txbFind_;
  QLabel* lblFound_;
};

}  // namespace corvane
