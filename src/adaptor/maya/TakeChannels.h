// What a take moves of a node.
#pragma once

#include <array>
#include <memory>

#include "adaptor/common/HostChannels.h"
#include "adaptor/maya/Channels.h"
#include "adaptor/maya/TakePlugs.h"

namespace orv::rws::adaptor {
class HostNode;
}

namespace orv::rws::adaptor::maya {

struct TakeChannels {
  explicit TakeChannels(const MObject& transform) : pose(PosePlugs(transform)) {}

  // What the transform keeps around its channels stays as it is while a take runs: so do its place
  // and `parent` (null: the world).
  ChannelFrame frame;
  bool inherits = true;
  HostNode* parent = nullptr;

  TakePlugs pose;
  std::array<std::unique_ptr<TakePlugs>, 2> lens;  ///< by LensValue, once the take has written it
};

}  // namespace orv::rws::adaptor::maya
