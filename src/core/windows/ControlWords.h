// Controls as windows name them.
#pragma once

#include <string>

#include "util/Sentence.h"

namespace orv::unidevice {
struct ControlChoice;
class Property;
}  // namespace orv::unidevice

namespace orv::rws::core::windows {

/// How often controls are looked at while the user is asked to move one (ms).
inline constexpr int kWatchPeriod = 16;

/// "Pad: Axis 1", by the description that the control has while it is there.
std::string ControlWords(const unidevice::ControlChoice& control);
/// What feeds an input: none, one control or two, and which of them are not there.
std::string MappingWords(const unidevice::Property& input);
/// In the user's language.
std::string Shown(const util::Sentence& sentence);

}  // namespace orv::rws::core::windows
