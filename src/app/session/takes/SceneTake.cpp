#include "app/session/takes/SceneTake.h"

#include <algorithm>
#include <utility>

#include "app/session/SceneRange.h"
#include "app/session/SceneSession.h"
#include "app/session/takes/KeptTakes.h"
#include "app/session/takes/RigSettings.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "core/instances/InstanceReference.h"

namespace orv::app {

SceneTake::SceneTake(SceneSession& session) : m_session(session), m_run(session.GetCore()) {}

double SceneTake::BeginOf(rws::core::CoreImplementation& core, double from,
                          const RowsToStep& only) {
  double first = kForever;
  std::vector<rws::core::Instance*> rigs;
  for (const rws::core::InstanceReference* row : only) rigs.push_back(row->GetInstance());
  for (rws::core::Instance* rig : only.empty() ? core.List(true) : rigs)
    if (rig) first = std::min(first, FirstOf(*rig));
  if (!(first < from)) return from;
  return std::max(first, core.FrameIndex(core.SnapToFrame(from)) * core.GetFrameDuration());
}

bool SceneTake::Begin(TakeWish wish, const Monitor& monitor, std::function<void()> ended) {
  auto& core = m_session.GetCore();
  if (core.IsRecording()) return false;
  const double begin = BeginOf(core, wish.from, wish.only);
  if (wish.seconds > 0.0) wish.seconds += wish.from - begin;
  wish.from = begin;
  m_punch.reset();
  m_whole = {wish.from, wish.from};
  if (wish.goOn || wish.blend > 0.0)
    m_punch = std::make_unique<Punch>(core, wish.only, LastKeyOfRigs(m_session, wish.from));
  m_run.finish = [this, wish, &monitor](const TimeSpan& performed) {
    Finish(wish, monitor, performed);
  };
  core.SetPreRoll(wish.preRoll);
  const bool began = m_run.Begin(wish.from, wish.seconds, monitor, std::move(ended), wish.only);
  core.SetPreRoll(0.0);  // it counts when a take begins, and for this one alone
  return began;
}

void SceneTake::Finish(const TakeWish& wish, const Monitor& monitor, const TimeSpan& performed) {
  m_whole = performed;
  if (!m_punch) return;
  const KeptTakes::Pause pause(m_session.GetTakes());
  if (!m_punch->Join(performed, wish.goOn, wish.blend, monitor)) return;
  if (wish.goOn) m_whole.to = std::max(performed.to, m_punch->GetEnd());
  m_session.GetTakes().TakeOverInputs(m_whole.to);
}

}  // namespace orv::app
