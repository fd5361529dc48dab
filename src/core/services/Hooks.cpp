#include "core/services/Hooks.h"

namespace orv::rws::core {

void Hooks::SetWatched(const std::vector<int>& keys) {
  m_watched.fill(false);
  for (const int key : keys) {
    if (key >= 0 && key < static_cast<int>(m_watched.size())) m_watched[key] = true;
  }
}

bool Hooks::IsWatched(int key) const {
  return key >= 0 && key < static_cast<int>(m_watched.size()) && m_watched[key];
}

}  // namespace orv::rws::core
