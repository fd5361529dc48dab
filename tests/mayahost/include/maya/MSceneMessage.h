// What happens to the scene.
#pragma once
#include <maya/MCallbackIdArray.h>
#include <maya/MMessage.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MSceneMessage : public MMessage {
 public:
  // clang-format off
  enum Message {
    kSceneUpdate = 0, kBeforeNew, kAfterNew, kBeforeImport, kAfterImport, kBeforeOpen, kAfterOpen, kBeforeFileRead, kAfterFileRead,
    kAfterSceneReadAndRecordEdits, kBeforeExport, kAfterExport, kBeforeSave, kAfterSave, kBeforeCreateReference, kAfterCreateReference,
    kBeforeRemoveReference, kAfterRemoveReference, kBeforeImportReference, kAfterImportReference, kBeforeExportReference, kAfterExportReference,
    kBeforeUnloadReference, kAfterUnloadReference,
    kBeforeSoftwareRender, kAfterSoftwareRender, kBeforeSoftwareFrameRender, kAfterSoftwareFrameRender, kSoftwareRenderInterrupted, kMayaInitialized,
    kMayaExiting, kBeforeNewCheck, kBeforeOpenCheck, kBeforeSaveCheck, kBeforeImportCheck, kBeforeExportCheck, kBeforeLoadReference, kAfterLoadReference,
    kBeforeLoadReferenceCheck, kBeforeCreateReferenceCheck, kBeforePluginLoad, kAfterPluginLoad, kBeforePluginUnload, kAfterPluginUnload,
    kBeforeCreateReferenceAndRecordEdits, kAfterCreateReferenceAndRecordEdits, kBeforeReference = 14, kAfterReference = 15,
    kLast = 46
  };
  // clang-format on
  static MCallbackId addCallback(Message message, MBasicFunction function, void* clientData = NULL, MStatus* status = NULL);
  /// Of plug-ins that come and go: their paths and names.
  static MCallbackId addStringArrayCallback(Message message, MStringArrayFunction function, void* clientData = NULL, MStatus* status = NULL);
  static MCallbackId addCheckCallback(Message message, MCheckFunction function, void* clientData = NULL, MStatus* status = NULL);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
