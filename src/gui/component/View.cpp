#include "gui/component/View.h"

namespace orv::gui::component {

void View::SetHandler(Handler* handler) {
  m_handler = handler;
  Changed(kRangeChange | kValueChange);
}

}  // namespace orv::gui::component
