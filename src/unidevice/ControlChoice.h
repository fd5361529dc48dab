// A control as a user names it, checked against what there is.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "unidevice/ControlName.h"
#include "util/xml/Tag.h"

namespace orv::unidevice {

/// What speaks against a choice of a control.
struct ChoiceProblem {
  std::string why;                 ///< empty: nothing does
  std::string wanted;              ///< the name that isn't known; empty when the names are fine
  std::vector<std::string> known;  ///< the names that are
  std::string kind;                ///< what they name, in the plural

  explicit operator bool() const { return !why.empty(); }
};

/// One control by device, type and number. A device may be away: what is not there can't be
/// checked, but a type that no device can have is refused.
struct ControlChoice : ControlName {
  /// The `control` element that names it.
  util::xml::Tag tag() const;
  /// Whether it can be meant; devices that are present are looked at.
  ChoiceProblem check() const;
  /// The bit of ControlKind that it has, or will have when its device comes; 0 for a type that
  /// isn't known.
  std::uint32_t kind() const;
  bool present() const;
  /// The names of the devices that are present, where one of them is perhaps what `device`, which
  /// isn't, was to be.
  std::vector<std::string> presentDevices() const;
};

/// The `control` element of two controls of which one counts positive, one negative.
util::xml::Tag pairTag(const ControlChoice& positive, const ControlChoice& negative);

/// "an axis, a hat" for bits of ControlKind.
std::string kindText(std::uint32_t kinds);

}  // namespace orv::unidevice
