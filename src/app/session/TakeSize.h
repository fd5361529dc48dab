// Whether what a take makes still fits into a file.
#pragma once

#include <string>

#include "app/session/anyhost/RunRigs.h"
#include "app/session/anyhost/TimeSpan.h"
#include "util/Sentence.h"

namespace orv::app {

/// The most that a .glb can hold (bytes).
inline constexpr double kMostGlbBytes = 4294967295.0;
/// What a node takes in it for each frame: its keys, the numbers that they were rounded from, and
/// its part of what the rig remembers. That of a car is as much.
inline constexpr double kBytesPerKeyedFrame = 200.0;

/// Size of a file (bytes), 0 where there is none.
double SizeOf(const std::string& path);
/// Says why when a scene whose file now has `held` bytes does not fit into a .glb any more when
/// the rigs that take part, or `only` these, have been performed over `span`, as far as that can be
/// told.
util::Sentence WhyTakeTooLong(rws::core::CoreImplementation& core, double held,
                              const TimeSpan& span, const RowsToStep& only = {});

}  // namespace orv::app
