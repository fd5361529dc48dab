#include "app/session/takes/SceneTake.h"

#include <algorithm>
#include <utility>

#include "app/session/SceneRange.h"
#include "app/session/SceneSession.h"
#include "app/session/takes/KeptTakes.h"
#include "core/CoreImplementation.h"

namespace orv::app {

SceneTake::SceneTake(SceneSession& session) : m_session(session), m_run(session.GetCore()) {}

bool SceneTake::Begin(const TakeWish& wish, const Monitor& monitor, std::function<void()> ended) {
  auto& core = m_session.GetCore();
  if (core.IsRecording()) return false;
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
