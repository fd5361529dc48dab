// Sixteen numbers of single precision.
#pragma once
#include <maya/MMatrix.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFloatMatrix {
 public:
  MFloatMatrix() : MFloatMatrix(MMatrix()) {}
  explicit MFloatMatrix(const MMatrix& m) { m.get(matrix); }
  float operator()(unsigned int row, unsigned int col) const { return matrix[row][col]; }
  float& operator()(unsigned int row, unsigned int col) { return matrix[row][col]; }
  const float* operator[](unsigned int row) const { return matrix[row]; }
  float* operator[](unsigned int row) { return matrix[row]; }
  float matrix[4][4];
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
