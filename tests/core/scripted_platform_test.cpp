#include "tests/support/scripted_platform.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(ScriptedPlatform, FailsForWhatNobodyAnnouncedAndForWhatNeverCame) {
  ScriptedPlatform os;
  EXPECT_NONFATAL_FAILURE(os.Message("Text", "TITLE"), "unexpected message");
  EXPECT_NONFATAL_FAILURE(os.OpenFile({}), "unexpected file dialog");
  os.Expect("TITLE", "Text");
  EXPECT_NONFATAL_FAILURE(os.VerifyScript(), "was not shown");
  os.ChooseToSave("a.fit");
  EXPECT_NONFATAL_FAILURE(os.VerifyScript(), "were not asked for");
  os.Expect("TITLE", testing::HasSubstr("part"), Answer::Yes);
  EXPECT_NONFATAL_FAILURE(os.Message("a part", "TITLE"), "no button");
  os.Expect("TITLE", testing::HasSubstr("part"), Answer::Yes);
  EXPECT_EQ(os.Message("a part", "TITLE", Buttons::YesNo), Answer::Yes);
}

}  // namespace
}  // namespace corvane
