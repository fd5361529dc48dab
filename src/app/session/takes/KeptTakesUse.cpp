// How a take is used again.
#include <algorithm>
#include <limits>
#include <set>
#include <utility>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/Scene.h"
#include "app/session/NodePlacing.h"
#include "app/session/SceneRange.h"
#include "app/session/SceneSession.h"
#include "app/session/anyhost/RunRigs.h"
#include "app/session/anyhost/UndoBlock.h"
#include "app/session/takes/KeptTakes.h"
#include "app/session/takes/MarksUndo.h"
#include "app/session/takes/RigSettings.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "core/instances/InstanceReference.h"
#include "core/take/TakeUndo.h"
#include "core/tools/Tool.h"
#include "util/FrameGrid.h"
#include "util/NumberText.h"

namespace orv::app {

namespace headless = rws::adaptor::headless;
using rws::core::Instance;

namespace {

/// Undoable in an open block.
void DropKeys(Instance& rig) {
  for (rws::core::CoreNode* each : rig.GetNodes()) {
    auto* const known = static_cast<headless::HeadlessNode*>(each);
    headless::SceneNode* const node = known->GetSceneNode();
    if (!node || !node->HasKeys()) continue;
    known->GetAdaptor().KeepPose(*known);
    for (int path = 0; path < 3; ++path)
      node->RemoveChannel(static_cast<headless::ChannelPath>(path));
  }
}

}  // namespace

// --- using one ---

std::string KeptTakes::WhyNot(const Chain& chain) {
  auto& core = m_session.GetCore();
  if (core.IsRecording()) return "a take is running";
  if (const int missing = MissingIn(chain))
    return "take " + std::to_string(missing) + ", which it went on from, is not there";
  for (const KeptTake* take : chain) {
    if (take->rate != m_session.GetScene().GetFrameRate())
      return "it was performed at " + util::shortText(take->rate) +
             " frames per second, which is not the scene's rate";
    for (const KeptRig& rig : take->rigs) {
      const Instance* instance = core.FindInstance(rig.name);
      if (!instance) return "the rig " + rig.name + " is not in the scene";
      if (instance->GetTool()->GetDisplayId() != rig.kind)
        return rig.name + " is no " + rig.kind + " any more";
    }
  }
  return {};
}

std::string KeptTakes::PutBackRig(const KeptTake& take, const KeptRig& kept) {
  auto& core = m_session.GetCore();
  Instance* rig = core.FindInstance(kept.name);
  core.GetAdaptor()->PushUndo(new rws::core::TakeUndo(*rig, rws::core::TakeUndo::Of::kTake));
  PutBindings(*rig, kept.bindings);
  PutParameters(*rig, kept);
  if (!kept.memory.empty()) {
    core.RebuildWithData(*rig, kept.memory);
    rig = core.FindInstance(kept.name);
    if (!rig) return "the rig " + kept.name + " could not be put back to its start";
    PutParameters(*rig, kept);  // what the rig stored has some of its own
  }
  if (kept.isFirst) DropKeys(*rig);
  PutInputs(*rig, kept, kept.InputsBegin(take.range.from));
  return {};
}

/// What the rigs have made since goes as a run takes it away that begins there: a rig that is built
/// anew knows nothing of it.
bool KeptTakes::ClearFor(const KeptTake& take, const Names& rigs, const Monitor& monitor) {
  double from = take.range.from;
  RowsToStep rows;
  for (const KeptRig& kept : take.rigs) {
    if (rigs.count(kept.name) == 0) continue;
    rows.push_back(m_session.GetCore().Find(kept.name));
    if (kept.isFirst) from = std::min(from, FirstOf(*m_session.GetCore().FindInstance(kept.name)));
  }
  return rows.empty() || Resimulate(m_session.GetCore(), {from, from}, monitor, rows).began;
}

/// Those of the take's rigs.
std::string KeptTakes::PutBackStarts(const KeptTake& take, const Names& rigs,
                                     const Monitor& monitor) {
  if (!ClearFor(take, rigs, monitor)) return "its rigs could not be simulated";
  for (const KeptRig& kept : take.rigs) {
    if (rigs.count(kept.name) == 0) continue;
    const std::string problem = PutBackRig(take, kept);
    if (!problem.empty()) return problem;
    for (const auto& [name, pose] : kept.nodes) {
      headless::HeadlessNode* node = m_session.GetAdaptor().FindSceneNode(name);
      if (!node || !node->GetSceneNode()) continue;  // a round of a gun, which the run makes anew
      const PlacingResult placed =
          PlaceNode(*node, {pose.translation, pose.rotation, pose.scale}, take.range.from);
      if (!placed.error.empty()) return name + ": " + placed.error;
    }
  }
  return {};
}

bool KeptTakes::Simulate(const KeptTake& take, const Monitor& monitor) {
  RowsToStep rows;
  for (const KeptRig& rig : take.rigs) rows.push_back(m_session.GetCore().Find(rig.name));
  const RunResult run = Resimulate(m_session.GetCore(), take.range, monitor, rows);
  return run.began && !run.cancelled;
}

/// What is wrong, if anything.
std::string KeptTakes::Replay(const Chain& chain, const Monitor& monitor) {
  // All from the first: a rig that runs later stands there already, and others may look at it.
  std::vector<Names> starts;
  Names known;
  for (const KeptTake* take : chain) {
    Names now, later;
    for (const KeptRig& kept : take->rigs)
      if (kept.hasStart) (known.insert(kept.name).second ? now : later).insert(kept.name);
    std::string problem = PutBackStarts(*take, now, monitor);
    if (!problem.empty()) return problem;
    starts.push_back(std::move(later));
  }
  for (std::size_t i = 0; i < chain.size(); ++i) {
    const KeptTake* const take = chain[i];
    std::string problem = PutBackStarts(*take, starts[i], monitor);
    for (const KeptRig& kept : take->rigs)
      if (problem.empty() && !kept.hasStart) problem = PutBackRig(*take, kept);
    if (!problem.empty()) return problem;
    // To its end, though little of it may stay: a rig may look at keys behind the next one's start.
    if (!Simulate(*take, monitor)) return "its rigs could not be simulated";
  }
  return {};
}

UseResult KeptTakes::Use(int number, const Monitor& monitor) {
  UseResult result;
  FollowNames();
  const Chain chain = ChainOf(Find(number) ? number : 0);
  result.problem = chain.empty() ? "there is no take " + std::to_string(number) : WhyNot(chain);
  if (!result.problem.empty()) return result;
  auto& adaptor = *m_session.GetCore().GetAdaptor();
  UndoBlock block(adaptor, "Use Take");
  Marks before = GetMarks();
  {
    const Pause pause(*this);
    result.problem = Replay(chain, monitor);
  }
  result.cancelled = monitor.IsCancelled();
  if (result.cancelled) result.problem.clear();
  if (result.cancelled || !result.problem.empty()) return result;
  StretchRange(m_session, {chain.front()->range.from, chain.back()->range.to});
  result.rigs = NamesOf(chain);
  m_list.beside = Uncovered(GetTips(), WholeIn(chain));
  m_list.current = number;
  Edit(number)->undone = Edit(number)->retried = false;
  adaptor.PushUndo(new MarksUndo(*this, std::move(before), GetMarks()));
  block.Keep();
  result.isSame = HashOf(*FindAny(number)) == FindAny(number)->hash;
  return result;
}

}  // namespace orv::app
