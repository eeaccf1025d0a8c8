#pragma once

#include <QWidget>
#include <string>

#include "widgets/SelectingBox.h"

namespace corvane {

// What a picture is multiplied by: a text box and a pair of arrows that step it by twentieths from 0.05 to 2.
class MultiplierBox : public QWidget {
 public:
  MultiplierBox(const char* boxName, const char* arrowsName, const QString& accessibleName,
                const char* text = "1");

  std::string Text() const { return box_->text().toStdString(); }
  void Show(float multiplier);
  // After the message that the number has passed this limit: shows the limit and has the focus.
  void ReturnToLimit(float limit);

 private:
  SelectingBox* box_;
};

}  // namespace corvane
