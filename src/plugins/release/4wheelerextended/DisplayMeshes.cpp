#include "plugins/release/4wheelerextended/DisplayMeshes.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "util/Angles.h"
#include "util/CMesh_Box.h"

namespace orv::rws::addon {

namespace {

using util::CMesh;
using util::kPi;
using Point = util::Vector3<double>;
/// A convex polygon, counter-clockwise about the direction in which a loft goes on.
using Section = std::vector<Point>;

/// The skin over `sections`, which all have as many points; with an end cap on both sides unless
/// the last one joins the first.
void AddLoft(CMesh& mesh, const std::vector<Section>& sections, bool isRing = false) {
  const auto first = static_cast<std::int32_t>(mesh.vertices.size());
  const auto rows = static_cast<std::int32_t>(sections.size());
  const auto n = static_cast<std::int32_t>(sections.front().size());
  for (const Section& section : sections)
    mesh.vertices.insert(mesh.vertices.end(), section.begin(), section.end());
  for (std::int32_t row = 0; row < (isRing ? rows : rows - 1); ++row)
    for (std::int32_t i = 0; i < n; ++i) {
      const std::int32_t a = first + row * n;
      const std::int32_t b = first + (row + 1) % rows * n;
      const std::int32_t next = (i + 1) % n;
      mesh.faces.insert(mesh.faces.end(), {a + i, a + next, b + next, a + i, b + next, b + i});
    }
  if (isRing) return;
  const std::int32_t last = first + (rows - 1) * n;
  for (std::int32_t i = 1; i + 1 < n; ++i)
    mesh.faces.insert(mesh.faces.end(),
                      {first, first + i + 1, first + i, last, last + i, last + i + 1});
}

void AddBox(CMesh& mesh, const Point& size, const Point& centre) {
  const util::CMesh_Box box(size.x, size.y, size.z, centre);
  const auto first = static_cast<std::int32_t>(mesh.vertices.size());
  mesh.vertices.insert(mesh.vertices.end(), box.vertices.begin(), box.vertices.end());
  for (const std::int32_t index : box.faces) mesh.faces.push_back(first + index);
}

/// The point at `along` on `axis` and `u`, `v` on the two axes after it.
Point Around(int axis, double along, double u, double v) {
  Point point;
  point[axis] = along;
  point[(axis + 1) % 3] = u;
  point[(axis + 2) % 3] = v;
  return point;
}

/// Radius of a turned solid at a place on its axis.
struct Turned {
  double along;
  double radius;
};

/// A turned solid about an axis through the origin; places in rising order.
void AddRod(CMesh& mesh, int axis, const std::vector<Turned>& places, int segments) {
  std::vector<Section> sections;
  for (const Turned& place : places) {
    Section circle;
    for (int i = 0; i < segments; ++i) {
      const double angle = 2 * kPi * i / segments;
      circle.push_back(Around(axis, place.along, place.radius * std::cos(angle),
                              place.radius * std::sin(angle)));
    }
    sections.push_back(circle);
  }
  AddLoft(mesh, sections);
}

/// A ring about an axis through the origin. Its profile is convex and runs from lower to higher
/// places on its inner side, and back on its outer side.
void AddRing(CMesh& mesh, int axis, const std::vector<Turned>& profile, int segments) {
  std::vector<Section> sections;
  for (int i = 0; i < segments; ++i) {
    const double angle = 2 * kPi * i / segments;
    Section section;
    for (const Turned& place : profile)
      section.push_back(Around(axis, place.along, place.radius * std::cos(angle),
                               place.radius * std::sin(angle)));
    sections.push_back(section);
  }
  AddLoft(mesh, sections, true);
}

/// A ring of rectangular profile, its middle at the origin.
void AddHoop(CMesh& mesh, int axis, double inner, double outer, double width, int segments) {
  const double half = width / 2;
  AddRing(mesh, axis, {{-half, inner}, {half, inner}, {half, outer}, {-half, outer}}, segments);
}

/// A bar that runs from radius `inner` to `outer` about an axis through the origin.
void AddSpoke(CMesh& mesh, int axis, double angle, double inner, double outer, double width,
              double depth) {
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  std::vector<Section> sections;
  for (const double radius : {inner, outer}) {
    Section section;
    for (const auto& [side, along] : {std::pair{-0.5, -0.5}, {0.5, -0.5}, {0.5, 0.5}, {-0.5, 0.5}})
      section.push_back(Around(axis, depth * along, radius * c - width * side * s,
                               radius * s + width * side * c));
    sections.push_back(section);
  }
  AddLoft(mesh, sections);
}

/// A flat rectangular frame in the XZ plane.
void AddFrame(CMesh& mesh, double sizeX, double sizeZ, double bar) {
  for (const double side : {-0.5, 0.5}) {
    AddBox(mesh, {bar, bar / 2, sizeZ}, {side * (sizeX - bar), 0, 0});
    AddBox(mesh, {sizeX - 2 * bar, bar / 2, bar}, {0, 0, side * (sizeZ - bar)});
  }
}

/// An arrow on the Y axis that starts at the origin; `direction` is -1 or 1.
void AddArrow(CMesh& mesh, double length, double direction) {
  std::vector<Turned> places = {
      {0, 0.012}, {0.66 * length, 0.012}, {0.66 * length + 0.001, 0.04}, {length, 0.001}};
  for (Turned& place : places) place.along *= direction;
  if (direction < 0) std::reverse(places.begin(), places.end());
  AddRod(mesh, 1, places, 8);
}

// The car body, in wheelbases.
constexpr double kWheelX = 0.29;
constexpr double kWheelZ = 0.5;
constexpr double kWheelY = -0.0765;
constexpr double kArchRadius = 0.15;
constexpr double kHalfWidth = 0.33;
constexpr double kSillY = -0.125;
constexpr double kFloorY = -0.085;
/// Where the cabin's floor begins and ends.
constexpr double kCabinFront = -0.27;
constexpr double kCabinBack = 0.34;

/// Upper edge of bonnet, doors and boot at `z`.
double WaistY(double z) {
  if (z < -0.8) return 0.04;
  if (z < -0.32) return 0.085 + 0.045 * (z + 0.8) / 0.48;
  if (z < 0.5) return 0.13 + 0.015 * (z + 0.32) / 0.82;
  return z < 0.77 ? 0.145 : 0.11;
}

/// Lower edge at `z`, cut out over the wheels where `hasArches`.
double UndersideY(double z, bool hasArches) {
  const double fromWheel = std::abs(std::abs(z) - kWheelZ);
  if (hasArches && fromWheel < kArchRadius)
    return kWheelY + std::sqrt(kArchRadius * kArchRadius - fromWheel * fromWheel);
  // The ends are drawn up, as bumpers are.
  return std::abs(z) > 0.75 ? kSillY + 0.03 : kSillY;
}

/// Share of the full width at `z`: nose and tail are drawn in.
double WidthShare(double z) {
  return 1 - 0.9 * std::pow(std::max(std::abs(z) - 0.6, 0.0), 1.5);
}

/// The part of the lower body between two planes along the car, with the cabin's hole or not.
void AddSlab(CMesh& mesh, double x0, double x1, bool hasArches, bool hasCabin) {
  // Places where the outline bends; a step is a very steep slope.
  constexpr double kStep = 0.004;
  std::vector<double> places = {-0.82,
                                -0.80,
                                -0.76,
                                -0.75,
                                -0.68,
                                -0.32,
                                kCabinFront,
                                -0.1,
                                kCabinBack,
                                0.1,
                                0.68,
                                0.75,
                                0.76,
                                0.77,
                                0.80,
                                kCabinFront + kStep,
                                kCabinBack - kStep};
  for (int i = 0; i <= 12; ++i)
    for (const double wheel : {-kWheelZ, kWheelZ})
      places.push_back(wheel - (kArchRadius - 1e-9) * std::cos(kPi * i / 12));
  for (const double end : {-kArchRadius - kStep, kArchRadius + kStep})
    for (const double wheel : {-kWheelZ, kWheelZ}) places.push_back(wheel + end);
  std::sort(places.begin(), places.end());

  std::vector<Section> sections;
  for (const double z : places) {
    const bool isHollow = hasCabin && z > kCabinFront && z < kCabinBack;
    const double low = UndersideY(z, hasArches);
    const double high = isHollow ? kFloorY : WaistY(z);
    const double share = WidthShare(z);
    sections.push_back(
        {{x0 * share, low, z}, {x1 * share, low, z}, {x1 * share, high, z}, {x0 * share, high, z}});
  }
  AddLoft(mesh, sections);
}

/// A post of the cabin from (x0, y0, z0) to (x1, y1, z1), of square section.
void AddPost(CMesh& mesh, const Point& from, const Point& to) {
  constexpr double kHalf = 0.011;
  std::vector<Section> sections;
  for (const Point& p : {from, to})
    sections.push_back({{p.x - kHalf, p.y, p.z - kHalf},
                        {p.x - kHalf, p.y, p.z + kHalf},
                        {p.x + kHalf, p.y, p.z + kHalf},
                        {p.x + kHalf, p.y, p.z - kHalf}});
  AddLoft(mesh, sections);
}

/// Roof, posts and seats.
void AddCabin(CMesh& mesh) {
  constexpr double kRoofY = 0.315;
  AddLoft(
      mesh,
      {{{-0.255, kRoofY, -0.09},
        {-0.255, kRoofY, 0.36},
        {0.255, kRoofY, 0.36},
        {0.255, kRoofY, -0.09}},
       {{-0.225, 0.34, -0.04}, {-0.225, 0.34, 0.31}, {0.225, 0.34, 0.31}, {0.225, 0.34, -0.04}}});
  for (const double side : {-1.0, 1.0}) {
    AddPost(mesh, {side * 0.305, 0.12, -0.29}, {side * 0.243, kRoofY, -0.078});
    AddPost(mesh, {side * 0.305, 0.12, 0.10}, {side * 0.243, kRoofY, 0.12});
    AddPost(mesh, {side * 0.305, 0.12, 0.52}, {side * 0.243, kRoofY, 0.348});
    AddBox(mesh, {0.17, 0.06, 0.16}, {side * 0.13, -0.055, 0.06});
    AddBox(mesh, {0.17, 0.23, 0.04}, {side * 0.13, 0.06, 0.15});
  }
  AddBox(mesh, {0.44, 0.06, 0.1}, {0, -0.055, 0.28});
}

}  // namespace

CMesh_CarBody::CMesh_CarBody() {
  constexpr double kArchX = 0.17;
  constexpr double kDoorX = 0.29;
  AddSlab(*this, -kArchX, kArchX, false, true);
  for (const double side : {-1.0, 1.0}) {
    const auto slab = [&](double from, double to, bool hasCabin) {
      AddSlab(*this, std::min(side * from, side * to), std::max(side * from, side * to), true,
              hasCabin);
    };
    slab(kArchX, kDoorX, true);
    slab(kDoorX, kHalfWidth, false);
    // Lamps and mirrors.
    AddBox(*this, {0.10, 0.04, 0.02}, {side * 0.19, 0.02, -0.82});
    AddBox(*this, {0.08, 0.035, 0.02}, {side * 0.21, 0.06, 0.80});
    AddBox(*this, {0.05, 0.035, 0.025}, {side * 0.345, 0.16, -0.22});
  }
  AddCabin(*this);
}

CMesh_CarWheel::CMesh_CarWheel() {
  constexpr double kRim = 0.66;
  constexpr int kSpokes = 5;
  AddRing(*this, 0,
          {{-0.42, kRim},
           {0.42, kRim},
           {0.5, 0.78},
           {0.5, 0.9},
           {0.4, 1},
           {-0.4, 1},
           {-0.5, 0.9},
           {-0.5, 0.78}},
          32);
  AddRod(*this, 0, {{-0.3, 0.1}, {-0.25, 0.18}, {0.25, 0.18}, {0.3, 0.1}}, 12);
  for (int i = 0; i < kSpokes; ++i)
    AddSpoke(*this, 0, 2 * kPi * i / kSpokes, 0.1, kRim + 0.02, i == 0 ? 0.3 : 0.12, 0.36);
  AddSpoke(*this, 0, kPi / kSpokes, kRim - 0.12, kRim + 0.02, 0.06, 0.7);
}

CMesh_WheelRelocator::CMesh_WheelRelocator() {
  AddHoop(*this, 0, 1.07, 1.1, 0.06, 32);
}

CMesh_WheelCenter::CMesh_WheelCenter() {
  for (int axis = 0; axis < 3; ++axis) AddRod(*this, axis, {{-0.15, 0.012}, {0.15, 0.012}}, 4);
}

CMesh_WheelSuspension::CMesh_WheelSuspension() {
  AddRod(*this, 1, {{-0.5, 0.03}, {0.5, 0.03}}, 8);
  AddRod(*this, 1, {{-0.3, 0.05}, {0.1, 0.05}}, 8);
}

CMesh_ChassisRelocator::CMesh_ChassisRelocator() {
  AddFrame(*this, 0.7, 1.2, 0.02);
}

CMesh_TurnBase::CMesh_TurnBase() {
  AddRod(*this, 1, {{-0.005, 0.08}, {0.005, 0.08}}, 24);
  AddBox(*this, {0.6, 0.014, 0.014}, {0, 0, 0});
}

CMesh_GravityDirection::CMesh_GravityDirection() {
  AddArrow(*this, 0.3, -1);
}

CMesh_ExternalForce::CMesh_ExternalForce() {
  AddArrow(*this, 0.3, 1);
}

CMesh_CarBodyBase::CMesh_CarBodyBase() {
  AddFrame(*this, 0.6, 1.0, 0.02);
  AddLoft(*this, {{{-0.1, -0.005, -0.5}, {0.1, -0.005, -0.5}, {0, -0.005, -0.62}},
                  {{-0.1, 0.005, -0.5}, {0.1, 0.005, -0.5}, {0, 0.005, -0.62}}});
}

CMesh_Target::CMesh_Target() {
  AddHoop(*this, 1, 0.18, 0.2, 0.01, 24);
  AddBox(*this, {0.5, 0.01, 0.02}, {0, 0, 0});
  AddBox(*this, {0.02, 0.01, 0.5}, {0, 0, 0});
}

CMesh_SteeringWheel::CMesh_SteeringWheel() {
  AddHoop(*this, 2, 0.06, 0.07, 0.012, 24);
  AddRod(*this, 2, {{-0.01, 0.015}, {0.01, 0.015}}, 8);
  // Level and downward, as seen by the driver.
  for (const double angle : {0.0, kPi, 1.5 * kPi})
    AddSpoke(*this, 2, angle, 0.01, 0.062, 0.012, 0.006);
}

}  // namespace orv::rws::addon
