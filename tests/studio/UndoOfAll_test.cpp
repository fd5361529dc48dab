// Whatever a scene file stores comes back by undo, and again by redo, to the byte. What is no step
// and left out: the profile that a rig counts as its own when one is saved, which goes with the
// file, and the takes that are kept.
#include <algorithm>
#include <random>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "app/session/document/SceneDocument.h"
#include "app/session/takes/KeptTakes.h"
#include "app/studio/HeadlessBrowser.h"
#include "app/studio/script/ScriptDevice.h"
#include "core/config/ConfigTree.h"
#include "core/config/ProfileRequests.h"
#include "core/host/AdaptorInterface.h"
#include "core/instances/InstanceReference.h"
#include "core/tools/Tool.h"
#include "core/windows/MainWindowIds.h"
#include "core/windows/MenuIds.h"
#include "gui/GuiMessages.h"
#include "gui/component/Tree.h"
#include "support/WindowsTest.h"
#include "support/WithoutTakes.h"
#include "unidevice/PropertyHandler.h"
#include "util/NumberText.h"

namespace orv::tests {

namespace {

using namespace rws::core;
using namespace rws::core::windows;

/// A document with the main window on it, and hands that change it at random.
class UndoOfAll : public testing::TestWithParam<std::tuple<bool, unsigned>> {
 protected:
  UndoOfAll()
      : keeps(std::get<0>(GetParam())),
        m_random(std::get<1>(GetParam())),
        document((DataRoot::Set(folder.path), std::make_unique<app::SceneDocument>())),
        core(document->GetCore()),
        browser(core, document->GetAdaptor(),
                [this](double fps) { return document->SetFrameRate(fps).why; }),
        windows(core, program) {
    document->NewScene();
    program.browser = &browser;
    AddAllWindows(windows);
    windows.GetViews().messageBox = [](auto&&...) { return int(rws::kAnswerYes); };
    main = windows.Open(WindowKind::kMain);
    core.GetPreferences().autosaveMinutes = 0;
    core.GetPreferences().countdownSeconds = 0;
  }
  ~UndoOfAll() override {
    pad->destroy();
    DataRoot::Set("");
  }

  int Random(int below) { return static_cast<int>(m_random() % static_cast<unsigned>(below)); }
  template <class List>
  auto Any(const List& list) {
    return list[Random(static_cast<int>(list.size()))];
  }
  Instance* AnyRig() {
    const auto rigs = core.List(false);
    return rigs.empty() ? nullptr : Any(rigs);
  }
  int RowOf(Instance& rig) { return core.Find(rig.GetInstanceName())->GetId(); }
  InstanceReference* AnyRow() {
    const auto rows = core.GetRows();
    return rows.empty() ? nullptr : Any(rows);
  }
  void Command(int id) { main->GetRoot()->Find(kMainMenu)->Post(gui::kMsgMenuItem, id); }

  /// The file as it would be saved now, but for kept takes.
  std::string Saved() {
    const std::string path = folder.path + "/now.glb";
    EXPECT_EQ(saveWithoutTakes(document->GetSession(), path), "");
    return folder.Read("now.glb");
  }

  // Edits, each of which tells what it was.
  std::string EditRows();
  std::string EditRig(Instance& rig);
  std::string EditInputs(Instance& rig);
  std::string EditNodes();
  std::string EditTimes();
  std::string Run();
  std::string Edit();

