// Small readers of the `control` element.
#pragma once

#include <string>

namespace orv::util::xml {
class Element;
class Tag;
}  // namespace orv::util::xml

namespace orv::unidevice {

inline constexpr const char* kControlTag = "control";
inline constexpr const char* kDirectionAttribute = "te_direction";
inline constexpr const char* kPositive = "positive";
inline constexpr const char* kNegative = "negative";

/// Number of `control` children of `tag`.
int controlChildCount(const util::xml::Element& tag);

/// Appends a child `name` that holds `text`.
void addTextChild(util::xml::Tag& tag, const std::string& name, const std::string& text);

}  // namespace orv::unidevice
