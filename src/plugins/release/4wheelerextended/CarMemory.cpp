#include "plugins/release/4wheelerextended/CarMemory.h"

#include <algorithm>
#include <array>

#include "plugins/common/SaveChunk.h"
#include "util/AVar_Latest.h"
#include "util/AVar_Linear.h"
#include "util/AVar_Nearest.h"
#include "util/FrameGrid.h"

namespace orv::util {

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

using Vector = util::Vector3<double>;
using Transform = util::QTransform<double>;

namespace {

/// A history's key in save data, and what it keeps.
template <class T>
struct HistoryRow {
  const char* key;
  T& (*of)(CarState&);
};

#define ORV_ROW(key, member)         \
  {                                  \
    key, [](CarState & s) -> auto& { \
      return s.member;               \
    }                                \
  }

const HistoryRow<double> kNumbers[] = {
    ORV_ROW("ancCarCamcCarBodyfRelYPos", cCarBody.fRelYPos),
    ORV_ROW("ancCarCamcCarBodyfRelXAng", cCarBody.fRelXAng),
    ORV_ROW("ancCarCamcCarBodyfRelZAng", cCarBody.fRelZAng),
    ORV_ROW("ancCarCamcCarBodyfRelYVel", cCarBody.fRelYVel),
    ORV_ROW("ancCarCamcCarBodyfRelXAngVel", cCarBody.fRelXAngVel),
    ORV_ROW("ancCarCamcCarBodyfRelZAngVel", cCarBody.fRelZAngVel),
    ORV_ROW("ancCarCamcCarBodyfRelYAcc", cCarBody.fRelYAcc),
    ORV_ROW("ancCarCamcCarBodyfRelXAngAcc", cCarBody.fRelXAngAcc),
    ORV_ROW("ancCarCamcCarBodyfRelZAngAcc", cCarBody.fRelZAngAcc),
    ORV_ROW("ancCarCampcInput_GAS_PEDAL", filtered[kGasPedal]),
    ORV_ROW("ancCarCampcInput_STEERING_WHEEL", filtered[kSteeringWheel]),
    ORV_ROW("ancCarCampcInput_BOOSTER", filtered[kBooster]),
    ORV_ROW("ancCarCampcInput_ABS_BRAKE", filtered[kAbsBrake]),
    ORV_ROW("ancCarCampcInput_SKIDDING", filtered[kSkidding]),
    ORV_ROW("ancCarCampcInput_SKID_BRAKE", filtered[kSkidBrake]),
    ORV_ROW("ancCarCampcInput_GRAVEL", filtered[kGravel]),
    ORV_ROW("ancCarCampcInput_BURNOUT", filtered[kBurnout]),
    ORV_ROW("ancCarCampcInput_EXTERNAL_FORCE", filtered[kExternalForce]),
    ORV_ROW("ancCarCampcInput_GAS_PEDAL_inp_prev", gasRawPrevious),
    ORV_ROW("ancCarCampcInput_GAS_PEDAL_pedal_prev", gasPedalPrevious),
    ORV_ROW("ancCarCampcInput_STEERING_WHEEL_inp_prev", steeringRawPrevious),
    ORV_ROW("ancCarCamfSkidWantedGasPedalValue", fSkidWantedGasPedalValue),
    ORV_ROW("cCarCamdWantedSkiddingValue", dWantedSkiddingValue),
    ORV_ROW("cCarCamdInputFilterMem", dInputFilterMem),
    ORV_ROW("cCarCamdGasPedalInputFilterMem", dGasPedalInputFilterMem),
    ORV_ROW("andFollowAccMem", dFollowAccMem),
    ORV_ROW("andAutoSteeringValueMem", dAutoSteeringValueMem),
    ORV_ROW("ancCarCamfCarLocalYawIncr", fCarLocalYawIncr),
    ORV_ROW("ancCarCamdSkidBrakeLocalYawIncr", dSkidBrakeLocalYawIncr),
    ORV_ROW("ancCarCamskidYawRate", skidYawRate),
    ORV_ROW("ancCarCamabsLatchedGas", absLatchedGas),
    ORV_ROW("ancCarCamreverseAbsLatchedGas", reverseAbsLatchedGas),
    ORV_ROW("ancCarCamsteeringResponse", steeringResponse),
};

const HistoryRow<bool> kFlags[] = {
    ORV_ROW("ancCarCambIsReverseVelAbsBraking", bIsReverseVelAbsBraking),
    ORV_ROW("ancCarCambSkidBreakingOn", bSkidBreakingOn),
    ORV_ROW("ancCarCambSkidBreakingOnDisableFeatures", bSkidBreakingOnDisableFeatures),
    ORV_ROW("ancCarCambSkidFirstTime", bSkidFirstTime),
    ORV_ROW("ancCarCambSkiddingOn", bSkiddingOn),
    ORV_ROW("ancCarCambSkiddingArmed", bSkiddingArmed),
    ORV_ROW("anbCarInTheAir", bCarInTheAir),
    ORV_ROW("anbJustLanded", bJustLanded),
    ORV_ROW("ancCarCambAbsOn", bAbsOn),
    ORV_ROW("ancCarCambBurnoutOn", bBurnoutOn),
};

const HistoryRow<int> kSeeds[] = {
    ORV_ROW("ancCarCamrandomValue_gravelShake", randomValue_gravelShake),
    ORV_ROW("ancCarCamrandomValue_burnout", randomValue_burnout),
    ORV_ROW("ancCarCamrandomValue_steeringNoise", randomValue_steeringNoise),
};

const HistoryRow<Vector> kVectors[] = {
    ORV_ROW("anvAcceleration", vAcceleration),
    ORV_ROW("ancCarCamvSkidBrakePosIncr", vSkidBrakePosIncr),
    ORV_ROW("ancCarCamskidIncrement", skidIncrement),
};

const HistoryRow<Transform> kTransforms[] = {
    ORV_ROW("ancCarCamqTransCarAbsIncr", qTransCarAbsIncr),
    ORV_ROW("anFollowCamFilterMem", followCamFirst),
    ORV_ROW("anFollowCamFilterMem2", followCamSecond),
    ORV_ROW("anQGravityFilterMem", gravityFilterMem),
};

#undef ORV_ROW

const char kBase[] = "ancCarCamqTransBase";
const char kWheels[] = "wheelstore";
const char kWheels2[] = "wheelstore2";

/// Numbers of one wheel in each of its two histories.
constexpr std::size_t kWheelRow = 9;
using Rows = std::array<double, kWheelRow * kWheelCount>;

template <class Wheels, class Visit>
void VisitWheels(Wheels& wheels, Rows& first, Rows& second, Visit visit) {
  for (std::size_t i = 0; i < kWheelCount; ++i) {
    auto& w = wheels[i];
    double* a = &first[i * kWheelRow];
    for (auto* value : {&w.yaw, &w.pfTotalPitch, &w.CurrDelta, &w.lastCompression, &w.gravelNoise,
                        &w.inTheAir, &w.fallSpeed, &w.lastCentreY})
      visit(*value, *a++);
    double* b = &second[i * kWheelRow];
    for (auto* value : {&w.localHeight, &w.centre.x, &w.centre.y, &w.centre.z, &w.bottom.x,
                        &w.bottom.y, &w.bottom.z, &w.released, &w.clearance})
      visit(*value, *b++);
  }
}

/// The parts of the state by time, each by its own rule, as saved data has them.
class CarHistories {
 public:
  void Store(double time, const CarState& state);
  CarState At(double time) const;
  const std::vector<util::AVar<Transform>::Sample>& GetBases() const { return m_base.samples; }

