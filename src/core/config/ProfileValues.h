// The values of a profile, to compare a rig's parameters with.
#pragma once

#include <map>
#include <string>

#include "util/xml/Tag.h"

namespace orv::rws::core {

class ConfigElement;
class ConfigTree;

/// What a rig's parameters are compared with, and reset to.
enum class ParameterBase {
  kFactory,  ///< what the rig's Define gave, without any profile
  kProfile,  ///< the profile that counts as the rig's own; kFactory where that has gone
};

/// Read once from a profile; a window keeps it until ProfileChanged or ProfileListChanged.
class ProfileValues {
 public:
  ProfileValues() = default;
  ProfileValues(const ConfigTree& config, const util::xml::Element& profile);

  /// Whether the profile says anything about the element.
  bool Holds(int element) const { return m_texts.count(element) != 0; }
  /// As ConfigElement::valueText would give it; empty if it isn't held.
  std::string GetText(int element) const;
  /// Whether the element has another value now. False for what is not held, buttons and gauges.
  bool Differs(const ConfigElement& element) const;

 private:
  std::map<int, std::string> m_texts;
};

}  // namespace orv::rws::core
