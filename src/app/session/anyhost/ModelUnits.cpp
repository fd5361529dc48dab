#include "app/session/anyhost/ModelUnits.h"

#include <cmath>

#include "core/host/CoreNode.h"
#include "plugins/release/4wheelerextended/CarFrame.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

constexpr double kLeastWheelbase = 0.05, kMostWheelbase = 30.0;  // m
constexpr double kUsualWheelbase = 0.5, kLargeWheelbase = 12.0;  // m
constexpr double kLying = 0.34;      ///< cosine against +Y under which a car lies on its side
constexpr double kAlongAxis = 0.94;  ///< cosine against an axis that counts as along it

}  // namespace

std::string MetresText(double length) {
  return util::shortText(std::round(length * 1000.0) / 1000.0) + " m";
}

Problem OddLength(const std::string& told, double length, double least, double most,
                  const std::string& top) {
  for (const double unit : {0.01, 0.001, 0.0254, 100.0, 1000.0})
    if (length * unit >= least && length * unit <= most)
      return {"",
              told + ", as if its unit were no metre: scale the model first",
              "",
              {Remedy::Kind::kScale, top, unit}};
  return {"", told, "", {}};
}

std::vector<Problem> OddCar(const rws::addon::CarFrame& frame, rws::core::CoreNode& body) {
  std::string top = body.GetSceneName();
  for (auto above = rws::core::ParentOf(body); above; above = rws::core::ParentOf(*above))
    top = above->GetSceneName();
  std::vector<Problem> odd;
  if (frame.wheelbase > kMostWheelbase || frame.wheelbase < kLeastWheelbase)
    odd.push_back(OddLength("the wheelbase is " + MetresText(frame.wheelbase), frame.wheelbase,
                            kUsualWheelbase, kLargeWheelbase, top));
  if (frame.up.z > kAlongAxis)
    odd.push_back({"",
                   "the car's up is the scene's +Z, as if the model were exported with Z up, but "
                   "up is +Y: export it with Y up, or turn it first",
                   "",
                   {Remedy::Kind::kTurnUp, top, 1.0}});
  else if (frame.up.y < kLying)
    odd.push_back({"",
                   "the car lies on its side: its up is " + util::shortText(frame.up.x) + "," +
                       util::shortText(frame.up.y) + "," + util::shortText(frame.up.z) +
                       ", and the scene's is 0,1,0",
                   "",
                   {}});
  for (Problem& problem : odd) problem.what = body.GetSceneName();
  return odd;
}

}  // namespace orv::app
