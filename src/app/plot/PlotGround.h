// The ground under vehicles.
#pragma once

#include <vector>

namespace orv::app {

struct PlotData;
struct PlotSubject;

/// Adds to the top view, around the paths, what the ground looks like from above: borders and sharp
/// edges of its meshes, and lines of equal height. The ground is what a vehicle's gravity node
/// hangs on, as at the plot's start. However large it is, a few thousand points are drawn at most:
/// the longest lines count. Rigs without such a node add nothing.
void AddGround(PlotData& data, const std::vector<PlotSubject>& subjects);

}  // namespace orv::app
