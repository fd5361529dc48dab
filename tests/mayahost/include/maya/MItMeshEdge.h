// A mesh's edges.
#pragma once
#include <maya/MDagPath.h>
#include <maya/MElements_.h>
#include <maya/MFnMesh.h>
#include <maya/MIntArray.h>
#include <maya/MPoint.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MItMeshEdge {
 public:
  MItMeshEdge(const MObject& mesh, MStatus* status = NULL);
  MItMeshEdge(const MDagPath& path, const MObject& component = MObject::kNullObj, MStatus* status = NULL);
  bool isDone(MStatus* status = NULL) const;
  MStatus next() { return fAt = fOf.Next(fAt), MStatus::kSuccess; }
  MStatus reset() { return fAt = fOf.First(), MStatus::kSuccess; }
  unsigned int count(MStatus* status = NULL) const;
  int index(MStatus* status = NULL) const;
  /// The point at the start (0) or the end (1).
  int index(int vertex, MStatus* status = NULL) const;
  MStatus setIndex(int index, int& previous);
  MPoint point(int vertex, MSpace::Space space = MSpace::kObject, MStatus* status = NULL) const;
  MPoint center(MSpace::Space space = MSpace::kObject, MStatus* status = NULL) const;
  MStatus getLength(double& length, MSpace::Space space = MSpace::kObject) const;
  bool isSmooth(MStatus* status = NULL) const;
  bool onBoundary(MStatus* status = NULL) const;
  int getConnectedFaces(MIntArray& faces, MStatus* status = NULL) const;
  MStatus numConnectedFaces(int& count) const;

 private:
  MFnMesh fMesh;
  MElements_ fOf;
  int fAt = fOf.First();
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
