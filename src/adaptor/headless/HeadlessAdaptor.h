// The host without a 3D program: the adaptor over our own scene.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "adaptor/common/HostAdaptor.h"
#include "adaptor/headless/HostObservers.h"
#include "adaptor/headless/SceneMedia.h"

namespace orv::rws::adaptor::headless {

class HeadlessNode;
class Scene;
class SceneNode;

/// Everything that the core asks of a host, done on a Scene, which is not owned. Rig space is the
/// scene's own: nothing is converted. A program may hold several, each over a scene of its own.
class HeadlessAdaptor final : public HostAdaptor {
 public:
  explicit HeadlessAdaptor(Scene& scene);
  ~HeadlessAdaptor() override;

  // What programs use.

  /// Turns to another scene, before the old one goes: forgets all nodes, the selection and the undo
  /// history; the current time is the new range's start.
  void SetScene(Scene& scene);
  Scene& GetScene() { return *m_scene; }
  /// The scene's node of this name, a user's own or a rig's, known from here on; null without one.
  HeadlessNode* FindSceneNode(const std::string& sceneName);
  using MessageHandler = std::function<void(const std::string& title, const std::string& text)>;
  /// Where ShowMessage goes; by default the text is printed to stderr.
  void SetMessageHandler(MessageHandler handler) { m_showMessage = std::move(handler); }
  /// Called with every new current time (s).
  void SetTimeHandler(std::function<void(double)> handler) { m_timeChanged = std::move(handler); }
  /// Whoever follows tree, time, selection, undo and refresh.
  HostObservers& GetObservers() { return m_observers; }
  /// Of the scene: false, with nothing changed, unless it is finite and above 0. Keys keep their
  /// times. Undoable in an open block.
  bool SetFrameRate(double rate);
  /// Undoable in an open block, as is the next.
  void SetSound(std::optional<SceneSound> sound);
  /// Null for none.
  void SetBackdrop(SceneNode& camera, std::shared_ptr<const Backdrop> backdrop);
  /// Scene names of the cameras whose lens has keys, which a file has no place for.
  std::vector<std::string> GetNodesWithLensKeys() const;
  /// Brings all nodes of `added`, which keeps none, in below `parent` (null: the world), with the
  /// raw parts of its file that they use and the keys of its clip. Names that are taken are counted
  /// up; who refers to a node by name must see to it before. Undoable in an open block: the scene
  /// is then written as before to the byte. An empty text means success, with the new nodes at the
  /// top in `roots`; any other says why nothing has changed.
  std::string Merge(Scene& added, HeadlessNode* parent, std::vector<HeadlessNode*>& roots);
  /// The one HeadlessNode of a scene node, made at the first call.
  HeadlessNode& NodeFor(SceneNode& node);
  /// The same, known from here on.
  HeadlessNode& HandOut(SceneNode& node);

  // The operations of the interface.

  std::string GetAdaptorName() override { return "Headless Adaptor"; }
  std::string GetDataFolder() override { return "adaptor_headless"; }
  std::string GetHostName() override { return "Rigwright scene"; }
  std::string GetHostVersion() override { return "1"; }
  double GetCurrentTime() override { return m_time; }
  void SetCurrentTime(double time) override;
  void GetTimeRange(double& start, double& end) override;
  double GetFrameRate() override;
  void RefreshViews() override { m_observers.Tell(&HostObserver::OnRefresh); }
  void ShowMessage(const std::string& title, const std::string& text) override;

  // What nodes and undo steps use.

  /// The nodes of a detached tree are about to go for good.
  void LoseBelow(SceneNode& root);

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
  void SelectionChanged() override { m_observers.Tell(&HostObserver::OnSelection); }
  void UndoChanged() override { m_observers.Tell(&HostObserver::OnUndo); }
  void FollowTree();
  HeadlessNode& Add(const std::string& sceneName, HostNode* parent);

  Scene* m_scene;
  std::unordered_map<const SceneNode*, HeadlessNode*> m_nodeOf;
  double m_time = 0.0;
  MessageHandler m_showMessage;
  std::function<void(double)> m_timeChanged;
  HostObservers m_observers;
};

}  // namespace orv::rws::adaptor::headless
