// Paths and the like in the lines of a text file.
#pragma once

#include <string>
#include <vector>

namespace orv::app {

/// Any bytes as a text without line ends: those, the percent sign and other control characters
/// become "%" and two digits.
std::string KeptText(const std::string& bytes);
/// False for a damaged text.
bool ReadKeptText(const std::string& text, std::string& bytes);

std::vector<std::string> LinesOf(const std::string& text);

}  // namespace orv::app
