// Surfaces of NURBS, of which the stand-in keeps bilinear ones.
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
  MStatus getKnotDomain(double& startU, double& endU, double& startV, double& endV) const;
  MStatus getPointAtParam(double u, double v, MPoint& point, MSpace::Space space = MSpace::kObject) const;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
