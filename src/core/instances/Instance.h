// One rig in one scene.
#pragma once

#include <array>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "core/config/ConfigTree.h"
#include "core/instances/ControlHolder.h"
#include "core/instances/InstanceVirtualDevice.h"
#include "core/interface/CInterface.h"
#include "unidevice/PropertyHandler.h"
#include "util/AVar_Linear.h"
#include "util/MessageNode.h"

namespace orv::util::xml {
class Element;
class Tag;
}  // namespace orv::util::xml

namespace orv::rws {
class AdaptorInterface;
class CCamera;
}  // namespace orv::rws

namespace orv::rws::core {

class CoreNode;
class InstanceHost;
class Snapshot_Mesh_Proxy;
class Tool;
struct OwnedBlock;

/// A rig object with all that the core keeps for it: its configuration tree, its inputs as a
/// device, the recorded input tracks and the blob. Implements what the rig asks of the core.
/// Owned by its row in the instance tree.
class Instance : public InstanceVirtualDevice, public CInterface, public util::MessageNode {
 public:
  /// A live spinner: an element whose value an input turns during a take.
  using LiveSpinner = std::pair<int, unidevice::Property*>;

  /// Value of a live spinner's element at both ends of the latest take or resimulation.
  struct LiveSpinnerSpan {
    int elementId = -1;
    double start = 0.0;
    double end = 0.0;
  };

  /// Takes over `rig` (not null). An empty name becomes the tool's id and "_01"; any name is made
  /// unique by counting up its number.
  Instance(InstanceHost& host, Tool* tool, CCamera* rig, const std::string& name);
  ~Instance() override;

  // What the clock calls. Times are seconds on the frame grid.
  void Start(double t);
  void Step(double t);
  void Stop(double t);
  void Update(double t);
  /// Asks the processor to fetch what a step of this instance reads; costs no wait. The rig's part
  /// needs the instance's own to have come.
  void Prefetch() const;
  void PrefetchRig() const;

  /// Number of this instance, unique in the core. One that an undone deletion builds anew takes
  /// that of its predecessor over.
  int GetIdentity() const { return m_identity; }
  void SetIdentity(int identity) { m_identity = identity; }
  /// Expires with this object.
  std::weak_ptr<int> GetLife() const { return m_life; }
  InstanceHost& GetHost() const { return m_host; }
  CCamera* GetRig() const { return m_pRig; }
  Tool* GetTool() const { return m_pTool; }
  const std::string& GetInstanceName() const { return m_name; }
  /// Renames the instance and its scene nodes, all undoable in an open block. The caller has made
  /// sure that the name is free.
  void Rename(const std::string& name);
  /// The instance's own name alone; those of its nodes are other steps' business.
  void SetName(const std::string& name);
  const std::string& GetIconPath() const { return m_iconPath; }
  const std::string& GetCurrentProfile() const { return m_currentProfile; }
  /// Scene names of nodes that came with the record and that FindNode did not find in the scene.
  const std::set<std::string>& GetLostNodes() const { return m_lostNodes; }
  void SetCurrentProfile(const std::string& name);
  bool IsTouched() const { return m_bTouched; }
  void SetTouched(bool touched) { m_bTouched = touched; }

