// Windows that only listen: what they show is what the core holds, whatever happens.
#include <algorithm>
#include <cmath>
#include <map>
#include <random>
#include <set>
#include <sstream>
#include <thread>

#include "core/CoreMessages.h"
#include "core/RowActions.h"
#include "support/CoreTest.h"
#include "unidevice/Property.h"
#include "unidevice/TestDevice.h"

namespace orv::tests {
namespace {

using namespace rws::core;

/// What a window shows of one rig.
struct ShownRig {
  std::string name, profile, values, inputs;

  void ReadValues(Instance& from) {
    values.clear();
    for (const ConfigElement* element : from.GetConfig().GetElements())
      values += element->GetValueText() + " ";
  }
  void ReadInputs(Instance& from) {
    inputs.clear();
    for (const auto& [key, property] : from.GetProperties().entries) {
      util::xml::Tag tag("");
      property->save(tag);
      inputs += tag.toText("", "") + (property->control ? " bound " : " ");
    }
  }
};

/// All that a window may show, read from the core.
struct Shown {
  explicit Shown(CoreImplementation& core)
      : rows(core.GetLayout()),
        selection(core.GetSelection().begin(), core.GetSelection().end()),
        state(core.GetRunState()),
        slow(core.GetSlowFactorIndex()),
        time(core.GetAdaptor()->GetCurrentTime()) {
    for (Instance* rig : core.List(false)) ReadRig(*rig);
    for (Tool* tool : core.GetLibrary().GetTools()) ReadProfiles(*tool);
  }
  void ReadRig(Instance& from) {
    ShownRig& rig = rigs[from.GetIdentity()];
    rig.name = from.GetInstanceName();
    rig.profile = from.GetCurrentProfile();
    rig.ReadValues(from);
    rig.ReadInputs(from);
  }
  void ReadProfiles(Tool& tool) {
    std::string& names = profiles[tool.GetDisplayId()];
    names.clear();
    for (const std::string& name : tool.GetConfigProfiles().GetNames()) names += name + ", ";
    for (const std::string& name : tool.GetInputProfiles().GetNames()) names += name + "; ";
  }
  std::string Text() const {
    std::ostringstream text;
    text << static_cast<int>(state) << " at " << time << " slow " << slow << " selected";
    for (const int row : selection) text << " " << row;
    for (const auto& [tool, names] : profiles) text << "\n" << tool << ": " << names;
    for (const auto& [id, rig] : rigs)
      text << "\n"
           << id << " " << rig.name << ", " << rig.profile << ": " << rig.values << rig.inputs;
    Write(rows, text << "\n");
    return text.str();
  }
  static void Write(const RowLayout& row, std::ostream& text) {
    text << row.id << row.label << (row.checked ? "+(" : "-(");
    for (const RowLayout& below : row.rows) Write(below, text);
    text << (row.isGroup ? ")" : "|");
  }

  RowLayout rows;
  std::map<int, ShownRig> rigs;
  std::set<int> selection;
  std::map<std::string, std::string> profiles;
  RunState state;
  int slow;
  double time;
};

/// Reads the core once, when it is connected, and from then on what it is told.
class Window : public util::MessageNode {
 public:
  explicit Window(CoreImplementation& core) : MessageNode("Window"), m_core(core), shown(core) {
    connect(&m_core);
  }
  void Reopen() {
    disconnect(&m_core);
    shown = Shown(m_core);
    connect(&m_core);
  }

  void onMessage(util::Message& message, bool broadcast) override {
    if (message.id < 0) return;
    EXPECT_TRUE(broadcast && message.origin == &m_core && message.target == this);
    ++messages[message.id];
    if (const auto* line = NewsIn<LogLine>(message)) log.push_back(line->text);
    FollowRows(message);
    FollowRigs(message);
    if (const auto* run = NewsIn<RunStateChanged>(message)) shown.state = run->state;
    if (const auto* slow = NewsIn<SlowFactorChanged>(message)) shown.slow = slow->index;
    if (const auto* time = NewsIn<TimeChanged>(message)) shown.time = time->time;
    if (const auto* list = NewsIn<ProfileListChanged>(message))
      if (Tool* const tool = m_core.FindKind(list->tool)) shown.ReadProfiles(*tool);
  }

  void Check() const { ASSERT_EQ(shown.Text(), Shown(m_core).Text()); }

  std::vector<std::string> log;
  std::map<int, int> messages;  ///< how many, by id

