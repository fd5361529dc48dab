// The adaptor over Maya.
#pragma once

#include <maya/MDagPath.h>
#include <maya/MObject.h>
#include <maya/MSelectionList.h>

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "adaptor/common/HostAdaptor.h"
#include "adaptor/common/Space.h"
#include "adaptor/maya/HostTime.h"
#include "adaptor/maya/RefreshPace.h"
#include "adaptor/maya/TakeRead.h"
#include "adaptor/maya/TakeSwitches.h"

namespace orv::rws::adaptor::maya {

class CMayaNode;

/// Everything that the core asks of a host, done in the scene that is open. One in a process, since
/// there is one scene. Main thread only, as all of the host's own interface.
class MayaAdaptorInterface final : public HostAdaptor {
 public:
  MayaAdaptorInterface();
  ~MayaAdaptorInterface() override;

  /// The one that there is; null while the plug-in is not loaded.
  static MayaAdaptorInterface* instance();

  // What the plug-in uses.

  /// Undoes, or redoes, the block `id` for its entry of the host's queue. False, with nothing done,
  /// unless it is the next one to be: the queue may have been trimmed, flushed or switched off.
  bool StepHistory(int id, bool back);
  /// The scene was closed: forgets its nodes and the undo history.
  void SceneGone();
  /// The host has put a node into the scene, be it one that an undo brought back, or taken it out.
  void NodeAdded(MObject& node);
  void NodeRemoved(MObject& node);
  /// Whether what the host calls now is called by a take that moves the time.
  bool IsInTick() const { return m_inTick; }
  /// Whether nodes that come do so for ImportNodes.
  bool IsImporting() const { return m_importing; }

  // What nodes and tests use.

  /// The one node of a transform at this place; null for what is no transform. Known to the rigs
  /// only once it is enlisted.
  CMayaNode* NodeFor(const MDagPath& path);
  CMayaNode* NodeFor(const MObject& transform);
  /// The scene's transform of this name, a path where names repeat, known from here on; or null.
  CMayaNode* FindSceneNode(const std::string& sceneName);
  /// The conversion of the scene as its up axis stands.
  Space GetSpace() const;
  /// Number of the running take, from 1 up; what was read for one is not asked twice.
  int GetTakeSerial() const { return IsRecording() ? m_takeSerial : 0; }
  /// What `read` finds at `time` (s) of what follows `drive`. In a take, nodes that follow others
  /// see all that rigs have written so far, whenever the host's time is moved.
  template <class Read>
  auto ReadDriven(Drive drive, double time, Read read) {
    if (drive == Drive::kNothing) return read();
    if (drive == Drive::kNodes && IsRecording()) PutTakePoses();
    return ReadAt(time, read);
  }
  /// Name that no node of the scene has, like `wish` and legal.
  std::string FreeName(const std::string& wish) const;
  void NoteProblem(const std::string& text) { Warn(text); }

  // The operations of the interface.

  std::string GetAdaptorName() override { return "Maya 2019 Adaptor"; }
  std::string GetDataFolder() override { return "adaptor_maya2019"; }
  std::string GetHostName() override { return "Maya"; }
  std::string GetHostVersion() override { return "2019"; }
  void* GetMainWindow() override;
  bool HostUndo() override;
  bool HostRedo() override;
  bool UndoBlock(int block) override;
  double GetCurrentTime() override;
  /// In a take the poses of the moment are put on their transforms first.
  void SetCurrentTime(double time) override;
  void GetTimeRange(double& start, double& end) override;
  void SetTimeRange(double start, double end) override;
  double GetFrameRate() override;
  void RefreshViews() override;
  void BeginRecording(double time, util::ReturnValue<std::vector<CInterface*>>& instances) override;
  void EndRecording() override;
  void FilterCurves() override;
  bool CanFilterCurves() override { return true; }
  bool CanShowFramesDuringRun() override { return true; }
  void ClearUndoHistory() override;
  void ShowMessage(const std::string& title, const std::string& text) override;
  void Select(HostNode& node) override;
  void BeginGroupSelection() override;
  void EndGroupSelection() override;

 private:
  HostNode* AddCamera(const std::string& sceneName, HostNode* parent, double fieldOfView,
                      double nearClip) override;
  HostNode* AddMesh(const std::string& sceneName, HostNode* parent,
                    const util::CMesh* mesh) override;
  HostNode* AddHub(const std::string& sceneName, HostNode* parent) override;
  HostNode* AddCopy(HostNode& original, const std::string& sceneName, HostNode* parent) override;
  std::string ReadNodes(const std::string& file, const std::string& prefix,
                        std::vector<HostNode*>& roots) override;
  HostNode* FindTagged(const std::string& tag, const std::string& sceneName) override;
  std::vector<HostNode*> TaggedNodes() override;
  void Remove(HostNode& node) override;
  bool PutTimeRange(double start, double end) override;
  void BlockMade(int id, const std::string& name) override;

  void CopyPose(CMayaNode& from, CMayaNode& to);
  /// A new transform in rig space's unit and axes.
  CMayaNode* AddTransform(const std::string& sceneName, HostNode* parent);
  /// Why no take may write the nodes of this rig; empty where it may.
  std::string WhyNoTake(CInterface* instance);
  template <class Visit>
  void ForTakeNodes(Visit visit);
  void PutTakePoses();
  void LeaveTake();

  std::unordered_map<unsigned, std::vector<CMayaNode*>> m_nodeOf;  ///< by the handle's hash
  TakeSwitches m_switches;
  RefreshPace m_pace;
  int m_takeSerial = 0;
  std::vector<CMayaNode*> m_keyed;  ///< by the latest take
  int m_groups = 0;                 ///< of selections that are open
  bool m_groupStarted = false;
  bool m_importing = false;
  bool m_inTick = false;
  bool m_madeEntries = false;  ///< the host's queue may hold entries of ours
};

}  // namespace orv::rws::adaptor::maya
