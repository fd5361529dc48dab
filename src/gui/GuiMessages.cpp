#include "gui/GuiMessages.h"

#include <algorithm>

#include "gui/Component.h"

namespace orv::gui {

Component* SourceOf(const util::Message& message) {
  return dynamic_cast<Component*>(message.origin);
}

int SourceIdOf(const util::Message& message) {
  const Component* source = SourceOf(message);
  return source ? source->GetId() : kNoId;
}

std::int32_t PackSize(int width, int height) {
  const auto half = [](int length) {
    return static_cast<std::uint32_t>(std::clamp(length, 0, 0xffff));
  };
  return static_cast<std::int32_t>(half(height) << 16 | half(width));
}

}  // namespace orv::gui
