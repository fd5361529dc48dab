#include "core/config/ResponseEdit.h"

#include <utility>

#include "core/MessageQueue.h"
#include "core/config/InputUndo.h"
#include "core/host/AdaptorInterface.h"
#include "core/instances/Instance.h"
#include "core/instances/InstanceHost.h"

namespace orv::rws::core {

ResponseEdit::ResponseEdit(Instance& instance, int input)
    : m_host(instance.GetHost()),
      m_instance(instance),
      m_input(input),
      m_before(InputResponse::Of(*instance.GetProperties().property(input))) {}

ResponseEdit::~ResponseEdit() {
  ResponseEdit::End();
}

bool ResponseEdit::Is(const Instance& instance, int input) const {
  return m_instance.Get() == &instance && m_input == input;
}

unidevice::Property* ResponseEdit::FindInput() const {
  const Instance* const instance = m_instance.Get();
  return instance ? instance->GetProperties().property(m_input) : nullptr;
}

void ResponseEdit::Open(Instance& instance) {
  AdaptorInterface& adaptor = *m_host.GetAdaptor();
  m_ownsBlock = !adaptor.IsUndoBlockOpen();
  if (m_ownsBlock) adaptor.BeginUndoBlock("Change response of " + FindInput()->name);
  adaptor.PushUndo(new InputUndo(instance, {m_input}));
  m_changed = true;
}

void ResponseEdit::Tell(const Instance& instance) const {
  m_host.GetMessages().Tell(InputsChanged{instance.GetIdentity(), m_input});
}

void ResponseEdit::Set(const InputResponse& response) {
  unidevice::Property* const input = FindInput();
  if (!input || InputResponse::Of(*input) == response) return;
  if (!m_changed) Open(*m_instance.Get());
  response.WriteTo(*input);
  Tell(*m_instance.Get());
}

void ResponseEdit::End(bool keep) {
  if (!std::exchange(m_changed, false) || !m_ownsBlock) return;
  const unidevice::Property* const input = FindInput();
  if (keep || !input || !(InputResponse::Of(*input) == m_before))
    m_host.GetAdaptor()->EndUndoBlock();
  else
    m_host.GetAdaptor()->CancelUndoBlock();
}

void ResponseEdit::Cancel() {
  if (unidevice::Property* const input = m_changed ? FindInput() : nullptr) {
    m_before.WriteTo(*input);
    Tell(*m_instance.Get());
  }
  End();
}

}  // namespace orv::rws::core
