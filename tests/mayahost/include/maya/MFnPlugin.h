// What a plug-in brings along.
#pragma once
#include <maya/MApiVersion.h>
#include <maya/MFnBase.h>
#include <maya/MPxNode.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>
#include <maya/MSyntax.h>
#include <maya/MTypeId.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
typedef MSyntax (*MCreateSyntaxFunction)();
typedef MStatus (*MInitializeFunction)();
class MFnPlugin : public MFnBase {
 public:
  MFnPlugin() = default;
  MFnPlugin(MObject& object, const char* vendor = "Unknown", const char* version = "Unknown", const char* requiredApiVersion = "Any", MStatus* status = NULL);
  MFn::Type type() const override;
  MString vendor(MStatus* status = NULL) const;
  MString version(MStatus* status = NULL) const;
  MString apiVersion(MStatus* status = NULL) const;
  MStatus setVersion(const MString& version);
  MString name(MStatus* status = NULL) const;
  MString loadPath(MStatus* status = NULL) const;
  MStatus setName(const MString& name, bool allowRename = true);
  MStatus registerCommand(const MString& name, MCreatorFunction creator, MCreateSyntaxFunction syntax = NULL);
  MStatus deregisterCommand(const MString& name);
  MStatus registerNode(const MString& type, const MTypeId& id, MCreatorFunction creator, MInitializeFunction initialize, int nodeType = 0,
                       const MString* classification = NULL);
  MStatus deregisterNode(const MTypeId& id);
  MStatus registerFileTranslator(const MString& name, const char* pixmap, MCreatorFunction creator, const char* optionsScript = NULL,
                                 const char* defaultOptions = NULL, bool requiresFullMel = false);
  MStatus deregisterFileTranslator(const MString& name);
  static MObject findPlugin(const MString& name);
  static bool isNodeRegistered(const MString& type);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE

#if defined(_WIN32)
#define PLUGIN_EXPORT __declspec(dllexport)
#else
#define PLUGIN_EXPORT __attribute__((visibility("default")))
#endif
#ifndef MNoPluginEntry
extern "C" PLUGIN_EXPORT MStatus initializePlugin(MObject object);
extern "C" PLUGIN_EXPORT MStatus uninitializePlugin(MObject object);
#endif
#ifndef MNoVersionString
extern "C" {
PLUGIN_EXPORT __attribute__((used, weak)) char MApiVersion[] = MAYA_API_VERSION_STRING;
}
#endif