  ConfigTree& GetConfig() { return m_config; }
  const ConfigTree& GetConfig() const { return m_config; }
  unidevice::PropertyHandler& GetProperties() { return m_properties; }
  const unidevice::PropertyHandler& GetProperties() const { return m_properties; }
  /// Binds inputs whose control has come; not in a resimulation, which swaps them.
  void RebindInputs();
  /// One track per property, in the properties' order.
  std::vector<util::AVar_Linear<double>>& GetTracks() { return m_tracks; }
  /// Replaces a track by one that no take of this instance has recorded: what the latest take noted
  /// of the input's live spinner goes with the old one.
  void SetTrack(int index, util::AVar_Linear<double> track);
  /// Which inputs takes record, by their index; the others play their tracks, as in a resimulation.
  /// Without a word all are recorded, and an input that comes later is not. Not during a take.
  void SetArmed(std::optional<std::vector<bool>> armed) { m_armed = std::move(armed); }
  /// Whether a take plays the input's track.
  bool IsPlayed(int input) const;
  /// Whether the run that goes on feeds the input, or one of all for -1, from its track.
  bool IsFed(int input) const;
  const std::vector<LiveSpinner>& GetLiveSpinners() const { return m_liveSpinners; }
  const std::vector<LiveSpinnerSpan>& GetLiveSpinnerSpans() const { return m_liveSpinnerSpans; }
  /// The nodes of this rig that the adaptor knows, in the order of their creation.
  std::vector<CoreNode*> GetNodes() const;

  /// Writes the record from which the rig can be rebuilt; the caller has run the rig's Store.
  void WriteRecord(util::xml::Tag& out) const;
  /// Reads parameters, inputs, tracks and blob from a record, after Define and before Restore.
  /// An empty text means success, any other names what is damaged.
  std::string ReadRecord(const util::xml::Element& record);

  /// Notes what the rig stores, for the steps that it makes in the open undo block while somebody
  /// holds the result: to be called ahead of what may push its step behind the change.
  std::shared_ptr<OwnedBlock> OpenOwnedBlock();

  /// Read-only numbers that the rig publishes, as properties whose `read` gives them; the rig's.
  const std::vector<unidevice::Property*>& GetOutputs() const { return m_outputs; }

  // CExtendable
  std::intptr_t Extension(int code, void* a, void* b) override;
  void GetExtensions(std::vector<int>& out) override;

  // CInterface
  int PushUndo(CUndo* step) override;
  unidevice::Property* AddInput(std::string name, std::string label, unsigned flags) override;
  unidevice::Property* AddInput(std::string name, unsigned flags) override;
  unidevice::Property* FindInput(std::string name) override;
  void BeginConfig() override;
  void EndConfig() override {}
  void BeginGroup(std::string label, std::string tooltip) override;
  void* EndGroup() override;
  void AddSpinnerInt(std::string label, std::string tooltip, int* value, int min, int max, int step,
                     int, bool asInput, Callback* cb) override;
  void AddSpinner(std::string label, std::string tooltip, double* value, double min, double max,
                  double step, int decimals, bool asInput, Callback* cb) override;
  void AddCheckBox(std::string label, std::string tooltip, bool* value, Callback* cb) override;
  void AddTextBox(std::string label, std::string tooltip, std::string* value,
                  Callback* cb) override;
  ComboUpdater* AddComboBox(std::string label, std::string tooltip, std::vector<std::string> items,
                            int* index, Callback* cb) override;
  void AddButton(std::string label, std::string tooltip, Callback* cb) override;
  void RefreshConfig() override;
  void ShowInputConfig() override;
  std::string GetDataPath() override;
  void SetUserData(const void* data, int size) override;
  const void* GetUserData(int* size) override;
  void ClearUserData() override;
  void DeleteNode(CNode* node, bool undoable) override;
  CNode* FindNode(std::string name) override;
  CNode* CreateCameraNode(std::string name, CNode* parent, double fieldOfView,
                          double nearClip) override;
  CNode* CreateMeshNode(std::string name, CNode* parent, const util::CMesh* mesh,
                        int flags) override;
  void Reserved2(std::string name, util::CMesh mesh) override;
  CSnapshot* GetSnapshot(CNode* node, double time) override;
  CSnapshot_Helper* GetSnapshotHelper(CNode* node) override;
  CSnapshot_Mesh* GetSnapshotMesh(CNode* node, double time) override;
  CSnapshot_Lens* GetSnapshotLens(CNode* node, double time) override;
  void ReleaseNode(void* object) override;
  void ReleaseSnapshotLens(CSnapshot_Lens* snapshot) override;
  void ReleaseSnapshotMesh(CSnapshot_Mesh* snapshot) override;
  void ReleaseSnapshotHelper(CSnapshot_Helper* snapshot) override;
  void ReleaseSnapshot(CSnapshot* snapshot) override;
  double GetTime() override;
  double GetFrameRate() override;
  double GetFrameDuration() override;
  void RefreshViews() override;
  int MessageBox(std::string title, std::string text, unsigned flags) override;
  void RecordInputsAtStart() override { m_recordStart = true; }

