#include "app/EndSignals.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <utility>

namespace corvane {
namespace {

constexpr int kSignals[] = {SIGTERM, SIGINT, SIGHUP};
int pipeEnds[2] = {-1, -1};

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
  if (pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0) return;
  auto* notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
  connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
    notifier->setEnabled(false);
    end_();
  });
  for (const int number : kSignals) Handle(number, WakeUp);
}

EndSignals::~EndSignals() {
  for (const int number : kSignals) Handle(number, SIG_DFL);
  for (int& end : pipeEnds) close(std::exchange(end, -1));
}

void IgnoreWriteSignals() {
  Handle(SIGPIPE, SIG_IGN);
  Handle(SIGXFSZ, SIG_IGN);
}

}  // namespace corvane