 private:
  void FollowRows(const util::Message& message) {
    if (const auto* row = NewsIn<RowCreated>(message)) {
      RowLayout layout{row->row, row->isGroup, row->isGroup ? row->label : "", row->checked, {}};
      Place(layout, row->parent, row->index);
      if (row->isGroup) return;
      shown.rigs[row->row].name = row->label;
      if (Instance* const rig = m_core.FindByIdentity(row->row)) shown.ReadRig(*rig);
    } else if (const auto* gone = NewsIn<RowDeleted>(message)) {
      EXPECT_TRUE(shown.rows.PlaceOf(gone->row).TakeOut().rows.empty());
      shown.rigs.erase(gone->row);
      shown.selection.erase(gone->row);
    } else if (const auto* moved = NewsIn<RowMoved>(message)) {
      Place(shown.rows.PlaceOf(moved->row).TakeOut(), moved->parent, moved->index);
    } else if (const auto* check = NewsIn<RowChecked>(message)) {
      shown.rows.PlaceOf(check->row).Row().checked = check->checked;
    } else if (const auto* name = NewsIn<RowRenamed>(message)) {
      RowLayout& layout = shown.rows.PlaceOf(name->row).Row();
      (layout.isGroup ? layout.label : shown.rigs.at(name->row).name) = name->label;
    } else if (const auto* select = NewsIn<RowSelected>(message)) {
      if (select->selected)
        shown.selection.insert(select->row);
      else
        shown.selection.erase(select->row);
    }
  }
  void Place(RowLayout row, int parent, int index) {
    RowLayout& group = parent == 0 ? shown.rows : shown.rows.PlaceOf(parent).Row();
    ASSERT_LE(static_cast<std::size_t>(index), group.rows.size());
    RowLayout::Place{&group.rows, static_cast<std::size_t>(index)}.Insert(std::move(row));
  }

  void FollowRigs(const util::Message& message) {
    if (const auto* values = NewsIn<ParametersChanged>(message)) {
      Instance* const rig = m_core.FindByIdentity(values->row);
      if (rig && shown.rigs.count(values->row)) shown.rigs[values->row].ReadValues(*rig);
    } else if (const auto* inputs = NewsIn<InputsChanged>(message)) {
      Instance* const rig = m_core.FindByIdentity(inputs->row);
      if (rig && shown.rigs.count(inputs->row)) shown.rigs[inputs->row].ReadInputs(*rig);
    } else if (NewsIn<DevicesChanged>(message)) {
      for (auto& [id, rig] : shown.rigs)
        if (Instance* const from = m_core.FindByIdentity(id)) rig.ReadInputs(*from);
    } else if (const auto* profile = NewsIn<ProfileChanged>(message)) {
      if (shown.rigs.count(profile->row)) shown.rigs[profile->row].profile = profile->profile;
    }
  }

  CoreImplementation& m_core;

 public:
  Shown shown;
};

/// Does things to the core, and to the other windows, while messages are on their way.
class Meddler : public util::MessageNode {
 public:
  Meddler(CoreImplementation& core, std::vector<Window*> windows)
      : MessageNode("Meddler"), m_core(core), m_windows(std::move(windows)) {}
  void onMessage(util::Message& message, bool) override {
    if (message.id < 0) return;
    const auto dice = static_cast<unsigned>(m_random());
    if (dice % 5 == 0) DoWithRows(m_core, dice / 5 % kRowActions, dice / 64);
    if (dice % 7 == 0) m_windows[dice / 7 % m_windows.size()]->Reopen();
    if (const auto* row = NewsIn<RowCreated>(message); row && dice % 3 == 0)
      m_core.Delete(m_core.FindRow(row->row), true);
    if (dice % 11 == 0) {
      disconnect(&m_core);
      connect(&m_core);
    }
  }

 private:
  CoreImplementation& m_core;
  std::vector<Window*> m_windows;
  std::mt19937 m_random{5};
};

/// A host that tells the core of its time.
class TellingAdaptor : public FakeAdaptor {
 public:
  void SetCurrentTime(double t) override {
    FakeAdaptor::SetCurrentTime(t);
    if (core) core->UpdateTime(t);
  }
  CoreImplementation* core = nullptr;
};

class Messages : public DataRootTest {
 protected:
  Messages() {
    Start({&plugin});
    core->SetAdaptor(&host);
    host.core = core.get();
    for (int i = 0; i < 3; ++i) core->CreateTool("Probe");
  }
  ~Messages() override { core.reset(); }