 private:
  friend class TakeUndo;
  class COREComboUpdater;
  /// Every kind of control: an input of any kind can be fed by it.
  static constexpr unsigned kAnyControl = 65535;

  /// A temporary control and the track that feeds it.
  struct Feed {
    unidevice::Control* control;
    const util::AVar_Linear<double>* track;
  };
  /// A live spinner that something may turn in the running take.
  struct LiveFeed {
    ConfigElement* element;
    unidevice::Property* property;
  };

  AdaptorInterface& Adaptor() const;
  void AddLiveSpinner(int elementId, const std::string& label);
  int InputOfSpinner(int elementId) const;
  void StartLiveSpinners();
  void StopLiveSpinners();
  void ApplyLiveSpinners();
  void UseTemporaryControls();
  void RestoreControls();
  void FollowInputs();
  void PlanFeeds();
  void RecordInputs(double t);
  void FeedInputs(double t);
  /// Gives a node that was made for the rig its tag; null for null.
  CNode* Mark(CoreNode* made);
  void NoteOwner(CoreNode& node);

  CCamera* m_pRig;  ///< owned; ended by its Destroy
  ConfigTree m_config;
  std::vector<LiveSpinner> m_liveSpinners;
  Tool* m_pTool;  ///< not owned
  bool m_bTouched = false;
  unidevice::PropertyHandler m_properties;
  std::vector<unidevice::Property*> m_outputs;  ///< the rig's
  bool m_recordStart = false;                   ///< the rig begins by its inputs
  std::vector<util::AVar_Linear<double>> m_tracks;
  std::optional<std::vector<bool>> m_armed;   ///< see SetArmed
  bool m_running = false;                     ///< in a take or a resimulation
  std::deque<ControlHolder> m_savedControls;  ///< of inputs that a run feeds
  std::vector<std::unique_ptr<unidevice::Control>> m_temporaryControls;
  std::string m_currentProfile = "Factory Settings";
  std::string m_name;
  std::string m_iconPath;
  bool m_bHasUserData = false;
  std::vector<unsigned char> m_userData;
  std::vector<std::unique_ptr<COREComboUpdater>> m_comboUpdaters;
  std::vector<LiveSpinnerSpan> m_liveSpinnerSpans;
  // Of the running take, so that a frame looks nothing up.
  std::vector<Feed> m_feeds;  ///< inputs that are fed, whose track holds something
  std::vector<LiveFeed> m_liveFeeds;
  int m_plannedInputs = 0;                             ///< how many inputs there were then
  std::array<const CoreNode*, 4> m_prefetchedNodes{};  ///< the first nodes of the rig
  /// Tags of this rig's nodes by their name within it, as loaded: what FindNode resolves by.
  std::map<std::string, std::string> m_nodeTags;
  std::set<std::string> m_lostNodes;       ///< see GetLostNodes
  std::shared_ptr<int> m_life;             ///< expires with this instance: undo steps watch it
  std::weak_ptr<OwnedBlock> m_ownedBlock;  ///< of the steps that the rig has made last
  int m_ownedBlockNumber = 0;
  std::vector<std::unique_ptr<Snapshot_Mesh_Proxy>> m_freeMeshes;
  bool m_updating = false;  ///< the rig is being told the host's time
  int m_identity;
  InstanceHost& m_host;
};

}  // namespace orv::rws::core
