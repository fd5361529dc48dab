// All states of a car by time, so that a take may go on from any frame.
#pragma once

#include <array>
#include <limits>
#include <vector>

#include "plugins/release/4wheelerextended/CarState.h"
#include "util/AVar_Latest.h"
#include "util/AVar_Linear.h"
#include "util/AVar_Nearest.h"

namespace orv::util {
class DataChunk;

/// A row of numbers that are kept together.
template <std::size_t N>
struct FlatForm<std::array<double, N>> {
  static constexpr std::size_t size = 8 * N;
  static void put(unsigned char* to, const std::array<double, N>& row) {
    for (std::size_t i = 0; i < N; ++i) detail::putDouble(to + 8 * i, row[i]);
  }
  static std::array<double, N> get(const unsigned char* from) {
    std::array<double, N> row;
    for (std::size_t i = 0; i < N; ++i) row[i] = detail::getDouble(from + 8 * i);
    return row;
  }
};

}  // namespace orv::util

namespace orv::rws::addon {

class SaveReader;

/// What a take changes and its undo takes back: where the first take began, the sizes that it read
/// from the scene, and the state of each frame. A value like any other.
class CarMemory {
 public:
  /// Numbers of one wheel in each of its two histories.
  static constexpr std::size_t kWheelRow = 8;
  using WheelRows = std::array<double, kWheelRow * kWheelCount>;

  CarMemory();

  bool IsEmpty() const { return m_base.samples.empty(); }
  void Clear();
  /// Drops what lies later than `time`, the first frame of a take.
  void Cut(double time);
  void Store(double time, const CarState& state);
  CarState At(double time) const;
  void Save(util::DataChunk& chunk) const;
  void Load(SaveReader& reader);

  /// Start of the take that all later ones go on from (s).
  double dStartTime = std::numeric_limits<double>::infinity();
  CarGeometry geometry;

 private:
  template <class Visit>
  static void ForEachKind(CarMemory& memory, Visit visit);

  std::vector<util::AVar_Linear<double>> m_numbers;
  std::vector<util::AVar_Latest<bool>> m_flags;
  std::vector<util::AVar_Latest<int>> m_seeds;
  std::vector<util::AVar_Linear<util::Vector3<double>>> m_vectors;
  std::vector<util::AVar_Nearest<util::QTransform<double>>> m_transforms;
  util::AVar_Nearest<util::QTransform<double>> m_base;
  util::AVar_Nearest<WheelRows> m_wheels;
  util::AVar_Nearest<WheelRows> m_wheels2;
};

}  // namespace orv::rws::addon
