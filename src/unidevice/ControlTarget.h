// What the value of a control can be bound to.
#pragma once

namespace orv::unidevice {

class Control;

/// Receiver of the news that a control is gone. A target stands in `Control::targets` of each
/// control that it reads, and takes itself out of there before it dies.
class ControlTarget {
 public:
  ControlTarget() = default;
  ControlTarget(const ControlTarget&) = delete;
  ControlTarget& operator=(const ControlTarget&) = delete;
  virtual ~ControlTarget() = default;

  /// `control` is being destroyed, or has lost what it reads. It must not be used after this call.
  /// The target no longer stands in `control->targets` then.
  virtual void controlGone(Control* control) = 0;
};

}  // namespace orv::unidevice
