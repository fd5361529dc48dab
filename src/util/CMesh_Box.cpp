#include "util/CMesh_Box.h"

namespace orv::util {

CMesh_Box::CMesh_Box(double x, double y, double z, const Vector3<double>& centre) {
  // Corner i lies on the positive side of X, Y, Z where bit 0, 1, 2 of i is set.
  for (int i = 0; i < 8; ++i) {
    vertices.push_back(centre + Vector3<double>((i & 1) ? x / 2 : -x / 2, (i & 2) ? y / 2 : -y / 2,
                                                (i & 4) ? z / 2 : -z / 2));
  }
  faces = {0, 4, 6, 0, 6, 2,   // -X
           1, 3, 7, 1, 7, 5,   // +X
           0, 1, 5, 0, 5, 4,   // -Y
           2, 6, 7, 2, 7, 3,   // +Y
           0, 2, 3, 0, 3, 1,   // -Z
           4, 5, 7, 4, 7, 6};  // +Z
}

}  // namespace orv::util
