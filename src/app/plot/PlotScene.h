// What the rigs of a scene do, gathered for a picture.
#pragma once

#include <string>
#include <vector>

#include "app/plot/PlotData.h"

namespace orv::rws::adaptor::headless {
class Scene;
}
namespace orv::rws::core {
class Instance;
}

namespace orv::app {

class Monitor;
struct TimeSpan;

/// The part of a page that shows one scene, and what to say of the whole.
struct PlottedScene {
  PlotData data;  ///< without times there is no frame to show, and without paths no rig
  std::string file;
  std::string rigs;                   ///< their names
  std::string profiles;               ///< of the rigs, as a heading has them
  std::string frames;                 ///< which times are shown
  std::vector<std::string> warnings;  ///< what is left out because of too many rigs
  bool cancelled = false;
};

/// Gathers paths, curves and side views of `rigs` at the frames of `span`. `file` is what the
/// picture calls the scene.
PlottedScene PlotScene(const rws::adaptor::headless::Scene& scene,
                       const std::vector<rws::core::Instance*>& rigs, const TimeSpan& span,
                       const std::string& file, const Monitor& monitor);

/// Scenes that a page has room for.
inline constexpr int kMostScenes = 8;

/// A page of scenes side by side; at least one.
PlotSheet SheetOf(std::vector<PlottedScene> scenes);

}  // namespace orv::app
