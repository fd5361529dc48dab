#include "gui/component/qt/Column.h"

#include <algorithm>

namespace orv::gui::component::qt {

void Column::Remove(Member* member) {
  m_members.erase(std::remove(m_members.begin(), m_members.end(), member), m_members.end());
  m_width = -1;
}

int Column::GetWidth() {
  if (m_width < 0) {
    m_width = 0;
    for (const Member* member : m_members) m_width = std::max(m_width, member->GetWish());
  }
  return m_width;
}

void Column::Invalidate() {
  const int before = m_width;
  m_width = -1;
  if (before < 0 || GetWidth() == before) return;
  for (Member* member : m_members) member->Relayout();
}

}  // namespace orv::gui::component::qt
