// A take that is kept with its scene.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "adaptor/common/Trs.h"
#include "app/session/anyhost/TimeSpan.h"
#include "util/AVar_Linear.h"

namespace orv::app {

/// Behind all times (s).
inline constexpr double kForever = std::numeric_limits<double>::infinity();

/// A parameter as it stood when the take began.
struct KeptParameter {
  int element = -1;     ///< its id
  double number = 0.0;  ///< of what is no text
  std::string text;     ///< of a text box, or a combo box's item

  bool operator==(const KeptParameter& o) const {
    return element == o.element && number == o.number && text == o.text;
  }
};

/// An input's track from the take's start on; whole where what lies ahead was edited since the run
/// that the take went on from.
struct KeptInput {
  std::string name;
  util::AVar_Linear<double> track;
};

/// What a rig stands on or reads: the ground, a curve, the node that it hangs on.
struct KeptSurface {
  std::string node;
  std::string hash;  ///< of all that is of it and below it, hexadecimal

  bool operator==(const KeptSurface& o) const { return node == o.node && hash == o.hash; }
};

/// What a take holds of one rig.
struct KeptRig {
  std::string name, kind, profile;
  int simulation = 0;  ///< version of how the kind simulates; 0: not known
  std::vector<KeptParameter> parameters;
  std::string bindings;  ///< XML of all inputs' mappings
  std::vector<KeptInput> inputs;
  std::vector<KeptSurface> surfaces;
  bool hasStart = false;  ///< no run that the take goes on from held the rig
  bool isFirst = false;   ///< with a start: nothing was keyed or recorded of it ahead
  // Where it began, with a start.
  std::vector<unsigned char> memory;  ///< what the rig stored, nothing of it behind the start
  std::vector<std::pair<std::string, rws::adaptor::Trs>> nodes;  ///< by scene name, at the start

  /// Null where the input had no track.
  const KeptInput* Find(const std::string& input) const {
    for (const KeptInput& each : inputs)
      if (each.name == input) return &each;
    return nullptr;
  }
  /// From when on the inputs of a run from `start` (s) on are the rig's.
  double InputsBegin(double start) const {
    const auto isAhead = [start](const KeptInput& input) {
      return !input.track.samples.empty() && input.track.samples.front().time < start;
    };
    return isFirst || std::any_of(inputs.begin(), inputs.end(), isAhead) ? -kForever : start;
  }
};

/// Inputs, parameters and a start, from which the keys of a take follow. A simulation of what was
/// recorded is one too, that no list shows: takes may go on from it.
struct KeptTake {
  int number = 0;  ///< from 1, of a simulation from -1 down; never given away again
  std::string name, note;
  int stars = 0;        ///< 0 to 5
  std::string when;     ///< as the program told it
  std::string version;  ///< of the program
  double rate = 0.0;    ///< frames per second
  TimeSpan range;       ///< s, from its start to its last frame
  int predecessor = 0;  ///< number of the take in whose middle it began; 0: none
  /// Last runs that its other rigs go on from, oldest first: those of its predecessors' line came
  /// behind them.
  std::vector<int> beside;
  int shown = 0;     ///< of a simulation: the take that the scene showed by then
  std::string hash;  ///< of the poses, hexadecimal SHA-256
  /// Of the poses of each rig from where the take's chain begins; empty: not known.
  std::map<std::string, std::uint64_t> marks;
  bool retried = false;  ///< another take was begun in its place
  bool undone = false;
  std::vector<KeptRig> rigs;

  /// Null where the rig did not run.
  const KeptRig* Find(const std::string& rig) const {
    for (const KeptRig& each : rigs)
      if (each.name == rig) return &each;
    return nullptr;
  }
};

}  // namespace orv::app
