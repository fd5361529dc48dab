// What a verb has dropped of what a scene held.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "adaptor/headless/SceneNode.h"

namespace orv::app {

class SceneJob;
struct LossReasons;

/// Notes the keys and the recorded inputs of a scene, and tells later which of them are gone: not
/// those in whose place others stand, but those outside of the time over which a node has keys, or
/// an input samples, by then. The scene's nodes and rigs may go meanwhile.
class Losses {
 public:
  explicit Losses(SceneJob& job);

  /// One warning for keys and one for inputs, with how many, of what, where and why.
  void tell(const LossReasons& why);

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

  Tally lostKeys() const;
  Tally lostInput() const;

  SceneJob& m_job;
  std::vector<Keys> m_keys;
  std::vector<Input> m_inputs;
};

}  // namespace orv::app
