// A node's channels while a take moves it.
#pragma once

#include <maya/MDGModifier.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>

#include <array>

#include "adaptor/common/HostChannels.h"

namespace orv::rws::adaptor::maya {

/// Takes the curves off a transform's channels, so that the performer sees the take's poses on it,
/// and puts them back, with the values of those that have none.
class TakeChannels {
 public:
  explicit TakeChannels(const MObject& transform);
  ~TakeChannels() { Restore(); }
  TakeChannels(const TakeChannels&) = delete;
  TakeChannels& operator=(const TakeChannels&) = delete;

  /// Where all channels are driven by curves or by nothing; else the node stays as it is.
  bool IsShown() const { return m_shown; }
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

  std::array<Channel, 9> m_channels;
  MDGModifier m_off;  ///< has disconnected the curves
  bool m_shown = true;
};

}  // namespace orv::rws::adaptor::maya
