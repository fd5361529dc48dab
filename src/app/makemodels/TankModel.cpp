#include <cmath>
#include <string>
#include <vector>

#include "Models.h"
#include "util/Angles.h"

namespace orv::app {

namespace {

using Vector = Shape::Vector;

struct TankPaints {
  int armour, darker, steel, rubber, dark, lamp;
};

/// A plate's outline in Y and Z, drawn out along X, its edges cut off.
void AddPrism(Shape& shape, int material, const std::vector<Vector>& outline, double half,
              double bevel) {
  Vector middle;
  for (const Vector& p : outline) middle += p * (1.0 / static_cast<double>(outline.size()));
  const auto ring = [&](double x, double inset) {
    std::vector<Vector> points;
    for (const Vector& p : outline) {
      const Vector away = p - middle;
      const Vector q = middle + away * (1.0 - inset / away.length());
      points.push_back({x, q.y, q.z});
    }
    return points;
  };
  shape.Loft(
      material,
      {ring(-half, bevel), ring(-half + bevel, 0.0), ring(half - bevel, 0.0), ring(half, bevel)},
      true, true);
}

Shape ShapeHull(const TankPaints& paint) {
  Shape shape;
  AddPrism(shape, paint.armour,
           {{0, 0.45, -1.75},
            {0, 0.45, 1.95},
            {0, 0.75, 2.30},
            {0, 1.22, 2.20},
            {0, 1.26, -0.90},
            {0, 0.98, -2.30},
            {0, 0.80, -2.40}},
           0.92, 0.03);
  Shape side;
  side.Box(paint.armour, {0.90, 1.12, -2.35}, {1.48, 1.18, 2.35}, 0.02);
  side.Box(paint.darker, {0.96, 1.17, -0.60}, {1.44, 1.40, 0.30}, 0.03);
  side.Box(paint.darker, {0.96, 1.17, 0.40}, {1.44, 1.36, 1.10}, 0.03);
  side.Box(paint.armour, {0.96, 1.17, 1.25}, {1.44, 1.42, 2.10}, 0.03);
  for (int i = 0; i < 5; ++i) {  // skirts
    const double z = -2.20 + 0.88 * i;
    side.Box(paint.armour, {1.45, 0.86, z}, {1.49, 1.16, z + 0.84}, 0.012);
  }
  side.Box(paint.lamp, {0.98, 1.19, -2.20}, {1.16, 1.33, -2.04}, 0.02);
  side.Turned(paint.dark, {{0.0, 2.16}, {0.07, 2.16}, {0.07, 2.42}, {0.05, 2.42}, {0.0, 2.30}},
              {0.70, 1.05, 0.0}, true, 16);
  side.Box(paint.steel, {0.50, 0.72, -2.46}, {0.62, 0.86, -2.36}, 0.02);
  shape.Add(side);
  shape.AddMirrored(side);
  for (int i = 0; i < 6; ++i)
    shape.Box(paint.dark, {-0.70, 1.245, 1.20 + 0.14 * i}, {0.70, 1.275, 1.28 + 0.14 * i}, 0.008);
  shape.Box(paint.darker, {-0.62, 1.16, -1.30}, {-0.10, 1.235, -0.95}, 0.02);
  return shape;
}

Shape ShapeTurret(const TankPaints& paint) {
  Shape shape;
  const auto ring = [&](double y, double grow) {
    const std::vector<Vector> outline = {{0.45, y, -1.15},  {0.95, y, -0.45}, {0.98, y, 0.60},
                                         {0.70, y, 1.30},   {-0.70, y, 1.30}, {-0.98, y, 0.60},
                                         {-0.95, y, -0.45}, {-0.45, y, -1.15}};
    std::vector<Vector> points;
    for (const Vector& p : outline) points.push_back({p.x * grow, y, p.z * grow});
    return points;
  };
  shape.Loft(paint.armour,
             {ring(0.62, 0.76), ring(0.58, 0.82), ring(0.20, 1.0), ring(0.14, 1.0),
              ring(0.05, 0.90), ring(-0.02, 0.90)},
             true, true);
  shape.Box(paint.darker, {0.16, 0.60, 0.05}, {0.62, 0.70, 0.50}, 0.04);
  shape.Box(paint.darker, {-0.60, 0.60, 0.10}, {-0.20, 0.67, 0.48}, 0.03);
  shape.Box(paint.dark, {0.28, 0.68, -0.02}, {0.50, 0.76, 0.06}, 0.02);
  shape.Box(paint.dark, {-0.66, 0.50, -0.62}, {-0.46, 0.66, -0.44}, 0.02);
  shape.Box(paint.darker, {-0.80, 0.16, 1.14}, {0.80, 0.46, 1.52}, 0.04);
  shape.Box(paint.dark, {-0.708, 0.45, 1.212}, {-0.692, 1.75, 1.228}, 0.003);
  return shape;
}

Shape ShapeGun(const TankPaints& paint, double muzzle) {
  Shape shape;
  shape.Box(paint.armour, {-0.30, -0.20, -0.32}, {0.30, 0.22, 0.20}, 0.06);
  shape.Turned(paint.armour,
               {{0.0, muzzle + 0.02},
                {0.06, muzzle + 0.02},
                {0.06, muzzle},
                {0.115, muzzle + 0.01},
                {0.12, muzzle + 0.05},
                {0.12, muzzle + 0.34},
                {0.115, muzzle + 0.38},
                {0.075, muzzle + 0.40},
                {0.08, -1.55},
                {0.12, -1.50},
                {0.12, -1.05},
                {0.09, -1.00},
                {0.11, -0.40},
                {0.17, -0.36},
                {0.17, -0.20}},
               {}, true, 24);
  shape.Box(paint.dark, {-0.125, -0.03, muzzle + 0.12}, {0.125, 0.03, muzzle + 0.28}, 0.01);
  return shape;
}

/// A wheel of a belt: rubber on steel, or teeth.
Shape ShapeBeltWheel(const TankPaints& paint, double radius, bool toothed) {
  Shape shape;
  constexpr double w = 0.15;
  const int tyre = toothed ? paint.steel : paint.rubber;
  for (const double x : {-0.09, 0.09}) {
    const double in = x - (w - 0.09), out = x + (w - 0.09);
    shape.Turned(tyre,
                 {{radius - 0.07, in},
                  {radius - 0.015, in},
                  {radius, in + 0.015},
                  {radius, out - 0.015},
                  {radius - 0.015, out},
                  {radius - 0.07, out}},
                 {}, false, 32);
    shape.Turned(paint.armour, {{0.0, in + 0.03}, {radius - 0.06, in + 0.005}}, {}, false, 32);
    shape.Turned(paint.armour,
                 {{radius - 0.06, out - 0.005}, {0.11, out - 0.03}, {0.0, out - 0.03}}, {}, false,
                 32);
  }
  for (const double side : {-1.0, 1.0}) {
    Shape hub;
    hub.Turned(paint.darker, {{0.10, 0.10}, {0.10, 0.17}, {0.06, 0.19}, {0.0, 0.19}}, {}, false,
               20);
    for (int i = 0; i < 6; ++i) {
      Shape bolt;
      bolt.Box(paint.steel, {0.13, radius * 0.52, -0.018}, {0.145, radius * 0.52 + 0.036, 0.018},
               0.005);
      bolt.TurnAboutX(2.0 * util::kPi * i / 6.0);
      hub.Add(bolt);
    }
    if (side > 0.0)
      shape.Add(hub);
    else
      shape.AddMirrored(hub);
  }
  return shape;
}

}  // namespace

void ModelTank(Kit& kit) {
  const TankPaints paint{kit.AddMaterial("Armour", 0.16, 0.19, 0.09, 0.1, 0.75),
                         kit.AddMaterial("Armour dark", 0.10, 0.12, 0.06, 0.1, 0.8),
                         kit.AddMaterial("Steel", 0.22, 0.22, 0.23, 0.7, 0.5),
                         kit.AddMaterial("Rubber", 0.02, 0.02, 0.02, 0.0, 0.95),
                         kit.AddMaterial("Black", 0.015, 0.015, 0.015, 0.2, 0.7),
                         kit.AddLight("Headlight", 0.95, 0.95, 0.85)};
  const int hullPart = kit.AddPart("Hull", {}, ShapeHull(paint));
  const Vector turretPlace(0.0, 1.30, -0.05);
  const int turretPart = kit.AddPart("Turret", turretPlace, ShapeTurret(paint), hullPart);
  const Vector gunPlace(0.0, kGunHeight, -0.95);
  kit.AddPart("Gun", gunPlace, ShapeGun(paint, kMuzzle - gunPlace.z), turretPart);
  for (const double side : {-1.0, 1.0}) {
    int number = 0;
    for (const BeltWheel& wheel : kBeltWheels)
      kit.AddPart((side < 0.0 ? "Left" : "Right") + std::to_string(number++),
                  {side * kBeltSide, wheel.y, wheel.z},
                  ShapeBeltWheel(paint, wheel.radius, wheel.y > 0.5));
  }
}

}  // namespace orv::app
