// A mesh's points.
#pragma once
#include <maya/MDagPath.h>
#include <maya/MElements_.h>
#include <maya/MFnMesh.h>
#include <maya/MIntArray.h>
#include <maya/MPoint.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MItMeshVertex {
 public:
  MItMeshVertex(const MObject& mesh, MStatus* status = NULL);
  MItMeshVertex(const MDagPath& path, const MObject& component = MObject::kNullObj, MStatus* status = NULL);
  bool isDone(MStatus* status = NULL) const;
  MStatus next() { return fAt = fOf.Next(fAt), MStatus::kSuccess; }
  MStatus reset() { return fAt = fOf.First(), MStatus::kSuccess; }
  unsigned int count(MStatus* status = NULL) const;
  int index(MStatus* status = NULL) const;
  MStatus setIndex(int index, int& previous);
  MPoint position(MSpace::Space space = MSpace::kObject, MStatus* status = NULL) const;
  MStatus setPosition(const MPoint& point, MSpace::Space space = MSpace::kObject);
  MStatus getNormal(MVector& normal, MSpace::Space space = MSpace::kObject) const;
  MStatus getConnectedFaces(MIntArray& faces) const;
  MStatus getConnectedVertices(MIntArray& vertices) const;
  MStatus getConnectedEdges(MIntArray& edges) const;
  MStatus numConnectedEdges(int& count) const;
  bool onBoundary(MStatus* status = NULL) const;
  MStatus translateBy(const MVector& v, MSpace::Space space = MSpace::kObject);
  MStatus updateSurface() { return fMesh.updateSurface(); }
  MStatus numConnectedFaces(int& count) const;

 private:
  MFnMesh fMesh;
  MElements_ fOf;
  int fAt = fOf.First();
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
