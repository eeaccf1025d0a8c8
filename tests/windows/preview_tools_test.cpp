#include "app/ApplicationDesk.h"
#include "tests/windows/preview_fixture.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// Values of controls with which Apply changes every picture of this test; the bounds are 30 and 200.
using Settings = std::vector<std::pair<const char*, int>>;
const Settings kScaling = {{"Combo1", 1}, {"sldHigh", 200}, {"sldLow", 30}};
const Settings kMasking = {{"sldHigh", 200}, {"sldLow", 30}, {"sldClr", 140}};

struct PreviewTool {
  Window window;
  const char* name;
  const char* key;  // of the toolbar
  const char* title;
  Settings settings;
  int precision;  // at which a result of 16-bit data can be saved
  const char* nextKey;
  Window next;
};
const PreviewTool kTools[] = {
    {Window::Scale, "frmScale", "scale", "  Corvane Luminance Scaling:  ", kScaling, 2, "mask", Window::Mask},
    {Window::Mask, "frmMask", "mask", "  Corvane Image Mask:  ", kMasking, 1, "scale", Window::Scale}};

void Set(QWidget& window, const char* control, int value) {
  if (auto* list = window.findChild<QComboBox*>(control)) return list->setCurrentIndex(value);
  Find<QSlider>(window, control).setValue(value);
}
void SetAll(QWidget& window, const PreviewTool& tool) {
  for (const auto& [control, value] : tool.settings) Set(window, control, value);
}

class EveryPreviewTool : public PreviewFixture, public testing::WithParamInterface<PreviewTool> {
 protected:
  EveryPreviewTool() : PreviewFixture(GetParam().window) {}

  void Apply() {
    SetAll(*window, GetParam());
    Press(*window, "cmdApply");
  }
  // What is enabled; "controls" stands for those of the tool.
  std::string State() {
    std::size_t free = 0;
    for (const auto& [control, value] : GetParam().settings) free += !Enabled({control}).empty();
    return (free == GetParam().settings.size() ? "controls "
            : free > 0                         ? "some controls "
                                               : "") +
           Enabled({"cmdApply", "cmdCancel", "cmdRedo", "cmdSave", "mnuFileSel_0", "mnuFileSel_2",
                    "mnuOptSel_0", "mnuOptSel_1"});
  }
  std::string TitleOf(const std::string& image) { return GetParam().title + image; }
  QImage Graph() { return Picture("picHist").Flattened(); }
  std::vector<int> Shown() {
    EXPECT_EQ(ShownLevels(), Pixels(cv.Display()));
    return ShownLevels();
  }

  const std::string kUnchanged = "controls cmdApply mnuFileSel_0 mnuFileSel_2 mnuOptSel_0 mnuOptSel_1 ";
  const std::string kUndone = "controls cmdApply cmdRedo mnuFileSel_0 mnuFileSel_2 mnuOptSel_0 mnuOptSel_1 ";
  const std::string kChanged = "cmdCancel cmdSave mnuFileSel_0 mnuFileSel_2 ";
  const std::vector<std::string> kTwoPictures{"0temp.bmp", "hist1.bmp", "hist2.bmp", "temp.bmp"};
};

INSTANTIATE_TEST_SUITE_P(Tools, EveryPreviewTool, testing::ValuesIn(kTools),
                         [](const auto& tool) { return std::string(tool.param.name); });

