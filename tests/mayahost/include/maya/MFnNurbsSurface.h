// Surfaces of NURBS.
#pragma once
#include <maya/MDoubleArray.h>
#include <maya/MFnDagNode.h>
#include <maya/MPoint.h>
#include <maya/MPointArray.h>
#include <maya/MSpace.h>
#include <maya/MVector.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnNurbsSurface : public MFnDagNode {
  declareDagMFn(MFnNurbsSurface)
  enum Form { kInvalid, kOpen, kClosed, kPeriodic, kLast };
  MObject create(const MPointArray& cvs, const MDoubleArray& uKnots, const MDoubleArray& vKnots, unsigned int uDegree, unsigned int vDegree, Form uForm,
                 Form vForm, bool createRational, MObject parentOrOwner = MObject::kNullObj, MStatus* status = NULL);
  MObject copy(const MObject& source, MObject parentOrOwner = MObject::kNullObj, MStatus* status = NULL);
  int numCVsInU(MStatus* status = NULL) const;
  int numCVsInV(MStatus* status = NULL) const;
  int degreeU(MStatus* status = NULL) const;
  int degreeV(MStatus* status = NULL) const;
  Form formInU(MStatus* status = NULL) const;
  Form formInV(MStatus* status = NULL) const;
  MStatus getKnotsInU(MDoubleArray& knots) const;
  MStatus getKnotsInV(MDoubleArray& knots) const;
  MStatus getCVs(MPointArray& cvs, MSpace::Space space = MSpace::kObject) const;
  MStatus getCV(unsigned int u, unsigned int v, MPoint& point, MSpace::Space space = MSpace::kObject) const;
  MStatus getTangents(double u, double v, MVector& inU, MVector& inV, MSpace::Space space = MSpace::kObject) const;
  MVector normal(double u, double v, MSpace::Space space = MSpace::kObject, MStatus* status = NULL) const;
  MStatus getKnotDomain(double& startU, double& endU, double& startV, double& endV) const;
  MStatus getPointAtParam(double u, double v, MPoint& point, MSpace::Space space = MSpace::kObject) const;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
