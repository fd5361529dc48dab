#include "plugins/release/4wheelerextended/CarFrame.h"

#include <algorithm>
#include <cmath>

#include "util/NumberText.h"

namespace orv::rws::addon {

namespace {

using Vector = util::Vector3<double>;

/// Part by which the sides of the wheels' rectangle may differ, and cosine of its corners.
constexpr double kTolerance = 0.05;
/// Body height over the wheels' bottoms, in wheelbases.
constexpr double kRestHeightShare = 0.2;
constexpr const char* kNaming = "name the wheels as front left, front right, back left, back right";

double Shown(double value) {
  return std::round(value * 1e4) / 1e4;
}

/// Middles and sides of four corners, in the order of the wheels.
struct Corners {
  explicit Corners(const std::array<Vector, 4>& c)
      : middle((c[0] + c[1] + c[2] + c[3]) * 0.25),
        right((c[1] - c[0] + c[3] - c[2]) * 0.5),
        back((c[2] - c[0] + c[3] - c[1]) * 0.5),
        skew((c[1] - c[0] - c[3] + c[2])) {}
  Vector middle;
  Vector right;  ///< mean of the two sides across
  Vector back;   ///< mean of the two sides along
  Vector skew;   ///< by which either pair of sides differs
};

std::string CheckRectangle(const FourWheels& wheels, const Corners& corners) {
  const double across = corners.right.length(), along = corners.back.length();
  const Vector x = corners.right.normalized(), z = corners.back.normalized();
  const double least = std::min(across, along);
  const double lift = corners.skew.dot(z.cross(x).normalized());
  const bool square = std::abs(x.dot(z)) <= kTolerance;
  if (least > 0.0 && square && std::abs(corners.skew.dot(x)) <= kTolerance * across &&
      std::abs(corners.skew.dot(z)) <= kTolerance * along && std::abs(lift) <= kTolerance * least)
    return {};
  const auto side = [&](int from, int to) {
    return util::shortText(Shown((wheels[to].centre - wheels[from].centre).length()));
  };
  return "the wheels' centres are not in a rectangle within 5 %: front left to front right " +
         side(0, 1) + " m, back left to back right " + side(2, 3) + " m, left side " + side(0, 2) +
         " m, right side " + side(1, 3) + " m, diagonals " + side(0, 3) + " and " + side(1, 2) +
         " m; " + kNaming;
}

}  // namespace

util::Matrix<double> CarFrame::At(const Vector& place, const Vector& scale) const {
  util::Matrix<double> pose;
  pose.setAxisRow(0, right * scale.x);
  pose.setAxisRow(1, up * scale.y);
  pose.setAxisRow(2, back * scale.z);
  pose.setTranslation(place);
  return pose;
}

std::string FindCarFrame(const FourWheels& wheels, CarFrame& frame) {
  std::array<Vector, 4> centres, bottoms;
  double radius = 0.0;
  for (std::size_t i = 0; i < 4; ++i) {
    centres[i] = wheels[i].centre;
    radius += wheels[i].radius * 0.25;
  }
  const std::string wrong = CheckRectangle(wheels, Corners(centres));
  if (!wrong.empty()) return wrong;
  bottoms = centres;
  // The plane below wheels of two sizes leans against that of their centres, which moves the points
  // where they touch it a little: a few rounds settle that.
  constexpr int kRounds = 60;
  for (int round = 0; round < kRounds; ++round) {
    const Corners stand(bottoms);
    frame.up = stand.back.cross(stand.right).normalized();
    for (std::size_t i = 0; i < 4; ++i) bottoms[i] = centres[i] - frame.up * wheels[i].radius;
  }
  constexpr double kOnItsRoof = -0.34;  ///< a car on its side is told elsewhere
  if (frame.up.y <= kOnItsRoof)
    return std::string("the car would stand on its roof; ") + kNaming + ", as its driver sees them";
  const Corners stand(bottoms);
  frame.back = (stand.back - frame.up * stand.back.dot(frame.up)).normalized();
  frame.right = frame.up.cross(frame.back);
  frame.wheelbase = stand.back.dot(frame.back);
  frame.frontTrack = (centres[1] - centres[0]).dot(frame.right);
  frame.backTrack = (centres[3] - centres[2]).dot(frame.right);
  frame.restHeight = std::max(kRestHeightShare * frame.wheelbase, radius);
  frame.origin = stand.middle + frame.up * frame.restHeight;
  return {};
}

}  // namespace orv::rws::addon
