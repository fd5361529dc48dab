// The rig's own curve with its display.
#pragma once

#include <functional>
#include <string>

#include "core/interface/CInterface.h"
#include "plugins/common/RigSceneNode.h"
#include "plugins/release/splinespeedcontroller/CCurve.h"
#include "plugins/release/splinespeedcontroller/SplineInformation.h"

namespace orv::rws::addon {

/// A CCurve in the space of the ReferenceFrame, shown by the mesh node OrvelCurve while it stands.
/// As a path it knows its raw length alone; the carriage asks the curve itself for the rest.
class CCurveInformation : public SplineInformation, public CInterface::Callback {
 public:
  /// Points in a circle of the display.
  static constexpr int kDisplaySamples = 200;

  CCurveInformation(CCamera& rig, const RigSceneNode& referenceFrame);

  double RawLength() override { return curve.Length(); }
  /// Whether a carriage can run on it.
  bool IsUsable() { return curveInitialized && curve.State() == CurveState::kSampled; }
  /// Shows the curve as it stands. False when the node could not be made.
  bool ShowMesh(CInterface& core);
  /// An edit of `closed` or `endstraight`.
  void OnCallback(std::string name) override;

  CCurve curve;
  bool closed = false;            ///< as the user wants it at the next build
  bool endstraight = false;       ///< as the user wants it at the next build
  bool curveInitialized = false;  ///< there is a curve
  RigMeshNode mesh;
  std::function<void(const std::string&)> edited;  ///< told of edits, by the rig
};

}  // namespace orv::rws::addon
