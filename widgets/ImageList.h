#pragma once

#include <QComboBox>
#include <string>

#include "core/modcv.h"

namespace corvane {

// The open images by name; the place of an entry is its slot. Only the user's choices are signaled.
class ImageList : public QComboBox {
  Q_OBJECT

 public:
  ImageList(const char* name, const QString& accessibleName);

  // All open images, none of them selected; disabled where there are none.
  void Fill(const ModCV& cv);
  void Insert(int slot, const std::string& name);
  // The caller selects another entry then.
  void Remove(int slot);
  void Rename(int slot, const std::string& name) { setItemText(slot, QString::fromStdString(name)); }
  void Select(int slot);

 Q_SIGNALS:
  // The user has chosen another entry than the one selected.
  void Chosen(int slot);

 private:
  void Click(int index);

  int selected_ = -1;
};

}  // namespace corvane
