// Owner of the instances.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/CoreSubSystem.h"
#include "core/InstanceReference.h"

namespace orv::util::xml {
class Element;
}

namespace orv::rws::core {

class Instance;
class Tool;

/// Owns the instances as rows of a tree, whose order is the order in which rigs are stepped.
/// Operations that change it are undoable when they say so; each opens a block of its own.
class InstanceManager : public CoreSubSystem {
 public:
  InstanceManager();
  ~InstanceManager() override;

  /// Makes row and instance of a tool, undoably. An empty name gets a default. Null when the rig
  /// refused.
  Instance* Create(Tool* tool, const std::string& name);
  /// Appends a row for an instance that stands already.
  InstanceReference* AddRow(std::unique_ptr<Instance> instance);
  /// Null if no row has an instance of this name.
  InstanceReference* Find(const std::string& name) const;
  Instance* FindInstance(const std::string& name) const;
  /// Removes row, instance and the rig's scene nodes. A user's own nodes under them move to the
  /// parent of the rig, keeping their world pose.
  void Delete(InstanceReference* row, bool undoable);
  /// Takes the row and its instance away and leaves the scene nodes alone.
  void RemoveRow(InstanceReference* row);
  /// Last first, until none is left; not undoable.
  void DeleteAll();
  /// Takes all rows away, last first, and leaves the scene nodes alone: their scene is going.
  void DropAllRows();
  /// An empty text means success, any other why not. Undoable.
  std::string Rename(InstanceReference* row, const std::string& name);
  /// A copy of rig, parameters, inputs, tracks and nodes under a new name. Undoable. Null, with
  /// `problem` filled, when it can't be made.
  Instance* Clone(InstanceReference* row, std::string& problem);
  /// Moves `row` directly before `before`, or to the end when that is null. Undoable.
  void MoveBefore(InstanceReference* row, InstanceReference* before);

  /// The record of one instance as XML text, after the rig's Store. Empty with `problem` filled
  /// when the rig could not store itself.
  std::string SaveInstance(Instance& instance, std::string& problem) const;
  /// Makes an instance from a record. Null, with `problem` filled, when it can't be made; then
  /// nothing is left of it. The row is inserted at `index` of the top level, at the end for -1.
  Instance* LoadInstance(const std::string& recordText, int index, std::string& problem);

  /// Instances in tree order; with `onlyChecked` those whose row takes part in a take.
  std::vector<Instance*> List(bool onlyChecked) const;
  InstanceReference& GetRoot() { return m_root; }
  /// `name` itself, or with its number counted up until no instance has it.
  std::string UniqueName(const std::string& name) const;
  /// Names that no instance may take: those of rigs whose records a scene keeps unopened.
  void SetReservedNames(std::vector<std::string> names) { m_reservedNames = std::move(names); }

 private:
  friend class InstanceReferenceOrderRestore;

  InstanceReference* InsertRow(std::unique_ptr<InstanceReference> row, int index);
  void MoveRow(int from, int to);
  void ReleaseUserNodes(Instance& instance);
  bool DuplicateNodes(Instance& source, const std::string& name, util::xml::Element& record,
                      std::string& problem);

  InstanceReference m_root;
  std::vector<std::string> m_reservedNames;
};

}  // namespace orv::rws::core
