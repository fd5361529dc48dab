// Measures a rig while it is simulated.
#pragma once

#include <string>

#include "app/session/anyhost/TimeSpan.h"
#include "app/sweep/SweepRow.h"
#include "core/interface/RigMarks.h"

namespace orv::rws::core {
class Instance;
}

namespace orv::app {

class SceneSession;

/// What the marks of a rig tell is gathered frame by frame, the rest is read from the keys.
class SweepMeasuring {
 public:
  /// The session and its rig must outlive this.
  SweepMeasuring(SceneSession& session, rws::core::Instance& rig, const TimeSpan& span);

  /// After each frame of the run.
  void NoteFrame();
  /// After the run. `near` names the node to which the distance is measured; empty: none.
  void Finish(const std::string& near, SweepRow& row);

 private:
  SceneSession& m_session;
  rws::core::Instance& m_rig;
  TimeSpan m_span;
  rws::RigMarks m_marks;
  double m_frame;          ///< s
  bool m_touched = false;  ///< something has carried the rig
  long m_airFrames = 0;
  double m_slip = 0.0, m_slipped = 0.0;
};

}  // namespace orv::app
