#include "core/config/ParameterEdit.h"

#include "core/MessageQueue.h"
#include "core/config/ConfigElement.h"
#include "core/config/ParameterUndo.h"
#include "core/host/AdaptorInterface.h"
#include "core/instances/Instance.h"
#include "core/instances/InstanceHost.h"

namespace orv::rws::core {

ParameterEdit::ParameterEdit(Instance& instance, ConfigElement& element)
    : m_host(instance.GetHost()), m_instance(instance), m_element(&element) {}

ParameterEdit::~ParameterEdit() {
  ParameterEdit::End();
}

bool ParameterEdit::Is(const Instance& instance, int element) const {
  return m_instance.Get() == &instance && m_element->GetId() == element;
}

void ParameterEdit::Open() {
  Instance& instance = *m_instance.Get();
  AdaptorInterface& adaptor = *m_host.GetAdaptor();
  m_ownsBlock = !adaptor.IsUndoBlockOpen();
  if (m_ownsBlock) adaptor.BeginUndoBlock("Change " + m_element->GetLabel());
  adaptor.PushUndo(new ParameterUndo(instance, m_before));
}

bool ParameterEdit::Set(const std::string& text, std::string& problem) {
  Instance* const instance = m_instance.Get();
  if (!instance) {
    problem = "the rig has gone";
    return false;
  }
  auto before = m_before ? nullptr : std::make_shared<ParameterState>(*instance);
  if (!m_element->SetValueText(text, problem)) return false;
  if (before) {
    m_before = std::move(before);
    Open();
  }
  m_host.GetMessages().Tell(ParametersChanged{instance->GetIdentity(), m_element->GetId()});
  m_element->Apply();  // last: a rig may show a box, and the edit may end meanwhile
  return true;
}

bool ParameterEdit::Drag(const std::string& text, std::string& problem) {
  problem.clear();
  return (m_instance.Get() && m_element->GetValueText() == text) || Set(text, problem);
}

void ParameterEdit::End(bool keep) {
  if (!m_before) return;
  const std::shared_ptr<ParameterState> before = std::move(m_before);
  if (Instance* const instance = m_instance.Get()) {
    if (!keep && before->Holds(*m_element)) PutBack(*before, *instance);
    before->KeepChanged(*instance);
  }
  if (!m_ownsBlock) return;
  if (keep || !before->values.empty())
    m_host.GetAdaptor()->EndUndoBlock();
  else
    m_host.GetAdaptor()->CancelUndoBlock();
}

void ParameterEdit::Cancel() {
  Instance* const instance = m_instance.Get();
  if (instance && m_before) PutBack(*m_before, *instance);
  End();
}

void ParameterEdit::PutBack(const ParameterState& before, Instance& instance) {
  before.WriteTo(instance);
  instance.RefreshConfig();
}

}  // namespace orv::rws::core