TEST_P(EveryPreviewTool, AppliesUndoesAndRedoes) {
  cv.ImageChanged = true;  // of an earlier tool
  cv.LumHist.fill(9);
  OpenEveryLevel();
  EXPECT_EQ(Title(), TitleOf("levels.fit"));
  EXPECT_EQ(State(), kUnchanged);
  EXPECT_FALSE(cv.ImageChanged);
  EXPECT_THAT(WorkingFiles(), ElementsAre("0temp.bmp", "hist1.bmp"));
  const std::vector<int> before = FileLevels("0temp.bmp");
  EXPECT_EQ(Shown(), before);
  EXPECT_EQ(std::pair(cv.LumHist[3], cv.LumHist[4]), std::pair(2.0f, 1.0f));
  const QImage bareGraph = Graph();
  SetAll(*window, GetParam());
  const QImage plainGraph = Graph();
  EXPECT_NE(plainGraph, bareGraph) << "the bounds are marked";
  const QString description = Picture("picHist").accessibleDescription();
  ExpectHourglass([this] { Press(*window, "cmdApply"); });
  const std::vector<int> changed = FileLevels("temp.bmp");
  EXPECT_NE(changed, before);
  const QImage graph = Graph();
  EXPECT_NE(graph, bareGraph);
  const auto expectShown = [&](bool isChanged) {
    EXPECT_EQ(State(), isChanged ? kChanged : kUndone);
    EXPECT_EQ(cv.ImageChanged, isChanged);
    EXPECT_EQ(Shown(), isChanged ? changed : before);
    EXPECT_EQ(FileLevels("0temp.bmp"), before);
    EXPECT_EQ(Graph(), isChanged ? graph : plainGraph);
    EXPECT_EQ(Picture("picHist").accessibleDescription() == description, !isChanged);
    EXPECT_EQ(WorkingFiles(), kTwoPictures);
  };
  expectShown(true);
  // The last round starts from the picture, not from the first result.
  for (const char* again : {"cmdRedo", "cmdApply"}) {
    ExpectHourglass([this] { Press(*window, "cmdCancel"); });
    expectShown(false);
    ExpectHourglass([&] { Press(*window, again); });
    expectShown(true);
  }
  Press(*window, "cmdCancel");
  Picture("picHist").Clear();
  EXPECT_EQ(Graph(), bareGraph) << "no mark is part of the kept graph";
}

TEST_P(EveryPreviewTool, LeadsTheFocusThroughItsControlsInOrderAndExplainsItsButtons) {
  OpenEveryLevel();
  std::string order;
  const QWidget* control = window->focusWidget();
  for (int steps = 0; steps < 60; ++steps, control = control->nextInFocusChain())
    if (control->focusPolicy() & Qt::TabFocus) order += control->objectName().toStdString() + ' ';
  const bool scales = GetParam().window == Window::Scale;
  EXPECT_THAT(order,
              testing::StartsWith(std::string(scales ? "Combo1 sldLow sldHigh " : "sldLow sldHigh sldClr ") +
                                  "cmdApply cmdCancel cmdRedo cmdSave "));
  const auto tip = [this](const char* name) { return Find<QWidget>(*window, name).toolTip().toStdString(); };
  EXPECT_EQ(tip("cmdCancel"), "Return to Original Image");
  EXPECT_EQ(tip("cmdRedo"), scales ? "Show the Scaled Image" : "Show the Stretched Image");
  EXPECT_EQ(tip("cmdSave"), "Save as Working Image");
}

TEST_P(EveryPreviewTool, DisablesRedoWhenAControlChanges) {
  OpenEveryLevel();
  for (const auto& [control, value] : GetParam().settings) {
    Apply();
    Press(*window, "cmdCancel");
    EXPECT_EQ(State(), kUndone);
    Set(*window, control, value + 1);
    EXPECT_EQ(State(), kUnchanged) << control;
  }
}

TEST_P(EveryPreviewTool, SavesTheResultAndGoesOnFromIt) {
  for (const auto& [name, bits] : {std::pair("a.fts", 8), {"b.bmp", 8}, {"c.fts", 16}}) {
    SCOPED_TRACE(name);
    cv.ImageCount = 0;
    OpenHundreds();
    Apply();
    const std::vector<int> changed = FileLevels("temp.bmp");
    const QImage graph = Graph();
    const QString meaning = Picture("picHist").accessibleDescription();
    offered = 0;
    SaveTo(name, bits);
    const bool sixteen = bits == 16 && GetParam().precision == 2;
    EXPECT_EQ(offered, name[2] == 'b' ? 0 : GetParam().precision);
    EXPECT_EQ(State(), kUnchanged);
    EXPECT_FALSE(cv.ImageChanged);
    EXPECT_EQ(Title(), TitleOf(name));
    EXPECT_EQ(cv.CurrentName, name);
    EXPECT_EQ(cv.SlotBytesPerPixel[0], sixteen ? 2 : 1);
    if (name[2] == 'b')
      EXPECT_EQ(ReadFile(UserFile(name)), ReadFile(AppFile("0temp.bmp")));
    else
      EXPECT_EQ(ReadValues(name), Values(cv.SlotData[0].View()));
    EXPECT_EQ(FileLevels("0temp.bmp"), Shown());
    if (!sixteen) {
      EXPECT_EQ(Shown(), changed);
      EXPECT_EQ(Graph(), graph);
      EXPECT_EQ(Picture("picHist").accessibleDescription(), meaning);
    }
    EXPECT_THAT(WorkingFiles(), ElementsAre("0temp.bmp", "hist1.bmp"));
    // Undo returns to what was saved.
    const std::vector<int> saved = Shown();
    SetAll(*window, GetParam());
    const QImage savedGraph = Graph();
    Press(*window, "cmdApply");
    Press(*window, "cmdCancel");
    EXPECT_EQ(Shown(), saved);
    EXPECT_EQ(Graph(), savedGraph);
  }
}