  const bool keeps;  ///< no rig comes or goes
  std::mt19937 m_random;
  TempFolder folder;
  NotingProgram program;
  std::unique_ptr<app::SceneDocument> document;
  CoreImplementation& core;
  app::HeadlessBrowser browser;
  Windows windows;
  Window* main = nullptr;
  app::ScriptDevice* pad = app::ScriptDevice::Plug("Pad", {2, 2, 0});
};

std::string UndoOfAll::EditRows() {
  static int made = 0;
  const auto tools = core.GetLibrary().GetTools();
  InstanceReference* row = AnyRow();
  const int deed = row && keeps ? 2 + Random(4) : row ? Random(9) : 0;
  if (deed <= 1 && core.List(false).size() < 7)
    return core.Create(Any(tools), "") ? "create" : "not created";
  if (deed <= 1 || !row) return Command(kCommandDelete), "delete";
  std::vector<int> some{row->GetId()};
  if (Random(2)) some.push_back(AnyRow()->GetId());
  core.SetSelection(some);
  switch (deed) {
    case 2:
      core.SetChecked(row, !row->IsChecked());
      return "check";
    case 3:
      return "rename " + core.Rename(row, "Row" + std::to_string(++made));
    case 4:
      return Command(kCommandGroup), "group";
    case 5:
      return Command(kCommandUngroup), "ungroup";
    case 6:
      if (core.List(false).size() < 7) Command(kCommandDuplicate);
      return "duplicate";
    case 7: {
      const InstanceReference* group = AnyRow();
      gui::MoveRequest request{some, group->IsGroup() ? group->GetId() : gui::component::Tree::kTop,
                               Random(4)};
      main->GetRoot()->Find(kRigTree)->Post(gui::kMsgMoveRequest, 0, &request);
      return "move";
    }
    default:
      if (Random(2)) Command(kCommandDelete);
      return "delete";
  }
}

std::string UndoOfAll::EditRig(Instance& rig) {
  ProfileRequests profiles(core, RowOf(rig), ProfileRequests::Kind::kConfig);
  std::vector<ConfigElement*> values;
  for (ConfigElement* element : rig.GetConfig().GetElements())
    if (element->GetId() >= 0 && !element->IsReadOnly()) values.push_back(element);
  switch (values.empty() ? 3 : Random(7)) {
    case 0:
      return "button " + std::to_string(core.PressButton(rig, Any(values)->GetId()));
    case 1:
      return "reset " + core.ResetParameters(rig, {Any(values)->GetId()}, ParameterBase::kFactory);
    case 2:
      return "factory " + profiles.LoadFactorySettings().message;
    case 3:
      return "profile " + profiles.Load(Any(profiles.List()).name).message;
    default: {
      ConfigElement* const element = Any(values);
      std::string problem;
      const double number =
          element->GetRange().min < -1e6 || element->GetRange().max > 1e6
              ? Random(1000) * 0.01
              : element->GetRange().min +
                    Random(101) * 0.01 * (element->GetRange().max - element->GetRange().min);
      const double index = Random(std::max(2, int(element->GetItems().size())));
      const bool isNumber = element->GetItems().empty() && element->GetRange().max > 1.0;
      core.EditParameter(rig, element->GetId(), util::shortText(isNumber ? number : index),
                         problem);
      return "parameter " + element->GetLabel() + " " + problem;
    }
  }
}

std::string UndoOfAll::EditInputs(Instance& rig) {
  const int count = rig.GetProperties().count();
  if (count == 0) return "no input";
  const int input = Random(count);
  switch (Random(5)) {
    case 0:
      return "unmap " + core.MapInput(rig, input, nullptr);
    case 1:
      return "response " +
             core.SetInputResponse(rig, input, {1.0 + Random(5), 2.0, 0.01 * Random(50), 0.1});
    case 2:
      return "inputs' factory " + core.LoadInputFactorySettings(rig);
    default:
      return "map " + core.MapInput(rig, input, pad->control(Random(pad->controlCount())));
  }
}

std::string UndoOfAll::EditNodes() {
  const auto nodes = browser.GetNodes();
  if (nodes.empty()) return "no node";
  const auto node = Any(nodes);
  Instance* const rig = AnyRig();
  SceneBrowser::Pose pose;
  std::string told;
  switch (Random(4)) {
    case 0:
      return "hang " + browser.MoveUnder({node.key}, Random(2) ? 0 : Any(nodes).key);
    case 1:
      return rig ? "ground " + browser.UseAsGround(RowOf(*rig), {node.key}, told) : "no rig";
    default:
      browser.GetPose(node.key, SceneBrowser::Space::kWorld, pose);
      pose.translation.x += Random(100) * 0.1;
      pose.rotation.y = Random(360);
      return "pose " + node.name + " " +
             browser.SetPose(node.key,
                             Random(2) ? SceneBrowser::Space::kWorld : SceneBrowser::Space::kParent,
                             pose);
  }
}

std::string UndoOfAll::EditTimes() {
  const double rates[] = {24.0, 25.0, 30.0, 60.0};
  if (Random(3) == 0) return "rate " + browser.SetFrameRate(rates[Random(4)]);
  rws::AdaptorInterface& host = *core.GetAdaptor();
  host.BeginUndoBlock("Range");
  host.SetTimeRange(Random(3), 5.0 + Random(10));
  host.EndUndoBlock();
  return "range";
}

std::string UndoOfAll::Run() {
  if (Random(3) == 0) return core.GetAdaptor()->SetCurrentTime(Random(20) * 0.1), "time";
  if (Random(2)) {
    core.StartRecording();
    pad->Set("Axis0", Random(100) * 0.01);
    const unsigned until = 40u + static_cast<unsigned>(Random(300));
    for (unsigned ms = 0; ms < until; ms += 20) core.OnTimer(RecordManager::kTakeTimer, ms);
    core.StopRecording();
    return "take";
  }
  if (core.BeginResimulation(core.GetAdaptor()->GetCurrentTime(), 1.0 + Random(2)) == 0) {
    for (int i = Random(2) ? 200 : 5; i > 0 && core.StepResimulation(); --i) continue;
    core.EndResimulation();
  }
  return "resimulation";
}

std::string UndoOfAll::Edit() {
  Instance* const rig = AnyRig();
  switch (rig ? Random(10) : 0) {
    case 0:
    case 1:
    case 2:
      return EditRows();
    case 3:
    case 4:
    case 5:
      return EditRig(*rig);
    case 6:
      return EditInputs(*rig);
    case 7:
      return EditNodes();
    case 8:
      return EditTimes();
    default:
      return Run();
  }
}

}  // namespace

TEST_P(UndoOfAll, GivesTheFilesOfBefore) {
  constexpr int kEdits = 60;
  for (int i = 0; i < (keeps ? 5 : 0); ++i)
    ASSERT_TRUE(core.Create(Any(core.GetLibrary().GetTools()), ""));
  core.GetAdaptor()->ClearUndoHistory();
  std::vector<std::string> files{Saved()}, deeds{"new"};
  ASSERT_EQ(document->GetUndoList().position, 0u);
  for (int i = 0; i < kEdits; ++i) {
    const std::string deed = Edit();
    const auto list = document->GetUndoList();
    const std::string file = Saved();
    ASSERT_FALSE(core.GetAdaptor()->IsUndoBlockOpen()) << deed;
    ASSERT_LE(list.position, files.size()) << deed << " is more than one step";
    if (list.position < files.size()) {
      EXPECT_TRUE(file == files.back()) << deed << " changes the file and is no step";
      files.back() = file;
    } else {
      files.push_back(file);
      deeds.push_back(deed);
    }
  }
  for (std::size_t at = files.size() - 1; at-- > 0;) {
    ASSERT_TRUE(document->GoTo(at)) << deeds[at + 1];
    const std::string now = Saved();
    ASSERT_TRUE(now == files[at]) << at << ": undoing " << deeds[at + 1];
  }
  for (std::size_t at = 1; at < files.size(); ++at) {
    ASSERT_TRUE(document->GoTo(at)) << deeds[at];
    const std::string now = Saved();
    ASSERT_TRUE(now == files[at]) << at << ": redoing " << deeds[at];
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, UndoOfAll,
                         testing::Combine(testing::Bool(), testing::Values(7u, 11u, 17u)));

}  // namespace orv::tests
