// The lens of a camera node at one time.
#pragma once

#include "core/interface/CExtendable.h"

namespace orv::rws {

/// Lens of a camera. A setter writes a key at the snapshot's time when the attribute is animated,
/// and else sets the attribute. The field of view is the vertical one, in degrees, unlike all other
/// angles.
class CSnapshot_Lens : public CExtendable {
 public:
  virtual void SetFieldOfView(double degrees) = 0;
  virtual double GetFieldOfView() = 0;
  virtual int Reserved1() { return 0; }
  virtual void Reserved2() {}
  virtual void SetFocusDistance(double distance) = 0;  ///< m
  virtual double GetFocusDistance() = 0;               ///< m
  virtual double GetTime() = 0;                        ///< s
  virtual void GetProjection(double m[16]) = 0;        ///< identity in the present adaptors
  ~CSnapshot_Lens() override = default;
};

}  // namespace orv::rws
