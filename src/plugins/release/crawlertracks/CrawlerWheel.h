// A wheel of a crawler's belt.
#pragma once

#include <string>

#include "plugins/release/crawlertracks/crawlertracks_CrawlerTracks.h"

namespace orv::rws::addon {

/// What a wheel is to the belt; told by its colour.
struct WheelKind {
  bool staticWheel = false;  ///< does not turn with the driveWheel
  bool innerWheel = true;    ///< the belt runs round it, and not it on the belt
  bool trackWheel = true;    ///< the belt's line is laid round it
  bool support = false;      ///< carries the belt where it finds it
};

/// A cylinder about its node's X axis. Its radius is half of its node's scale along Y.
class CrawlerTracks::Wheel : public RigMeshNode, public CInterface::Callback {
 public:
  static constexpr double kMeshRadius = 0.5;     ///< of the display mesh (m)
  static constexpr double kMeshHalfWidth = 0.2;  ///< of the display mesh (m)

  Wheel(CCamera& rig, const std::string& name, const RigSceneNode& frame, const WheelKind& kind);

  const WheelKind kind;
  double radius = kMeshRadius;        ///< m, as last measured
  double halfWidth = kMeshHalfWidth;  ///< m, as last measured

  bool IsDriveWheel() const { return GetName() == "driveWheel"; }
  /// Shows its kind by its colour.
  void ShowKind() const;
  /// Reads radius and width from the node's scale at `time`.
  void Measure(double time);
  /// An action of the rig needs the wheel as it is now.
  void OnCallback(std::string name) override;
  const std::string& GetName() const { return m_name; }
};

}  // namespace orv::rws::addon
