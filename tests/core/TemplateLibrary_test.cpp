// Finding the files of template tools, and finding them again.
#include <gtest/gtest.h>

#include "core/CoreImplementation.h"
#include "core/DataRoot.h"
#include "core/Instance.h"
#include "core/Log.h"
#include "core/TempFolder.h"
#include "core/Tool.h"
#include "support/FakeAdaptor.h"
#include "support/ProbeRig.h"

namespace orv::tests {
namespace {

using rws::core::LogLevel;
using Names = std::vector<std::string>;

/// A kind of the id that a file holds.
class FileKind : public ProbePlugin {
 public:
  explicit FileKind(std::string text) : id(std::move(text)) {}
  std::string GetId() override { return id; }
  std::string GetDataFolder() override { return "templates/" + id; }
  void Destroy() override { delete this; }
  std::string id;
};

rws::CCameraPlugin* MakeKind(const std::string& document, std::string& element,
                             std::string& reason) {
  if (document[0] == '<') return nullptr;  // those that come with the program
  if (document.rfind("bad", 0) != 0) return new FileKind(document);
  element = "line 1";
  reason = "it says " + document;
  return nullptr;
}

class TemplateLibrary : public testing::Test {
 protected:
  TemplateLibrary() {
    rws::core::DataRoot::Set(folder.path);
    rws::core::SetLogListener([this](LogLevel level, const std::string& text) {
      if (level == LogLevel::kError && text.find(folder.path) != std::string::npos)
        errors.push_back(text);
    });
  }
  ~TemplateLibrary() override {
    core.reset();
    rws::core::SetLogListener({});
    rws::core::DataRoot::Set("");
  }
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

  TempFolder folder;
  Names errors;
  FakeAdaptor adaptor;
  ProbePlugin compiled;
  std::unique_ptr<rws::core::CoreImplementation> core;
};

TEST_F(TemplateLibrary, DamagedFilesAndTakenIdsAreNamedAndTheOthersLoad) {
  Put("a.xml", "Alpha");
  Put("b.xml", "bad luck");
  Put("c.xml", "Probe");
  Put("d.xml", "Alpha");
  Put("e.xml", "Epsilon");
  Put("notes.txt", "bad, but no template");
  core = std::make_unique<rws::core::CoreImplementation>();
  core->SetAdaptor(&adaptor);
  core->LoadTools({&compiled}, MakeKind);
  EXPECT_EQ(Ids(), (Names{"Probe", "Alpha", "Epsilon"}));
  EXPECT_EQ(Problems(), (Names{"b.xml: line 1: it says bad luck",
                               "c.xml: template: the id Probe is taken by another tool",
                               "d.xml: template: the id Alpha is taken by another tool"}));
  ASSERT_EQ(errors.size(), 3u);
  EXPECT_NE(errors[0].find("/data/templates/b.xml: line 1: it says bad luck"), std::string::npos);
  EXPECT_TRUE(core->GetLibrary().Find("Probe")->IsPlugin());
  EXPECT_FALSE(core->GetLibrary().Find("Alpha")->IsPlugin());
}

TEST_F(TemplateLibrary, AScanFindsWhatIsNewChangedOrGoneAndKeepsToolsThatAreInUse) {
  for (const char* id : {"Kept", "Used", "Gone", "UsedGone", "Edited"})
    Put(std::string(id) + ".xml", id);
  core = std::make_unique<rws::core::CoreImplementation>();
  core->SetAdaptor(&adaptor);
  core->LoadTools({}, MakeKind);
  auto& library = core->GetLibrary();
  auto* const kept = library.Find("Kept");
  for (const char* id : {"Used", "UsedGone"}) ASSERT_TRUE(core->CreateToolFromFactory(id, id));

  Put("Edited.xml", "Renamed");
  Put("Used.xml", "Other");
  Put("AAA.xml", "Used");  // stands first, but the id is in use
  Put("New.xml", "New");
  Remove("Gone.xml");
  Remove("UsedGone.xml");
  library.Rescan();
  EXPECT_EQ(Ids(), (Names{"UsedGone", "Renamed", "Kept", "New", "Used"}));
  EXPECT_EQ(library.Find("Kept"), kept);
  ASSERT_EQ(Problems().size(), 3u);
  EXPECT_NE(Problems()[0].find("Used.xml: document: it has changed"), std::string::npos);
  EXPECT_NE(Problems()[1].find("UsedGone.xml: document: it has gone"), std::string::npos);
  EXPECT_NE(Problems()[2].find("AAA.xml: template: the id Used is taken"), std::string::npos);

  core->DeleteAllTools();
  Remove("AAA.xml");
  library.Rescan();
  EXPECT_EQ(Ids(), (Names{"Renamed", "Kept", "New", "Other"}));
  EXPECT_TRUE(Problems().empty());
}

}  // namespace
}  // namespace orv::tests
