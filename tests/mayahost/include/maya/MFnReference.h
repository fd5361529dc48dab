// References to other scene files.
#pragma once
#include <maya/MFnDependencyNode.h>
#include <maya/MObjectArray.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnReference : public MFnDependencyNode {
  declareMinimalMFn(MFnReference)
  MString fileName(bool resolvedName, bool includePath, bool includeCopyNumber, MStatus* status = NULL) const;
  MString associatedNamespace(bool shortName, MStatus* status = NULL) const;
  MStatus nodes(MObjectArray& nodes) const;
  bool containsNode(const MObject& node, MStatus* status = NULL) const;
  bool containsNodeExactly(const MObject& node, MStatus* status = NULL) const { return containsNode(node, status); }
  bool isLoaded(MStatus* status = NULL) const;
  bool isLocked(MStatus* status = NULL) const;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
