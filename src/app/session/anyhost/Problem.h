// What is wrong or odd, as a value that a program shows in its own way.
#pragma once

#include <string>

namespace orv::app {

/// An operation that would help. A window may offer it; the command line names its verb.
struct Remedy {
  enum class Kind {
    kNone,
    kAddRig,       ///< of the kind `thing`
    kHangInWorld,  ///< put the node `thing` under the world
    kScale,        ///< make the node `thing` `factor` times as large
    kTurnUp,       ///< turn the node `thing` from Z up to Y up
  };
  Kind kind = Kind::kNone;
  std::string thing;    ///< empty where the user has to choose the node
  double factor = 1.0;  ///< of kScale
};

/// Why something can't be done, or is odd. Shown as `<what>: <why> (<hint>)`.
struct Problem {
  std::string what;  ///< the thing; may be empty
  std::string why;   ///< empty: nothing is wrong
  std::string hint;  ///< what to do; may be empty
  Remedy remedy;

  explicit operator bool() const { return !why.empty(); }
};

}  // namespace orv::app
