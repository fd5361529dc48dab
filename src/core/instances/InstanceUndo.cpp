#include "core/instances/InstanceUndo.h"

#include "core/instances/Instance.h"
#include "core/instances/InstanceManager.h"
#include "core/services/Log.h"

namespace orv::rws::core {

InstanceRestore::InstanceRestore(InstanceManager& manager, const Instance& instance)
    : m_manager(manager), m_identity(instance.GetIdentity()), m_name(instance.GetInstanceName()) {}

void InstanceRestore::Note(Instance& instance) {
  std::string problem;
  m_name = instance.GetInstanceName();
  m_record = m_manager.SaveInstance(instance, problem);
  if (m_record.name.empty()) LogEntry(LogLevel::kError, problem);
  m_layout = m_manager.GetLayout();
}

void InstanceRestore::TakeOut() {
  Instance* const instance = m_manager.FindByIdentity(m_identity);
  if (!instance) return;
  Note(*instance);
  m_manager.RemoveRow(m_manager.Find(m_name));
}

void InstanceRestore::PutBack() {
  std::string problem;
  if (m_manager.LoadInstance(m_record, problem, m_identity))
    m_manager.Arrange(m_layout);
  else
    LogEntry(LogLevel::kError, "The rig " + m_name + " could not be brought back: " + problem);
}

InstanceReferenceDeleteRestore::InstanceReferenceDeleteRestore(InstanceManager& manager,
                                                               Instance& instance)
    : InstanceRestore(manager, instance) {
  Note(instance);
}

InstanceReferenceRename::InstanceReferenceRename(const Instance& instance)
    : StateUndo(instance.GetInstanceName()), m_instance(instance) {}

std::string InstanceReferenceRename::Present() {
  const Instance* const instance = m_instance.Get();
  return instance ? instance->GetInstanceName() : std::string();
}

void InstanceReferenceRename::Apply(const std::string& name) {
  if (Instance* const instance = m_instance.Get()) instance->SetName(name);
}

InstanceRowsRestore::InstanceRowsRestore(InstanceManager& manager)
    : StateUndo(manager.GetLayout()), m_manager(manager) {}

RowLayout InstanceRowsRestore::Present() {
  return m_manager.GetLayout();
}

void InstanceRowsRestore::Apply(const RowLayout& layout) {
  m_manager.Arrange(layout);
}

}  // namespace orv::rws::core
