// The version that a rig's factory tells.
#pragma once

#include <cstdint>
#include <vector>

#include "core/interface/CCameraPlugin.h"

namespace orv::rws::addon {

/// Base of a compiled rig's factory. `kSimulation` is raised by one whenever the same inputs,
/// parameters and start come to other poses than before, by as little as a bit; the test
/// `Rigs.AFixedTakeGivesTheKnownPosesOfItsVersion` holds the poses of each. `kReplay`: see
/// `kTellReplay`.
template <int kSimulation, bool kReplay = false>
class RigFactory : public CCameraPlugin {
 public:
  static_assert(kSimulation >= 1, "0 is for what tells none");

  std::intptr_t Extension(int code, void* a, void* b) override {
    if (code == kTellSimulation) return kSimulation;
    if (code == kTellReplay) return kReplay;
    return CCameraPlugin::Extension(code, a, b);
  }
  void GetExtensions(std::vector<int>& out) override {
    out.push_back(kTellSimulation);
    out.push_back(kTellReplay);
  }
};

}  // namespace orv::rws::addon
