// Namespaces.
#pragma once
#include <maya/MObjectArray.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MNamespace {
 public:
  static MStatus addNamespace(const MString& name, const MString* parent = NULL);
  static MStatus removeNamespace(const MString& name, bool removeContents = false);
  static bool namespaceExists(const MString& name, MStatus* status = NULL);
  static MStatus setCurrentNamespace(const MString& name);
  static MString currentNamespace(MStatus* status = NULL);
  static MString rootNamespace(MStatus* status = NULL);
  static MStringArray getNamespaces(const MString& parent = MString(), bool recurse = false, MStatus* status = NULL);
  static MStatus getNamespaceObjects(const MString& name, MObjectArray& objects, bool recurse = false);
  static MString getNamespaceFromName(const MString& name, MStatus* status = NULL);
  static MString parentNamespace(MStatus* status = NULL);
  static MString validateName(const MString& name, MStatus* status = NULL);
  static MString stripNamespaceFromName(const MString& name, MStatus* status = NULL);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