  void Take(unsigned frames) {
    core->StartRecording();
    for (unsigned i = 0; i < frames; ++i) core->OnTimer(RecordManager::kTakeTimer, i * 40);
    core->StopRecording();
  }
  /// One step of a session.
  void Do(unsigned dice) {
    const unsigned kind = dice % 22;
    dice /= 22;
    const std::vector<Instance*> rigs = core->List(false);
    if (kind < kRowActions) DoWithRows(*core, kind, dice);
    if (rigs.empty()) return;
    Instance& rig = *rigs[dice % rigs.size()];
    const int element = static_cast<int>(dice / 8 % 3);
    const std::string value = element == 2 ? "1" : std::to_string(dice % 50);
    const int input = static_cast<int>(dice % 3);
    std::string problem;
    if (kind == 8) core->EditParameter(rig, element, value, problem);
    if (kind == 9 || kind == 10) {
      core->BeginEdit(rig, element, problem);
      for (int i = 1; i < 4 && element < 2; ++i)
        core->DragEdit(rig, element, std::to_string(dice % (10 * i)), problem);
      if (dice % 4 == 0) core->CancelEdit();
      if (dice % 4 == 1) core->EndEdit();  // or it is left open
    }
    if (kind == 11) core->MapInput(rig, input, pad && dice % 4 ? pad->control(input % 2) : nullptr);
    if (kind == 12) core->SetInputResponse(rig, input, {dice % 3 * 0.5, 1.0, 0.25, 0.0});
    if (kind == 13)
      core->LoadProfile(rig.GetInstanceName(), dice % 2 ? kStartProfile : kFactorySettings);
    if (kind == 14) core->LoadInputProfile(rig, kStartProfile);
    if (kind == 15) Take(dice % 5);
    if (kind == 16) {
      core->Resimulate(0.0, 0.2);
      while (core->StepResimulation()) {
      }
      core->EndResimulation();
    }
    if (kind == 17) core->SetSelection({rig.GetIdentity(), rigs.front()->GetIdentity(), 12345});
    if (kind == 18) core->SetSlowFactorIndex(static_cast<int>(dice % 4));
    if (kind == 19) core->PressButton(rig, 3);
    if (kind == 20) {
      Tool& tool = *rig.GetTool();
      const std::string name = "P" + std::to_string(dice % 3);
      tool.GetInputProfiles().SaveStartProfile(rig.GetProperties());
      if (dice % 2)
        tool.GetConfigProfiles().Save(name, rig.GetConfig(), true);
      else
        tool.GetConfigProfiles().Delete(name, true);
    }
    if (kind == 21) Plug(dice % 3 != 0);
  }
  /// Plugs the pad in or out, under an open input dialog.
  void Plug(bool in) {
    const DevicePolling::Wake dialog(*core);
    if (in && !pad) PlugIn();
    if (!in) util::destroy(std::exchange(pad, nullptr));
    core->OnTimer(DevicePolling::kTimer, 0);
  }

  void PlugIn() {
    pad = pads.plug("Pad", {"Axis", "Axis"});
    pad->hardware = {0.8, 0.8};
  }

