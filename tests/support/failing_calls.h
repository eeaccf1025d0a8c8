#pragma once

namespace corvane {

// While one lives, renames, removals and flushes of files are counted, and `times` of them from the `first`
// on (counted from 1) fail with EIO.
class FailingCalls {
 public:
  explicit FailingCalls(int first, int times = 1);
  ~FailingCalls();
  FailingCalls(const FailingCalls&) = delete;
  FailingCalls& operator=(const FailingCalls&) = delete;

  int Seen() const { return seen_; }
  bool Fails() { return ++seen_ >= first_ && seen_ < first_ + times_; }

 private:
  int first_;
  int times_;
  int seen_ = 0;
};

}  // namespace corvane
