// The library's numbers as ours.
#pragma once

#include <assimp/mesh.h>
#include <assimp/types.h>

#include "adaptor/common/Trs.h"

namespace orv::app {

inline util::Vector3<double> VectorOf(const aiVector3D& v) {
  return {double{v.x}, double{v.y}, double{v.z}};
}

inline util::Quat<double> QuatOf(const aiQuaternion& q) {
  return {double{q.x}, double{q.y}, double{q.z}, double{q.w}};
}

/// Ours stand column by column.
inline util::Matrix<double> MatrixOf(const aiMatrix4x4& m) {
  util::Matrix<double> result;
  for (unsigned row = 0; row < 4; ++row)
    for (unsigned column = 0; column < 4; ++column)
      result[static_cast<int>(4 * column + row)] = double{m[row][column]};
  return result;
}

inline bool IsOfTriangles(const aiMesh& mesh) {
  return mesh.mPrimitiveTypes == aiPrimitiveType_TRIANGLE ||
         mesh.mPrimitiveTypes == (aiPrimitiveType_TRIANGLE | aiPrimitiveType_NGONEncodingFlag);
}

}  // namespace orv::app
