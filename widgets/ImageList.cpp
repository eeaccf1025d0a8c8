#include "widgets/ImageList.h"

#include <QSignalBlocker>

#include "platform/QtText.h"
#include "widgets/controls.h"

namespace corvane {

ImageList::ImageList(const char* name, const QString& accessibleName) {
  Named(this, name, accessibleName);
  setEnabled(false);
  WheelOnlyWithFocus(this);
  connect(this, &QComboBox::currentIndexChanged, this, &ImageList::Click);
}

void ImageList::Fill(const ModCV& cv) {
  const QSignalBlocker quiet(this);
  clear();
  for (int slot = 0; slot < cv.ImageCount; ++slot) addItem(ToQt(cv.SlotName[slot]));
  setEnabled(count() > 0);
  Select(-1);
}

void ImageList::Insert(int slot, const std::string& name) {
  const QSignalBlocker quiet(this);
  insertItem(slot, ToQt(name));
  setEnabled(true);
}

void ImageList::Remove(int slot) {
  const QSignalBlocker quiet(this);
  removeItem(slot);
  setEnabled(count() > 0);
  Select(-1);
}

void ImageList::Select(int slot) {
  const QSignalBlocker quiet(this);
  setCurrentIndex(slot);
  selected_ = slot;
}

void ImageList::Click(int index) {
  if (index < 0 || index == selected_) return;
  selected_ = index;
  Q_EMIT Chosen(index);
}

}  // namespace corvane
