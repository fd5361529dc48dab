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
  MObject create(MObject parent = MObject::kNullObj, MStatus* status = NULL);
  MPoint eyePoint(MSpace::Space space = MSpace::kObject, MStatus* status = NULL) const;
  MVector viewDirection(MSpace::Space space = MSpace::kObject, MStatus* status = NULL) const;
  MVector upDirection(MSpace::Space space = MSpace::kObject, MStatus* status = NULL) const;
  MVector rightDirection(MSpace::Space space = MSpace::kObject, MStatus* status = NULL) const;
  MPoint centerOfInterestPoint(MSpace::Space space = MSpace::kObject, MStatus* status = NULL) const;
  MStatus set(const MPoint& eye, const MVector& view, const MVector& up, double horizontalFieldOfView, double aspectRatio);
  bool isOrtho(MStatus* status = NULL) const;
  MStatus setIsOrtho(bool on);
  bool isDepthOfField(MStatus* status = NULL) const;
  MStatus setDepthOfField(bool on);
  FilmFit filmFit(MStatus* status = NULL) const;
  MStatus setFilmFit(FilmFit fit);
  double centerOfInterest(MStatus* status = NULL) const;
  MStatus setCenterOfInterest(double v);
  double fStop(MStatus* status = NULL) const;
  MStatus setFStop(double v);
  double shutterAngle(MStatus* status = NULL) const;
  MStatus setShutterAngle(double v);
  double overscan(MStatus* status = NULL) const;
  MStatus setOverscan(double v);
  double lensSqueezeRatio(MStatus* status = NULL) const;
  MStatus setLensSqueezeRatio(double v);
  double cameraScale(MStatus* status = NULL) const;
  MStatus setCameraScale(double v);
  double orthoWidth(MStatus* status = NULL) const;
  MStatus setOrthoWidth(double v);
  double horizontalFilmOffset(MStatus* status = NULL) const;
  MStatus setHorizontalFilmOffset(double v);
  double verticalFilmOffset(MStatus* status = NULL) const;
  MStatus setVerticalFilmOffset(double v);
  double aspectRatio(MStatus* status = NULL) const;
  MStatus setAspectRatio(double v);
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
