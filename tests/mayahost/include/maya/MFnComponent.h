// Parts of a shape.
#pragma once
#include <maya/MFnBase.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnComponent : public MFnBase {
  declareMinimalMFn(MFnComponent)

  int elementCount(MStatus* status = NULL) const;
  MFn::Type componentType(MStatus* status = NULL) const;
  bool isEmpty(MStatus* status = NULL) const { return elementCount(status) == 0; }
  bool isEqual(MObject& other, MStatus* status = NULL) const;
  /// All elements, however many the shape has.
  bool isComplete(MStatus* status = NULL) const;
  MStatus setComplete(bool complete);
  bool hasWeights(MStatus* status = NULL) const { return componentType(status), false; }
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
