// Curves of a vehicle's wheels.
#pragma once

#include <cstddef>
#include <vector>

namespace orv::app {

struct PlotData;
struct PlotSubject;

/// Adds panels of the front wheels' steering (positive: to the right) and of each wheel's
/// suspension travel: how much higher it stands on the body, along the body's up, than at the
/// plot's first frame. Rigs without wheels add nothing.
/// The result is the number of rigs whose wheels are left out, because nobody could tell so many
/// curves apart.
std::size_t AddWheels(PlotData& data, const std::vector<PlotSubject>& subjects);

}  // namespace orv::app
