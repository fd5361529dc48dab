// Owner of the instances.
#pragma once

#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "core/CoreSubSystem.h"
#include "core/instances/InstanceHost.h"
#include "core/instances/InstanceReference.h"
#include "core/instances/RowLayout.h"

namespace orv::util::xml {
class Element;
class Tag;
}  // namespace orv::util::xml

namespace orv::rws::core {

class CoreNode;
class Instance;
class Tool;

/// Owns the instances as rows of a tree, whose order, groups followed into where they stand, is the
/// order in which rigs are stepped. Operations that change it are undoable when they say so; each
/// opens a block of its own. What is refused has changed nothing, and leaves a block around it as
/// it is.
class InstanceManager : public CoreSubSystem, public InstanceHost {
 public:
  InstanceManager();
  ~InstanceManager() override;

  /// Makes row and instance of a tool, undoably. An empty name gets a default. Null when the rig
  /// refused, or when a listener has already deleted it.
  Instance* Create(Tool* tool, const std::string& name);
  /// Null if no row has an instance of this name.
  InstanceReference* Find(const std::string& name) const;
  Instance* FindInstance(const std::string& name) const;
  /// Removes row, instance and the rig's scene nodes. A user's own nodes under them move to the
  /// parent of the rig, keeping their world pose.
  void Delete(InstanceReference* row, bool undoable);
  /// Takes the row and its instance away and leaves the scene nodes alone.
  void RemoveRow(InstanceReference* row);
  /// Last first, until none is left, groups too; not undoable.
  void DeleteAll();
  /// Takes all rows away, last first, and leaves the scene nodes alone: their scene is going.
  void DropAllRows();
  /// An empty text means success, any other why not. Undoable.
  std::string Rename(InstanceReference* row, const std::string& name);
  /// A copy of rig, parameters, inputs, tracks and nodes under a new name, in the row behind.
  /// Undoable. Null, with `problem` filled, when it can't be made.
  Instance* Clone(InstanceReference* row, std::string& problem);

  /// Makes an instance from the record of another scene, whose nodes have come in; undoable, as
  /// LoadInstance otherwise.
  Instance* AddFromRecord(const util::xml::Element& record, std::string& problem);

  // Rows and groups of them, all undoable. An empty text means success, any other why not.

  /// A group at the end of the list. Null, with `problem` filled, when the name can't be had.
  InstanceReference* CreateGroup(const std::string& name, std::string& problem);
  /// What stands in the group moves to its place.
  void DeleteGroup(InstanceReference* group);
  void SetChecked(InstanceReference* row, bool checked);
  /// Several rows by their number, as one step; those that are gone are left out.
  void SetChecked(const std::vector<std::pair<int, bool>>& checks);
  /// Moves `row` directly before `before`, into whose group it comes, or, when that is null, to the
  /// end of its own.
  std::string MoveBefore(InstanceReference* row, InstanceReference* before);
  /// Moves `row` to the end of a group or, for null, out of all groups, behind that in which it
  /// stood.
  std::string MoveInto(InstanceReference* row, InstanceReference* group);
  /// The row, a rig's or a group's, with this label or number; null if there is none.
  InstanceReference* FindRow(const std::string& label) const;
  InstanceReference* FindRow(int id) const;
  /// All rows in order, groups ahead of what they hold.
  std::vector<InstanceReference*> GetRows() const;
  /// Appends the tree to `out` if it has groups: a scene without them is saved as ever.
  void WriteRows(util::xml::Tag& out) const;
  /// Arranges the rows as `rows`, what WriteRows appended, tells; rigs that it does not name come
  /// last. Rigs of reserved names keep their group for the next WriteRows. Not undoable.
  void ReadRows(const util::xml::Element& rows);
  /// The present tree, and the way back to one. Rigs that `layout` does not name come last.
  RowLayout GetLayout() const;
  void Arrange(const RowLayout& layout);
  /// The rows that are selected, by number, in the order in which they were. No step of undo: rows
  /// that go are no longer selected.
  const std::vector<int>& GetSelection() const { return m_selection; }
  void SetSelection(const std::vector<int>& rows);

  /// The record of one instance, after the rig's Store. Of no name, with `problem` filled, when the
  /// rig could not store itself.
  util::xml::Tag SaveInstance(Instance& instance, std::string& problem) const;
  /// Makes an instance from a record, in a row at the end of the list. Null, with `problem` filled,
  /// when it can't be made; then nothing is left of it. `identity` is that of an instance that it
  /// stands for; 0 for a new one.
  Instance* LoadInstance(const util::xml::Element& record, std::string& problem, int identity = 0);

  /// Instances in tree order; with `onlyChecked` those that take part in a take.
  std::vector<Instance*> List(bool onlyChecked) const;
  InstanceReference& GetRoot() { return m_root; }
  /// Names that no row may take: those of rigs whose records a scene keeps unopened.
  void SetReservedNames(std::vector<std::string> names);

  // InstanceHost
  int NextRowId() override { return ++m_lastRowId; }
  std::string UniqueName(const std::string& name) const override;
  InstanceReference* AddRow(std::unique_ptr<Instance> instance, bool checked = true) override;
  Instance* FindByIdentity(int identity) const override;
  void RebuildWithData(Instance& instance, const std::vector<unsigned char>& data) override;
  void DiscardNodes(Instance& instance) override;

 private:
  Instance* MakeInstance(Tool& tool, const std::string& name);
  Instance* MakeClone(InstanceReference& row, std::string& problem);
  Instance* MakeLoaded(const util::xml::Element& record, std::string& problem, int identity);
  void DropOldSelection();
  bool IsNameFree(const std::string& name, std::string& problem) const;
  void ChangeRows(const std::string& undoName, const RowLayout& wanted);
  std::string RenameGroup(InstanceReference& group, const std::string& name);
  RowLayout ReadRow(const util::xml::Element& element, int id, std::set<std::string>& names);
  void PlaceBehind(InstanceReference& row, InstanceReference& other);
  void CloseRefused(bool nested);
  void ReleaseUserNodes(Instance& instance);
  bool DuplicateNodes(Instance& source, const std::string& name, util::xml::Element& record,
                      std::vector<CoreNode*>& copies, std::string& problem);

  InstanceReference m_root;
  std::vector<std::string> m_reservedNames;
  std::vector<std::pair<std::string, int>> m_absentRigs;  ///< reserved, and the group's row
  std::vector<int> m_selection;
  int m_lastRowId = 0;
};

}  // namespace orv::rws::core
