// Matrices.
#pragma once
#include <maya/MArray_.h>
#include <maya/MMatrix.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MMatrixArray : public mayahost::Array<MMatrix> {
 public:
  using Array::Array;
  MMatrixArray() = default;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
