// The filter between a rig's input and what the rig does with it.
#pragma once

#include <string>

#include "util/AVar_Latest.h"
#include "util/AVar_Linear.h"
#include "util/DataChunk.h"

namespace orv::rws::addon {

class SaveReader;

/// What a user edits and a profile saves.
struct InputFilterSettings {
  double responseFactor = 0.0;        ///< 0 to 1; raising it follows faster, 0 and 1 are no filter
  double maximum = 1.0;               ///< output at full input, in the unit of the output
  double fChangeLimit = 0.0;          ///< fastest change of the input (1/s), 0 is no limit
  bool bIsTrinaryStateValue = false;  ///< the input latches at -1, 0 or 1
  bool bIsIntegratedValue = false;    ///< the input is a speed
};

/// What a frame changes.
struct InputFilterState {
  double previousLimitedInput = 0.0;  ///< the input behind the change limit, one frame before
  double integratedInput = 0.0;       ///< the input, or its sum over time (input units times s)
  double filterMemory1 = 0.0;         ///< first filter stage, in the unit of the output
  double filterMemory2 = 0.0;         ///< the output: the second stage
  int iTrinaryState = 0;              ///< -1, 0 or 1
  int previousActivation = 0;         ///< sign of the input beyond half way, in the frame before

  friend bool operator==(const InputFilterState& a, const InputFilterState& b) {
    return a.previousLimitedInput == b.previousLimitedInput &&
           a.integratedInput == b.integratedInput && a.filterMemory1 == b.filterMemory1 &&
           a.filterMemory2 == b.filterMemory2 && a.iTrinaryState == b.iTrinaryState &&
           a.previousActivation == b.previousActivation;
  }
};

/// One channel: trinary latch, change limit, integrator, scaling and two filter stages.
class InputFilter {
 public:
  /// Runs one frame of `dt` seconds on the raw input and returns the output.
  double Step(double input, double dt);

  InputFilterSettings settings;
  InputFilterState state;

 private:
  double Latch(double input);
  double LimitChange(double input, double dt);
  double Integrate(double input, double dt);
};

/// Names of a channel's fields in save data.
struct InputFilterKeys {
  const char* channels;  ///< the chunk that holds a chunk per channel
  const char* previousLimitedInput;
  const char* integratedInput;
  const char* filterMemories;
  const char* trinaryState;
  const char* previousActivation;
  const char* isTrinaryStateValue;
  const char* isIntegratedValue;
  const char* changeLimit;
};

/// States of a channel by time.
class InputFilterHistory {
 public:
  /// The state at `time`; at rest when there is none.
  InputFilterState At(double time) const;
  void Store(double time, const InputFilterState& state);
  /// Drops the states from `time` on.
  void Cut(double time);

  void Save(util::DataChunk& chunk, const InputFilterKeys& keys) const;
  void Load(SaveReader& reader, const InputFilterKeys& keys);

 private:
  util::AVar_Linear<double> m_previousLimitedInput;
  util::AVar_Linear<double> m_integratedInput;
  util::AVar_Linear<util::Vector3<double>> m_filterMemories;  ///< memories 1 and 2 as x and y
  util::AVar_Latest<int> m_trinaryState;
  util::AVar_Latest<int> m_previousActivation;
};

}  // namespace orv::rws::addon
