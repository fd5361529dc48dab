// Values that are more than a number.
#pragma once
#include <maya/MFnBase.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnData : public MFnBase {
  declareMinimalMFn(MFnData)
  // clang-format off
  enum Type {
    kInvalid = 0, kNumeric, kPlugin, kPluginGeometry, kString, kMatrix, kStringArray, kDoubleArray, kIntArray, kPointArray, kVectorArray, kComponentList,
    kMesh, kLattice, kNurbsCurve, kNurbsSurface, kSphere, kDynArrayAttrs, kDynSweptGeometry, kSubdSurface, kNObject, kNId, kAny, kLast
  };
  // clang-format on
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
