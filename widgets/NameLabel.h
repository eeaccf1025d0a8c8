#pragma once

#include <QLabel>

namespace corvane {

// Shows as much of a long text as there is room for; the tool tip has it whole.
class NameLabel : public QLabel {
 public:
  explicit NameLabel(const QString& name = {});
  void ShowName(const QString& name);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace corvane
