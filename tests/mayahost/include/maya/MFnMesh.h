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
  MObject create(int numVertices, int numPolygons, const MPointArray& vertices, const MIntArray& counts, const MIntArray& connects, const MFloatArray& u,
                 const MFloatArray& v, MObject parentOrOwner = MObject::kNullObj, MStatus* status = NULL);
  MObject create(int numVertices, int numPolygons, const MFloatPointArray& vertices, const MIntArray& counts, const MIntArray& connects, const MFloatArray& u,
                 const MFloatArray& v, MObject parentOrOwner = MObject::kNullObj, MStatus* status = NULL);
  MObject copy(const MObject& source, MObject parentOrOwner = MObject::kNullObj, MStatus* status = NULL);
  MStatus createInPlace(int numVertices, int numPolygons, const MPointArray& vertices, const MIntArray& counts, const MIntArray& connects);
  int numVertices(MStatus* status = NULL) const;
  int numEdges(MStatus* status = NULL) const;
  int numPolygons(MStatus* status = NULL) const;
  int numFaceVertices(MStatus* status = NULL) const;
  int numNormals(MStatus* status = NULL) const;
  int numUVs(MStatus* status = NULL) const;
  int numUVs(const MString& uvSet, MStatus* status = NULL) const;
  int numUVSets(MStatus* status = NULL) const;
  int numColorSets(MStatus* status = NULL) const;
  MStatus getUVSetNames(MStringArray& names) const;
  MString currentUVSetName(MStatus* status = NULL, int instance = -1) const;
  MStatus getUVs(MFloatArray& u, MFloatArray& v, const MString* uvSet = NULL) const;
  MStatus setUVs(const MFloatArray& u, const MFloatArray& v, const MString* uvSet = NULL);
  MStatus getUV(int id, float& u, float& v, const MString* uvSet = NULL) const;
  MStatus assignUVs(const MIntArray& counts, const MIntArray& ids, const MString* uvSet = NULL);
  MStatus getAssignedUVs(MIntArray& counts, MIntArray& ids, const MString* uvSet = NULL) const;
  MStatus getPolygonUVid(int polygon, int vertex, int& id, const MString* uvSet = NULL) const;
  MStatus getPolygonUV(int polygon, int vertex, float& u, float& v, const MString* uvSet = NULL) const;
  MStatus getPolygonTriangleVertices(int polygon, int triangle, int vertices[3]) const;
  MStatus getEdgeVertices(int edge, int2& vertices) const;
  bool isEdgeSmooth(int edge, MStatus* status = NULL) const;
  int polygonVertexCount(int polygon, MStatus* status = NULL) const;
  MStatus getPolygonVertices(int polygon, MIntArray& vertices) const;
  MStatus getVertices(MIntArray& counts, MIntArray& vertices) const;
  MStatus getTriangles(MIntArray& counts, MIntArray& vertices) const;
  MStatus getPoint(int vertex, MPoint& point, MSpace::Space space = MSpace::kObject) const;
  MStatus getPoints(MPointArray& points, MSpace::Space space = MSpace::kObject) const;
  MStatus getPoints(MFloatPointArray& points, MSpace::Space space = MSpace::kObject) const;
  MStatus setPoints(const MPointArray& points, MSpace::Space space = MSpace::kObject);
  MStatus setPoints(const MFloatPointArray& points, MSpace::Space space = MSpace::kObject);
  MStatus setPoint(int vertex, const MPoint& point, MSpace::Space space = MSpace::kObject);
  MStatus getNormals(MFloatVectorArray& normals, MSpace::Space space = MSpace::kObject) const;
  MStatus getNormalIds(MIntArray& counts, MIntArray& ids) const;
  MStatus getVertexNormal(int vertex, bool angleWeighted, MVector& normal, MSpace::Space space = MSpace::kObject) const;
  MStatus getFaceVertexNormal(int polygon, int vertex, MVector& normal, MSpace::Space space = MSpace::kObject) const;
  MStatus getFaceVertexNormals(int polygon, MFloatVectorArray& normals, MSpace::Space space = MSpace::kObject) const;
  MStatus getClosestPoint(const MPoint& to, MPoint& closest, MSpace::Space space = MSpace::kObject, int* polygon = NULL,
                          MMeshIsectAccelParams* accelParams = NULL) const;
  MStatus getClosestNormal(const MPoint& to, MVector& normal, MSpace::Space space = MSpace::kObject, int* polygon = NULL,
                           MMeshIsectAccelParams* accelParams = NULL) const;
  MStatus getClosestPointAndNormal(const MPoint& to, MPoint& closest, MVector& normal, MSpace::Space space = MSpace::kObject, int* polygon = NULL,
                                   MMeshIsectAccelParams* accelParams = NULL) const;
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
  bool anyIntersection(const MFloatPoint& source, const MFloatVector& direction, const MIntArray* faceIds, const MIntArray* triIds, bool idsSorted,
                       MSpace::Space space, float maxParam, bool testBothDirections, MMeshIsectAccelParams* accelParams, MFloatPoint& hitPoint,
                       float* hitRayParam, int* hitFace, int* hitTriangle, float* hitBary1, float* hitBary2, float tolerance = 1e-6f,
                       MStatus* status = NULL) const {
    return closestIntersection(source, direction, faceIds, triIds, idsSorted, space, maxParam, testBothDirections, accelParams, hitPoint, hitRayParam, hitFace,
                               hitTriangle, hitBary1, hitBary2, tolerance, status);
  }
  bool intersect(const MPoint& source, const MVector& direction, MPointArray& points, double tolerance = 1e-10, MSpace::Space space = MSpace::kObject,
                 MIntArray* polygons = NULL, MStatus* status = NULL) const;
  static MMeshIsectAccelParams autoUniformGridParams() { return {}; }
  MStatus freeCachedIntersectionAccelerator() { return MStatus::kSuccess; }
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
