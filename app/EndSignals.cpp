#include "app/EndSignals.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <cstdlib>
#include <utility>

namespace corvane {
namespace {

constexpr int kSignals[] = {SIGTERM, SIGINT, SIGHUP};
int pipeEnds[2] = {-1, -1};
EndSignals* alive = nullptr;

void WakeUp(int) {
  const char byte = 1;
  [[maybe_unused]] const ssize_t written = write(pipeEnds[1], &byte, 1);
}

void Handle(int number, void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  action.sa_flags = SA_RESTART;
  sigaction(number, &action, nullptr);
}

}  // namespace

EndSignals::EndSignals(std::function<void()> end) : end_(std::move(end)) {
  alive = this;
  // The toolkit exits by itself where the display is lost.
  std::atexit([] {
    if (alive) alive->End();
  });
  if (pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0) return;
  auto* notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
  connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
    notifier->setEnabled(false);
    End();
    // A command under way would write the files again that were just deleted, so the program ends here.
    std::_Exit(EXIT_SUCCESS);
  });
  for (const int number : kSignals) Handle(number, WakeUp);
}

void EndSignals::End() {
  if (end_) std::exchange(end_, nullptr)();
}

EndSignals::~EndSignals() {
  alive = nullptr;
  for (const int number : kSignals) Handle(number, SIG_DFL);
  for (int& end : pipeEnds) close(std::exchange(end, -1));
}

}  // namespace corvane
