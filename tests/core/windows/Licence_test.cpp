// Licence and newer versions, as the windows tell of them.
#include "core/CoreMessages.h"
#include "core/windows/MainWindowIds.h"
#include "core/windows/MenuIds.h"
#include "core/windows/SmallWindowIds.h"
#include "gui/GuiMessages.h"
#include "gui/componentinterface/Label.h"
#include "gui/componentinterface/Tree.h"
#include "support/WindowsTest.h"
#include "util/xml/Base64.h"

namespace orv::tests {

using namespace rws::core::windows;
using gui::componentinterface::Label;

class Licence : public WindowsTest {
 protected:
  void Run(const std::string& arguments) {
    const std::string script = std::string(ORV_SOURCE_DIR) + "/scripts/sign_licence.py ";
    ASSERT_EQ(std::system(("python3 " + script + arguments).c_str()), 0) << arguments;
  }
  static std::string TextOf(Window& window, int id) {
    const Label* label = window.GetRoot()->Get<Label>(id);
    return label ? label->GetText() : "no label";
  }
  void Click(Window& window, int id) { window.GetRoot()->Find(id)->Post(gui::kMsgClicked); }
};

TEST_F(Licence, WindowTellsEachStateAndWhatItLeavesOut) {
  const int car = Add("4WheelerExt", "Car");
  Run("keys " + folder.path + "/key > " + folder.path + "/public");
  const auto key = util::xml::decodeBase64(folder.Read("public").substr(0, 44));
  const std::string file = rws::core::Licensing::GetPath();
  Run("sign --key " + folder.path +
      "/key --licensee 'Studio A' --features camera,rail --until "
      "2027-12-31 --id 17 -o " +
      file);
  const std::string good = folder.Read("licence.txt");
  std::string day = "2027-01-01";
  core.SetLicensing(
      rws::core::Licensing(std::string(key.begin(), key.end()), [&day] { return day; }));

  Window& window = *Begin().Open(WindowKind::kLicence);
  const auto expect = [&](const std::string& told, bool isSigned) {
    Click(window, kLicenceReload);
    QApplication::processEvents();
    EXPECT_NE(TextOf(window, kLicenceText).find(told), std::string::npos)
        << TextOf(window, kLicenceText);
    EXPECT_NE(TextOf(window, kLicenceText).find(file), std::string::npos) << "which file";
    EXPECT_EQ(window.GetRoot()->Find(kLicenceFields)->IsVisible(), isSigned);
    EXPECT_NE(TextOf(window, kLicenceKinds).find("4-Wheeler"), std::string::npos);
  };
  expect("valid until 2027-12-31", true);
  EXPECT_EQ(TextOf(window, kLicenceOwner), "Studio A");
  EXPECT_EQ(TextOf(window, kLicenceFeatures), "camera, rail");
  EXPECT_EQ(TextOf(window, kLicenceKinds).find("MotionFilterCam"), std::string::npos);
  EXPECT_EQ(Unnamed(*window.GetWidget()), std::vector<std::string>{});
  day = "2028-01-01";
  expect("ended on 2027-12-31", true);
  EXPECT_NE(TextOf(window, kLicenceKinds).find("MotionFilterCam"), std::string::npos);
  std::string tampered = good;
  tampered[tampered.find("Studio A") + 7] = 'B';
  folder.Write("licence.txt", tampered);
  expect("changed after it was made", false);
  std::filesystem::remove(file);
  expect("there is no licence", false);

  // The rig is there, and is neither taken nor made again; both tell why.
  std::vector<std::string> told;
  windows->GetViews().messageBox = [&told](Windows&, const std::string&, const std::string& text,
                                           unsigned) { return told.push_back(text), 1; };
  EXPECT_EQ(core.StartRecording(), rws::core::kNotLicensed);
  EXPECT_EQ(core.CreateTool("4WheelerExt"), "");
  ASSERT_EQ(told.size(), 2u);
  for (const std::string& text : told) EXPECT_NE(text.find(file), std::string::npos) << text;
  EXPECT_NE(core.FindRow(car), nullptr);
}

TEST_F(Licence, ANewerVersionStandsInTheMainWindow) {
  Window& main = *Begin().Open(WindowKind::kMain);
  auto& bar = *main.GetRoot()->Find(kMainNotice);
  auto& link = *main.GetRoot()->Find(kMainNoticeLink);
  EXPECT_FALSE(bar.IsVisible());
  const auto tell = [this](bool newer, const std::string& version, const std::string& page,
                           const std::string& problem) {
    core.GetMessages().Tell(rws::core::UpdateChecked{newer, version, page, problem});
  };
  tell(true, "9.1", "https://example.com/9.1", "");
  EXPECT_TRUE(bar.IsVisible() && link.IsVisible());
  EXPECT_NE(TextOf(main, kMainNoticeText).find("9.1"), std::string::npos);
  tell(false, "7.0", "", "");
  EXPECT_TRUE(bar.IsVisible() && !link.IsVisible());
  tell(false, "", "", "no answer");
  EXPECT_NE(TextOf(main, kMainNoticeText).find("no answer"), std::string::npos);
  Click(main, kMainNoticeClose);
  EXPECT_FALSE(bar.IsVisible());
  // A program without a server shows nothing of it.
  ASSERT_FALSE(core.IsOffered());
  Window& preferences = *windows->Open(WindowKind::kPreferences);
  for (const QWidget* widget : preferences.GetWidget()->findChildren<QWidget*>())
    EXPECT_FALSE(widget->accessibleName().contains("newer"));
}

TEST_F(Licence, AToolTellsOfItselfUnderTheMouse) {
  Window& main = *Begin().Open(WindowKind::kMain);
  auto& root = *main.GetRoot();
  const auto& tree = *root.Get<gui::componentinterface::Tree>(kToolTree);
  const auto* category = tree.FindRow(1);
  ASSERT_TRUE(category && category->childCount() > 1);
  const auto title = [&root] { return root.Get<Label>(kProductTitle)->GetText(); };
  const std::string before = title();
  const auto& hovered = *category->child(1);
  root.Find(kToolTree)->Post(gui::kMsgHovered, hovered.key);
  EXPECT_EQ(title(), hovered.row.cells[0].text);
  root.Find(kToolTree)->Post(gui::kMsgHovered, 0);
  EXPECT_EQ(title(), before);
}

}  // namespace orv::tests
