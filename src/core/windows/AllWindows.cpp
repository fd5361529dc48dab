#include "core/windows/AllWindows.h"

#include "core/windows/ToolConfigPanel.h"
#include "core/windows/Windows.h"

namespace orv::rws::core::windows {

void AddAllWindows(Windows& windows) {
  windows.AddMaker(WindowKind::kToolConfig, [](Windows& all, int row) {
    return std::make_unique<ToolConfigPanel>(all, row);
  });
}

}  // namespace orv::rws::core::windows
