// A file by its name.
#pragma once
#include <maya/MString.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFileObject {
 public:
  MString name() const { return rawName(); }
  MString rawName() const;
  MString rawPath() const;
  MString rawFullName() const { return fName; }
  MString path() const { return rawPath(); }
  MString fullName() const { return fName; }
  MString expandedFullName() const { return fName.expandFilePath(); }
  MString expandedPath() const { return rawPath().expandFilePath(); }
  MString resolvedName() const { return rawName(); }
  MString resolvedPath() const { return expandedPath(); }
  MString resolvedFullName() const { return expandedFullName(); }
  MStatus setName(const MString& name) { return setRawFullName(rawPath() + name); }
  MStatus setRawName(const MString& name) { return setName(name); }
  MStatus setRawPath(const MString& path);
  MStatus setRawFullName(const MString& name) { return fName = name, MStatus::kSuccess; }
  MStatus overrideResolvedFullName(const MString& name) { return setRawFullName(name); }
  bool exists() const;
  bool isSet() const { return fName.length() > 0; }

 private:
  MString fName;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
