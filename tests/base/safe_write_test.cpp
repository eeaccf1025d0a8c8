#include "base/safe_write.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <vector>

#include "tests/support/failing_calls.h"
#include "tests/support/file_limit.h"
#include "tests/support/test_files.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;

Bytes BytesOf(const std::string& text) {
  return {reinterpret_cast<const unsigned char*>(text.data()), text.size()};
}

mode_t ModeOf(const fs::path& path) {
  struct stat status {};
  EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
  return status.st_mode & 07777;
}

// Nothing is protected from the administrator, so that one steps down while the object lives.
class OrdinaryUser {
 public:
  explicit OrdinaryUser(const fs::path& folder) {
    if (geteuid() != 0) return;
    constexpr uid_t kNobody = 65534;
    EXPECT_EQ(chown(folder.c_str(), kNobody, kNobody), 0);
    EXPECT_EQ(seteuid(kNobody), 0);
    steppedDown_ = true;
  }
  ~OrdinaryUser() {
    if (steppedDown_ && seteuid(0) != 0) ADD_FAILURE() << "still an ordinary user";
  }
  OrdinaryUser(const OrdinaryUser&) = delete;
  OrdinaryUser& operator=(const OrdinaryUser&) = delete;

 private:
  bool steppedDown_ = false;
};

class SafeWriting : public testing::Test {
 protected:
  fs::path File(const std::string& name) const { return folder.Path() / name; }
  int Write(const fs::path& path, const std::string& text) { return SafeWrite(path, {BytesOf(text)}); }
  // Everything in the folder, so that a temporary left behind is noticed.
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder.Path())) names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
  }

  TemporaryFolder folder;
};

TEST_F(SafeWriting, JoinsThePartsIntoANewFileOrOverAnOldOne) {
  const std::string first = "header", none, second = "data";
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(SafeWrite(File("a.fts"), {BytesOf(first), BytesOf(none), BytesOf(second)}), 0);
    EXPECT_EQ(ReadFile(File("a.fts")), "headerdata");
    WriteFile(File("a.fts"), "something longer than what is written");
  }
  EXPECT_EQ(SafeWrite(File("empty.fts"), {}), 0);
  EXPECT_EQ(ReadFile(File("empty.fts")), "");
  EXPECT_EQ(Names(), (std::vector<std::string>{"a.fts", "empty.fts"}));
}

TEST_F(SafeWriting, ReplacesTheFileSoThatAnOpenReaderKeepsTheOldOne) {
  WriteFile(File("a.fts"), "old");
  const InputFile reader(File("a.fts"));
  EXPECT_EQ(Write(File("a.fts"), "new"), 0);
  char text[3];
  ASSERT_EQ(reader.ReadAt(0, text, 3), 3u);
  EXPECT_EQ(std::string(text, 3), "old");
}

TEST_F(SafeWriting, KeepsTheModeOfAnOldFileAndGivesANewOneTheUsual) {
  const mode_t mask = umask(027);
  EXPECT_EQ(Write(File("new.fts"), "x"), 0);
  EXPECT_EQ(ModeOf(File("new.fts")), 0640u);
  for (const mode_t mode : {0600u, 0666u, 0644u, 0777u}) {
    ASSERT_EQ(chmod(File("new.fts").c_str(), mode), 0);
    EXPECT_EQ(Write(File("new.fts"), "y"), 0);
    EXPECT_EQ(ModeOf(File("new.fts")), mode);
  }
  umask(mask);
}

TEST_F(SafeWriting, FollowsLinksAndLeavesThemLinks) {
  fs::create_directory(File("far"));
  WriteFile(File("far/real.fts"), "old");
  fs::create_symlink("far/real.fts", File("near.fts"));
  fs::create_symlink(File("near.fts"), File("twice.fts"));
  fs::create_symlink("far/unborn.fts", File("dangling.fts"));
  EXPECT_EQ(Write(File("twice.fts"), "new"), 0);
  EXPECT_EQ(Write(File("dangling.fts"), "born"), 0);
  EXPECT_EQ(ReadFile(File("far/real.fts")), "new");
  EXPECT_EQ(ReadFile(File("far/unborn.fts")), "born");
  for (const char* link : {"near.fts", "twice.fts", "dangling.fts"}) EXPECT_TRUE(fs::is_symlink(File(link)));

  fs::create_symlink("circle.fts", File("circle.fts"));
  EXPECT_EQ(Write(File("circle.fts"), "x"), ELOOP);
  EXPECT_EQ(Names(),
            (std::vector<std::string>{"circle.fts", "dangling.fts", "far", "near.fts", "twice.fts"}));
}

