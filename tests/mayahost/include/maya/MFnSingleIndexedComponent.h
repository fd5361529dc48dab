// Parts of a shape by their numbers.
#pragma once
#include <maya/MFnBase.h>
#include <maya/MIntArray.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnSingleIndexedComponent : public MFnBase {
  declareMinimalMFn(MFnSingleIndexedComponent)
  MObject create(MFn::Type type, MStatus* status = NULL);
  MStatus addElement(int index);
  MStatus addElements(const MIntArray& indices);
  int elementCount(MStatus* status = NULL) const;
  MStatus getElements(MIntArray& indices) const;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
