// Curves of a vehicle's wheels.
#pragma once

#include <vector>

namespace orv::app {

class Output;
struct PlotData;
struct PlotSubject;

/// Adds panels of the front wheels' steering (positive: to the right) and of each wheel's
/// suspension travel: how much higher it stands on the body, along the body's up, than at the
/// plot's first frame. Rigs without wheels add nothing.
void addWheels(PlotData& data, const std::vector<PlotSubject>& subjects, Output& out);

}  // namespace orv::app
