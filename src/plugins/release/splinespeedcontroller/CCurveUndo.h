// Undo of a change to the rig's own curve.
#pragma once

#include "core/interface/CUndo.h"
#include "plugins/release/splinespeedcontroller/CCurveInformation.h"

namespace orv::rws::addon {

/// Saves the curve at construction and brings it back; as WaypointUndo. The user's flags for the
/// next build are parameters, which the core brings back.
class CCurveUndo : public CUndo {
 public:
  explicit CCurveUndo(CCurveInformation& information)
      : m_information(information), m_before(Present()), m_after(m_before) {}

  void Undo(bool) override {
    m_after = Present();
    Apply(m_before);
  }
  void Redo() override { Apply(m_after); }

 private:
  struct State {
    CCurve curve;           ///< its outline, in the ReferenceFrame
    bool curveInitialized;  ///< a curve of the scene was read
  };

  State Present() const { return {m_information.curve.Outline(), m_information.curveInitialized}; }
  void Apply(const State& state) {
    m_information.curve = state.curve;
    m_information.curveInitialized = state.curveInitialized;
    m_information.mesh.Find();
  }

  CCurveInformation& m_information;
  State m_before, m_after;
};

}  // namespace orv::rws::addon