  TellingAdaptor host;
  unidevice::TestDriver pads{"pads"};
  unidevice::TestDevice* pad = nullptr;
};

TEST_F(Messages, AWindowThatOnlyListensShowsWhatTheCoreHoldsAtEveryStepOfASession) {
  plugin.ways.couples = true;
  Window first(*core), second(*core);
  Meddler meddler(*core, {&first, &second});
  std::mt19937 random(7);
  const auto check = [&](const std::string& what, int step) {
    SCOPED_TRACE(what + " " + std::to_string(step));
    for (const Window* window : {&first, &second}) ASSERT_NO_FATAL_FAILURE(window->Check());
  };
  Plug(true);
  for (int i = 0; i < 600; ++i) {
    if (i == 300) meddler.connect(core.get());
    const auto dice = static_cast<unsigned>(random());
    if (dice % 13 == 0)
      dice % 2 ? core->Undo() : core->Redo();
    else
      Do(dice / 13);
    ASSERT_NO_FATAL_FAILURE(check("step of kind " + std::to_string(dice / 13 % 22), i));
  }
  meddler.disconnect(core.get());
  core->EndEdit();
  int steps = 0;
  for (; core->Undo(); ++steps) ASSERT_NO_FATAL_FAILURE(check("undo", steps));
  EXPECT_GT(steps, 150);
  EXPECT_TRUE(core->GetRows().empty());
  // A host may run its queue by itself too.
  for (int i = 0; i % 2 ? core->Redo() : host.HostRedo(); ++i)
    ASSERT_NO_FATAL_FAILURE(check("redo", i));
  for (int id = RowCreated::kId; id < LogLine::kId; ++id)
    EXPECT_GT(second.messages[id] + (id == ToolsChanged::kId), 0) << id;
  core->DeleteAllTools();
  check("end", 0);
}

TEST_F(Messages, AreFewAndFollowTheRequest) {
  std::string problem;
  for (const char* name : {"A", "B"}) core->CreateGroup(name, problem);
  for (Instance* rig : core->List(false))
    core->MoveInto(core->FindRow(rig->GetIdentity()), core->FindRow("A"));
  Take(0);  // the rigs are devices too, which came
  Window window(*core);
  const auto count = [&](auto request) {
    window.messages.clear();
    request();
    window.Check();
    int sum = 0;
    for (const auto& [id, times] : window.messages) sum += times;
    return sum;
  };
  EXPECT_EQ(count([&] { core->MoveBefore(core->FindRow("Probe_01"), nullptr); }), 1);
  EXPECT_EQ(count([&] { core->MoveBefore(core->FindRow("B"), core->FindRow("A")); }), 1);
  EXPECT_EQ(count([&] { core->DeleteGroup(core->FindRow("B")); }), 1);
  EXPECT_EQ(count([&] { core->DeleteGroup(core->FindRow("A")); }), 4) << "three rigs move out";
  EXPECT_EQ(count([&] { core->Undo(); }), 4);
  EXPECT_EQ(count([&] { core->LoadProfile("Probe_01", kFactorySettings); }), 2)
      << "values and name, not one a value";
  EXPECT_EQ(count([&] { Take(0); }), 2 + 3) << "both ends, and each rig's values";
  const int few = count([&] { Take(4); });
  EXPECT_EQ(count([&] { Take(8); }), few + 4) << "the time of each tick and no more";
  EXPECT_EQ(count([&] { core->RescanTools(); }), 1);

  window.log.clear();
  std::thread([] { LogEntry(LogLevel::kInfo, "from afar"); }).join();
  EXPECT_TRUE(window.log.empty());
  LogEntry(LogLevel::kDebug, "from here");
  std::thread([] { LogEntry(LogLevel::kInfo, "later"); }).join();
  QCoreApplication::sendPostedEvents();
  EXPECT_EQ(window.log, (std::vector<std::string>{"from afar", "from here", "later"}));
}

TEST_F(Messages, ADragIsOneStepOrNoneHoweverItEnds) {
  plugin.ways.couples = true;
  Instance& rig = *core->FindInstance("Probe_03");  // made last
  const ProbeRig& probe = *plugin.last;
  const int gain = rig.GetConfig().FindAll("Gain")[0]->GetId();
  const int count = rig.GetConfig().FindAll("Count")[0]->GetId();
  std::string problem;
  const auto steps = [&] { return std::count(host.events.begin(), host.events.end(), "end"); };
  const auto drag = [&](const char* value) { return core->DragEdit(rig, gain, value, problem); };
  core->EditParameter(rig, count, "500", problem);
  const auto before = steps();

  EXPECT_FALSE(drag("3"));
  ASSERT_TRUE(core->BeginEdit(rig, gain, problem));
  for (int i = 1; i <= 100; ++i) ASSERT_TRUE(drag(std::to_string(i * 0.25).c_str()));
  EXPECT_FALSE(drag("much"));
  EXPECT_TRUE(drag("1e9") && !problem.empty());
  EXPECT_FALSE(core->DragEdit(rig, count, "5", problem)) << "the edit is of another";
  core->EndEdit();
  EXPECT_EQ(steps(), before + 1);
  EXPECT_TRUE(probe.gain == 100.0 && probe.count == 100);
  ASSERT_TRUE(core->Undo());
  EXPECT_TRUE(probe.gain == 1.0 && probe.count == 500) << "what the callback set comes back too";
  ASSERT_TRUE(core->Redo());
  EXPECT_TRUE(probe.gain == 100.0 && probe.count == 100);
  ASSERT_TRUE(core->Undo());

  const auto undone = steps();
  for (const char* end : {"1", "4"}) {  // where it began, and where a cancel ends it
    core->BeginEdit(rig, gain, problem);
    drag("9");
    drag(end);
    if (*end == '4') core->CancelEdit();
    core->EndEdit();
    EXPECT_TRUE(probe.gain == 1.0 && probe.count == 500 && steps() == undone);
  }

  core->BeginEdit(rig, gain, problem);  // no window ever ends these
  drag("20");
  core->StartRecording();
  EXPECT_FALSE(drag("30"));
  core->BeginEdit(rig, gain, problem);
  EXPECT_TRUE(drag("31"));
  core->OnTimer(RecordManager::kTakeTimer, 0);
  core->StopRecording();
  EXPECT_FALSE(drag("32"));
  EXPECT_FALSE(host.IsUndoBlockOpen());
  ASSERT_TRUE(core->Undo());
  EXPECT_EQ(probe.gain, 20.0) << "the edit in the take is part of it";
  ASSERT_TRUE(core->Undo());
  EXPECT_EQ(probe.gain, 1.0);
  core->BeginEdit(rig, gain, problem);
  drag("40");
  core->DeleteTool("Probe_03");
  EXPECT_FALSE(host.IsUndoBlockOpen());
  ASSERT_TRUE(core->Undo());
  EXPECT_EQ(plugin.last->gain, 40.0);
  ASSERT_TRUE(core->Undo());
  EXPECT_EQ(plugin.last->gain, 1.0) << "of the rig that was built anew";
  core->BeginEdit(*core->FindInstance("Probe_03"), gain, problem);
  core->DragEdit(*core->FindInstance("Probe_03"), gain, "50", problem);
  core->DropAllRows();  // another scene is opened
  EXPECT_FALSE(host.IsUndoBlockOpen());
}

TEST_F(Messages, DevicesStayAwakeWhileAnyDialogShowsThemAndAreFoundAsTheyAreMapped) {
  Instance& rig = *core->FindInstance("Probe_01");
  const int index = 2;
  unidevice::Property& input = *rig.GetProperties().property(index);
  PlugIn();
  const auto poll = [&] { core->OnTimer(DevicePolling::kTimer, 0); };
  poll();
  EXPECT_EQ(pad->awake, false);
  {
    const DevicePolling::Wake one(*core);
    EXPECT_TRUE(pad->awake && core->IsTimerRunning(DevicePolling::kTimer));
    {
      const DevicePolling::Wake other(*core);
      EXPECT_EQ(core->MapInput(rig, index, pad->control(1)), "");
    }
    Take(2);
    EXPECT_TRUE(pad->awake) << "the take is over, the dialog is not";
    const int polls = pad->polls;
    core->StartRecording();
    poll();
    EXPECT_EQ(pad->polls, polls) << "a take polls by itself";
    core->StopRecording();
    pad->destroy();
    poll();
    EXPECT_EQ(input.control, nullptr);
    PlugIn();
    poll();
    EXPECT_EQ(input.control, pad->control(1));
  }
  EXPECT_TRUE(!pad->awake && !core->IsTimerRunning(DevicePolling::kTimer));

  // A mapping is undone for the rig that an undone deletion has built anew, and for a new pad.
  EXPECT_EQ(core->MapInput(rig, index, nullptr), "");
  EXPECT_EQ(core->SetInputResponse(rig, index, {2.0, 1.0, 0.0, 0.5}), "");
  EXPECT_NE(core->SetInputResponse(rig, index, {NAN, 1.0, 0.0, 0.5}), "");
  EXPECT_NE(core->MapInput(rig, 7, nullptr), "");
  EXPECT_NE(core->LoadInputProfile(rig, "Absent"), "");
  EXPECT_EQ(core->LoadInputProfile(rig, kStartProfile), "");
  core->DeleteTool("Probe_01");
  pad->destroy();
  PlugIn();
  const auto again = [&]() -> unidevice::Property& {
    return *core->FindInstance("Probe_01")->GetProperties().property(index);
  };
  ASSERT_TRUE(core->Undo());
  EXPECT_EQ(again().multiplier, 1.0);
  ASSERT_TRUE(core->Undo());
  EXPECT_EQ(again().multiplier, 2.0);
  ASSERT_TRUE(core->Undo() && core->Undo());
  EXPECT_EQ(again().control, pad->control(1));
  EXPECT_EQ(again().offset, 0.0);
  for (int i = 0; i < 4; ++i) ASSERT_TRUE(core->Redo());
  EXPECT_EQ(core->FindInstance("Probe_01"), nullptr);
  Instance& other = *core->FindInstance("Probe_02");
  core->BeginResimulation(0.0, 1.0);
  EXPECT_NE(core->MapInput(other, index, pad->control(0)), "") << "the run has them";
  core->EndResimulation();
  EXPECT_EQ(other.GetProperties().property(index)->control, nullptr);
}

}  // namespace
}  // namespace orv::tests
