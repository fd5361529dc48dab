// All that a rig may ask of the core.
#pragma once

#include <string>
#include <vector>

#include "core/interface/CExtendable.h"

namespace orv::util {
class CMesh;
}
namespace orv::unidevice {
class Property;
}

namespace orv::rws {

class CNode;
class CSnapshot;
class CSnapshot_Helper;
class CSnapshot_Lens;
class CSnapshot_Mesh;
class CUndo;

/// Buttons of a message box, the low four bits of its flags.
enum MessageBoxButtons : unsigned {
  kButtonsOk = 0,
  kButtonsYesNo = 1,
  kButtonsYesNoCancel = 2,
  kButtonsOkCancel = 3,
};

/// Icon of a message box, the bits above the buttons.
enum MessageBoxIcon : unsigned {
  kIconNone = 0,
  kIconQuestion = 16,
  kIconCritical = 32,
  kIconWarning = 48,
};

/// What a message box answers. A box closed in any other way answers kAnswerCancel.
enum MessageBoxAnswer : int {
  kAnswerOk = 0,
  kAnswerCancel = 1,
  kAnswerYes = 2,
  kAnswerNo = 3,
};

/// The one numbered call of CInterface that rigs use; the others serve the core's template
/// machinery.
inline constexpr int kPublishOutput = 40;  ///< in Define: shows the unidevice::Property in `a`, the
                                           ///< rig's, to others as an output

/// The core as one rig sees it; implemented by the rig's instance, which outlives the rig.
/// Operations marked elem add to the configuration tree, in the order of the calls.
class CInterface : public CExtendable {
 public:
  /// Receiver of configuration events. The name is the label that the element was declared with,
  /// or that label behind "REALUNDO" or "REALREDO" when undo or redo replays an event.
  class Callback {
   public:
    virtual void OnCallback(std::string name) = 0;
    virtual void ReservedCallback1() {}
    virtual void ReservedCallback2() {}
    virtual ~Callback() = default;
  };

  /// Replaces the items of a combo box later on. Belongs to the instance.
  class ComboUpdater {
   public:
    virtual void Update(std::vector<std::string> items) = 0;
    virtual ~ComboUpdater() = default;
  };

  /// Hands an undoable step to the host's queue, which owns it from here on. 0 is success; when
  /// undo is off the step is destroyed unused.
  virtual int PushUndo(CUndo* step) = 0;
  /// Adds an input to the instance's device. `flags` are the control kinds that it accepts.
  /// The property belongs to the instance.
  virtual unidevice::Property* AddInput(std::string name, std::string label, unsigned flags) = 0;
  /// The same with label = name.
  virtual unidevice::Property* AddInput(std::string name, unsigned flags) = 0;
  /// Null if there is none.
  virtual unidevice::Property* FindInput(std::string name) = 0;

  /// Opens the root of the configuration tree; first call of Define.
  virtual void BeginConfig() = 0;
  /// Last call of Define; does nothing.
  virtual void EndConfig() = 0;
  /// elem. Groups nest.
  virtual void BeginGroup(std::string label, std::string tooltip) = 0;
  /// Closes the group and returns its parent (opaque).
  virtual void* EndGroup() = 0;
  /// elem. Integer spinner bound to `*value`, which the rig owns. With `asInput` an input named
  /// "Spinner: " and the label turns the value during a take.
  virtual void AddSpinnerInt(std::string label, std::string tooltip, int* value, int min, int max,
                             int step, int extra, bool asInput, Callback* cb) = 0;
  /// elem. Real spinner bound to `*value`; `decimals` are shown.
  virtual void AddSpinner(std::string label, std::string tooltip, double* value, double min,
                          double max, double step, int decimals, bool asInput, Callback* cb) = 0;
  virtual void AddCheckBox(std::string label, std::string tooltip, bool* value, Callback* cb) = 0;
  virtual void AddTextBox(std::string label, std::string tooltip, std::string* value,
                          Callback* cb) = 0;
  virtual ComboUpdater* AddComboBox(std::string label, std::string tooltip,
                                    std::vector<std::string> items, int* index, Callback* cb) = 0;
  virtual void AddButton(std::string label, std::string tooltip, Callback* cb) = 0;
  virtual void Reserved1() {}
  /// All widgets re-read their bound values.
  virtual void RefreshConfig() = 0;
  /// Opens the input configuration dialog of this instance.
  virtual void ShowInputConfig() = 0;

  /// Absolute path of the rig's resource folder.
  virtual std::string GetDataPath() = 0;
  /// Copies `size` bytes into the instance's blob, which is saved with the scene.
  virtual void SetUserData(const void* data, int size) = 0;
  /// The blob, owned by the instance; `size` may be null. Null when there never was one.
  virtual const void* GetUserData(int* size) = 0;
  virtual void ClearUserData() = 0;

  /// Removes the node from the scene.
  virtual void DeleteNode(CNode* node, bool undoable) = 0;
  /// Looks the name up among the instance's nodes; null if missing. The core keeps the node.
  virtual CNode* FindNode(std::string name) = 0;
  /// New camera node under `parent`, null meaning the scene root. The core keeps the node.
  /// `fieldOfView` is the vertical one, in degrees, `nearClip` in metres.
  virtual CNode* CreateCameraNode(std::string name, CNode* parent, double fieldOfView,
                                  double nearClip) = 0;
  /// New mesh node with a copy of `mesh`. The core keeps the node.
  virtual CNode* CreateMeshNode(std::string name, CNode* parent, const util::CMesh* mesh,
                                int flags) = 0;
  virtual void Reserved2(std::string, util::CMesh) = 0;

  /// Each Get is paired with its Release; a null node yields null and a null release is ignored.
  virtual CSnapshot* GetSnapshot(CNode* node, double time) = 0;
  virtual CSnapshot_Helper* GetSnapshotHelper(CNode* node) = 0;
  virtual CSnapshot_Mesh* GetSnapshotMesh(CNode* node, double time) = 0;
  virtual CSnapshot_Lens* GetSnapshotLens(CNode* node, double time) = 0;
  /// Hands a CNode that GetParent or GetChild gave, or a shape-kind object, back to where it came
  /// from. `object` points to the CExtendable base of what is handed back.
  virtual void ReleaseNode(void* object) = 0;
  virtual void ReleaseSnapshotLens(CSnapshot_Lens* snapshot) = 0;
  virtual void ReleaseSnapshotMesh(CSnapshot_Mesh* snapshot) = 0;
  virtual void ReleaseSnapshotHelper(CSnapshot_Helper* snapshot) = 0;
  virtual void ReleaseSnapshot(CSnapshot* snapshot) = 0;

  virtual double GetTime() = 0;           ///< host's current time (s)
  virtual double GetFrameRate() = 0;      ///< frames per second
  virtual double GetFrameDuration() = 0;  ///< s
  /// Redraws the host's views; does nothing while a take is recording.
  virtual void RefreshViews() = 0;
  /// Modal box on the host's main window. Flags: MessageBoxButtons and MessageBoxIcon.
  virtual int MessageBox(std::string title, std::string text, unsigned flags) = 0;
  ~CInterface() override = default;

  // Behind the slots above, whose order stays.

  /// In Start: the rig begins by its inputs, so that those at the take's start are recorded like
  /// those of its frames.
  virtual void RecordInputsAtStart() = 0;
};

}  // namespace orv::rws
