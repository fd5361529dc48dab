// The corners of a mesh's faces.
#pragma once
#include <maya/MItMeshPolygon.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MItMeshFaceVertex {
 public:
  MItMeshFaceVertex(const MObject& mesh, MStatus* status = NULL) : fFace(mesh, status) {}
  MItMeshFaceVertex(const MDagPath& path, const MObject& component = MObject::kNullObj, MStatus* status = NULL) : fFace(path, component, status) {}
  bool isDone(MStatus* status = NULL) const { return fFace.isDone(status); }
  MStatus next();
  MStatus reset() { return fCorner = 0, fFace.reset(); }
  int faceId(MStatus* status = NULL) const { return static_cast<int>(fFace.index(status)); }
  int vertId(MStatus* status = NULL) const { return fFace.vertexIndex(fCorner, status); }
  int faceVertId(MStatus* status = NULL) const;
  MPoint position(MSpace::Space space = MSpace::kObject, MStatus* status = NULL) const { return fFace.point(fCorner, space, status); }
  MStatus getNormal(MVector& normal, MSpace::Space space = MSpace::kObject) const { return fFace.getNormal(static_cast<unsigned>(fCorner), normal, space); }
  bool hasUVs(MStatus* status = NULL) const { return fFace.hasUVs(status); }
  MStatus getUV(float2& uv, const MString* uvSet = NULL) const { return fFace.getUV(fCorner, uv, uvSet); }
  MStatus getUVIndex(int& index, const MString* uvSet = NULL) const { return fFace.getUVIndex(fCorner, index, uvSet); }

 private:
  MItMeshPolygon fFace;
  int fCorner = 0;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