TEST_P(EveryPreviewTool, SavesAnUnchangedImageFromItsData) {
  OpenHundreds();
  const QImage bareGraph = Graph();
  SaveTo("first.fts", 16);
  EXPECT_EQ(Graph(), bareGraph);
  SetAll(*window, GetParam());
  const QImage graph = Graph();
  SaveTo("same.fts", 16);
  EXPECT_EQ(offered, 2);
  EXPECT_EQ(ReadValues("same.fts")[10], 1000.0f);
  EXPECT_EQ(Title(), TitleOf("same.fts"));
  EXPECT_EQ(Slider("sldLow").value(), 30) << "nothing was applied, so nothing is reset";
  EXPECT_EQ(Graph(), graph);
  const std::string picture = ReadFile(AppFile("0temp.bmp"));
  SaveTo("same.bmp");
  EXPECT_EQ(ReadFile(UserFile("same.bmp")), picture);
  EXPECT_EQ(cv.SlotBytesPerPixel[0], 1);
}

TEST_P(EveryPreviewTool, KeepsItsStateWhenNothingIsSaved) {
  OpenHundreds();
  Apply();
  const std::string before = LastingState();
  const std::vector<int> changed = Shown();
  const auto expectUnsaved = [&] {
    EXPECT_EQ(State(), kChanged);
    EXPECT_TRUE(cv.ImageChanged);
    EXPECT_EQ(Title(), TitleOf("hundreds.fit"));
    EXPECT_EQ(Shown(), changed);
    EXPECT_TRUE(LastingState() == before);
  };
  os.CancelSave();
  Press(*window, "cmdSave");
  expectUnsaved();
  os.FailSave(13);
  os.Expect("DATA SAVE ERROR", "Error Number 13");
  Press(*window, "cmdSave");
  expectUnsaved();
  os.Expect("SAVE ERROR", "Unrecognized file extension! File save cancelled.");
  SaveTo("changed.tif", 16);
  expectUnsaved();
  for (const auto& [name, bits] : {std::pair("changed.fts", 8), {"changed.fts", 16}, {"changed.bmp", 8}}) {
    os.Expect("DATA SAVE ERROR", "Error Number 2");
    SaveTo(std::string("no such folder/") + name, bits);
    expectUnsaved();
  }
  EXPECT_EQ(os.saveRequests.at(0).title, "Save Image As...");
}

TEST_P(EveryPreviewTool, HandsItsResultOverOnceMarked) {
  OpenHundreds();
  for (const char* way : {"mnuOptSel_3", "mnuFileSel_2"}) {
    Apply();
    const std::vector<int> changed = FileLevels("temp.bmp");
    Choose(way);
    EXPECT_EQ(cv.SlotName[0], "~hundreds.fit");
    EXPECT_EQ(cv.CurrentName, "~hundreds.fit");
    EXPECT_EQ(cv.SlotBytesPerPixel[0], 1);
    EXPECT_EQ(FileLevels("0temp.bmp"), changed);
    EXPECT_THAT(WorkingFiles(), ElementsAre("0temp.bmp"));
    Start();
    EXPECT_EQ(Title(), TitleOf("~hundreds.fit"));
  }
  EXPECT_THAT(desk.replacedBy, ElementsAre(GetParam().next, Window::Examine));
  SaveTo("kept.fts", 8);
  EXPECT_EQ(offered, 1) << "the data are not those of the picture any more";
}

