// The values of a profile, to compare a rig's parameters with.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "core/config/ParameterUndo.h"
#include "util/xml/Tag.h"

namespace orv::rws::core {

class ConfigElement;
class ConfigTree;

/// What a rig's parameters are compared with, and reset to.
enum class ParameterBase {
  kFactory,  ///< what the rig's Define gave, without any profile
  kProfile,  ///< the profile that counts as the rig's own; kFactory where that has gone
};

/// Read once from profiles; a window keeps it until ProfileChanged or ProfileListChanged.
class ProfileValues {
 public:
  ProfileValues() = default;
  /// `profiles` for a rig of this configuration, the first one holding all values; later ones win.
  ProfileValues(const ConfigTree& config, const std::vector<const util::xml::Element*>& profiles);

  /// Whether there is a value of the element: not for buttons and gauges.
  bool Holds(int element) const { return m_values.count(element) != 0; }
  /// As ConfigElement::GetValueText would give it; empty if it isn't held.
  std::string GetText(int element) const;
  /// Whether the element has another value now. False for what is not held.
  bool Differs(const ConfigElement& element) const;
  /// Sets the element and tells the rig, unless the value stands there or is not held.
  void WriteTo(ConfigElement& element) const;

 private:
  struct Value {
    ParameterValue value;
    std::string text;
  };
  std::map<int, Value> m_values;
};

}  // namespace orv::rws::core
