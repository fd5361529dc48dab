// A control that may go.
#pragma once

#include "unidevice/ControlTarget.h"

namespace orv::rws::core {

/// Keeps a control in mind and forgets it when its device goes.
class ControlHolder : public unidevice::ControlTarget {
 public:
  explicit ControlHolder(unidevice::Control* control = nullptr) { Hold(control); }
  ~ControlHolder() override;
  void Hold(unidevice::Control* control);
  /// Null when there is none, or no longer.
  unidevice::Control* Get() const { return m_control; }
  void controlGone(unidevice::Control* control) override;

 private:
  unidevice::Control* m_control = nullptr;
};

}  // namespace orv::rws::core
