// A trinary control made of two others, such as a pair of arrow keys.
#pragma once

#include "unidevice/Control.h"
#include "unidevice/ControlTarget.h"

namespace orv::unidevice {

/// Reads `positive` - `negative`. It owns neither. When one of them goes away the control is dead:
/// it reads 0, matches nothing, and its own targets are told that it is gone, so that a property
/// can be bound anew when the device returns.
class EmulatedTControl : public Control, public ControlTarget {
 public:
  static constexpr const char* kType = "control";

  /// The description of a control made of two, each told as "device:type".
  static std::string describe(const std::string& first, const std::string& second);

  /// The bit of ControlKind of a pair of these bits.
  static std::uint32_t pairKind(std::uint32_t positive, std::uint32_t negative);

  /// Joins the `targets` of both parts, neither of which may be null.
  EmulatedTControl(Control* positive, Control* negative, int index, Device* device);
  ~EmulatedTControl() override;

  /// Writes two `control` children with `te_direction` behind what Control::save writes.
  void save(util::xml::Tag& tag) const override;
  bool matches(const util::xml::Element& tag) const override;
  double read() const override;

  void controlGone(Control* control) override;

  Control* positive = nullptr;
  Control* negative = nullptr;
};

}  // namespace orv::unidevice
