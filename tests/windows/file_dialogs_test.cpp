#include "platform/FileDialogs.h"
#include "platform/QtText.h"
#include "tests/support/app_dir_fixture.h"
#include "tests/support/window_controls.h"

namespace corvane {
namespace {

using Outcome = FileChoice::Outcome;

// Types a name into the dialog and presses its button.
void Type(QFileDialog& dialog, const QString& name) {
  Find<QLineEdit>(dialog, "fileNameEdit").setText(name);
  QMetaObject::invokeMethod(&dialog, "accept");
}

class FileDialogs : public AppDirFixture {
 protected:
  FileRequest Request(int filterIndex) const {
    return {"Save Image As...", "Bitmap File (*.bmp)|*.bmp| FITS File ( *.fts,*.FIT)|*.fts;*.fit;*.fits|",
            "fts", filterIndex, cv.SaveDir};
  }
  FileChoice Open(const FileRequest& request, const QString& name) const {
    WhenShown<QFileDialog>([name](QFileDialog& dialog) { Type(dialog, name); });
    return ShowOpenDialog(request, os.documentsDir);
  }
  FileChoice Save(const QString& name, int filterIndex) const {
    WhenShown<QFileDialog>([name](QFileDialog& dialog) { Type(dialog, name); });
    return ShowSaveDialog(Request(filterIndex), os.documentsDir);
  }
  // Answers the question about an existing file. "No" leaves the dialog open: it is cancelled then.
  void AnswerQuestion(QMessageBox::StandardButton answer) {
    WhenShown<QMessageBox>([this, answer](QMessageBox& box) {
      question = box.text().toStdString();
      if (answer == QMessageBox::No) WhenShown<QFileDialog>([](QFileDialog& dialog) { dialog.reject(); });
      box.button(answer)->click();
    });
  }

  std::string question;
};

TEST_F(FileDialogs, SelectTheAskedFilterAndShowItsWholeLabel) {
  for (const int index : {1, 2}) {
    QString filter, label;
    WhenShown<QFileDialog>([&](QFileDialog& dialog) {
      filter = dialog.selectedNameFilter();
      label = Find<QComboBox>(dialog, "fileTypeCombo").currentText();
      dialog.reject();
    });
    EXPECT_EQ(ShowOpenDialog(Request(index), os.documentsDir).outcome, Outcome::Cancelled);
    const char* expected = index == 1 ? "Bitmap File (*.bmp)" : "FITS File ( *.fts,*.FIT)";
    EXPECT_EQ(label.trimmed(), expected);
    EXPECT_TRUE(filter.startsWith(expected)) << filter.toStdString();
  }
}

TEST_F(FileDialogs, OpenWhatExistsByItsExactName) {
  const auto path = MakeUserFile("M 31 é.FIT", "x");
  const FileChoice choice = Open(Request(2), "M 31 é.FIT");
  EXPECT_EQ(choice.outcome, Outcome::Chosen);
  EXPECT_EQ(choice.path, path);
}

TEST_F(FileDialogs, StartInTheFallbackWhereTheDirectoryIsGone) {
  FileRequest request = Request(1);
  request.directory = folder.Path() / "gone";
  MakeUserFile("a.bmp", "x");
  EXPECT_EQ(Open(request, "a.bmp").path, UserFile("a.bmp"));
}

TEST_F(FileDialogs, AddTheExtensionOfTheFilterToANameWithoutOne) {
  EXPECT_EQ(Save("m31", 2).path, UserFile("m31.fts"));
  EXPECT_EQ(Save("m31", 1).path, UserFile("m31.bmp"));
  EXPECT_EQ(Save("m31.fit", 2).path, UserFile("m31.fit"));
  EXPECT_EQ(Save("m31.FIT", 1).path, UserFile("m31.FIT"));
  EXPECT_EQ(Save("m31.v2", 2).path, UserFile("m31.v2"));

  WhenShown<QFileDialog>([](QFileDialog& dialog) {
    auto& types = Find<QComboBox>(dialog, "fileTypeCombo");
    QTest::keyClick(&types, Qt::Key_Up);
    Type(dialog, "m33");
  });
  EXPECT_EQ(ShowSaveDialog(Request(2), os.documentsDir).path, UserFile("m33.bmp"));
}

TEST_F(FileDialogs, AskAboutAnExistingFileAlsoWhenTheExtensionWasAdded) {
  MakeUserFile("m31.fts", "old");
  for (const char* typed : {"m31.fts", "m31"}) {
    SCOPED_TRACE(typed);
    question.clear();
    AnswerQuestion(QMessageBox::No);
    EXPECT_EQ(Save(typed, 2).outcome, Outcome::Cancelled);
    EXPECT_NE(question.find("m31.fts"), std::string::npos) << question;
    AnswerQuestion(QMessageBox::Yes);
    const FileChoice choice = Save(typed, 2);
    EXPECT_EQ(choice.outcome, Outcome::Chosen);
    EXPECT_EQ(choice.path, UserFile("m31.fts"));
  }
}

}  // namespace
}  // namespace corvane
