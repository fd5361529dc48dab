// What work on a scene has dropped of what it held.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "adaptor/headless/SceneNode.h"

namespace orv::rws::core {
class CoreImplementation;
}

namespace orv::app {

/// How many, of what and where, such as "500 keys of 2 nodes from 10.04 to 20 s (Cam_FollowCam,
/// Cam_AttachedCam)"; empty where nothing is gone.
struct LossReport {
  std::string keys;
  std::string input;
};

/// Notes the keys and the recorded inputs of a scene, and tells later which of them are gone: not
/// those in whose place others stand, but those outside of the time over which a node has keys, or
/// an input samples, by then. The scene's nodes and rigs may go meanwhile.
class Losses {
 public:
  /// Both must outlive it.
  Losses(rws::core::CoreImplementation& core, const rws::adaptor::headless::Scene& scene);

  LossReport Report() const;

 private:
  /// The recorded samples of one input.
  struct Input {
    std::string name;
    const void* rig = nullptr;
    std::size_t index = 0;
    std::vector<double> times;  ///< s
  };
  struct Keys {
    std::string name;
    const rws::adaptor::headless::SceneNode* node = nullptr;
    rws::adaptor::headless::NodeAnimation before;
  };
  class Tally;

  Tally LostKeys() const;
  Tally LostInput() const;

  rws::core::CoreImplementation& m_core;
  const rws::adaptor::headless::Scene& m_scene;
  std::vector<Keys> m_keys;
  std::vector<Input> m_inputs;
};

}  // namespace orv::app
