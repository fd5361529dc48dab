/// The scene of the headless host.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "adaptor/common/RigRecord.h"
#include "adaptor/headless/SceneMedia.h"
#include "adaptor/headless/SceneNode.h"

namespace orv::rws::adaptor::headless {

class GltfDocument;

/// A tree of nodes with keys, a frame rate, a playback range and the records of the scene's rigs.
/// It keeps the document that it was read from, so that a save passes on what it does not
/// understand. Main thread only.
class Scene {
 public:
  Scene();
  ~Scene();
  Scene(const Scene&) = delete;
  Scene& operator=(const Scene&) = delete;

  const std::vector<std::unique_ptr<SceneNode>>& GetRoots() const { return m_roots; }
  /// All nodes, parents before their children, in the order of the tree.
  std::vector<SceneNode*> GetNodes() const;
  std::size_t GetNodeCount() const { return m_byName.size(); }
  /// The node of exactly this name, or null.
  SceneNode* Find(const std::string& name) const;
  /// The first node in the order of the tree with exactly this tag, or null; null for an empty tag.
  SceneNode* FindTagged(const std::string& tag) const;

  /// `wish` when no node has that name, else with "_2", "_3", ... behind it. `except` may keep its
  /// own name.
  std::string UniqueName(const std::string& wish, const SceneNode* except = nullptr) const;

  /// Index behind the last child, for `index` arguments.
  static constexpr std::size_t kLast = static_cast<std::size_t>(-1);

  /// New node at the identity, named `UniqueName(wish)`; null as parent means the world.
  SceneNode& AddNode(const std::string& wish, SceneNode* parent = nullptr,
                     std::size_t index = kLast);
  /// Takes a node with all that is below it out of the scene; the caller owns it from here on.
  std::unique_ptr<SceneNode> Detach(SceneNode& node);
  /// Puts a detached node back. Names that have been given away meanwhile are made unique.
  SceneNode& Attach(std::unique_ptr<SceneNode> node, SceneNode* parent, std::size_t index = kLast);
  /// Names `node` `UniqueName(wish)` and returns that.
  const std::string& Rename(SceneNode& node, const std::string& wish);

  /// Moves a node below another (null: the world); its local pose and keys stay as they are. False
  /// when `parent` is `node` or below it.
  bool Move(SceneNode& node, SceneNode* parent, std::size_t index = kLast);
  /// Moves a node below another (null: the world) so that its world pose stays what it was, at
  /// `time` for a node without keys, else at each of its keys' times (a STEP or CUBICSPLINE channel
  /// is baked per frame). Shear that the new parent would cause is lost. A user's node that comes
  /// to hang on a rig's notes its home, and forgets it when it goes elsewhere. False when `parent`
  /// is `node` or below it, or has no inverse (a scale of 0); nothing has changed then.
  bool Reparent(SceneNode& node, SceneNode* parent, double time, std::size_t index = kLast);

  /// The file's record, else what its keys tell (see GuessFrameRate), else `kUsualRate`.
  double GetFrameRate() const { return m_frameRate; }            ///< frames per second
  double GetFrameDuration() const { return 1.0 / m_frameRate; }  ///< s
  static constexpr double kUsualRate = 25.0;
  /// False, with nothing changed, unless `fps` is finite and above 0.
  bool SetFrameRate(double fps);
  struct Rate {
    double fps = kUsualRate;
    bool isChosen = false;  ///< and so belongs into the file's record
    bool operator==(const Rate& o) const { return fps == o.fps && isChosen == o.isChosen; }
  };
  Rate GetRate() const { return {m_frameRate, m_rateIsChosen}; }
  /// Back to what GetRate gave.
  void PutRate(const Rate& rate);
  /// Playback range: the file's record, else from the first to the last key, else 0 to 10 s.
  double GetRangeStart() const { return m_rangeStart; }  ///< s
  double GetRangeEnd() const { return m_rangeEnd; }      ///< s
  /// False, with nothing changed, unless both are finite and end is not before start.
  bool SetRange(double start, double end);
  /// First and last key time of all nodes (s); false when nothing is keyed.
  bool KeyRange(double& start, double& end) const;

  /// Called when nodes have come, gone, moved or been renamed.
  void SetTreeHandler(std::function<void()> handler) { m_treeChanged = std::move(handler); }

  /// In list order.
  std::vector<RigRecord>& GetRigs() { return m_rigs; }
  const std::vector<RigRecord>& GetRigs() const { return m_rigs; }
  /// Groups and order of the rigs, a text that only the core understands; empty without groups.
  std::string& GetRows() { return m_rows; }
  /// The takes that are kept, a text that only who keeps them understands; empty without any.
  std::string& GetTakes() { return m_takes; }

  const std::optional<SceneSound>& GetSound() const { return m_sound; }
  void SetSound(std::optional<SceneSound> sound) { m_sound = std::move(sound); }

  /// Names of the file's animation clips, in its order ("" for one without a name).
  const std::vector<std::string>& GetClips() const { return m_clips; }
  /// Index of the clip that the nodes' channels come from and keys are written to; -1 when the file
  /// has none.
  int GetEvaluatedClip() const { return m_evaluatedClip; }

 private:
  void TellTree() const {
    if (m_treeChanged) m_treeChanged();
  }

  friend class GltfReader;
  friend class GltfWriter;
  friend class SceneMerge;
  friend class SceneNode;

  std::vector<std::unique_ptr<SceneNode>>& Siblings(SceneNode* parent);
  void Enter(SceneNode& node);
  void Leave(SceneNode& node);
  void NoteTag(SceneNode& node);
  void ForgetTag(SceneNode& node);

  std::vector<std::unique_ptr<SceneNode>> m_roots;
  std::map<std::string, SceneNode*> m_byName;
  std::unordered_multimap<std::string, SceneNode*> m_byTag;
  double m_frameRate = kUsualRate;
  bool m_rateIsChosen = false;  ///< and so belongs into the file's record
  double m_rangeStart = 0.0;
  double m_rangeEnd = 10.0;
  double m_sourceRange[2] = {0.0, 10.0};  ///< as read or guessed at reading
  bool m_hadRecord = false;               ///< the file had a record of ours
  std::vector<RigRecord> m_rigs;
  std::string m_rows;
  std::string m_takes;
  std::optional<SceneSound> m_sound;
  bool m_hadSound = false;  ///< the file had one that could be read
  std::vector<std::string> m_clips;
  int m_evaluatedClip = -1;
  std::function<void()> m_treeChanged;
  std::shared_ptr<const GltfDocument> m_document;  ///< null for a scene made in memory
};

}  // namespace orv::rws::adaptor::headless
