// The configuration tree: ids, values as numbers and texts, profiles.
#include "core/config/ConfigTree.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <tuple>

#include "support/GermanLocale.h"
#include "util/xml/Tag.h"

namespace orv::tests {
namespace {

using rws::core::ConfigElement;
using rws::core::ConfigTree;
using util::xml::Tag;

/// One element of each kind, and a label that two groups share.
class Rig : public rws::CInterface::Callback {
 public:
  Rig() {
    tree.Begin();
    tree.BeginGroup("Motion", "");
    tree.AddCheckBox("Hide Helpers", "", &hide, this);
    tree.AddSpinner("Multiplier", "", &multiplier, -10.0, 10.0, 0.1, 3, this);
    tree.AddSpinnerInt("Steps", "", &steps, 0, 2000000, 1, this);
    tree.BeginGroup("Names", "");
    tree.AddTextBox("Title", "", &title, this);
    tree.AddLabel("Behind the title");
    tree.EndGroup();
    tree.AddComboBox("Mode", "", {"Off", "Slow", "2"}, &mode, this);
    tree.AddButton("Reset", "", this);
    tree.EndGroup();
    tree.BeginGroup("Camera", "");
    tree.AddSpinner("Multiplier", "", &second, 0.0, 1e300, 0.1, 3, this);
    tree.EndGroup();
  }
  void OnCallback(std::string name) override { calls.push_back(name); }

  std::string Read(const std::string& text) {
    Tag profile("");
    EXPECT_EQ(profile.loadText(text), 0) << text;
    calls.clear();
    return tree.Read(profile);
  }

