// Scene files.
#pragma once
#include <maya/MObject.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFileIO {
 public:
  enum ReferenceMode { kLoadDefault, kLoadAllReferences, kLoadNoReferences };
  static MString currentFile();
  static MStatus newFile(bool force = false);
  static MStatus open(const MString& file, const char* type = NULL, bool force = false, ReferenceMode mode = kLoadDefault, bool ignoreVersion = false);
  static MStatus save(bool force = false);
  static MStatus saveAs(const MString& file, const char* type = NULL, bool force = false);
  static MStatus import(const MString& file, const char* type = NULL, bool preserveReferences = false, const char* nameSpace = NULL,
                        bool ignoreVersion = false);
  static MStatus reference(const MString& file, bool deferReference = false, bool lockReference = false, const MString& nameSpace = MString());
  static MString fileType();
  static MStatus getReferences(MStringArray& files);
  static MStatus getReferenceNodes(const MString& file, MStringArray& names);
  static MStatus removeReference(const MString& file);
  static MStatus unloadReferenceByNode(const MObject& node);
  static MStatus loadReferenceByNode(const MObject& node);
  static MStatus exportAll(const MString& file, const char* type = NULL, bool preserveReferences = false);
  static MStatus exportSelected(const MString& file, const char* type = NULL, bool preserveReferences = false);
  static MStatus setCurrentFile(const MString& file);
  static MString beforeOpenFilename();
  static MString beforeSaveFilename();
  static MString beforeImportFilename();
  static MString beforeExportFilename();
  static MString beforeReferenceFilename();
  static bool isReadingFile();
  static bool isWritingFile();
  static bool isOpeningFile();
  static bool isNewingFile();
  static bool isImportingFile();
  static bool isReferencingFile();
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
