// Undo steps of the instance tree.
#pragma once

#include <string>

#include "core/instances/InstanceHandle.h"
#include "core/instances/RowLayout.h"
#include "core/instances/StateUndo.h"
#include "util/xml/Tag.h"

namespace orv::rws::core {

class InstanceManager;

/// A row that can leave the tree and come back, rebuilt from its record under its old identity.
class InstanceRestore : public CUndo {
 protected:
  InstanceRestore(InstanceManager& manager, const Instance& instance);
  /// Notes record and place, then removes the row; the scene nodes are other steps' business.
  void TakeOut();
  /// Rebuilds the row from what was noted.
  void PutBack();
  void Note(Instance& instance);

 private:
  InstanceManager& m_manager;
  const int m_identity;
  std::string m_name;
  util::xml::Tag m_record{""};
  RowLayout m_layout;
};

/// Creation of a row, its instance standing already.
class InstanceReferenceCreateRestore : public InstanceRestore {
 public:
  InstanceReferenceCreateRestore(InstanceManager& manager, const Instance& instance)
      : InstanceRestore(manager, instance) {}
  void Undo(bool) override { TakeOut(); }
  void Redo() override { PutBack(); }
};

/// Deletion of a row that still stands when the step is made.
class InstanceReferenceDeleteRestore : public InstanceRestore {
 public:
  InstanceReferenceDeleteRestore(InstanceManager& manager, Instance& instance);
  void Undo(bool) override { PutBack(); }
  void Redo() override { TakeOut(); }
};

/// New name of a row, made while the old one stands; the names of its nodes are other steps'
/// business.
class InstanceReferenceRename : public StateUndo<std::string> {
 public:
  explicit InstanceReferenceRename(const Instance& instance);

 private:
  std::string Present() override;
  void Apply(const std::string& name) override;

  InstanceHandle m_instance;
};

/// Order, groups and checks of all rows.
class InstanceRowsRestore : public StateUndo<RowLayout> {
 public:
  explicit InstanceRowsRestore(InstanceManager& manager);

 private:
  RowLayout Present() override;
  void Apply(const RowLayout& layout) override;

  InstanceManager& m_manager;
};

}  // namespace orv::rws::core
