// Curves.
#pragma once
#include <maya/MDoubleArray.h>
#include <maya/MFnDagNode.h>
#include <maya/MPoint.h>
#include <maya/MPointArray.h>
#include <maya/MSpace.h>
#include <maya/MVector.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnNurbsCurve : public MFnDagNode {
  declareDagMFn(MFnNurbsCurve)
  enum Form { kInvalid, kOpen, kClosed, kPeriodic, kLast };
  MObject create(const MPointArray& cvs, const MDoubleArray& knots, unsigned int degree, Form form, bool create2D, bool createRational,
                 MObject parentOrOwner = MObject::kNullObj, MStatus* status = NULL);
  MObject copy(const MObject& source, MObject parentOrOwner = MObject::kNullObj, MStatus* status = NULL);
  Form form(MStatus* status = NULL) const;
  int degree(MStatus* status = NULL) const;
  int numCVs(MStatus* status = NULL) const;
  int numSpans(MStatus* status = NULL) const;
  MStatus getCV(unsigned int i, MPoint& point, MSpace::Space space = MSpace::kObject) const;
  MStatus setCV(unsigned int i, const MPoint& point, MSpace::Space space = MSpace::kObject);
  MStatus setCVs(const MPointArray& cvs, MSpace::Space space = MSpace::kObject);
  int numKnots(MStatus* status = NULL) const;
  double knot(unsigned int i, MStatus* status = NULL) const;
  MStatus updateCurve();
  MPoint closestPoint(const MPoint& to, double* param = NULL, double tolerance = 1e-10, MSpace::Space space = MSpace::kObject, MStatus* status = NULL) const;
  MStatus getParamAtPoint(const MPoint& at, double& param, MSpace::Space space = MSpace::kObject) const;
  MStatus getParamAtPoint(const MPoint& at, double& param, double tolerance, MSpace::Space space = MSpace::kObject) const;
  bool isPointOnCurve(const MPoint& at, double tolerance = 1e-10, MSpace::Space space = MSpace::kObject, MStatus* status = NULL) const;
  double distanceToPoint(const MPoint& to, MSpace::Space space = MSpace::kObject, MStatus* status = NULL) const;
  MStatus getDerivativesAtParm(double param, MPoint& position, MVector& derivative, MSpace::Space space, MVector* second = NULL) const;
  MStatus getCVs(MPointArray& cvs, MSpace::Space space = MSpace::kObject) const;
  MStatus getKnots(MDoubleArray& knots) const;
  MStatus getKnotDomain(double& start, double& end) const;
  MStatus getPointAtParam(double param, MPoint& point, MSpace::Space space = MSpace::kObject) const;
  MVector tangent(double param, MSpace::Space space = MSpace::kObject, MStatus* status = NULL) const;
  bool isParamOnCurve(double param, MStatus* status = NULL) const;
  double length(double tolerance = 1e-10) const;
  double length(MStatus* status, double tolerance = 1e-10) const;
  double findParamFromLength(double length, MStatus* status = NULL) const;
  double findLengthFromParam(double param, MStatus* status = NULL) const;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
