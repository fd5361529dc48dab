// What happens to the hierarchy.
#pragma once
#include <maya/MCallbackIdArray.h>
#include <maya/MDagPath.h>
#include <maya/MMessage.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MDagMessage : public MMessage {
 public:
  // clang-format off
  enum DagMessage {
    kInvalidMsg = -1, kParentAdded, kParentRemoved, kChildAdded, kChildRemoved, kChildReordered, kInstanceAdded, kInstanceRemoved, kLast
  };
  // clang-format on
  typedef void (*MMessageParentChildFunction)(DagMessage message, MDagPath& child, MDagPath& parent, void* clientData);
  static MCallbackId addParentAddedCallback(MParentChildFunction function, void* clientData = NULL, MStatus* status = NULL);
  static MCallbackId addParentAddedDagPathCallback(MDagPath& node, MParentChildFunction function, void* clientData = NULL, MStatus* status = NULL);
  static MCallbackId addParentRemovedCallback(MParentChildFunction function, void* clientData = NULL, MStatus* status = NULL);
  static MCallbackId addParentRemovedDagPathCallback(MDagPath& node, MParentChildFunction function, void* clientData = NULL, MStatus* status = NULL);
  static MCallbackId addChildAddedCallback(MParentChildFunction function, void* clientData = NULL, MStatus* status = NULL);
  static MCallbackId addChildAddedDagPathCallback(MDagPath& node, MParentChildFunction function, void* clientData = NULL, MStatus* status = NULL);
  static MCallbackId addChildRemovedCallback(MParentChildFunction function, void* clientData = NULL, MStatus* status = NULL);
  static MCallbackId addChildRemovedDagPathCallback(MDagPath& node, MParentChildFunction function, void* clientData = NULL, MStatus* status = NULL);
  static MCallbackId addInstanceAddedCallback(MParentChildFunction function, void* clientData = NULL, MStatus* status = NULL);
  static MCallbackId addInstanceAddedDagPathCallback(MDagPath& node, MParentChildFunction function, void* clientData = NULL, MStatus* status = NULL);
  static MCallbackId addInstanceRemovedCallback(MParentChildFunction function, void* clientData = NULL, MStatus* status = NULL);
  static MCallbackId addInstanceRemovedDagPathCallback(MDagPath& node, MParentChildFunction function, void* clientData = NULL, MStatus* status = NULL);
  static MCallbackId addDagCallback(DagMessage message, MParentChildFunction function, void* clientData = NULL, MStatus* status = NULL);
  static MCallbackId addAllDagChangesCallback(MMessageParentChildFunction function, void* clientData = NULL, MStatus* status = NULL);
  static MCallbackId addAllDagChangesDagPathCallback(MDagPath& node, MMessageParentChildFunction function, void* clientData = NULL, MStatus* status = NULL);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
