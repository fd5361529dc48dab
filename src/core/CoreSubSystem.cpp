#include "core/CoreSubSystem.h"

#include <algorithm>
#include <cstdio>

#include "core/services/Log.h"

namespace orv::rws::core {

bool CoreSubSystem::s_listClosed = false;

std::vector<CoreSubSystem*>& CoreSubSystem::OpenList() {
  static std::vector<CoreSubSystem*> list;
  return list;
}

CoreSubSystem::CoreSubSystem() {
  if (!s_listClosed) OpenList().push_back(this);
}

CoreSubSystem::~CoreSubSystem() {
  auto& list = OpenList();
  list.erase(std::remove(list.begin(), list.end(), this), list.end());
}

CoreImplementation* CoreSubSystem::GetCore() const {
  if (!m_pCore) {
    // No core means no user interface that could show the box: it goes where a program without
    // windows shows its boxes.
    const char* text = "Using CORE pointer before being correctly initialized";
    std::fprintf(stderr, "Error: %s\n", text);
    LogEntry(LogLevel::kError, text);
  }
  return m_pCore;
}

}  // namespace orv::rws::core
