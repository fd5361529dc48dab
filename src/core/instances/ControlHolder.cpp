#include "core/instances/ControlHolder.h"

#include "unidevice/Control.h"

namespace orv::rws::core {

ControlHolder::~ControlHolder() {
  Hold(nullptr);
}

void ControlHolder::Hold(unidevice::Control* control) {
  if (m_control) m_control->removeTarget(this);
  m_control = control;
  if (m_control) m_control->targets.push_back(this);
}

void ControlHolder::controlGone(unidevice::Control*) {
  m_control = nullptr;
}

}  // namespace orv::rws::core
