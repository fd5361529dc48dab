// Sixteen numbers of single precision.
#pragma once
#include <maya/MMatrix.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFloatMatrix : public mayahost::MatrixOf<MFloatMatrix, float> {
 public:
  MFloatMatrix() = default;
  MFloatMatrix(const float m[4][4]) : MatrixOf(m) {}
  MFloatMatrix(const double m[4][4]) : MatrixOf(m) {}
};
inline MFloatMatrix operator*(float s, const MFloatMatrix& m) { return m * s; }
std::ostream& operator<<(std::ostream& os, const MFloatMatrix& m);
OPENMAYA_MAJOR_NAMESPACE_CLOSE
