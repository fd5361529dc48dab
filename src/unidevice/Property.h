// A named input of a rig.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "unidevice/ControlTarget.h"
#include "util/xml/Tag.h"

namespace orv::unidevice {

class Control;
class FFEffect;

/// What the hand on an input's control is to feel, as the rig sets it in its steps; 0 is nothing.
/// No pose depends on it.
struct Feel {
  double push = 0.0;  ///< along the control, [-1, 1]; positive to where the input reads more
  double road = 0.0;  ///< how the ground shakes it, [0, 1]
  double kick = 0.0;  ///< a blow in this frame, [0, 1]
};

/// Maps the raw value of one control through dead zone, exponent, multiplier and offset to the
/// number that a rig reads in each step. Owned by a PropertyHandler.
class Property : public ControlTarget {
 public:
  /// `flags` are the bits of ControlKind that the input accepts. An empty `displayName` means
  /// `name`.
  explicit Property(std::string name, std::string displayName = {}, std::uint32_t flags = 0);

  /// Leaves the control's targets and destroys the effects.
  ~Property() override;

  /// The mapped value. With r the raw value (0 without a control) it is
  /// sign(r) * (max(|r| - deadzone, 0) / (1 - deadzone))^exponent * multiplier + offset.
  ///
  /// The result is always finite. A dead zone of exactly 1 leaves no range, and the curve gives 0,
  /// so the result is `offset`. A raw value or a parameter from which no finite result follows
  /// (NaN, infinity, a negative base under a fractional exponent, a negative exponent at 0) counts
  /// as no movement as well: the result is `offset`, or 0 if that isn't finite either.
  double read() const;

  /// What `read` gives while the control stands at `value`.
  double respond(double value) const;

  /// Raw value of the bound control, 0 without one: what a take records.
  double raw() const;

  /// Leaves the present control and joins `newControl` (may be null: unbound). 65535 for null, else
  /// the kinds that property and control have in common: 0 means that they don't fit, and the
  /// caller decides what to do about it. `savedControl` stays as it is.
  int bind(Control* newControl);

  /// What a user's choice does: binds and notes the choice in `savedControl`. Null clears both, so
  /// that `rebind` won't bring the old control back. The result is that of `bind`.
  int assign(Control* newControl);

  /// Binds what `savedControl` names if the property is unbound and the control is present. True if
  /// it is bound now and wasn't before.
  ///
  /// Meant for a device that returns: the caller keeps the last DriverManager::generation() that it
  /// has seen, and calls this (or PropertyHandler::rebind) when the number has changed. That
  /// compare is cheap enough for every frame. Not during a resimulation's swap of controls.
  bool rebind();

  /// `control` is gone: unbound if it was the bound one, and every effect turns invalid.
  void controlGone(Control* gone) override;

  /// Reads a `property` element of an input profile: the numbers that it holds (others keep their
  /// values), and the control, which is bound if it is present. Without a `control` child the input
  /// is unmapped. A number that doesn't parse or isn't finite is refused: that field keeps its
  /// value, the rest is still read, and the result is false.
  bool load(const util::xml::Element& property);

  /// Whether `load` of this element would change nothing.
  bool holds(const util::xml::Element& property) const;

  /// Makes `tag` the `property` element that `load` reads. While the mapped control is away, or a
  /// control of no device stands in for it, the `control` child is the one last loaded or saved.
  void save(util::xml::Tag& tag) const;

  // What every frame reads lies together.
  Control* control = nullptr;  ///< bound control; set it by `bind`
  double multiplier = 1.0;
  double exponent = 1.0;
  double deadzone = 0.1;           ///< raw magnitude up to which nothing happens
  double offset = 0.0;             ///< added last; the value without a control
  std::vector<FFEffect*> effects;  ///< owned
  std::string name;                ///< what it is called; key in profiles
  std::string displayName;         ///< what it does, or the name again; for people
  std::uint32_t flags = 0;         ///< bits of ControlKind that this input accepts
  /// The `control` element as last loaded or saved; its name is empty if there is none.
  mutable util::xml::Tag savedControl;
  Feel feel;  ///< the rig's; played in takes
};

}  // namespace orv::unidevice
