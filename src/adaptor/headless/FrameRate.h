/// Frame rates as people write them, and as key times show them.
#pragma once

#include <string>
#include <string_view>

namespace orv::rws::adaptor::headless {

/// Reads "25", "29.97" or a fraction such as "30000/1001" (frames per second). False, with `rate`
/// untouched, for what is no number.
bool ParseFrameRate(std::string_view text, double& rate);

/// "25", or for rates of 1000/1001 "29.97 (30000/1001)".
std::string FrameRateText(double rate);

/// True when a key at `time` (s), which may have gone through a float, stands on a frame of `rate`.
/// False also so late that a float's steps are too wide to tell.
bool StandsOnFrame(double time, double rate);

}  // namespace orv::rws::adaptor::headless
