#pragma once

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>

namespace corvane {

// No file of this process grows beyond `bytes` while the object lives: writes fail there as on a full disk.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) {
    before_ = signal(SIGXFSZ, SIG_IGN);
    EXPECT_EQ(getrlimit(RLIMIT_FSIZE, &limit_), 0);
    const rlimit small{bytes, limit_.rlim_max};
    EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
  }
  ~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &limit_);
    signal(SIGXFSZ, before_);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;

 private:
  rlimit limit_{};
  void (*before_)(int) = nullptr;
};

// This process can open no file while the object lives.
class NoMoreFiles {
 public:
  NoMoreFiles() {
    EXPECT_EQ(getrlimit(RLIMIT_NOFILE, &limit_), 0);
    const rlimit none{0, limit_.rlim_max};
    EXPECT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
  }
  ~NoMoreFiles() { setrlimit(RLIMIT_NOFILE, &limit_); }
  NoMoreFiles(const NoMoreFiles&) = delete;
  NoMoreFiles& operator=(const NoMoreFiles&) = delete;

 private:
  rlimit limit_{};
};

}  // namespace corvane
