/// A channel's keys as a glTF file carries them.
#pragma once

#include <vector>

#include "adaptor/headless/Channel.h"

namespace orv::rws::adaptor::headless {

/// What glTF calls a property of a pose, in the order of ChannelPath.
inline constexpr const char* kPathNames[3] = {"translation", "rotation", "scale"};

/// Keys in floats, times rising strictly from 0 up.
struct FloatKeys {
  std::vector<float> times;
  std::vector<float> values;

  friend bool operator==(const FloatKeys& a, const FloatKeys& b) {
    return a.times == b.times && a.values == b.values;
  }
};

/// The keys that every glTF program sees of a channel. glTF knows no time below 0: earlier keys
/// give way to one at 0 with the value there. Times that fall on the same float move up to the
/// next. A number beyond a float's range comes out infinite.
FloatKeys ToFloatKeys(const Channel& channel);

/// True when floats hold the channel's keys exactly.
bool FitsFloats(const Channel& channel, const FloatKeys& keys);

}  // namespace orv::rws::adaptor::headless
