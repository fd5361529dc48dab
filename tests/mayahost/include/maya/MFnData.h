// Values that are more than a number.
#pragma once
#include <maya/MFnBase.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnData : public MFnBase {
  declareMinimalMFn(MFnData)
  // clang-format off
  enum Type {
    kInvalid = 0, kNumeric, kPlugin, kPluginGeometry, kString, kMatrix, kStringArray, kDoubleArray, kFloatArray, kIntArray, kPointArray, kVectorArray, kMatrixArray, kComponentList,
    kMesh, kLattice, kNurbsCurve, kNurbsSurface, kSphere, kDynArrayAttrs, kDynSweptGeometry, kSubdSurface, kNObject, kNId, kAny, kLast
  };
  // clang-format on
};

/// Data of many values, all alike.
#define declareArrayData(Class, Array, Item)                                              \
  class Class : public MFnData {                                                          \
    declareMinimalMFn(Class)                                                              \
    MObject create(MStatus* status = NULL) { return create(Array(), status); }            \
    MObject create(const Array& array, MStatus* status = NULL);                           \
    Array array(MStatus* status = NULL) const;                                            \
    MStatus set(const Array& array);                                                      \
    MStatus set(const Item& item, unsigned int i);                                        \
    MStatus copyTo(Array& to) const { return to = array(), St(hasObj(type())); }          \
    unsigned int length(MStatus* status = NULL) const { return array(status).length(); }  \
    Item operator[](unsigned int i) const { return array()[i]; }                          \
                                                                                          \
   private:                                                                               \
    static MStatus St(bool good) { return good ? MStatus::kSuccess : MStatus::kFailure; } \
  };
OPENMAYA_MAJOR_NAMESPACE_CLOSE
