// Attributes that every element has, and how a document writes them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orv::util::xml {
class Element;
}

namespace orv::gui {

inline constexpr int kNoId = -1;
/// A length or position that no attribute tells.
inline constexpr int kUnset = -1;
/// As a largest size: none.
inline constexpr int kNoLimit = 16777215;

enum class Align { kNone, kStart, kCenter, kEnd };

/// All lengths are pixels at 96 dpi; the toolkit scales them by the logical resolution.
struct Attributes {
  int id = kNoId;
  std::string label;
  int left = kUnset, top = kUnset;
  int width = kUnset, height = kUnset;
  int minWidth = 0, minHeight = 0;
  int maxWidth = kNoLimit, maxHeight = kNoLimit;
  int desiredWidth = kUnset, desiredHeight = kUnset;
  bool fixedWidth = false, fixedHeight = false;  ///< no larger than desired or needed
  Align halign = Align::kNone, valign = Align::kNone;
  bool enabled = true, visible = true, tabStop = true;
  std::string style;
  int tooltipId = kUnset;
  int stretch = kUnset;  ///< share of spare room along the list; unset: the element's habit
  std::string column;    ///< components of one column name under a root share one width
  std::string name;      ///< accessible name, where label and tooltip tell none
};

/// Space inside a container.
struct Padding {
  int left = 0, top = 0, right = 0, bottom = 0;
};

/// Takes one attribute. False when the name is none of the common ones. A value that can't be read
/// leaves the default.
bool ReadAttribute(Attributes& attributes, std::string_view name, const std::string& value);
bool IsCommonAttribute(std::string_view name);

/// "yes", "true" and "1" are true, "no", "false" and "0" are false, whatever the case of letters.
bool ReadFlag(std::string_view text, bool byDefault);
/// The attribute `type` of a list or splitter; "horizontal" in any case of letters.
bool ReadHorizontal(const util::xml::Element& tag);
int ReadInt(std::string_view text, int byDefault);
/// Either decimal separator.
double ReadDouble(std::string_view text, double byDefault);
/// What stands between blanks.
std::vector<std::string> Words(std::string_view text);
/// Up to four numbers: left, top, right, bottom; one that is missing keeps its default.
Padding ReadPadding(std::string_view text, Padding byDefault);

}  // namespace orv::gui
