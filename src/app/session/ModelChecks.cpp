#include "app/session/ModelChecks.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <limits>
#include <utility>

#include "adaptor/headless/Scene.h"
#include "app/session/anyhost/ModelUnits.h"

namespace orv::app {

namespace {

using rws::adaptor::headless::SceneNode;
using Vector = util::Vector3<double>;

constexpr double kLeastWheel = 0.015, kMostWheel = 10.0;   // m across
constexpr double kUsualWheel = 0.1, kLargeWheel = 5.0;     // m across
constexpr double kLeastScene = 0.1, kMostScene = 20000.0;  // m
constexpr double kBroad = 20.0;                            ///< m: a ground is as wide and as long

struct Extent {
  double low = std::numeric_limits<double>::infinity();
  double high = -std::numeric_limits<double>::infinity();
  double Length() const { return high - low; }
};

/// The user's meshes together: how far they reach, and how much of them faces along each axis.
struct Bulk {
  Extent reach[3];
  double area = 0.0;      ///< m²
  double facing[3] = {};  ///< m² of triangles within 45 degrees of the axis
  double Longest() const {
    return std::max({reach[0].Length(), reach[1].Length(), reach[2].Length()});
  }
};

void AddMesh(const SceneNode& node, double time, Bulk& bulk) {
  const util::CMesh& mesh = *node.GetMesh();
  const util::Matrix<double> world = node.WorldMatrix(time);
  for (std::size_t f = 0; f + 2 < mesh.faces.size(); f += 3) {
    Vector corner[3];
    for (std::size_t k = 0; k < 3; ++k) {
      corner[k] = world.transformPoint(mesh.vertices[static_cast<std::size_t>(mesh.faces[f + k])]);
      for (int axis = 0; axis < 3; ++axis) {
        bulk.reach[axis].low = std::min(bulk.reach[axis].low, corner[k][axis]);
        bulk.reach[axis].high = std::max(bulk.reach[axis].high, corner[k][axis]);
      }
    }
    const Vector normal = (corner[1] - corner[0]).cross(corner[2] - corner[0]) * 0.5;
    const double area = normal.length();
    bulk.area += area;
    for (int axis = 0; axis < 3; ++axis)
      if (std::abs(normal[axis]) > 0.7071 * area) bulk.facing[axis] += area;
  }
}

/// A car's wheels are known by their names: four or more, in the middle larger or smaller than any.
Problem OddWheels(const rws::adaptor::headless::Scene& scene, double time) {
  std::vector<std::pair<double, const SceneNode*>> wheels;
  for (const SceneNode* node : scene.GetNodes()) {
    std::string name = node->GetName();
    for (char& c : name) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    const auto has = [&name](const char* part) { return name.find(part) != std::string::npos; };
    if (!node->GetTag().empty() || !node->HasMesh() ||
        !(has("wheel") || has("tire") || has("tyre")))
      continue;
    Bulk bulk;
    AddMesh(*node, time, bulk);
    wheels.emplace_back(bulk.Longest(), node);
  }
  if (wheels.size() < 4) return {};
  std::sort(wheels.begin(), wheels.end(),
            [](const auto& a, const auto& b) { return a.first < b.first; });
  const auto [size, wheel] = wheels[wheels.size() / 2];
  if (!(size > kMostWheel || size < kLeastWheel)) return {};
  const SceneNode* top = wheel;
  while (top->GetParent()) top = top->GetParent();
  return OddLength("the wheel " + wheel->GetName() + " is " + MetresText(size) + " large", size,
                   kUsualWheel, kLargeWheel, top->GetName());
}

}  // namespace

std::vector<Problem> OddScene(const rws::adaptor::headless::Scene& scene, double time) {
  Bulk bulk;
  for (const SceneNode* node : scene.GetNodes())
    if (node->GetTag().empty() && node->HasMesh()) AddMesh(*node, time, bulk);
  if (bulk.area == 0.0) return {};
  std::vector<Problem> odd;
  const double longest = bulk.Longest();
  if (longest > kMostScene || longest < kLeastScene) {
    const double unit = longest > kMostScene ? 0.01 : 100.0;
    odd.push_back({"",
                   "the scene's meshes reach over " + MetresText(longest) +
                       ", as if their unit were no metre: rigs are made for metres, so scale the "
                       "scene's top nodes first",
                   "",
                   {Remedy::Kind::kScale, "", unit}});
  } else if (Problem wheels = OddWheels(scene, time)) {
    odd.push_back(std::move(wheels));
  }
  const double x = bulk.reach[0].Length(), y = bulk.reach[1].Length(), z = bulk.reach[2].Length();
  if (std::min(x, y) > kBroad && z < 0.25 * std::min(x, y) && bulk.facing[2] > 0.7 * bulk.area &&
      bulk.facing[1] < 0.1 * bulk.area)
    odd.push_back({"",
                   "the scene's ground stands upright, as if it were exported with Z up, but up is "
                   "+Y: export it with Y up, or turn its top nodes first",
                   "",
                   {Remedy::Kind::kTurnUp, "", 1.0}});
  return odd;
}

}  // namespace orv::app
