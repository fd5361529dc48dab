// The rigs of a scene in its storage nodes.
#pragma once

#include <maya/MObjectHandle.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "adaptor/common/RigRecord.h"
#include "adaptor/common/SceneRigs.h"
#include "adaptor/maya/scene/StorageAccess.h"

namespace orv::rws::core {
class CoreImplementation;
}

namespace orv::rws::adaptor::maya {

/// Puts the rigs into the scene before it is written, takes the nodes out afterwards, and rebuilds
/// the rigs of what was read. While a scene is open the truth lies in memory: there are no storage
/// nodes then, and none of this counts as a change of the scene.
class SceneStorage {
 public:
  using Teller = std::function<void(const std::string& warning)>;
  SceneStorage(core::CoreImplementation& core, HostAdaptor& adaptor, Teller tell);

  /// Before the scene is saved or exported. False, with what failed told, when the rigs could not
  /// be stored: then they are not in the file.
  bool Write();
  /// After it was, also when it could not be.
  void Clear();
  /// Whether the scene holds storage nodes of its own.
  bool IsThere() const;
  /// After another scene was opened, in place of all rigs.
  void Open();
  /// Ahead of an import, which brings nodes with tags that the scene's own may have.
  void NoteOwn();
  /// After an import: the rigs that came come beside those that are there.
  void Add();
  /// After a reference came: its rigs stay closed, which is told once a scene.
  void TellReferenced();
  /// An empty scene.
  void Forget();

 private:
  /// The rigs of one StorageNode, or of none, in list order.
  struct Group {
    std::string space;
    std::vector<RigRecord> records;
    std::string rows;
  };

  std::vector<Group> ReadGroups();
  void Sort(std::vector<RigRecord>& records, std::vector<std::string> order) const;
  void MakeUnique(std::vector<Group>& groups, bool beside);
  /// Nodes that came for a rig of the group. Of two rigs of one name in it, such as files merged
  /// without the plug-in leave, the second has those of the second namespace.
  std::vector<TaggedNode*> NodesOf(const std::string& rig, const Group& group, bool ofSecond);
  void RenameRig(RigRecord& record, Group& group, const std::vector<std::string>& taken,
                 bool isSecond);
  bool IsOwn(const MObject& node) const;

  core::CoreImplementation& m_core;
  HostAdaptor& m_adaptor;
  Teller m_tell;
  SceneRigs m_rigs;
  std::vector<MObjectHandle> m_own;  ///< with tags, ahead of an import
  std::vector<TaggedNode> m_came;    ///< with tags, not renamed yet
  bool m_toldReferenced = false;
};

}  // namespace orv::rws::adaptor::maya
