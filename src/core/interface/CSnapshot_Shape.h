// A curve of the host's scene at one time.
#pragma once

#include "core/interface/CExtendable.h"
#include "util/Vector3.h"

namespace orv::rws {

/// Reads a curve. Points and tangents are in world space; `fraction` runs along the arc length from
/// 0 to 1 and is clamped to that range.
class CSnapshot_Shape : public CExtendable {
 public:
  virtual int GetCount() = 0;   ///< number of curves, always 1 today
  virtual int GetDegree() = 0;  ///< 1 for a polyline
  virtual int Reserved() { return 0; }
  virtual double GetLength() = 0;  ///< arc length (m)
  virtual util::Vector3<double> GetPoint(double fraction) = 0;
  virtual util::Vector3<double> GetTangent(double fraction) = 0;  ///< unit vector
  ~CSnapshot_Shape() override = default;
};

}  // namespace orv::rws
