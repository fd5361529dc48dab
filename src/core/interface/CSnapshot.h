// A node's pose at one time.
#pragma once

#include "core/interface/CExtendable.h"

namespace orv::rws {

/// Read and write handle on a node's pose at one time. Matrices are 16 doubles, three axis rows and
/// the translation in elements 12 to 14, in rig space (right-handed, Y up, metres). Short-lived:
/// handed out by CInterface::GetSnapshot, back by ReleaseSnapshot within the same call of the rig.
class CSnapshot : public CExtendable {
 public:
  /// Places the node at world matrix `m` now, with no key. A property of the node (translation,
  /// rotation, scale) that has keys goes on following them: it can be moved by SetKey alone. During
  /// a take the pose goes to the take's buffer, as that of SetKey does.
  virtual void SetMatrix(const double m[16]) = 0;
  /// Matrix relative to the node's parent.
  virtual void GetLocalMatrix(double m[16]) = 0;
  /// World matrix.
  virtual void GetMatrix(double m[16]) = 0;
  /// Writes world matrix `m` as the node's pose at the snapshot's time. This is what Step calls and
  /// what a recording consists of.
  virtual void SetKey(const double m[16]) = 0;
  /// The snapshot's time (s).
  virtual double GetTime() = 0;
  ~CSnapshot() override = default;
};

}  // namespace orv::rws
