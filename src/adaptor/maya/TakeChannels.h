// A node's channels while a take moves it.
#pragma once

#include <maya/MDGModifier.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>

#include <array>

#include "adaptor/common/HostChannels.h"

namespace orv::rws::adaptor {
class HostNode;
}

namespace orv::rws::adaptor::maya {

/// Takes the curves off a transform's channels, so that the performer sees the take's poses on it,
/// and puts them back, with the values of those that have none.
class TakeChannels {
 public:
  /// What the transform keeps around its channels stays as it is while a take runs: so do its place
  /// and `parent` (null: the world).
  struct Place {
    ChannelFrame frame;
    bool inherits = true;
    HostNode* parent = nullptr;
  };
  TakeChannels(const MObject& transform, Place place);
  ~TakeChannels() { Restore(); }
  TakeChannels(const TakeChannels&) = delete;
  TakeChannels& operator=(const TakeChannels&) = delete;

  const Place& GetPlace() const { return m_place; }
  /// As keys and values stood when the take began.
  double Read(int channel, double time) const;
  void Show(const HostChannels& channels);
  /// The scene is gone, and all with it.
  void Abandon() { m_shown = false; }

 private:
  struct Channel {
    MPlug plug;
    MObject curve;
    double value = 0.0;
  };
  void Restore();

  Place m_place;
  std::array<Channel, 9> m_channels;
  MDGModifier m_off;    ///< has disconnected the curves
  bool m_shown = true;  ///< all channels are driven by curves or by nothing
};

}  // namespace orv::rws::adaptor::maya
