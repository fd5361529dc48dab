#include "gui/component/Progressbar.h"

#include <cmath>

namespace orv::gui::component {

void Progressbar::SetProgress(double progress) {
  m_progress = std::isfinite(progress) ? std::fmin(progress, 1.0) : 0.0;
  Changed(kValueChange);
}

}  // namespace orv::gui::component
