#include "plugins/release/4wheelerextended/CarMemory.h"

#include "plugins/common/History.h"
#include "plugins/common/SaveChunk.h"

namespace orv::rws::addon {

using Vector = util::Vector3<double>;
using Transform = util::QTransform<double>;

namespace {

/// A history's key in save data, and what it keeps.
template <class T>
struct Row {
  const char* key;
  T& (*of)(CarState&);
};

#define ORV_ROW(key, member)         \
  {                                  \
    key, [](CarState & s) -> auto& { \
      return s.member;               \
    }                                \
  }

const Row<double> kNumbers[] = {
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

const Row<bool> kFlags[] = {
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

const Row<int> kSeeds[] = {
    ORV_ROW("ancCarCamrandomValue_gravelShake", randomValue_gravelShake),
    ORV_ROW("ancCarCamrandomValue_burnout", randomValue_burnout),
    ORV_ROW("ancCarCamrandomValue_steeringNoise", randomValue_steeringNoise),
};

const Row<Vector> kVectors[] = {
    ORV_ROW("anvAcceleration", vAcceleration),
    ORV_ROW("ancCarCamvSkidBrakePosIncr", vSkidBrakePosIncr),
    ORV_ROW("ancCarCamskidIncrement", skidIncrement),
};

const Row<Transform> kTransforms[] = {
    ORV_ROW("ancCarCamqTransCarAbsIncr", qTransCarAbsIncr),
    ORV_ROW("anFollowCamFilterMem", followCamFirst),
    ORV_ROW("anFollowCamFilterMem2", followCamSecond),
    ORV_ROW("anQGravityFilterMem", gravityFilterMem),
};

#undef ORV_ROW

const char kBase[] = "ancCarCamqTransBase";
const char kWheels[] = "wheelstore";
const char kWheels2[] = "wheelstore2";

using Rows = CarMemory::WheelRows;

template <class Wheels, class Visit>
void VisitWheels(Wheels& wheels, Rows& first, Rows& second, Visit visit) {
  for (std::size_t i = 0; i < kWheelCount; ++i) {
    auto& w = wheels[i];
    double* a = &first[i * CarMemory::kWheelRow];
    for (auto* value : {&w.yaw, &w.pfTotalPitch, &w.CurrDelta, &w.lastCompression, &w.gravelNoise,
                        &w.inTheAir, &w.fallSpeed, &w.lastCentreY})
      visit(*value, *a++);
    double* b = &second[i * CarMemory::kWheelRow];
    for (auto* value : {&w.localHeight, &w.centre.x, &w.centre.y, &w.centre.z, &w.bottom.x,
                        &w.bottom.y, &w.bottom.z})
      visit(*value, *b++);
  }
}

}  // namespace

CarMemory::CarMemory()
    : m_numbers(std::size(kNumbers)),
      m_flags(std::size(kFlags)),
      m_seeds(std::size(kSeeds)),
      m_vectors(std::size(kVectors)),
      m_transforms(std::size(kTransforms)) {}

/// Calls `visit` with each history, its key, and the row that binds it to the state (or null).
template <class Visit>
void CarMemory::ForEachKind(CarMemory& m, Visit visit) {
  const auto all = [&](auto& histories, const auto& rows) {
    for (std::size_t i = 0; i < histories.size(); ++i) visit(rows[i].key, histories[i]);
  };
  all(m.m_numbers, kNumbers);
  all(m.m_flags, kFlags);
  all(m.m_seeds, kSeeds);
  all(m.m_vectors, kVectors);
  all(m.m_transforms, kTransforms);
  visit(kBase, m.m_base);
  visit(kWheels, m.m_wheels);
  visit(kWheels2, m.m_wheels2);
}

void CarMemory::Clear() {
  ForEachKind(*this, [](const char*, auto& history) { history.samples.clear(); });
}

void CarMemory::Cut(double time) {
  ForEachKind(*this, [time](const char*, auto& history) { CutHistory(history, time); });
}

void CarMemory::Store(double time, const CarState& state) {
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

CarState CarMemory::At(double time) const {
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

void CarMemory::Save(util::DataChunk& chunk) const {
  ForEachKind(const_cast<CarMemory&>(*this),
              [&](const char* key, auto& history) { AddHistory(chunk, key, history); });
}

void CarMemory::Load(SaveReader& reader) {
  ForEachKind(*this, [&](const char* key, auto& history) { reader.ReadHistory(key, history); });
}

}  // namespace orv::rws::addon
