#include "core/take/ForceFeedback.h"

#include "core/instances/Instance.h"
#include "core/services/Preferences.h"
#include "unidevice/Property.h"

namespace orv::rws::core {

namespace {

constexpr double kPause = 0.01;  ///< s, between frames

}  // namespace

const std::vector<unidevice::Property*>& ForceFeedback::ListInputs(
    const std::vector<Instance*>& rigs) {
  m_inputs.clear();
  for (Instance* rig : rigs)
    for (int i = 0; i < rig->GetProperties().count(); ++i)
      m_inputs.push_back(rig->GetProperties().property(i));
  return m_inputs;
}

void ForceFeedback::Begin(const std::vector<Instance*>& rigs) {
  for (unidevice::Property* input : ListInputs(rigs)) input->feel = {};
}

void ForceFeedback::Play(const Preferences& preferences, const std::vector<Instance*>& rigs,
                         double seconds, bool isFrame) {
  if (!isFrame && seconds - m_last < kPause) return;
  m_last = seconds;
  const unidevice::ForceGains gains{preferences.steeringForce / 100.0,
                                    preferences.roadForce / 100.0, preferences.kickForce / 100.0};
  if (!gains.any()) return Stop(rigs);
  m_plays = true;
  m_player.play(ListInputs(rigs), gains, seconds);
}

void ForceFeedback::Stop(const std::vector<Instance*>& rigs) {
  if (!m_plays) return;
  m_plays = false;
  m_player.stop(ListInputs(rigs));
}

}  // namespace orv::rws::core
