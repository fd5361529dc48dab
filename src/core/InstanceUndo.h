// Undo steps of the instance tree.
#pragma once

#include <string>

#include "core/interface/CUndo.h"

namespace orv::rws::core {

class InstanceManager;
class InstanceReference;

/// A row that can leave the tree and come back, rebuilt from its record.
class InstanceRestore : public CUndo {
 protected:
  InstanceRestore(InstanceManager& manager, std::string name);
  /// Notes record and place, then removes the row; the scene nodes are other steps' business.
  void TakeOut();
  /// Rebuilds the row from what was noted.
  void PutBack();
  void Note(const InstanceReference& row);

  InstanceManager& m_manager;
  std::string m_name;
  std::string m_record;
  int m_index = -1;
};

/// Creation of a row, its instance standing already.
class InstanceReferenceCreateRestore : public InstanceRestore {
 public:
  InstanceReferenceCreateRestore(InstanceManager& manager, const std::string& name)
      : InstanceRestore(manager, name) {}
  void Undo(bool) override { TakeOut(); }
  void Redo() override { PutBack(); }
};

/// Deletion of a row that still stands when the step is made.
class InstanceReferenceDeleteRestore : public InstanceRestore {
 public:
  InstanceReferenceDeleteRestore(InstanceManager& manager, const InstanceReference& row);
  void Undo(bool) override { PutBack(); }
  void Redo() override { TakeOut(); }
};

/// New name of a row; the names of its nodes are other steps' business.
class InstanceReferenceRename : public CUndo {
 public:
  InstanceReferenceRename(InstanceManager& manager, std::string oldName, std::string newName);
  void Undo(bool) override { Exchange(); }
  void Redo() override { Exchange(); }

 private:
  void Exchange();

  InstanceManager& m_manager;
  std::string m_other;    ///< the name that an exchange gives
  std::string m_present;  ///< the name that the row has
};

/// Move of a row from one place of the top level to another.
class InstanceReferenceOrderRestore : public CUndo {
 public:
  InstanceReferenceOrderRestore(InstanceManager& manager, int from, int to)
      : m_manager(manager), m_from(from), m_to(to) {}
  void Undo(bool) override;
  void Redo() override;

 private:
  InstanceManager& m_manager;
  int m_from;
  int m_to;
};

}  // namespace orv::rws::core
