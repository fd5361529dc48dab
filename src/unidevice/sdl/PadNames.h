// What the controls of a pad are called by those who know it. Internal to the SDL driver.
#pragma once

#include <map>
#include <string>
#include <utility>

namespace orv::unidevice {

/// Names by letter and number of SDL's inputs: 'a' axes, 'b' buttons, 'h' hats.
using PadNames = std::map<std::pair<char, int>, std::string>;

/// Reads one of SDL's game controller mappings; what it does not know has no name. An input that
/// stands for two things has both names.
PadNames padNames(const std::string& mapping);

}  // namespace orv::unidevice