  /// Calls `visit` with the key of each history of `all` and the history.
  template <class Self, class Visit>
  static void ForEach(Self& all, Visit visit) {
    const auto each = [&](auto& histories, const auto& rows) {
      for (std::size_t i = 0; i < histories.size(); ++i) visit(rows[i].key, histories[i]);
    };
    each(all.m_numbers, kNumbers);
    each(all.m_flags, kFlags);
    each(all.m_seeds, kSeeds);
    each(all.m_vectors, kVectors);
    each(all.m_transforms, kTransforms);
    visit(kBase, all.m_base);
    visit(kWheels, all.m_wheels);
    visit(kWheels2, all.m_wheels2);
  }

 private:
  std::array<util::AVar_Linear<double>, std::size(kNumbers)> m_numbers;
  std::array<util::AVar_Latest<bool>, std::size(kFlags)> m_flags;
  std::array<util::AVar_Latest<int>, std::size(kSeeds)> m_seeds;
  std::array<util::AVar_Linear<Vector>, std::size(kVectors)> m_vectors;
  std::array<util::AVar_Nearest<Transform>, std::size(kTransforms)> m_transforms;
  util::AVar_Nearest<Transform> m_base;
  util::AVar_Nearest<Rows> m_wheels;
  util::AVar_Nearest<Rows> m_wheels2;
};

void CarHistories::Store(double time, const CarState& state) {
  CarState& s = const_cast<CarState&>(state);  // the rows bind members for reading and writing
  const auto all = [&](auto& histories, const auto& rows) {
    for (std::size_t i = 0; i < histories.size(); ++i) histories[i].set(time, rows[i].of(s));
  };
  all(m_numbers, kNumbers);
  all(m_flags, kFlags);
  all(m_seeds, kSeeds);
  all(m_vectors, kVectors);
  all(m_transforms, kTransforms);
  m_base.set(time, state.base);
  Rows first{}, second{};
  VisitWheels(s.wheels, first, second, [](double& value, double& kept) { kept = value; });
  m_wheels.set(time, first);
  m_wheels2.set(time, second);
}

CarState CarHistories::At(double time) const {
  CarState s;
  const auto all = [&](auto& histories, const auto& rows) {
    for (std::size_t i = 0; i < histories.size(); ++i) rows[i].of(s) = histories[i].value(time);
  };
  all(m_numbers, kNumbers);
  all(m_flags, kFlags);
  all(m_seeds, kSeeds);
  all(m_vectors, kVectors);
  all(m_transforms, kTransforms);
  s.base = m_base.value(time);
  Rows first = m_wheels.value(time), second = m_wheels2.value(time);
  VisitWheels(s.wheels, first, second, [](double& value, double& kept) { value = kept; });
  return s;
}

}  // namespace

/// Index of the first frame at or after `time`.
std::size_t CarMemory::FirstFrom(double time) const {
  if (m_frames.empty() || time > m_frames.back().time) return m_frames.size();
  const auto first = std::lower_bound(m_frames.begin(), m_frames.end(), time,
                                      [](const Frame& frame, double t) { return frame.time < t; });
  return static_cast<std::size_t>(first - m_frames.begin());
}

void CarMemory::Cut(double time) {
  m_frames.resize(FirstFrom(time));
}

void CarMemory::Store(double time, const CarState& state) {
  const std::size_t index = FirstFrom(time), count = m_frames.size();
  if (index < count && m_frames[index].time == time) {
    m_frames[index].state = state;
    return;
  }
  // Large steps while there are few: most of a growing take's cost is fresh memory.
  if (count == m_frames.capacity())
    m_frames.reserve(count < 64 ? 64 : count < 16384 ? count * 4 : count * 2);
  m_frames.insert(m_frames.begin() + static_cast<std::ptrdiff_t>(index), {time, state});
}

CarState CarMemory::At(double time) const {
  const std::size_t behind = FirstFrom(time);
  CarHistories histories;
  for (std::size_t i = behind > 0 ? behind - 1 : 0; i <= behind && i < m_frames.size(); ++i)
    histories.Store(m_frames[i].time, m_frames[i].state);
  return histories.At(time);
}

const CarState* CarMemory::Find(double time, const CarState*& before) const {
  const std::size_t behind = FirstFrom(time + util::kFrameTolerance);
  if (behind == 0) return nullptr;
  before = &m_frames[behind > 1 ? behind - 2 : 0].state;
  return &m_frames[behind - 1].state;
}

void CarMemory::Save(util::DataChunk& chunk) const {
  CarHistories histories;
  for (const Frame& frame : m_frames) histories.Store(frame.time, frame.state);
  CarHistories::ForEach(
      histories, [&](const char* key, const auto& history) { AddHistory(chunk, key, history); });
}

void CarMemory::Load(SaveReader& reader) {
  CarHistories histories;
  CarHistories::ForEach(histories,
                        [&](const char* key, auto& history) { reader.ReadHistory(key, history); });
  m_frames.clear();
  for (const auto& base : histories.GetBases())
    m_frames.push_back({base.time, histories.At(base.time)});
}

}  // namespace orv::rws::addon
