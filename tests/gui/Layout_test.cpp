// From documents to trees, and messages up a tree; no toolkit.
#include "gui/Layout.h"

#include <gtest/gtest.h>

#include <clocale>
#include <map>

#include "gui/NumberField.h"
#include "gui/TextSearch.h"
#include "gui/Texts.h"
#include "gui/Window.h"
#include "gui/background/Gradient_Linear.h"
#include "gui/component/Border.h"
#include "gui/component/Button.h"
#include "gui/component/ComboBox.h"
#include "gui/component/Dialog.h"
#include "gui/component/Label.h"
#include "gui/component/List.h"
#include "gui/component/Slider.h"
#include "gui/component/Spinner.h"
#include "gui/component/Tree.h"
#include "support/GermanLocale.h"

namespace orv::tests {

using namespace gui;
namespace ci = gui::componentinterface;

TEST(Layout, ReadsEveryElementAndAttribute) {
  Window window;
  ASSERT_TRUE(window.root);
  ASSERT_EQ(window.log.size(), 1u) << "only the unknown element is told";
  EXPECT_NE(window.log[0].find("hologram"), std::string::npos);
  EXPECT_FALSE(window.root->Find(71)) << "an unknown element takes its children along";
  EXPECT_FALSE(window.root->Find(kNoId));

  // Depth first: the spinner stands before the label of the same number.
  EXPECT_STREQ(window.root->Find(12)->GetElement(), "spinner");
  EXPECT_EQ(&window.root->Find(12)->GetRoot(), window.root.get());
  EXPECT_FALSE(window.root->Get<ci::Tree>(12)) << "of another type";

  const auto& list = static_cast<component::List&>(*window.root->child(2));
  EXPECT_TRUE(list.IsHorizontal()) << "written with a large H";
  EXPECT_EQ(list.GetSpacing(), 12);
  const auto& border = *window.root->Get<component::Border>(61);
  EXPECT_EQ(border.GetBorderStyle(), BorderStyle::kSunken);
  const Padding& padding = border.GetPadding();
  EXPECT_EQ((std::vector<int>{padding.left, padding.top, padding.right, padding.bottom}),
            (std::vector<int>{4, 2, 4, 2}));

  const Component& view = *window.root->Find(63);
  EXPECT_EQ(view.GetAttributes().maxWidth, kNoLimit);
  EXPECT_TRUE(view.GetAttributes().fixedWidth && view.GetAttributes().fixedHeight);
  EXPECT_FALSE(view.GetAttributes().tabStop);
  EXPECT_TRUE(view.HasFlag(kInitialFocus) && view.HasFlag(40) && !view.HasFlag(1));
  EXPECT_EQ(window.Get<ci::ComboBox>(26).GetItems().size(), 3u);
  EXPECT_EQ(window.Get<ci::ComboBox>(26).GetSelectedId(), 5);
  EXPECT_EQ(window.Get<ci::Tree>(51).GetColumns()[2].width, 60);
  ASSERT_TRUE(window.root->Find(51)->GetPopup());
  EXPECT_EQ(window.root->Find(51)->GetPopup()->Find(511)->shortcut, "Del");
  const auto* gradient =
      dynamic_cast<const background::Gradient_Linear*>(window.root->Find(36)->GetBackground());
  ASSERT_TRUE(gradient);
  EXPECT_EQ(gradient->stops[1].color, (Rgba{30, 70, 130, 255}));
  EXPECT_TRUE(window.root->Find(36)->GetActiveBackground());
  EXPECT_EQ(window.Get<ci::Label>(38).GetShownText(),
            "See the <a href=\"help:cars\">help on cars</a>.");
}

TEST(Layout, PrefersTheUsersDocumentUnlessItCantBeUsed) {
  const std::string carried = "<dialog label=\"carried\"/>";
  const std::map<std::string, const char*> damaged{
      {"<dialog label=", "broken"},
      {"<tree/>", "root"},
      {"<list/>", "must be"},
      {std::string("<dialog>") +
           [] {
             std::string deep;
             for (int i = 0; i < kMaxLayoutDepth; ++i) deep = "<list>" + deep + "</list>";
             return deep;
           }() +
           "</dialog>",
       "deeper than 64"},
      {"<dialog>" +
           [] {
             std::string many;
             for (int i = 0; i < kMaxLayoutElements; ++i) many += "<label/>";
             return many;
           }() +
           "</dialog>",
       "more than 10000"},
  };
  std::string user;
  std::vector<std::string> log;
  LayoutServices services;
  services.readFactory = [&](const std::string& path, std::string& bytes) {
    bytes = carried;
    return path == "/a.xml";
  };
  services.readUser = [&](const std::string&, std::string& bytes) {
    bytes = user;
    return !user.empty();
  };
  services.log = [&](const std::string& line) { log.push_back(line); };
  Layout layout(services);
  EXPECT_EQ(layout.Load("/a.xml")->GetLabel(), "carried");
  EXPECT_FALSE(layout.Load("/b.xml"));
  ASSERT_EQ(log.size(), 1u) << "an absent document is named";
  EXPECT_NE(log[0].find("/b.xml"), std::string::npos);

  user = "<dialog label=\"mine\" glow=\"yes\"/>";
  EXPECT_EQ(layout.Load("/a.xml")->GetLabel(), "carried") << "read once";
  layout.Forget();
  log.clear();
  for (int i = 0; i < 3; ++i) EXPECT_EQ(layout.Load("/a.xml")->GetLabel(), "mine");
  ASSERT_EQ(log.size(), 1u) << "an unknown attribute is told once";
  EXPECT_NE(log[0].find("glow"), std::string::npos);

  for (const auto& [document, reason] : damaged) {
    user = document;
    layout.Forget();
    log.clear();
    EXPECT_EQ(layout.Load("/a.xml")->GetLabel(), "carried") << reason;
    ASSERT_EQ(log.size(), 1u);
    EXPECT_NE(log[0].find("/a.xml"), std::string::npos);
    EXPECT_NE(log[0].find(reason), std::string::npos) << log[0];
  }
}

/// An element of somebody else's, in a table of his own.
class Beacon : public component::Label {
 public:
  using Label::Label;
};
struct Table : util::FactoryList<Component> {
  Table() { add(&factory); }
  ElementFactory<Beacon> factory{"list"};
};

TEST(Layout, BuildsWithATableThatItIsGiven) {
  Table table;
  Layout layout({}, &table);
  const ComponentPtr root = layout.LoadText("<list label=\"x\"><label/></list>", "test");
  ASSERT_TRUE(dynamic_cast<Beacon*>(root.get()));
  EXPECT_EQ(root->childCount(), 0) << "the table knows no label";
}

TEST(Layout, TellsRowsApartByTheirRoots) {
  Window window("<dialog><list id=\"1\"/><button id=\"7\"/></dialog>");
  LayoutServices services;
  services.readFactory = [](const std::string&, std::string& bytes) {
    bytes = "<list type=\"horizontal\"><label id=\"5\"/><button id=\"7\"/></list>";
    return true;
  };
  Layout rows(services);
  std::vector<Component*> roots;
  for (int i = 0; i < 3; ++i) {
    roots.push_back(rows.Instantiate("/row.xml", *window.root->Find(1), 0));
    roots.back()->SetRow(i + 1);
  }
  EXPECT_EQ(window.root->Find(1)->child(2), roots[0]) << "put in front of the others";
  int row = 0;
  window.listener.then = [&](util::Message& message) { row = SourceOf(message)->GetRow(); };
  roots[1]->Get<ci::Button>(7)->Click();
  EXPECT_EQ(row, 2);
  window.Get<ci::Button>(7).Click();
  EXPECT_EQ(row, 3) << "the first in the window is the last row's";
}

TEST(Layout, TellsAListenerOnceOnTheWayUpAndLetsItEndTheSource) {
  Window window(
      "<dialog id=\"1\"><list id=\"2\"><button id=\"3\"/><checkbox id=\"4\"/></list></dialog>");
  window.listener.connect(window.root->Find(2));
  window.listener.connect(window.root->Find(3));
  window.listener.ids.clear();
  window.Get<ci::Button>(3).Click();
  EXPECT_EQ(window.listener.Take(), std::vector<int>{kMsgClicked});
  EXPECT_EQ(kMsgClicked, 0x4142);

  // Whoever is told of a tick may do away with the box, its list or the whole window.
  window.listener.then = [&](util::Message& message) { SourceOf(message)->parent()->Retire(); };
  EXPECT_FALSE(window.root->Find(4)->Post(kMsgChecked, 1));
  EXPECT_FALSE(window.root->Find(4));
  EXPECT_FALSE(HasRetired()) << "nothing is being delivered any more";
  window.listener.then = [&](util::Message&) { window.root.reset(); };
  EXPECT_FALSE(window.root->Post(kMsgShown));
}

TEST(Layout, ReadsAndShowsNumbersAsTheyAre) {
  for (const bool german : {false, true}) {
    std::unique_ptr<GermanLocale> locale;
    if (german) locale = std::make_unique<GermanLocale>();
    double value = 0.0;
    for (const char* text : {"1,5", "1.5", " 1.5 ", "1,5 kg", "+1.5", "15e-1"}) {
      value = 0.0;
      EXPECT_TRUE(ReadNumber(text, "kg", value)) << text;
      EXPECT_EQ(value, 1.5) << text;
    }
    EXPECT_TRUE(ReadNumber("\u22122", "", value));
    EXPECT_EQ(value, -2.0);
    for (const char* text : {"", "1.000,5", "1,000.5", "abc", "1 2", "nan", "inf", "--1", "1e999"})
      EXPECT_FALSE(ReadNumber(text, "", value)) << text;
    EXPECT_EQ(ShownNumber(0.00005, 2), "0.00005");
    EXPECT_EQ(ShownNumber(1250.5, 2), "1250.50");
    EXPECT_EQ(ShownNumber(0.1 + 0.2, 2), "0.30") << "noise is not shown";
    EXPECT_EQ(ShownNumber(2.0 / 3.0, 2), "0.666667");
    EXPECT_EQ(ShownNumber(1e18, 2), "1e+18");
    EXPECT_EQ(ShownNumber(1e-8, 0), "0.00000001");
    EXPECT_EQ(ShownNumber(-0.0, 1), "0.0");
  }
  // What a user may have typed is shown so that it reads back as the same number.
  for (int digits = 1; digits < 100000000; digits = digits * 7 + 1)
    for (int power = -8; power <= 9; ++power) {
      const double typed =
          std::strtod((std::to_string(digits) + "e" + std::to_string(power)).c_str(), nullptr);
      double back = 0.0;
      ASSERT_TRUE(ReadNumber(ShownNumber(typed, 2), "", back)) << ShownNumber(typed, 2);
      EXPECT_EQ(back, typed);
    }
  double sum = 0.0;
  for (int i = 0; i < 10; ++i) sum = AddSteps(sum, 0.1, 1.0);
  EXPECT_EQ(sum, 1.0);
}

TEST(Layout, TranslatesWhatADocumentSaysAndNotWhatCodeSets) {
  SetTranslator([](const std::string& text) { return "[" + text + "]"; });
  SetTooltipTexts([](int id) { return "tip " + std::to_string(id); });
  Window window(
      "<dialog label=\"Title\"><label id=\"1\">Text</label><combobox id=\"2\"><item id=\"1\" "
      "label=\"One\"/></combobox><button id=\"3\" tooltipid=\"7\"/></dialog>");
  EXPECT_EQ(window.root->GetShownLabel(), "[Title]");
  EXPECT_EQ(window.Get<ci::ComboBox>(2).GetText(), "[One]");
  EXPECT_EQ(window.root->Find(3)->GetShownTooltip(), "[tip 7]");
  window.root->Find(3)->SetEnabled(false, "Open a scene first.");
  EXPECT_EQ(window.root->Find(3)->GetShownTooltip(), "Open a scene first.");
  window.Get<ci::Label>(1).SetText("Car_001");
  EXPECT_EQ(window.Get<ci::Label>(1).GetShownText(), "Car_001");
  EXPECT_EQ(Translate("%1 of %2", {"3", "%1"}), "[3 of %1]");
  SetTranslator(nullptr);
  SetTooltipTexts(nullptr);
  EXPECT_EQ(window.root->GetShownLabel(), "Title");
  EXPECT_TRUE(HoldsText("\u00dcbersetzung", "\u00fcBER"));
}

TEST(Layout, ResolvesImagesByTheNearestAlias) {
  Window window("<dialog><button id=\"1\"/></dialog>");
  window.root->SetPathAlias("[images]", {"/user", ":/carried"});
  EXPECT_EQ(window.root->Find(1)->ResolvePath("[images]/a.png"),
            (std::vector<std::string>{"/user/a.png", ":/carried/a.png"}));
  EXPECT_EQ(window.root->Find(1)->ResolvePath("/x/a.png"), std::vector<std::string>{"/x/a.png"});
}

}  // namespace orv::tests
