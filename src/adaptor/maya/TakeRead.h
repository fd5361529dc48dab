// When something of the user's is read anew in a take.
#pragma once

#include <maya/MObject.h>

namespace orv::rws::adaptor::maya {

/// What a node follows, be it far upstream.
enum class Drive {
  kNothing,
  kTime,   ///< the time alone
  kNodes,  ///< where other nodes are, too, which a take may move
};
/// Of all inputs of `node`; where its parents are is no input.
Drive DriveOf(const MObject& node);

/// What was read of one node: whether it still holds within a take. Outside of takes nothing does.
class TakeRead {
 public:
  /// `take` is the adaptor's serial. A take's first call looks at what drives `node`.
  void Begin(int take, const MObject& node);
  bool Holds(int take, double time) const {
    return IsOf(take) &&
           (m_drive == Drive::kNothing || (m_drive == Drive::kTime && time == m_time));
  }
  bool IsOf(int take) const { return m_has && take == m_take; }
  Drive GetDrive() const { return m_drive; }
  /// It was read for `time` (s).
  void Note(double time) {
    m_has = m_take != 0;
    m_time = time;
  }
  void Forget() { m_take = 0, m_has = false; }

 private:
  int m_take = 0;
  bool m_has = false;
  Drive m_drive = Drive::kNodes;
  double m_time = 0.0;
};

}  // namespace orv::rws::adaptor::maya
