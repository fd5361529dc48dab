// Kept takes as bytes.
#pragma once

#include <string>
#include <vector>

#include "app/session/takes/KeptTake.h"

namespace orv::app {

/// What a scene or a file of takes holds.
struct TakeList {
  std::vector<KeptTake> takes;   ///< by number
  std::vector<KeptTake> hidden;  ///< simulations, and takes that others need and no list shows
  int lastNumber = 0;            ///< the highest that was ever given
  int lastHidden = 0;            ///< the lowest
  int current = 0;               ///< what the scene's keys come from; 0: not known
  std::vector<int> beside;       ///< the same of rigs that `current` says nothing of, oldest first
};

/// Compressed and lossless to the bit: tracks of 16-bit axes as differences of whole numbers,
/// parameters as differences from the take before.
std::string EncodeTakes(const TakeList& list);
/// An empty text means success; any other says why `list` is as it was.
std::string DecodeTakes(const std::string& bytes, TakeList& list);

}  // namespace orv::app
