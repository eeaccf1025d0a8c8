#include "app/Application.h"

#include <new>

#include "base/memory_reserve.h"
#include "base/refusal.h"

namespace corvane {

bool Application::notify(QObject* receiver, QEvent* event) try {
  const bool result = QApplication::notify(receiver, event);
  if (MemoryReserveIsGiven() && !KeepMemoryReserve()) TellLater();
  return result;
} catch (const std::bad_alloc&) {
  TellLater();
  return false;
}

// Not at once: a message box can't be shown in the middle of painting.
void Application::TellLater() {
  if (told_ || !os_) return;
  told_ = true;
  QMetaObject::invokeMethod(
      this, [this] { Tell(); }, Qt::QueuedConnection);
}

void Application::Tell() {
  if (os_) os_->Message(NotEnoughMemory().text, NotEnoughMemory().title);
  told_ = !KeepMemoryReserve();
}

}  // namespace corvane
