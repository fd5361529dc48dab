// Plugs while a take moves them.
#pragma once

#include <maya/MDGModifier.h>
#include <maya/MObject.h>
#include <maya/MObjectHandle.h>
#include <maya/MPlug.h>

#include <string>
#include <vector>

namespace orv::rws::adaptor::maya {

/// Takes the curves off plugs of one node, so that the performer sees the take's values on them,
/// and puts them back, with the values of those that have none.
class TakePlugs {
 public:
  template <class Plugs>
  explicit TakePlugs(const Plugs& plugs)
      : TakePlugs(std::vector<MPlug>(plugs.begin(), plugs.end())) {}
  explicit TakePlugs(const std::vector<MPlug>& plugs);
  ~TakePlugs() { Restore(); }
  TakePlugs(const TakePlugs&) = delete;
  TakePlugs& operator=(const TakePlugs&) = delete;

  /// As keys and values stood when the take began.
  double Read(std::size_t plug, double time) const;
  /// One value for each, in the host's internal units.
  void Show(const std::vector<double>& values);
  /// The scene is gone, and all with it.
  void Abandon() { m_shown = false; }

 private:
  struct Channel {
    MPlug plug;
    MObject curve;
    double value = 0.0;
  };
  void Restore();

  MObjectHandle m_node;
  std::string m_name;  ///< of the node, for messages
  std::vector<Channel> m_channels;
  MDGModifier m_off;    ///< has disconnected the curves
  bool m_shown = true;  ///< all plugs are driven by curves or by nothing
};

}  // namespace orv::rws::adaptor::maya
