// Meshes: points and normals of single precision.
#pragma once
#include <maya/MDoubleArray.h>
#include <maya/MFloatArray.h>
#include <maya/MFloatPoint.h>
#include <maya/MFloatPointArray.h>
#include <maya/MFloatVector.h>
#include <maya/MFloatVectorArray.h>
#include <maya/MFnDagNode.h>
#include <maya/MIntArray.h>
#include <maya/MObjectArray.h>
#include <maya/MPoint.h>
#include <maya/MPointArray.h>
#include <maya/MSpace.h>
#include <maya/MVector.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MMeshIsectAccelParams {
 public:
  bool grid = true;
};
class MFnMesh : public MFnDagNode {
  declareDagMFn(MFnMesh)
  MObject create(int numVertices, int numPolygons, const MPointArray& vertices, const MIntArray& counts, const MIntArray& connects,
                 MObject parentOrOwner = MObject::kNullObj, MStatus* status = NULL);
  MObject create(int numVertices, int numPolygons, const MFloatPointArray& vertices, const MIntArray& counts, const MIntArray& connects,
                 MObject parentOrOwner = MObject::kNullObj, MStatus* status = NULL);
  MObject copy(const MObject& source, MObject parentOrOwner = MObject::kNullObj, MStatus* status = NULL);
  MStatus createInPlace(int numVertices, int numPolygons, const MPointArray& vertices, const MIntArray& counts, const MIntArray& connects);
  int numVertices(MStatus* status = NULL) const;
  int numEdges(MStatus* status = NULL) const;
  int numPolygons(MStatus* status = NULL) const;
  int polygonVertexCount(int polygon, MStatus* status = NULL) const;
  MStatus getPolygonVertices(int polygon, MIntArray& vertices) const;
  MStatus getVertices(MIntArray& counts, MIntArray& vertices) const;
  MStatus getTriangles(MIntArray& counts, MIntArray& vertices) const;
  MStatus getPoint(int vertex, MPoint& point, MSpace::Space space = MSpace::kObject) const;
  MStatus getPoints(MPointArray& points, MSpace::Space space = MSpace::kObject) const;
  MStatus getPoints(MFloatPointArray& points, MSpace::Space space = MSpace::kObject) const;
  MStatus setPoints(const MPointArray& points, MSpace::Space space = MSpace::kObject);
  const float* getRawPoints(MStatus* status = NULL) const;
  MStatus getVertexNormals(bool angleWeighted, MFloatVectorArray& normals, MSpace::Space space = MSpace::kObject) const;
  MStatus getPolygonNormal(int polygon, MVector& normal, MSpace::Space space = MSpace::kObject) const;
  MStatus getConnectedShaders(unsigned int instance, MObjectArray& shaders, MIntArray& indices) const;
  MStatus syncObject();
  MStatus updateSurface();
  bool closestIntersection(const MFloatPoint& source, const MFloatVector& direction, const MIntArray* faceIds, const MIntArray* triIds, bool idsSorted,
                           MSpace::Space space, float maxParam, bool testBothDirections, MMeshIsectAccelParams* accelParams, MFloatPoint& hitPoint,
                           float* hitRayParam, int* hitFace, int* hitTriangle, float* hitBary1, float* hitBary2, float tolerance = 1e-6f,
                           MStatus* status = NULL) const;
  bool intersect(const MPoint& source, const MVector& direction, MPointArray& points, double tolerance = 1e-10, MSpace::Space space = MSpace::kObject,
                 MIntArray* polygons = NULL, MStatus* status = NULL) const;
  static MMeshIsectAccelParams autoUniformGridParams() { return {}; }
  MStatus freeCachedIntersectionAccelerator() { return MStatus::kSuccess; }
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
