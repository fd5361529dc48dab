// Points, edges and faces of a mesh, points of a curve.
#pragma once
#include <maya/MFnComponent.h>
#include <maya/MIntArray.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnSingleIndexedComponent : public MFnComponent {
  declareMinimalMFn(MFnSingleIndexedComponent)

  MObject create(MFn::Type component, MStatus* status = NULL);
  MStatus addElement(int element);
  MStatus addElements(MIntArray& elements);
  int element(int index, MStatus* status = NULL) const;
  MStatus getElements(MIntArray& elements) const;
  MStatus setCompleteData(int elements);
  MStatus getCompleteData(int& elements) const;
  int elementMax(MStatus* status = NULL) const;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
