#include "core/MessageQueue.h"

#include <utility>

namespace orv::rws::core {

namespace {

bool IsRepeated(const CoreNews& news, const CoreNews& last) {
  if (news.index() != last.index()) return false;
  if (const auto* parameters = std::get_if<ParametersChanged>(&news)) {
    const auto& before = std::get<ParametersChanged>(last);
    return parameters->row == before.row && parameters->element == before.element;
  }
  if (const auto* inputs = std::get_if<InputsChanged>(&news)) {
    const auto& before = std::get<InputsChanged>(last);
    return inputs->row == before.row && inputs->input == before.input;
  }
  return std::holds_alternative<DevicesChanged>(news);
}

}  // namespace

void MessageQueue::Tell(CoreNews news) {
  if (!IsHeard()) return;
  if (!m_news.empty() && IsRepeated(news, m_news.back())) return;
  m_news.push_back(std::move(news));
  ++m_told;
  if (m_holds == 0) Deliver();
}

void MessageQueue::NoteListener(const util::MessageNode* listener) {
  if (m_told > m_delivered || m_present != 0) m_newcomers[listener] = m_told;
}

void MessageQueue::Deliver() {
  if (m_news.empty() || m_present != 0) return;
  struct End {
    MessageQueue& queue;
    ~End() {
      queue.m_present = 0;
      if (queue.m_news.empty()) queue.m_newcomers.clear();
    }
  };
  const End end{*this};
  while (!m_news.empty()) {
    const CoreNews news = std::move(m_news.front());
    m_news.pop_front();
    ++m_delivered;
    DeliverOne(news);
  }
}

void MessageQueue::DeliverOne(const CoreNews& news) {
  util::Message message(0, 0, 0);
  std::visit(
      [&message](const auto& told) {
        message.id = told.kId;
        message.data = reinterpret_cast<std::uintptr_t>(&told);
      },
      news);
  m_present = message.id;
  message.origin = message.sender = &m_node;
  // As a broadcast goes, last first, but by a list that stays as it is while listeners come and go.
  m_receivers.clear();
  for (int i = 0; i < m_node.listenerCount(); ++i) m_receivers.push_back(m_node.listener(i));
  for (auto receiver = m_receivers.rbegin(); receiver != m_receivers.rend(); ++receiver) {
    const auto newcomer = m_newcomers.find(*receiver);
    const bool cameLater = newcomer != m_newcomers.end() && newcomer->second >= m_delivered;
    if (cameLater || !m_node.hasListener(*receiver)) continue;
    message.target = *receiver;
    (*receiver)->onMessage(message, true);
  }
}

}  // namespace orv::rws::core