  ConfigTree tree;
  bool hide = false;
  double multiplier = 1.0;
  int steps = 3;
  std::string title = "None";
  int mode = 0;
  double second = 0.5;
  std::vector<std::string> calls;
};

TEST(ConfigTree, AProfileIsWrittenInThePresentFormWhateverTheLocale) {
  const GermanLocale german;
  Rig rig;
  rig.hide = true;
  rig.multiplier = 3.6;
  rig.steps = 1234567;
  rig.title = " <a> & \"b\"\n";
  rig.mode = 2;
  Tag profile("configprofile");
  rig.tree.Write(profile);
  EXPECT_EQ(profile.toText("", "\n"), R"(<configprofile version="2.0">
<group id="-1" label="Motion">
<item id="0" label="Hide Helpers">1</item>
<item id="1" type="blob" label="Multiplier">zczMzMzMDEA=</item>
<item id="2" label="Steps">1234567</item>
<group id="-1" label="Names">
<item id="3" type="text" label="Title">&#32;&#60;a> &#38; "b"&#10;</item>
</group>
<item id="4" label="Mode">2</item>
</group>
<group id="-1" label="Camera">
<item id="6" type="blob" label="Multiplier">AAAAAAAA4D8=</item>
</group>
</configprofile>
)");

  for (const double value : {0.1, -0.0, 5e-324, 1.0 / 3.0, 9.999999999999998}) {
    rig.multiplier = value;
    Tag saved("configprofile");
    rig.tree.Write(saved);
    Rig other;
    EXPECT_EQ(other.Read(saved.toText()), "");
    EXPECT_EQ(std::signbit(other.multiplier), std::signbit(value));
    EXPECT_EQ(std::tie(other.multiplier, other.steps, other.title, other.mode, other.hide),
              std::tie(rig.multiplier, rig.steps, rig.title, rig.mode, rig.hide));
    EXPECT_EQ(other.calls, (std::vector<std::string>{"Hide Helpers", "Multiplier", "Steps", "Title",
                                                     "Mode", "Multiplier"}));
  }
}

TEST(ConfigTree, ItemsGoByIdAndWithoutOneByLabelWithinTheirGroup) {
  Rig rig;
  EXPECT_EQ(rig.Read(R"(<configprofile><group label="Elsewhere">
      <item id="6" label="Wrong">0.25</item><item id="99" label="Steps">9</item>
      <item id="x" label="Steps">9</item><item label="Steps">9</item>
      <item id="5" label="Reset">1</item></group></configprofile>)"),
            "");
  EXPECT_EQ(rig.second, 0.25);
  EXPECT_EQ(rig.steps, 3);
  EXPECT_EQ(rig.calls, std::vector<std::string>{"Multiplier"});

  EXPECT_EQ(rig.Read(R"(<p><group label="Camera"><item label="Multiplier">0.75</item></group>
      <group label="Motion"><item label="Multiplier"> -2 </item><item label="Title">Deep</item>
      </group><group label="Names"><item label="Steps">8</item></group></p>)"),
            "");
  EXPECT_EQ(std::tuple(rig.second, rig.multiplier, rig.title), std::tuple(0.75, -2.0, "Deep"));
  EXPECT_EQ(rig.steps, 3);  // it stands outside of the group "Names"
}

TEST(ConfigTree, AnItemThatIsNoValueIsRefusedAloneAndNumbersAreClamped) {
  Rig rig;
  // A NaN, an infinity, blobs of a wrong length and alphabet, texts that are no numbers.
  for (const char* value :
       {"AAAAAAAA+H8=", "AAAAAAAA8H8=", "AAAA", "AAAAAAAANEA", "?AAAAAAANEA="}) {
    const std::string problem = rig.Read(std::string(R"(<p><item id="1" type="blob">)") + value +
                                         R"(</item><item id="2">8</item></p>)");
    EXPECT_NE(problem.find("Multiplier"), std::string::npos) << value;
    EXPECT_EQ(rig.multiplier, 1.0) << value;
    EXPECT_EQ(rig.calls, std::vector<std::string>{"Steps"}) << value;
  }
  EXPECT_NE(rig.Read(R"(<p><item id="1">nan</item><item id="2">1e999</item><item id="0">maybe</item>
      <item id="4">Fast</item><item id="1">0,5</item><item id="1"/></p>)"),
            "");
  EXPECT_TRUE(rig.calls.empty());
  EXPECT_EQ(rig.Read(R"(<p><item id="1">11</item><item id="2">-5</item><item id="4">17</item>
      <item id="6" type="blob">AAAAAAAA8L8=</item></p>)"),
            "");
  EXPECT_EQ(std::tuple(rig.multiplier, rig.steps, rig.mode, rig.second),
            std::tuple(10.0, 0, 2, 0.0));
}

TEST(ConfigTree, SmallIncrementsAddUpInASpinnerOfWholeNumbers) {
  Rig rig;
  ConfigElement& steps = *rig.tree.Find(2);
  for (int i = 0; i < 11; ++i) EXPECT_TRUE(steps.SetNumber(steps.GetNumber() + 0.3));
  EXPECT_NEAR(steps.GetNumber(), 6.3, 1e-12);
  EXPECT_EQ(steps.GetValueText(), "6");
  rig.steps = 40;  // the rig's own change wins
  EXPECT_EQ(steps.GetNumber(), 40.0);
  steps.SetNumber(std::numeric_limits<double>::max());
  EXPECT_EQ(rig.steps, 2000000);
  for (const double bad : {std::nan(""), -std::numeric_limits<double>::infinity()})
    EXPECT_FALSE(steps.SetNumber(bad));
  EXPECT_EQ(rig.steps, 2000000);
  EXPECT_FALSE(rig.tree.Find(5)->SetNumber(1.0));
}

TEST(ConfigTree, TextsSetValuesAndTellWhatTheyClamped) {
  const GermanLocale german;
  // The element, a text, whether it is taken, the value afterwards and a part of the problem.
  const std::tuple<int, const char*, bool, const char*, const char*> cases[] = {
      {0, "true", true, "1", ""},
      {0, "OFF", true, "0", ""},
      {0, "2", false, "0", "\"2\""},
      {1, " 2.5 ", true, "2.5", ""},
      {1, "2,5", false, "2.5", "\"2,5\" is no number"},
      {1, "nan", false, "2.5", "\"nan\""},
      {1, "-11", true, "-10", "-11 lies outside of -10 to 10: -10 is taken instead"},
      {2, "1e3", true, "1000", ""},
      {2, "2.5", false, "1000", "no whole number"},
      {2, "99999999999", true, "2000000", "lies outside"},
      {3, " kept ", true, " kept ", ""},
      {4, "Slow", true, "Slow", ""},
      {4, "0", true, "Off", ""},
      {4, "2", true, "2", ""},
      {4, "9", true, "2", "no item 9"},
      {4, "Fast", false, "2", "Off, Slow, 2"},
      {5, "1", false, "", "a button has no value"},
  };
  Rig rig;
  for (const auto& [id, text, accepted, value, part] : cases) {
    std::string problem = "stale";
    ConfigElement& element = *rig.tree.Find(id);
    EXPECT_EQ(element.SetValueText(text, problem), accepted) << text;
    EXPECT_EQ(element.GetValueText(), value) << text;
    EXPECT_EQ(problem.empty(), accepted && !*part) << problem;
    EXPECT_NE(problem.find(part), std::string::npos) << problem;
  }
  EXPECT_TRUE(rig.calls.empty());
  rig.multiplier = 0.1 + 0.2;
  EXPECT_EQ(rig.tree.Find(1)->GetValueText(), "0.30000000000000004");
  rig.tree.Find(5)->Apply();
  EXPECT_EQ(rig.calls, std::vector<std::string>{"Reset"});
}

}  // namespace
}  // namespace orv::tests
