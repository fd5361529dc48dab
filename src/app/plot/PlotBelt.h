// What a plot shows of a belt of steps.
#pragma once

#include <vector>

namespace orv::rws::adaptor::headless {
class Scene;
}

namespace orv::app {

struct PlotData;
struct PlotSubject;

/// Adds panels of the steps' mean speed in the Frame beside that of the driveWheel's rim, and of
/// the widest gap between two steps; and of the first belt four side views, with the ground as the
/// plane through its driveWheel cuts it. Rigs without a belt add nothing.
void AddBelts(PlotData& data, const std::vector<PlotSubject>& subjects,
              const rws::adaptor::headless::Scene& scene);

}  // namespace orv::app
