#include "plugins/release/4wheelerextended/WheelMeasure.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "util/Angles.h"
#include "util/NumberText.h"

namespace orv::rws::addon {

namespace {

using Vector = util::Vector3<double>;
using Points = std::vector<Vector>;

/// Directions of half the sphere that are tried first, about 3 degrees apart.
constexpr int kDirections = 2000;
/// Corners that are looked at for that; of more, every so many.
constexpr std::size_t kCoarseCorners = 10000;
/// The axis lies within so much of the best of them, on the plane that touches the sphere there.
constexpr double kNear = 0.1;
constexpr double kSettled = 1e-12;  ///< rad, and part of the size
constexpr int kMostRounds = 10;
constexpr int kMostCuts = 100;
/// A wheel has six sides or more: its corners stand at most so far apart (rad, with some slack).
constexpr double kMostSide = util::kPi / 3.0 * 1.03;

// --- the axis ---

/// From the corner that lies least far along `direction` to the one that lies farthest.
Vector Across(const Points& points, const Vector& direction, std::size_t stride = 1) {
  double low = std::numeric_limits<double>::infinity(), high = -low;
  std::size_t first = 0, last = 0;
  for (std::size_t i = 0; i < points.size(); i += stride) {
    const double along = points[i].dot(direction);
    if (along < low) low = along, first = i;
    if (along > high) high = along, last = i;
  }
  return points[last] - points[first];
}

Vector CoarseAxis(const Points& points) {
  const std::size_t stride = points.size() / kCoarseCorners + 1;
  const double turn = util::kPi * (3.0 - std::sqrt(5.0));
  Vector best;
  double least = std::numeric_limits<double>::infinity();
  for (int i = 0; i < kDirections; ++i) {
    const double z = (i + 0.5) / kDirections, r = std::sqrt(1.0 - z * z);
    const Vector direction(r * std::cos(turn * i), r * std::sin(turn * i), z);
    const double extent = Across(points, direction, stride).dot(direction);
    if (extent < least) least = extent, best = direction;
  }
  return best;
}

/// Where in [-kNear, kNear] a convex function is least, by golden section.
template <class Function>
double WhereLeast(const Function& function) {
  constexpr double kGolden = 0.6180339887498949;
  double from = -kNear, to = kNear;
  double a = to - kGolden * (to - from), b = from + kGolden * (to - from);
  double atA = function(a), atB = function(b);
  while (to - from > kSettled * 0.1) {
    if (atA <= atB) {
      to = b, b = a, atB = atA;
      atA = function(a = to - kGolden * (to - from));
    } else {
      from = a, a = b, atA = atB;
      atB = function(b = from + kGolden * (to - from));
    }
    if (!(a > from && b > a && to > b)) break;  // no doubles are left between them
  }
  return (from + to) * 0.5;
}

/// The direction of least extent in the plane that touches the sphere at `axis`. The extent is
/// convex there, the greatest of one linear function per pair of corners; those that count are
/// collected one by one.
Vector LeastNear(const Points& points, const Vector& axis, double size) {
  const Vector away = std::abs(axis.x) < 0.6 ? Vector(1, 0, 0) : Vector(0, 1, 0);
  const Vector u = axis.cross(away).normalized(), v = axis.cross(u);
  struct Cut {
    double base, u, v;
  };
  std::vector<Cut> cuts;
  const auto known = [&](double a, double b) {
    double extent = 0.0;
    for (const Cut& cut : cuts) extent = std::max(extent, cut.base + cut.u * a + cut.v * b);
    return extent;
  };
  double a = 0.0, b = 0.0;
  for (int i = 0; i < kMostCuts; ++i) {
    const Vector direction = axis + u * a + v * b;
    const Vector pair = Across(points, direction);
    if (i > 0 && pair.dot(direction) - known(a, b) <= kSettled * size) break;
    cuts.push_back({pair.dot(axis), pair.dot(u), pair.dot(v)});
    const auto bestB = [&](double at) {
      return WhereLeast([&](double other) { return known(at, other); });
    };
    a = WhereLeast([&](double at) { return known(at, bestB(at)); });
    b = bestB(a);
  }
  return (axis + u * a + v * b).normalized();
}

Vector FindAxis(const Points& points, double size) {
  Vector axis = CoarseAxis(points);
  for (int i = 0; i < kMostRounds; ++i) {
    const Vector before = axis;
    axis = LeastNear(points, axis, size);
    if ((axis - before).length() <= kSettled) break;
  }
  return axis;
}

// --- the outline ---

struct Flat {
  double x = 0.0, y = 0.0;
  friend Flat operator-(const Flat& a, const Flat& b) { return {a.x - b.x, a.y - b.y}; }
};

double Cross(const Flat& a, const Flat& b) {
  return a.x * b.y - a.y * b.x;
}

double LengthOf(const Flat& a) {
  return std::hypot(a.x, a.y);
}

struct Circle {
  Flat centre;
  double radius = 0.0;
  bool Holds(const Flat& point) const {
    return LengthOf(point - centre) <= radius * (1.0 + kSettled);
  }
};

/// Through two or three points; a radius of 0 when there is none.
Circle Through(const std::vector<Flat>& on) {
  const Flat a = on[1] - on[0];
  Flat middle{a.x * 0.5, a.y * 0.5};
  if (on.size() == 3) {
    const Flat b = on[2] - on[0];
    const double d = 2.0 * Cross(a, b);
    if (d == 0.0) return {};
    const double aa = a.x * a.x + a.y * a.y, bb = b.x * b.x + b.y * b.y;
    middle = {(b.y * aa - a.y * bb) / d, (a.x * bb - b.x * aa) / d};
  }
  return {{on[0].x + middle.x, on[0].y + middle.y}, LengthOf(middle)};
}

/// The least circle round up to four points; `rim` becomes the two or three that it goes through.
Circle LeastRoundFew(std::vector<Flat>& rim) {
  const std::vector<Flat> points = rim;
  const std::size_t n = points.size();
  Circle best;
  const auto consider = [&](const std::vector<Flat>& on) {
    const Circle circle = Through(on);
    if (circle.radius == 0.0 || (best.radius > 0.0 && circle.radius >= best.radius)) return;
    if (!std::all_of(points.begin(), points.end(), [&](const Flat& p) { return circle.Holds(p); }))
      return;
    best = circle;
    rim = on;
  };
  for (std::size_t i = 0; i < n; ++i)
    for (std::size_t k = i + 1; k < n; ++k) {
      consider({points[i], points[k]});
      for (std::size_t m = k + 1; m < n; ++m) consider({points[i], points[k], points[m]});
    }
  return best;
}

/// The least circle round all points: takes in the farthest one until none is left outside.
Circle LeastRound(const std::vector<Flat>& points) {
  std::vector<Flat> rim{points.front()};
  Circle circle{points.front(), 0.0};
  for (;;) {
    const Flat& farthest =
        *std::max_element(points.begin(), points.end(), [&](const Flat& a, const Flat& b) {
          return LengthOf(a - circle.centre) < LengthOf(b - circle.centre);
        });
    if (circle.Holds(farthest)) return circle;
    rim.push_back(farthest);
    const Circle wider = LeastRoundFew(rim);
    if (!(wider.radius > circle.radius)) return circle;  // rounding is all that is left
    circle = wider;
  }
}

/// Corners of the convex outline, counter-clockwise; what lies on its sides but for `tolerance` is
/// no corner.
std::vector<Flat> OutlineOf(std::vector<Flat> points, double tolerance) {
  std::sort(points.begin(), points.end(),
            [](const Flat& a, const Flat& b) { return a.x < b.x || (a.x == b.x && a.y < b.y); });
  std::vector<Flat> outline;
  const auto walk = [&](auto begin, auto end) {
    const std::size_t start = outline.size();
    for (auto point = begin; point != end; ++point) {
      while (outline.size() >= start + 2) {
        const Flat& before = outline[outline.size() - 2];
        const Flat side = *point - before;
        if (Cross(outline.back() - before, side) > tolerance * LengthOf(side)) break;
        outline.pop_back();
      }
      outline.push_back(*point);
    }
    outline.pop_back();  // the other half begins with it
  };
  walk(points.begin(), points.end());
  walk(points.rbegin(), points.rend());
  return outline;
}

/// How much nearer to its middle than its radius the outline comes, part of the radius.
double UnevennessOf(const std::vector<Flat>& points, const Circle& circle) {
  const std::vector<Flat> outline = OutlineOf(points, circle.radius * 1e-6);
  double nearest = circle.radius;
  for (std::size_t i = 0; i < outline.size(); ++i) {
    const Flat a = outline[i] - circle.centre;
    const Flat b = outline[(i + 1) % outline.size()] - circle.centre;
    nearest = std::min(nearest, LengthOf(a));
    // Sides as long as those of a box are no facets of a round thing.
    const double angle = std::atan2(Cross(a, b), a.x * b.x + a.y * b.y);
    if (angle < 0.0 || angle > kMostSide)
      nearest = std::min(nearest, std::abs(Cross(a, b)) / LengthOf(b - a));
  }
  return 1.0 - nearest / circle.radius;
}

}  // namespace

std::string MeasureWheel(const std::vector<Vector>& corners, WheelMeasure& wheel) {
  if (corners.empty()) return "it has no mesh";
  // Near the origin no digits are lost to a place far from it.
  const Vector origin = corners.front();
  Points points;
  points.reserve(corners.size());
  double size = 0.0;
  for (const Vector& corner : corners) {
    points.push_back(corner - origin);
    size = std::max(size, points.back().length());
  }
  if (!std::isnormal(size)) return "its mesh has no size";
  wheel.axis = FindAxis(points, size);
  const Vector away = std::abs(wheel.axis.x) < 0.6 ? Vector(1, 0, 0) : Vector(0, 1, 0);
  const Vector u = wheel.axis.cross(away).normalized(), v = wheel.axis.cross(u);
  std::vector<Flat> flat;
  flat.reserve(points.size());
  double low = std::numeric_limits<double>::infinity(), high = -low;
  for (const Vector& point : points) {
    low = std::min(low, point.dot(wheel.axis));
    high = std::max(high, point.dot(wheel.axis));
    flat.push_back({point.dot(u), point.dot(v)});
  }
  const Circle circle = LeastRound(flat);
  wheel.width = high - low;
  wheel.radius = circle.radius;
  wheel.centre =
      origin + wheel.axis * ((low + high) * 0.5) + u * circle.centre.x + v * circle.centre.y;
  if (wheel.width <= 1e-6 * size) return "its mesh is flat: a wheel has a width";
  wheel.unevenness = UnevennessOf(flat, circle);
  if (wheel.unevenness > kMostUneven) {
    const double percent = std::round(wheel.unevenness * 1000.0) / 10.0;
    return "it is no disc, or one that is wider than its diameter: seen along its thinnest "
           "direction, its outline comes " +
           util::shortText(percent) + " % nearer to its middle than its radius; 5 % is the most";
  }
  return {};
}

}  // namespace orv::rws::addon
