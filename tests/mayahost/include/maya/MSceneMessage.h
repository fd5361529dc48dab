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
    kBeforeUnloadReference, kAfterUnloadReference, kBeforeLoadReference, kAfterLoadReference, kBeforeSoftwareRender, kAfterSoftwareRender,
    kBeforeSoftwareFrameRender, kAfterSoftwareFrameRender, kSoftwareRenderInterrupted, kMayaInitialized, kMayaExiting, kBeforeNewCheck, kBeforeOpenCheck,
    kBeforeSaveCheck, kBeforeImportCheck, kBeforeExportCheck, kBeforeLoadReferenceCheck, kBeforeReference, kAfterReference, kBeforePluginLoad,
    kAfterPluginLoad, kBeforePluginUnload, kAfterPluginUnload, kBeforeCreateReferenceCheck, kLast
  };
  // clang-format on
  static MCallbackId addCallback(Message message, MBasicFunction function, void* clientData = NULL, MStatus* status = NULL);
  static MCallbackId addCheckCallback(Message message, MCheckFunction function, void* clientData = NULL, MStatus* status = NULL);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
