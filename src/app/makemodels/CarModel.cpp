#include <algorithm>
#include <cmath>
#include <vector>

#include "Models.h"
#include "util/Angles.h"

namespace orv::app {

namespace {

using Vector = Shape::Vector;

constexpr double kRadius = 0.33;      ///< of a wheel (m)
constexpr double kFrontAxle = -1.28;  ///< z
constexpr double kBackAxle = 1.30;
constexpr double kHalfTrack = 0.76;
constexpr double kArch = 0.40;  ///< radius of a wheel arch
constexpr double kSill = 0.24;  ///< height of the body's lower edge

struct CarPaints {
  int body, glass, dark, rubber, rim, chrome, lamp, tail, blinker;
};

/// Of the body along its length: the upper edge's height and half the width.
struct Station {
  double z, top, half;
};
constexpr Station kStations[] = {{-2.10, 0.58, 0.66}, {-2.04, 0.68, 0.76}, {-1.90, 0.75, 0.83},
                                 {-1.60, 0.82, 0.87}, {-1.00, 0.89, 0.89}, {-0.70, 0.92, 0.89},
                                 {0.00, 0.94, 0.89},  {1.00, 0.95, 0.89},  {1.60, 0.94, 0.87},
                                 {1.95, 0.91, 0.83},  {2.06, 0.84, 0.78},  {2.10, 0.70, 0.70}};

Station StationAt(double z) {
  const Station* last = kStations;
  for (const Station& next : kStations) {
    if (z <= next.z) {
      const double part = next.z > last->z ? (z - last->z) / (next.z - last->z) : 0.0;
      return {z, last->top + part * (next.top - last->top),
              last->half + part * (next.half - last->half)};
    }
    last = &next;
  }
  return *last;
}

/// The lower edge, which rises over the wheels.
double LowerEdge(double z) {
  for (const double axle : {kFrontAxle, kBackAxle}) {
    const double away = std::abs(z - axle);
    if (away < kArch) return std::max(kSill, kRadius + std::sqrt(kArch * kArch - away * away));
  }
  return std::abs(z) > 1.9 ? kSill + 0.5 * (std::abs(z) - 1.9) : kSill;
}

std::vector<double> BodyPlaces() {
  std::vector<double> places;
  for (const Station& station : kStations)
    if (std::min(std::abs(station.z - kFrontAxle), std::abs(station.z - kBackAxle)) > kArch)
      places.push_back(station.z);
  for (const double axle : {kFrontAxle, kBackAxle})
    for (int i = 0; i <= 16; ++i) places.push_back(axle - kArch * std::cos(util::kPi * i / 16.0));
  std::sort(places.begin(), places.end());
  return places;
}

void AddBody(Shape& shape, const CarPaints& paint) {
  std::vector<std::vector<Vector>> rings;
  for (const double z : BodyPlaces()) {
    const Station s = StationAt(z);
    const double low = std::min(LowerEdge(z), s.top - 0.12);
    const double waist = std::max(low + 0.02, 0.56 * s.top + 0.06);
    std::vector<Vector> side = {{s.half - 0.10, low, z},
                                {s.half - 0.02, low, z},
                                {s.half, waist, z},
                                {s.half - 0.015, s.top - 0.09, z},
                                {s.half - 0.06, s.top - 0.02, z},
                                {s.half - 0.16, s.top, z},
                                {0.35, s.top + 0.025, z}};
    std::vector<Vector> ring = side;
    for (auto point = side.rbegin(); point != side.rend(); ++point)
      ring.push_back({-point->x, point->y, z});
    rings.push_back(std::move(ring));
  }
  shape.Loft(paint.body, rings, true, true);
  // What is seen between the wheels and below.
  shape.Box(paint.dark, {-0.62, 0.20, -1.95}, {0.62, 0.55, 1.95}, 0.03);
}

/// A roof on four slanting windows with their pillars between them.
void AddCabin(Shape& shape, const CarPaints& paint) {
  constexpr double kLow = 0.90, kHigh = 1.36;
  const std::vector<Vector> low = {{0.78, kLow, -0.98}, {0.80, kLow, 0.30},  {0.78, kLow, 1.72},
                                   {-0.78, kLow, 1.72}, {-0.80, kLow, 0.30}, {-0.78, kLow, -0.98}};
  const std::vector<Vector> high = {{0.60, kHigh, -0.26}, {0.62, kHigh, 0.35},
                                    {0.59, kHigh, 1.12},  {-0.59, kHigh, 1.12},
                                    {-0.62, kHigh, 0.35}, {-0.60, kHigh, -0.26}};
  const auto inset = [](std::vector<Vector> ring, double by, double up) {
    for (Vector& p : ring) p = {p.x * (1.0 - by), p.y + up, 0.42 + (p.z - 0.42) * (1.0 - by)};
    return ring;
  };
  shape.Loft(paint.body, {inset(high, 0.30, 0.075), inset(high, 0.09, 0.055), high, low}, true,
             true);
  // Panes a finger's breadth in front of the faces.
  const auto pane = [&](std::size_t a, std::size_t b, double margin) {
    const Vector corners[] = {low[a], low[b], high[b], high[a]};
    const Vector out = (corners[1] - corners[0]).cross(corners[3] - corners[0]);
    const Vector lift = out * (0.006 / out.length());
    const Vector middle = (corners[0] + corners[1] + corners[2] + corners[3]) * 0.25;
    std::vector<Vector> face;
    for (const Vector& c : corners) face.push_back(middle + (c - middle) * margin + lift);
    shape.Face(paint.glass, face);
  };
  pane(1, 0, 0.86);
  pane(2, 1, 0.84);
  pane(3, 2, 0.88);
  pane(4, 3, 0.84);
  pane(5, 4, 0.86);
  pane(0, 5, 0.90);
}

void AddDetails(Shape& shape, const CarPaints& paint) {
  Shape side;  // the right one
  side.Box(paint.lamp, {0.46, 0.60, -2.07}, {0.70, 0.70, -1.90}, 0.02);
  side.Box(paint.blinker, {0.70, 0.60, -2.03}, {0.79, 0.68, -1.88}, 0.015);
  side.Box(paint.tail, {0.48, 0.68, 1.98}, {0.74, 0.82, 2.10}, 0.02);
  side.Box(paint.body, {0.86, 0.95, -0.62}, {1.00, 1.06, -0.50}, 0.03);
  side.Box(paint.dark, {0.80, 0.98, -0.58}, {0.88, 1.01, -0.54}, 0.005);
  side.Box(paint.chrome, {0.87, 0.76, 0.14}, {0.905, 0.79, 0.30}, 0.008);
  side.Box(paint.chrome, {0.87, 0.76, 1.00}, {0.905, 0.79, 1.14}, 0.008);
  for (const double z : {-0.82, 0.36, 1.18})  // the doors' edges
    side.Box(paint.dark, {0.872, 0.36, z}, {0.894, 0.86, z + 0.012}, 0.003);
  side.Box(paint.dark, {0.80, 0.22, -0.86}, {0.885, 0.30, 0.88}, 0.015);
  side.Turned(paint.chrome, {{0.0, 2.03}, {0.035, 2.03}, {0.035, 2.13}, {0.025, 2.13}, {0.0, 2.06}},
              {0.50, 0.27, 0.0}, true, 12);
  shape.Add(side);
  shape.AddMirrored(side);
  shape.Box(paint.dark, {-0.42, 0.56, -2.125}, {0.42, 0.68, -2.02}, 0.02);
  for (int i = 0; i < 3; ++i)
    shape.Box(paint.chrome, {-0.40, 0.585 + 0.03 * i, -2.135}, {0.40, 0.595 + 0.03 * i, -2.10},
              0.003);
  shape.Box(paint.dark, {-0.72, 0.30, -2.08}, {0.72, 0.44, -1.92}, 0.03);
  shape.Box(paint.dark, {-0.74, 0.32, 1.94}, {0.74, 0.48, 2.12}, 0.03);
  shape.Box(paint.chrome, {-0.26, 0.56, 2.08}, {0.26, 0.67, 2.118}, 0.01);
  shape.Box(paint.chrome, {-0.26, 0.36, -2.105}, {0.26, 0.46, -2.06}, 0.01);
}

/// The outer side to +X.
Shape ShapeWheel(const CarPaints& paint) {
  Shape shape;
  constexpr double w = 0.11;  // half the tyre's width
  shape.Turned(paint.rubber,
               {{0.22, -w + 0.02},
                {0.25, -w},
                {0.295, -w + 0.005},
                {0.322, -w + 0.025},
                {kRadius, -0.05},
                {kRadius, 0.05},
                {0.322, w - 0.025},
                {0.295, w - 0.005},
                {0.25, w},
                {0.22, w - 0.02}},
               {}, false, 40);
  shape.Turned(paint.rim,
               {{0.0, -0.06},
                {0.19, -0.06},
                {0.225, -w + 0.01},
                {0.235, -w + 0.01},
                {0.225, -0.05},
                {0.225, 0.05},
                {0.235, w - 0.01},
                {0.222, w - 0.005},
                {0.20, 0.05},
                {0.0, 0.045}},
               {}, false, 40);
  shape.Turned(paint.dark, {{0.198, 0.052}, {0.06, 0.048}, {0.0, 0.048}}, {}, false, 40);
  for (int i = 0; i < 5; ++i) {
    Shape spoke;
    spoke.Box(paint.rim, {0.045, 0.04, -0.032}, {0.085, 0.205, 0.032}, 0.01);
    spoke.TurnAboutX(2.0 * util::kPi * i / 5.0);
    shape.Add(spoke);
  }
  shape.Turned(paint.chrome, {{0.06, 0.05}, {0.055, 0.09}, {0.03, 0.10}, {0.0, 0.10}}, {}, false,
               20);
  return shape;
}

}  // namespace

void ModelCar(Kit& kit) {
  const CarPaints paint{kit.AddMaterial("Paint", 0.55, 0.03, 0.03, 0.2, 0.35),
                        kit.AddMaterial("Glass", 0.03, 0.05, 0.07, 0.3, 0.1),
                        kit.AddMaterial("Trim", 0.02, 0.02, 0.022, 0.0, 0.8),
                        kit.AddMaterial("Rubber", 0.018, 0.018, 0.018, 0.0, 0.95),
                        kit.AddMaterial("Rim", 0.55, 0.56, 0.58, 0.8, 0.35),
                        kit.AddMaterial("Chrome", 0.75, 0.76, 0.78, 0.9, 0.2),
                        kit.AddLight("Headlight", 0.95, 0.95, 0.85),
                        kit.AddLight("Tail light", 0.60, 0.02, 0.02),
                        kit.AddLight("Indicator", 0.85, 0.40, 0.05)};
  Shape body;
  AddBody(body, paint);
  AddCabin(body, paint);
  AddDetails(body, paint);
  kit.AddPart("Body", {}, body);
  const Shape right = ShapeWheel(paint);
  Shape left;
  left.AddMirrored(right);
  kit.AddPart("WheelFL", {-kHalfTrack, kRadius, kFrontAxle}, left);
  kit.AddPart("WheelFR", {kHalfTrack, kRadius, kFrontAxle}, right);
  kit.AddPart("WheelBL", {-kHalfTrack, kRadius, kBackAxle}, left);
  kit.AddPart("WheelBR", {kHalfTrack, kRadius, kBackAxle}, right);
}

}  // namespace orv::app
