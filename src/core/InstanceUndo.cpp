#include "core/InstanceUndo.h"

#include <utility>

#include "core/Instance.h"
#include "core/InstanceManager.h"
#include "core/Log.h"

namespace orv::rws::core {

InstanceRestore::InstanceRestore(InstanceManager& manager, std::string name)
    : m_manager(manager), m_name(std::move(name)) {}

void InstanceRestore::Note(const InstanceReference& row) {
  std::string problem;
  m_record = m_manager.SaveInstance(*row.GetInstance(), problem);
  if (m_record.empty()) LogEntry(LogLevel::kError, problem);
  for (std::size_t i = 0; i < row.parent->children.size(); ++i) {
    if (row.parent->children[i].get() == &row) m_index = static_cast<int>(i);
  }
}

void InstanceRestore::TakeOut() {
  InstanceReference* row = m_manager.Find(m_name);
  if (!row) return;
  Note(*row);
  m_manager.RemoveRow(row);
}

void InstanceRestore::PutBack() {
  std::string problem;
  if (!m_manager.LoadInstance(m_record, m_index, problem))
    LogEntry(LogLevel::kError, "The rig " + m_name + " could not be brought back: " + problem);
}

InstanceReferenceDeleteRestore::InstanceReferenceDeleteRestore(InstanceManager& manager,
                                                               const InstanceReference& row)
    : InstanceRestore(manager, row.GetLabel()) {
  Note(row);
}

InstanceReferenceRename::InstanceReferenceRename(InstanceManager& manager, std::string oldName,
                                                 std::string newName)
    : m_manager(manager), m_other(std::move(oldName)), m_present(std::move(newName)) {}

void InstanceReferenceRename::Exchange() {
  Instance* instance = m_manager.FindInstance(m_present);
  if (!instance) return;
  instance->SetName(m_other);
  std::swap(m_other, m_present);
}

void InstanceReferenceOrderRestore::Undo(bool) {
  m_manager.MoveRow(m_to, m_from);
}

void InstanceReferenceOrderRestore::Redo() {
  m_manager.MoveRow(m_from, m_to);
}

}  // namespace orv::rws::core
