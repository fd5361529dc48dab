// File formats of plug-ins.
#pragma once
#include <maya/MFileObject.h>
#include <maya/MObject.h>
#include <maya/MString.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MPxFileTranslator {
 public:
  enum MFileKind { kIsMyFileType, kCouldBeMyFileType, kNotMyFileType };
  enum FileAccessMode {
    kUnknownAccessMode,
    kOpenAccessMode,
    kReferenceAccessMode,
    kImportAccessMode,
    kSaveAccessMode,
    kExportAccessMode,
    kExportActiveAccessMode
  };
  MPxFileTranslator() = default;
  virtual ~MPxFileTranslator() = default;
  virtual MStatus reader(const MFileObject& file, const MString& options, FileAccessMode mode);
  virtual MStatus writer(const MFileObject& file, const MString& options, FileAccessMode mode);
  virtual bool haveReadMethod() const { return false; }
  virtual bool haveWriteMethod() const { return false; }
  virtual bool haveNamespaceSupport() const { return false; }
  virtual MString defaultExtension() const { return ""; }
  virtual MString filter() const { return "*.*"; }
  virtual bool canBeOpened() const { return true; }
  virtual MFileKind identifyFile(const MFileObject& file, const char* buffer, short size) const;
  static FileAccessMode fileAccessMode();
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
