// Finding the files of template tools, and finding them again.
#include <algorithm>

#include "support/CoreTest.h"

namespace orv::tests {
namespace {

using Names = std::vector<std::string>;

/// A kind of the id that a file holds.
struct FileKind : ProbePlugin {
  explicit FileKind(const std::string& text) {
    id = text.substr(0, text.find(' '));
    folder = "templates/" + id;
  }
  void Destroy() override { delete this; }
};

rws::CCameraPlugin* MakeKind(const std::string& document, std::string& element,
                             std::string& reason) {
  if (document[0] == '<') return nullptr;  // those that come with the program
  if (document.rfind("bad", 0) != 0) return new FileKind(document);
  element = "line 1";
  reason = "it says " + document;
  return nullptr;
}

class TemplateLibrary : public DataRootTest {
 protected:
  void Put(const std::string& file, const std::string& text) {
    folder.Write("data/templates/" + file, text);
  }
  void Remove(const std::string& file) {
    std::filesystem::remove(folder.path + "/data/templates/" + file);
  }
  Names Ids() {
    Names ids;
    for (auto* tool : core->GetLibrary().GetTools()) ids.push_back(tool->GetDisplayId());
    return ids;
  }
  Names Problems() {
    Names reasons;
    for (const auto& problem : core->GetLibrary().GetProblems())
      if (problem.file.rfind(folder.path, 0) == 0)
        reasons.push_back(std::filesystem::path(problem.file).filename().string() + ": " +
                          problem.element + ": " + problem.reason);
    return reasons;
  }
};

TEST_F(TemplateLibrary, DamagedFilesAndTakenIdsAreNamedAndTheOthersLoad) {
  Put("a.xml", "Alpha");
  Put("b.xml", "bad luck");
  Put("c.xml", "Probe");
  Put("d.xml", "Alpha");
  Put("e.xml", "Epsilon");
  Put("notes.txt", "bad, but no template");
  Start({&plugin}, MakeKind);
  EXPECT_EQ(Ids(), (Names{"Probe", "Alpha", "Epsilon"}));
  EXPECT_EQ(Problems(), (Names{"b.xml: line 1: it says bad luck",
                               "c.xml: template: the id Probe is taken by another tool",
                               "d.xml: template: the id Alpha is taken by another tool"}));
  const auto logged = [&](const std::string& text) {
    return std::count_if(errors.begin(), errors.end(), [&](const std::string& error) {
      return error.find(folder.path + text) != std::string::npos;
    });
  };
  EXPECT_EQ(logged("/data/templates/b.xml: line 1: it says bad luck"), 1);
  EXPECT_EQ(logged(""), 3);
  EXPECT_TRUE(core->GetLibrary().Find("Probe")->IsPlugin());
  EXPECT_FALSE(core->GetLibrary().Find("Alpha")->IsPlugin());
}

TEST_F(TemplateLibrary, AScanFindsWhatIsNewChangedOrGoneAndKeepsToolsThatAreInUse) {
  for (const char* id : {"Kept", "Used", "Gone", "UsedGone", "Edited", "Improved", "Broken"})
    Put(std::string(id) + ".xml", id);
  Start({}, MakeKind);
  auto& library = core->GetLibrary();
  auto* const kept = library.Find("Kept");
  auto* const improved = library.Find("Improved");
  for (const char* id : {"Used", "UsedGone", "Improved", "Broken"})
    ASSERT_TRUE(core->CreateToolFromFactory(id, id));
  const auto stays = [](const std::string& id) {
    return "it has gone or holds another tool, and rigs of the kind " + id +
           " are open: the tool stays until they are closed";
  };

  Put("Edited.xml", "Renamed");
  Put("Used.xml", "Other");
  Put("Improved.xml", "Improved ");  // the same kind, read anew
  Put("Broken.xml", "bad luck");
  Put("AAA.xml", "Used");  // stands first, but the id is in use
  Put("New.xml", "New");
  Remove("Gone.xml");
  Remove("UsedGone.xml");
  core->StartRecording();
  EXPECT_FALSE(core->RescanTools());
  core->StopRecording();
  ASSERT_TRUE(core->RescanTools());
  EXPECT_EQ(Ids(),
            (Names{"UsedGone", "Broken", "Renamed", "Improved", "Kept", "New", "Used", "Other"}));
  EXPECT_EQ(library.Find("Kept"), kept);
  EXPECT_EQ(Problems(),
            (Names{"Broken.xml: line 1: it says bad luck", "Used.xml: document: " + stays("Used"),
                   "UsedGone.xml: document: " + stays("UsedGone"),
                   "AAA.xml: template: the id Used is taken by another tool"}));
  // A rig that stands goes on with its tool, one made from now on gets the new.
  EXPECT_EQ(core->Find("Improved")->GetInstance()->GetTool(), improved);
  EXPECT_NE(library.Find("Improved"), improved);
  EXPECT_EQ(core->CreateToolFromFactory("Improved", "Second")->GetTool(), library.Find("Improved"));
  core->UpdateTime(1.0);

  core->DeleteAllTools();
  Remove("AAA.xml");
  Remove("Broken.xml");
  ASSERT_TRUE(core->RescanTools());
  EXPECT_EQ(Ids(), (Names{"Renamed", "Improved", "Kept", "New", "Other"}));
  EXPECT_TRUE(Problems().empty());
}

}  // namespace
}  // namespace orv::tests
