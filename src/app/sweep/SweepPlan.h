// What a sweep varies, and over what.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/session/anyhost/TimeSpan.h"

namespace orv::app {

/// One thing that is varied, and the values that it takes.
struct SweepAxis {
  /// A seed goes to all rigs that have one.
  enum class Kind { kParameter, kProfile, kInputs, kSeed };

  Kind kind = Kind::kParameter;
  std::string name;  ///< as tables call it, such as "Car:Mass Multiplier" or "inputs"
  std::string rig;   ///< none for kInputs and kSeed
  int element = -1;  ///< id of the parameter; kParameter alone
  std::vector<std::string> values;  ///< texts of an edit, names of profiles, paths of input files
};

/// The values of "1:4:7" (from 1 to 4 in 7 values, ends included) or of "a,b,c". Empty, with `why`
/// told, when it is neither.
std::vector<std::string> SweepValues(const std::string& text, std::string& why);

/// All that decides what a sweep's folder comes to hold. Rows are numbered from 1; the last axis
/// changes fastest.
struct SweepPlan {
  std::string scene;     ///< path from the root on
  std::string clip;      ///< animation clip of it; empty: the first
  std::string dataRoot;  ///< where profiles are looked for
  std::string content;   ///< hash of the scene's file and of the input files
  std::vector<SweepAxis> axes;
  TimeSpan span;        ///< s
  std::string rig;      ///< that is measured
  std::string near;     ///< node whose distance is measured; may be empty
  std::string pick;     ///< see SweepPick; may be empty
  bool scenes = false;  ///< rows that are picked leave their scenes too

  long RowCount() const;
  /// For each axis which of its values row `number` has.
  std::vector<std::size_t> ChoiceOf(long number) const;
  /// The same as texts.
  std::vector<std::string> ValuesOf(long number) const;

  std::string ToText() const;
  /// Empty, with `error` told, for a text that is no plan.
  static std::optional<SweepPlan> FromText(const std::string& text, std::string& error);
  /// Hash of what the files of the plan hold now. Empty, with `error` told, when one can't be read.
  std::string ReadContent(std::string& error) const;
};

}  // namespace orv::app
