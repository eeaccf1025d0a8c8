#include "platform/QtPrintJob.h"
#include "platform/QtText.h"
#include "tests/support/app_dir_fixture.h"
#include "tests/support/file_limit.h"
#include "tests/support/file_makers.h"

namespace corvane {
namespace {

class PrintJobTest : public AppDirFixture {
 protected:
  static std::unique_ptr<QtPrintJob> PdfJob(const std::filesystem::path& target) {
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    printer->setOutputFormat(QPrinter::PdfFormat);
    printer->setOutputFileName(ToQt(target));
    printer->setPageSize(QPageSize(QPageSize::A4));
    printer->setPageMargins(QMarginsF(10, 10, 10, 10), QPageLayout::Millimeter);
    return std::make_unique<QtPrintJob>(std::move(printer));
  }
  static int Pages(const std::string& pdf) {
    int pages = 0;
    for (std::size_t at = 0; (at = pdf.find("/Type /Page\n", at)) != std::string::npos; ++at) ++pages;
    return pages;
  }
};

TEST_F(PrintJobTest, GivesThePageInPixelsOfTheScreen) {
  const auto job = PdfJob(UserFile("page.pdf"));
  EXPECT_NEAR(job->PageWidth(), 190 / 25.4 * 96, 1);
  EXPECT_NEAR(job->PageHeight(), 277 / 25.4 * 96, 1);
  EXPECT_EQ(job->End(), 0);
}

TEST_F(PrintJobTest, PrintsAPictureAndReportsOneThatIsGone) {
  const auto bitmap = MakeUserFile("picture.bmp", GrayBitmap(8, 64, 48, [](int x, int y) { return x + y; }));
  const auto job = PdfJob(UserFile("picture.pdf"));
  job->Picture(bitmap, 10, 20, 640, 480);
  EXPECT_EQ(job->End(), 0);
  const std::string pdf = ReadFile(UserFile("picture.pdf"));
  EXPECT_NE(pdf.find("/Width 64\n/Height 48"), std::string::npos);
  EXPECT_EQ(pdf.find("/DCTDecode"), std::string::npos);  // no level is changed

  const auto failing = PdfJob(UserFile("gone.pdf"));
  failing->Picture(UserFile("absent.bmp"), 0, 0, 10, 10);
  EXPECT_EQ(failing->End(), EIO);
  EXPECT_FALSE(std::filesystem::exists(UserFile("gone.pdf")));
}

TEST_F(PrintJobTest, PrintsAHeaderOverAsManyPagesAsItTakes) {
  const auto pagesOf = [this](int lines) {
    std::string text;
    for (int i = 0; i < lines; ++i) text += Card("NAXIS1", i) + "\r\n";
    const auto job = PdfJob(UserFile("header.pdf"));
    job->Text(text);
    EXPECT_EQ(job->End(), 0);
    return Pages(ReadFile(UserFile("header.pdf")));
  };
  EXPECT_EQ(pagesOf(36), 1);
  EXPECT_GE(pagesOf(360), 4);
  EXPECT_LE(pagesOf(360), 8);
}

TEST_F(PrintJobTest, SaysWhyItsFileCannotBeWritten) {
  for (const auto& [target, error] :
       {std::pair(UserFile("no/such/folder.pdf"), ENOENT), {std::filesystem::path("/dev/full"), EINVAL}}) {
    const auto job = PdfJob(target);
    job->Text("text");
    EXPECT_EQ(job->End(), error) << target;
  }
}

TEST_F(PrintJobTest, KeepsTheOldFileUntilTheNewOneIsWhole) {
  const auto target = MakeUserFile("page.pdf", "the old one");
  const auto files = [&] {
    const std::filesystem::directory_iterator all(target.parent_path());
    return std::distance(begin(all), end(all));
  };
  std::filesystem::permissions(target, std::filesystem::perms(0640));
  PdfJob(target)->Text("given up");
  EXPECT_EQ(ReadFile(target), "the old one");
  {
    const FileSizeLimit limit(500);
    const auto job = PdfJob(target);
    job->Text("cut");
    EXPECT_EQ(job->End(), EFBIG);
    EXPECT_EQ(ReadFile(target), "the old one");
  }
  const auto job = PdfJob(target);
  job->Text("whole");
  EXPECT_EQ(ReadFile(target), "the old one");
  EXPECT_EQ(job->End(), 0);
  EXPECT_TRUE(ReadFile(target).starts_with("%PDF"));
  EXPECT_EQ(std::filesystem::status(target).permissions(), std::filesystem::perms(0640));
  EXPECT_EQ(files(), 1);
}

}  // namespace
}  // namespace corvane
