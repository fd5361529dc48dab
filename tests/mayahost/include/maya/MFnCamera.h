// Cameras: lengths of the film in inches, of the lens in millimetres, of the scene in centimetres.
#pragma once
#include <maya/MFnDagNode.h>
#include <maya/MPoint.h>
#include <maya/MSpace.h>
#include <maya/MVector.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnCamera : public MFnDagNode {
  declareDagMFn(MFnCamera)
  enum FilmFit { kFillFilmFit, kHorizontalFilmFit, kVerticalFilmFit, kOverscanFilmFit, kInvalid };
  MObject create(MObject& parent = MObject::kNullObj, MStatus* status = NULL);
  MPoint eyePoint(MSpace::Space space = MSpace::kObject, MStatus* status = NULL) const;
  MVector viewDirection(MSpace::Space space = MSpace::kObject, MStatus* status = NULL) const;
  MVector upDirection(MSpace::Space space = MSpace::kObject, MStatus* status = NULL) const;
  double focalLength(MStatus* status = NULL) const;
  MStatus setFocalLength(double v);
  double horizontalFieldOfView(MStatus* status = NULL) const;
  MStatus setHorizontalFieldOfView(double v);
  double verticalFieldOfView(MStatus* status = NULL) const;
  MStatus setVerticalFieldOfView(double v);
  double horizontalFilmAperture(MStatus* status = NULL) const;
  MStatus setHorizontalFilmAperture(double v);
  double verticalFilmAperture(MStatus* status = NULL) const;
  MStatus setVerticalFilmAperture(double v);
  double nearClippingPlane(MStatus* status = NULL) const;
  MStatus setNearClippingPlane(double v);
  double farClippingPlane(MStatus* status = NULL) const;
  MStatus setFarClippingPlane(double v);
  double focusDistance(MStatus* status = NULL) const;
  MStatus setFocusDistance(double v);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