TEST_F(SafeWriting, RefusesWhatIsNoRegularFileOrHasNoPlace) {
  fs::create_directory(File("folder.fts"));
  ASSERT_EQ(mkfifo(File("pipe.fts").c_str(), 0600), 0);
  WriteFile(File("file"), "a file where a folder is expected");
  const std::string tooLong(300, 'n');
  EXPECT_EQ(Write(File("folder.fts"), "x"), EISDIR);
  EXPECT_EQ(Write(File("pipe.fts"), "x"), EINVAL);
  EXPECT_EQ(Write(File("vanished/a.fts"), "x"), ENOENT);
  EXPECT_EQ(Write(File("file/a.fts"), "x"), ENOTDIR);
  EXPECT_EQ(Write(File(tooLong), "x"), ENAMETOOLONG);
  EXPECT_EQ(SafeCopy(File("nothing"), File("copy.fts")), ENOENT);
  EXPECT_EQ(SafeCopy(File("folder.fts"), File("copy.fts")), EISDIR);
  EXPECT_EQ(Names(), (std::vector<std::string>{"file", "folder.fts", "pipe.fts"}));
}

TEST_F(SafeWriting, RespectsProtectionFromWriting) {
  const OrdinaryUser user(folder.Path());
  WriteFile(File("a.fts"), "old");
  ASSERT_EQ(chmod(File("a.fts").c_str(), 0444), 0);
  EXPECT_EQ(Write(File("a.fts"), "new"), EACCES);
  ASSERT_EQ(chmod(File("a.fts").c_str(), 0644), 0);
  fs::permissions(folder.Path(), fs::perms::owner_read | fs::perms::owner_exec);
  EXPECT_EQ(Write(File("a.fts"), "new"), EACCES);
  EXPECT_EQ(ReadFile(File("a.fts")), "old");
}

TEST_F(SafeWriting, TakesTheLongestNameAndAForeignTemporaryInItsWay) {
  const std::string longest(251, 'n');
  WriteFile(File(".corvane-" + std::to_string(getpid()) + "-0.tmp"), "left by another run");
  EXPECT_EQ(Write(File(longest + ".fts"), "x"), 0);
  EXPECT_EQ(ReadFile(File(longest + ".fts")), "x");
  EXPECT_EQ(ReadFile(File(".corvane-" + std::to_string(getpid()) + "-0.tmp")), "left by another run");
  EXPECT_EQ(Names().size(), 2u);
}

TEST_F(SafeWriting, RemovesWhatEndedRunsLeftAndNothingElse) {
  const pid_t ended = fork();
  if (ended == 0) _exit(0);
  ASSERT_EQ(waitpid(ended, nullptr, 0), ended);
  const std::string dead = ".corvane-" + std::to_string(ended) + "-";
  const std::vector<std::string> kept = {dead + "0.tmp.bak", dead + "0x.tmp", dead + "00.tmp",
                                         ".corvane-" + std::to_string(getppid()) + "-0.tmp", "a.fts"};
  for (const char* name : {"0.tmp", "12.tmp"}) WriteFile(File(dead + name), "half");
  for (const std::string& name : kept) WriteFile(File(name), "kept");
  EXPECT_EQ(Write(File("a.fts"), "new"), 0);
  EXPECT_THAT(Names(), testing::UnorderedElementsAreArray(kept));
}

TEST_F(SafeWriting, KnowsTheFileFromItsPlaceInTheFolder) {
  constexpr int kFlushOfFile = 1, kRename = 2, kFlushOfFolder = 3;
  for (const int call : {kFlushOfFile, kRename, kFlushOfFolder}) {
    WriteFile(File("a.fts"), "old");
    const bool isWritten = call == kFlushOfFolder;
    const FailingCalls fault(call);
    EXPECT_EQ(Write(File("a.fts"), "new"), isWritten ? 0 : EIO);
    EXPECT_EQ(ReadFile(File("a.fts")), isWritten ? "new" : "old");
    EXPECT_EQ(Names(), std::vector<std::string>{"a.fts"});
  }
}

TEST_F(SafeWriting, LeavesTheOldFileAndNothingElseWhenTheDiskIsFull) {
  WriteFile(File("a.fts"), "old");
  const std::string large(100000, 'x');
  WriteFile(File("source"), large);
  {
    const FileSizeLimit limit(50000);
    EXPECT_EQ(Write(File("a.fts"), large), EFBIG);
    EXPECT_EQ(Write(File("new.fts"), large), EFBIG);
    EXPECT_EQ(SafeCopy(File("source"), File("a.fts")), EFBIG);
  }
  EXPECT_EQ(ReadFile(File("a.fts")), "old");
  EXPECT_EQ(Names(), (std::vector<std::string>{"a.fts", "source"}));
}

TEST_F(SafeWriting, CopiesFilesOfEverySizeAroundItsBlock) {
  constexpr std::size_t kBlock = 1 << 20;
  for (const std::size_t size :
       {std::size_t{0}, std::size_t{1}, kBlock - 1, kBlock, kBlock + 1, 3 * kBlock}) {
    std::string bytes(size, '\0');
    for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>(i * 7 + i / 251);
    WriteFile(File("source"), bytes);
    EXPECT_EQ(SafeCopy(File("source"), File("copy")), 0);
    EXPECT_TRUE(ReadFile(File("copy")) == bytes) << size;
  }
}

}  // namespace
}  // namespace corvane
