// What the rigs of a take let the user's hands feel.
#pragma once

#include <vector>

#include "unidevice/ForcePlayer.h"

namespace orv::unidevice {
class Property;
}

namespace orv::rws::core {

class Instance;
class Preferences;

/// Plays what rigs say of their inputs, as strong as the preferences want it, which at first is not
/// at all. In takes alone: a resimulation has no hands. Nothing of it goes back into a rig.
class ForceFeedback {
 public:
  /// What was said before a take counts no more.
  void Begin(const std::vector<Instance*>& rigs);
  /// To be called behind each frame, and between frames as often as one likes, which is what keeps
  /// a force up. `seconds` of a clock that runs on.
  void Play(const Preferences& preferences, const std::vector<Instance*>& rigs, double seconds,
            bool isFrame);
  void Stop(const std::vector<Instance*>& rigs);

 private:
  const std::vector<unidevice::Property*>& ListInputs(const std::vector<Instance*>& rigs);

  unidevice::ForcePlayer m_player;
  std::vector<unidevice::Property*> m_inputs;  ///< a list for reuse
  bool m_plays = false;
  double m_last = 0.0;  ///< s
};

}  // namespace orv::rws::core
