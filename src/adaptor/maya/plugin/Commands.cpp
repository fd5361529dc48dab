#include "adaptor/maya/plugin/Commands.h"

#include <maya/MGlobal.h>

#include <algorithm>
#include <string>

#include "adaptor/maya/MayaAdaptorInterface.h"
#include "adaptor/maya/plugin/CommandArguments.h"
#include "adaptor/maya/plugin/PluginSession.h"
#include "adaptor/maya/plugin/SelfTest.h"
#include "adaptor/maya/probes/Features.h"
#include "core/CoreImplementation.h"
#include "core/config/ProfileRequests.h"
#include "core/instances/InstanceReference.h"
#include "util/AtomicFile.h"
#include "util/NumberText.h"

namespace orv::rws::adaptor::maya {

namespace {

constexpr char kInputProfileSuffix[] = ".oip";
constexpr char kCarKind[] = "4WheelerExt";

core::CoreImplementation* CoreOfPlugin() {
  PluginSession* const session = PluginSession::Get();
  return session ? &session->GetCore() : nullptr;
}

/// For what changes rigs.
core::CoreImplementation* CoreForEdit() {
  if (PluginSession* const session = PluginSession::Get()) session->BeforeEdit();
  return CoreOfPlugin();
}

MStatus RefuseUsage(const char* text) {
  const MStatus status(MStatus::kFailure);
  status.perror(text);
  return status;
}

void ShowRefusal(const std::string& text) {
  if (!text.empty()) MGlobal::displayError(text.c_str());
}

/// Whether the feature may be used; says why not.
bool MayUse(Feature feature) {
  ShowRefusal(Features::instance().Why(feature));
  return Features::instance().IsOn(feature);
}

std::string FileNameOf(const std::string& path) {
  const std::size_t slash = path.find_last_of("/\\");
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

bool IsInputProfile(const std::string& path) {
  const std::string suffix = kInputProfileSuffix;
  return path.size() > suffix.size() &&
         path.compare(path.size() - suffix.size(), suffix.size(), suffix) == 0;
}

std::string ProfileOf(const std::string& path) {
  const std::string file = FileNameOf(path);
  for (const char* suffix : {kInputProfileSuffix, ".ocp"}) {
    const std::string end = suffix;
    if (file.size() > end.size() && file.compare(file.size() - end.size(), end.size(), end) == 0)
      return file.substr(0, file.size() - end.size());
  }
  return file;
}

/// Loads the profile into the rig; what went wrong is told.
void LoadProfileFile(core::CoreImplementation& core, const std::string& tool,
                     const std::string& path) {
  core::InstanceReference* const row = core.Find(tool);
  if (!row) return ShowRefusal("there is no rig \"" + tool + "\"");
  using core::ProfileRequests;
  ProfileRequests requests(
      core, row->GetId(),
      IsInputProfile(path) ? ProfileRequests::Kind::kInputs : ProfileRequests::Kind::kConfig);
  const std::string name = ProfileOf(path);
  const auto known = requests.List();
  const bool isKnown = std::any_of(known.begin(), known.end(),
                                   [&name](const auto& entry) { return entry.name == name; });
  if (!isKnown && path != name) {
    const core::ProfileResult imported = requests.Import(path, false);
    if (!imported.Done()) return ShowRefusal(imported.message);
  }
  const core::ProfileResult loaded = requests.Load(name);
  if (!loaded.Done()) ShowRefusal(loaded.message);
}

/// Steps all frames before it returns.
void ResimulateInBatch(core::CoreImplementation& core, double from, double to) {
  if (core.BeginResimulation(from, to) != 0) return ShowRefusal("the resimulation could not begin");
  while (core.StepResimulation()) continue;
  core.EndResimulation();
}

MStatus ChangeSlowFactor(int by) {
  core::CoreImplementation* const core = CoreOfPlugin();
  constexpr int kMost = 10;
  if (core && core->IsRecording() && !core->IsResimulating())
    core->SetSlowFactorIndex(std::clamp(core->GetSlowFactorIndex() + by, 1, kMost));
  return MStatus::kSuccess;
}

MStatus CreateTool(const std::string& kind) {
  core::CoreImplementation* const core = CoreForEdit();
  std::string made;
  if (core && MayUse(Feature::kTools)) made = core->CreateTool(kind);
  MPxCommand::setResult(MString(made.c_str()));
  return MStatus::kSuccess;
}

/// The host takes it for a MPxCommand.
template <class Command>
void* Make() {
  return static_cast<MPxCommand*>(new Command);
}

}  // namespace

MStatus StartOrvelRigwrightStudioCmd::doIt(const MArgList&) {
  PluginSession* const session = PluginSession::Get();
  if (session && MayUse(Feature::kWindows))
    session->GetCore().ShowMainWindow(session->GetAdaptor().GetMainWindow());
  return MStatus::kSuccess;
}

MStatus OrvelUndoWrapper::doIt(const MArgList& args) {
  m_id = NumberOfId(args, -1);
  return MStatus::kSuccess;
}

MStatus OrvelUndoWrapper::Step(bool back) const {
  PluginSession* const session = PluginSession::Get();
  if (!session || !MayUse(Feature::kUndo)) return MStatus::kSuccess;
  session->GetAdaptor().StepHistory(m_id, back);
  session->GetAdaptor().RefreshViews();
  return MStatus::kSuccess;
}

MStatus OrvelUndoWrapper::undoIt() {
  return Step(true);
}

MStatus OrvelUndoWrapper::redoIt() {
  return Step(false);
}

MStatus OrvelStartAnimationCmd::doIt(const MArgList&) {
  PluginSession* const session = PluginSession::Get();
  if (!session || !MayUse(Feature::kTakes)) return MStatus::kSuccess;
  session->BeforeEdit();
  if (!session->HasWindows()) {
    ShowRefusal("a take needs a user: there is none where the host runs without windows");
    return MStatus::kSuccess;
  }
  if (const auto why = session->GetCore().WhyNoTake())
    ShowRefusal(why.filled());
  else
    session->GetCore().StartRecording();
  return MStatus::kSuccess;
}

MStatus OrvelStopAnimationCmd::doIt(const MArgList&) {
  if (core::CoreImplementation* const core = CoreOfPlugin()) core->StopRecording();
  return MStatus::kSuccess;
}

MStatus OrvelReSimulateCmd::doIt(const MArgList&) {
  PluginSession* const session = PluginSession::Get();
  if (!session || !MayUse(Feature::kTakes)) return MStatus::kSuccess;
  session->BeforeEdit();
  core::CoreImplementation& core = session->GetCore();
  if (const auto why = core.WhyNoTake()) {
    ShowRefusal(why.filled());
    return MStatus::kSuccess;
  }
  double start = 0.0, end = 0.0;
  session->GetAdaptor().GetTimeRange(start, end);
  if (session->HasWindows())
    core.Resimulate(session->GetAdaptor().GetCurrentTime(), end);
  else
    ResimulateInBatch(core, start, end);
  return MStatus::kSuccess;
}

MStatus OrvelLoadProfileCmd::doIt(const MArgList& args) {
  const std::vector<std::string> values = ValuesOfName(args);
  if (values.empty())
    return RefuseUsage(
        "Missing tool name. Usage: OrvelLoadProfileCmd -name \"nameOfTool\" \"profileFileName\" to "
        "load.");
  if (values.size() < 2)
    return RefuseUsage(
        "Missing profile name. Usage: OrvelLoadProfileCmd -name \"nameOfTool\" "
        "\"profileFileName\" to load.");
  if (core::CoreImplementation* const core = CoreForEdit())
    LoadProfileFile(*core, values[0], values[1]);
  return MStatus::kSuccess;
}

MStatus OrvelCreateToolCmd::doIt(const MArgList& args) {
  const std::vector<std::string> values = ValuesOfName(args);
  return CreateTool(values.empty() ? std::string() : values[0]);
}

MStatus OrvelSelectToolCmd::doIt(const MArgList& args) {
  const std::vector<std::string> values = ValuesOfName(args);
  int on = 0;
  if (values.size() < 2 || !util::parseNumber(values[1], on))
    return RefuseUsage("Usage: OrvelSelectToolCmd -name \"nameOfTool\" 1 to select.");
  core::CoreImplementation* const core = CoreOfPlugin();
  if (!core) return MStatus::kSuccess;
  if (on != 0) {
    if (!core->SelectTool(values[0])) ShowRefusal("there is no rig \"" + values[0] + "\"");
    return MStatus::kSuccess;
  }
  std::vector<int> rows = core->GetSelection();
  if (const core::InstanceReference* row = core->Find(values[0]))
    rows.erase(std::remove(rows.begin(), rows.end(), row->GetId()), rows.end());
  core->SetSelection(rows);
  return MStatus::kSuccess;
}

MStatus OrvelIncSlowFactorCmd::doIt(const MArgList&) {
  return ChangeSlowFactor(1);
}

MStatus OrvelDecSlowFactorCmd::doIt(const MArgList&) {
  return ChangeSlowFactor(-1);
}

MStatus OrvelCreate4WheelerExtCmd::doIt(const MArgList&) {
  return CreateTool(kCarKind);
}

MStatus OrvelCloneToolCmd::doIt(const MArgList& args) {
  const std::vector<std::string> values = ValuesOfName(args);
  if (values.empty()) return RefuseUsage("Usage: OrvelCloneToolCmd -name \"nameOfTool\".");
  core::CoreImplementation* const core = CoreForEdit();
  std::string name, problem;
  if (core && MayUse(Feature::kTools)) name = core->CloneTool(values[0], problem);
  ShowRefusal(problem);
  setResult(MString(name.c_str()));
  return MStatus::kSuccess;
}

MStatus OrvelRenameToolCmd::doIt(const MArgList& args) {
  const std::vector<std::string> values = ValuesOfName(args);
  if (values.size() < 2)
    return RefuseUsage("Usage: OrvelRenameToolCmd -name \"nameOfTool\" \"newName\".");
  core::CoreImplementation* const core = CoreForEdit();
  if (!core) return MStatus::kSuccess;
  core::InstanceReference* const row = core->Find(values[0]);
  ShowRefusal(row ? core->Rename(row, values[1]) : "there is no rig \"" + values[0] + "\"");
  return MStatus::kSuccess;
}

MStatus OrvelDeleteToolCmd::doIt(const MArgList& args) {
  const std::vector<std::string> values = ValuesOfName(args);
  if (values.empty()) return RefuseUsage("Usage: OrvelDeleteToolCmd -name \"nameOfTool\".");
  core::CoreImplementation* const core = CoreForEdit();
  if (core && MayUse(Feature::kTools) && !core->DeleteTool(values[0]))
    ShowRefusal("there is no rig \"" + values[0] + "\"");
  return MStatus::kSuccess;
}

MStatus OrvelSelfTestCmd::doIt(const MArgList&) {
  const SelfTestResult result = RunSelfTest();
  if (result.report.empty()) {
    ShowRefusal(result.told);
    return MStatus::kFailure;
  }
  MGlobal::displayInfo(result.told.c_str());
  setResult(MString(result.report.c_str()));
  return MStatus::kSuccess;
}

const std::vector<CommandRow>& AllCommands() {
  static const std::vector<CommandRow> rows{
      {"OrvelShowUICmd", &Make<StartOrvelRigwrightStudioCmd>,
       "registerCommand StartOrvelRigwrightStudioCmd failed", 9},
      {"OrvelUndoWrapperII", &Make<OrvelUndoWrapper>, "registerCommand OrvelUndoWrapperII failed",
       9},
      {"OrvelStartAnimationCmd", &Make<OrvelStartAnimationCmd>,
       "registerCommand OrvelStartAnimationCmd failed", 6},
      {"OrvelStopAnimationCmd", &Make<OrvelStopAnimationCmd>,
       "registerCommand OrvelStopAnimationCmd failed", 7},
      // The text without "Cmd" is the one that users have looked up ever since.
      {"OrvelReSimulateCmd", &Make<OrvelReSimulateCmd>, "registerCommand OrvelReSimulate failed",
       9},
      {"OrvelLoadProfileCmd", &Make<OrvelLoadProfileCmd>,
       "registerCommand OrvelLoadProfileCmd failed", 9},
      {"OrvelCreateToolCmd", &Make<OrvelCreateToolCmd>, "registerCommand OrvelCreateToolCmd failed",
       9},
      {"OrvelSelectToolCmd", &Make<OrvelSelectToolCmd>, "registerCommand OrvelSelectToolCmd failed",
       8},
      {"OrvelIncSlowFactorCmd", &Make<OrvelIncSlowFactorCmd>,
       "registerCommand OrvelIncSlowFactorCmd failed", 0},
      {"OrvelDecSlowFactorCmd", &Make<OrvelDecSlowFactorCmd>,
       "registerCommand OrvelDecSlowFactorCmd failed", 1},
      {"OrvelCreate4WheelerExtCmd", &Make<OrvelCreate4WheelerExtCmd>,
       "registerCommand OrvelCreate4WheelerExtCmd failed", 2},
      {"OrvelCloneToolCmd", &Make<OrvelCloneToolCmd>, "registerCommand OrvelCloneToolCmd failed",
       3},
      {"OrvelRenameToolCmd", &Make<OrvelRenameToolCmd>, "registerCommand OrvelRenameToolCmd failed",
       4},
      {"OrvelDeleteToolCmd", &Make<OrvelDeleteToolCmd>, "registerCommand OrvelDeleteToolCmd failed",
       5},
  };
  return rows;
}

const CommandRow& SelfTestCommand() {
  static const CommandRow row{"OrvelSelfTestCmd", &Make<OrvelSelfTestCmd>,
                              "registerCommand OrvelSelfTestCmd failed", 9};
  return row;
}

}  // namespace orv::rws::adaptor::maya
