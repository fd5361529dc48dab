// One axis, button, hat direction or key of an input device.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "unidevice/Calibration.h"

namespace orv::util::xml {
class Element;
class Tag;
}  // namespace orv::util::xml

namespace orv::unidevice {

class ControlTarget;
class Device;
class FFEffect;
enum class FFKind : int;

/// Kinds of controls, as bits. A property accepts a set of them.
enum ControlKind : std::uint32_t {
  kBinaryControl = 1,    ///< button or key: 0 or 1
  kFiniteControl = 2,    ///< direction of a hat: -1, 0 or 1
  kInfiniteControl = 4,  ///< axis or slider: -1 to 1
};
inline constexpr std::uint32_t kAnyControl = kBinaryControl | kFiniteControl | kInfiniteControl;

/// A raw value with a baseline. The device that made it owns it and writes `current`; whoever reads
/// it through a binding stands in `targets`.
class Control {
 public:
  Control() = default;

  /// `index` counts among the controls of the same `type` on the device. `device` may be null: a
  /// control of no device feeds properties, but no profile can name it.
  Control(std::uint32_t flags, std::string type, int index, std::string description = {},
          Device* device = nullptr);

  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  /// Makes `tag` the `control` element by which `matches` finds this control again. What the tag
  /// held before is dropped.
  virtual void save(util::xml::Tag& tag) const;

  /// True if `tag` names this control: same `index` and `type`, and the `device` of its owner or an
  /// empty one.
  virtual bool matches(const util::xml::Element& tag) const;

  /// The raw value now.
  virtual double read() const;

  /// Deletes the control.
  virtual void destroy();

  /// True if `createEffect` can give an effect of some kind.
  virtual bool hasForceFeedback() const;

  /// A new effect that belongs to the caller, or null if the control has none of this kind.
  virtual FFEffect* createEffect(FFKind kind);

  /// Tells each target in index order that the control is gone.
  virtual ~Control();

  /// True if the value has moved by more than `detectionThreshold` since the baseline.
  bool changed() const;

  /// The present value becomes the baseline, and `value` the present value: what a resimulation
  /// does once a frame.
  void push(double value) {
    previous = current;
    current = value;
  }

  /// What a device does with a value that it has read: notes it, and makes `current` of it by
  /// `calibration`. Hardware that has not moved yet may tell 0 wherever it rests, so until it has
  /// told another value a calibrated control reads 0.
  void receive(double value) {
    hardware = value;
    reported = reported || value != 0.0;
    current = reported ? calibration.apply(value) : 0.0;
  }

  /// Takes one entry of `target` out of `targets`; nothing happens if there is none.
  void removeTarget(ControlTarget* target);

  std::vector<ControlTarget*> targets;  ///< not owned
  std::uint32_t flags = 0;              ///< bits of ControlKind
  double previous = 0.0;                ///< value at the last baseline
  double current = 0.0;                 ///< value now
  double detectionThreshold = 0.1;      ///< a change must exceed this to be detected
  double hardware = 0.0;                ///< value that the hardware told last, not calibrated
  bool reported = false;                ///< the hardware has told a value other than 0
  Calibration calibration;              ///< from the CalibrationTable
  std::string type;                     ///< `Axis`, `Button`, `Slider`, `Hat` or a key's name
  int index = 0;                        ///< among the controls of this type on the device
  std::string description;              ///< for people; matching ignores it
  Device* device = nullptr;             ///< owner

 protected:
  /// Empties `targets`, telling each in index order.
  void tellTargetsGone();
};

/// Deletes `control` through its own `destroy`; null is ignored.
inline void destroy(Control* control) {
  if (control) control->destroy();
}

}  // namespace orv::unidevice
