// A mesh's faces.
#pragma once
#include <maya/MDagPath.h>
#include <maya/MElements_.h>
#include <maya/MFnMesh.h>
#include <maya/MIntArray.h>
#include <maya/MPoint.h>
#include <maya/MPointArray.h>
#include <maya/MVectorArray.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MItMeshPolygon {
 public:
  MItMeshPolygon(const MObject& mesh, MStatus* status = NULL);
  MItMeshPolygon(const MDagPath& path, const MObject& component = MObject::kNullObj, MStatus* status = NULL);
  bool isDone(MStatus* status = NULL) const;
  MStatus next();
  MStatus reset() { return fAt = fOf.First(), MStatus::kSuccess; }
  unsigned int count(MStatus* status = NULL) const;
  unsigned int index(MStatus* status = NULL) const;
  MStatus setIndex(int index, int& previous);
  unsigned int polygonVertexCount(MStatus* status = NULL) const;
  int vertexIndex(int i, MStatus* status = NULL) const;
  MStatus getVertices(MIntArray& vertices) const;
  MPoint point(int i, MSpace::Space space = MSpace::kObject, MStatus* status = NULL) const;
  void getPoints(MPointArray& points, MSpace::Space space = MSpace::kObject, MStatus* status = NULL) const;
  MPoint center(MSpace::Space space = MSpace::kObject, MStatus* status = NULL) const;
  MStatus getNormal(MVector& normal, MSpace::Space space = MSpace::kObject) const;
  MStatus getNormal(unsigned int vertex, MVector& normal, MSpace::Space space = MSpace::kObject) const;
  MStatus getNormals(MVectorArray& normals, MSpace::Space space = MSpace::kObject) const;
  MStatus getEdges(MIntArray& edges) const;
  MStatus getConnectedFaces(MIntArray& faces) const;
  bool onBoundary(MStatus* status = NULL) const;
  bool hasUVs(MStatus* status = NULL) const;
  MStatus getUV(int vertex, float2& uv, const MString* uvSet = NULL) const;
  MStatus getUVs(MFloatArray& u, MFloatArray& v, const MString* uvSet = NULL) const;
  MStatus getUVIndex(int vertex, int& index, const MString* uvSet = NULL) const;
  MStatus getArea(double& area, MSpace::Space space = MSpace::kObject) const;
  MStatus getTriangle(int triangle, MPointArray& points, MIntArray& vertices, MSpace::Space space = MSpace::kObject) const;
  MStatus numTriangles(int& count) const;
  bool hasValidTriangulation(MStatus* status = NULL) const;
  MStatus getTriangles(MPointArray& points, MIntArray& vertices, MSpace::Space space = MSpace::kObject) const;

 private:
  MFnMesh fMesh;
  MElements_ fOf;
  int fAt = fOf.First();
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