TEST_P(EveryPreviewTool, LeavesNothingBehindWhenNothingIsChanged) {
  OpenHundreds();
  Choose("mnuFileSel_2");
  const std::string before = LastingState();
  Start();
  Apply();
  Press(*window, "cmdCancel");
  Choose("mnuFileSel_2");
  EXPECT_TRUE(LastingState() == before);
  EXPECT_THAT(WorkingFiles(), ElementsAre("0temp.bmp"));
  Start();
  Choose("mnuFileSel_8");
  EXPECT_FALSE(window->isVisible());
  EXPECT_THAT(WorkingFiles(), IsEmpty());
}

TEST_P(EveryPreviewTool, ReportsALostResultAndStaysUsable) {
  OpenHundreds();
  Apply();
  std::filesystem::remove(AppFile("temp.bmp"));
  os.Expect("FILE OPEN ERROR", HasSubstr("temp.bmp"));
  Choose("mnuFileSel_2");
  EXPECT_THAT(desk.replacedBy, IsEmpty());
  EXPECT_EQ(cv.SlotName[0], "hundreds.fit");
  EXPECT_EQ(State(), kChanged);
  Press(*window, "cmdCancel");
  EXPECT_EQ(State(), kUndone);
  os.Expect("FILE OPEN ERROR", HasSubstr("temp.bmp"));
  Press(*window, "cmdRedo");
  EXPECT_EQ(State(), kUnchanged);
  EXPECT_FALSE(cv.ImageChanged);
  // The picture itself is rendered again.
  const std::string picture = ReadFile(AppFile("0temp.bmp"));
  std::filesystem::remove(AppFile("0temp.bmp"));
  Press(*window, "cmdApply");
  EXPECT_EQ(State(), kChanged);
  EXPECT_EQ(ReadFile(AppFile("0temp.bmp")), picture);
}

TEST_P(EveryPreviewTool, CanOnlyBeLeftWithoutAPicture) {
  BitmapSpec spec{.bits = 24, .width = 6, .height = 5, .pixel = [](int, int) { return kRed; }, .palette = {}};
  OpenUserImage("red.bmp", BitmapBytes(spec));
  std::filesystem::remove(AppFile("0temp.bmp"));
  os.Expect("FILE OPEN ERROR", HasSubstr("0temp.bmp"));
  Start();
  EXPECT_EQ(State(), "mnuFileSel_2 ");
  Choose("mnuFileSel_2");
  EXPECT_THAT(desk.replacedBy, ElementsAre(Window::Examine));
}

TEST_P(EveryPreviewTool, IsAsBeforeWhereTheResultCannotBeWritten) {
  std::vector<double> noise;
  for (int i = 0; i < 320 * 240; ++i) noise.push_back(i * 7 % 251);
  OpenWith("noise.fit", FitsImage(8, 320, 240, noise));
  const std::vector<int> picture = Shown();
  {
    const FileSizeLimit full(50000);
    os.Expect("FILE OPEN ERROR", HasSubstr("temp.bmp"));
    Apply();
  }
  EXPECT_EQ(State(), kUnchanged);
  EXPECT_EQ(Shown(), picture);
  Press(*window, "cmdApply");
  EXPECT_EQ(State(), kChanged);
}

TEST_P(EveryPreviewTool, OpensFromTheViewerAndLeadsOnAndBackToIt) {
  OpenUserImage("hundreds.fit", FitsImage(16, 11, 10, Hundreds()));
  ApplicationDesk real(cv, os);
  real.Replace(Window::Examine);
  const auto press = [&](const std::string& button) {
    Press(*real.Shown(), ("Toolbar1_" + button).c_str());
    return real.Shown()->objectName().toStdString();
  };
  ASSERT_EQ(press(GetParam().key), GetParam().name);
  EXPECT_LE(real.Shown()->frameGeometry().width(), 1366);
  EXPECT_LE(real.Shown()->frameGeometry().height(), 768 - 40);
  SetAll(*real.Shown(), GetParam());
  Press(*real.Shown(), "cmdApply");
  EXPECT_NE(press(GetParam().nextKey), GetParam().name);
  EXPECT_THAT(real.Shown()->windowTitle().toStdString(), HasSubstr("~hundreds.fit"));
  ASSERT_EQ(press(GetParam().key), GetParam().name);
  ASSERT_EQ(press("corvane"), "frmExamine");
  EXPECT_EQ(Find<QComboBox>(*real.Shown(), "Combo1").currentText(), "~hundreds.fit");
  EXPECT_THAT(WorkingFiles(), ElementsAre("0temp.bmp"));
}

}  // namespace
}  // namespace corvane
