// All states of a car by time, so that a take may go on from any frame.
#pragma once

#include <limits>
#include <vector>

#include "plugins/release/4wheelerextended/CarState.h"

namespace orv::util {
class DataChunk;
}

namespace orv::rws::addon {

class SaveReader;

/// What a take changes and its undo takes back: where the first take began, the sizes that it read
/// from the scene, and the state of each frame. A value like any other. Each frame's state lies in
/// one piece, which a hundred cars' takes are much faster for; saved data has a history for each
/// part of it.
class CarMemory {
 public:
  bool IsEmpty() const { return m_frames.empty(); }
  void Clear() { m_frames.clear(); }
  /// Drops what lies later than the frame before `time`, the first frame of a take.
  void Cut(double time);
  void Store(double time, const CarState& state);
  /// Between two frames numbers are interpolated, poses the nearer frame's, the rest the earlier's.
  CarState At(double time) const;
  /// The state of the latest frame at or before `time` (s), and that of the one before it, itself
  /// where there is none; null ahead of the first.
  const CarState* Find(double time, const CarState*& before) const;
  void Save(util::DataChunk& chunk) const;
  void Load(SaveReader& reader);

  /// Start of the take that all later ones go on from (s).
  double dStartTime = std::numeric_limits<double>::infinity();
  CarGeometry geometry;  ///< as the latest reset has read it

 private:
  struct Frame {
    double time;
    CarState state;
  };
  std::size_t FirstFrom(double time) const;

  std::vector<Frame> m_frames;  ///< in rising time
};

}  // namespace orv::rws::addon
