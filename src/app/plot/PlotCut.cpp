#include "app/plot/PlotCut.h"

#include <utility>

#include "adaptor/headless/Scene.h"
#include "adaptor/headless/SceneNode.h"
#include "util/CMesh.h"

namespace orv::app {

using Vector = util::Vector3<double>;

namespace {

/// Goes on with the last line where the piece touches its end, as pieces of neighbours do.
void Append(std::vector<PlotLine>& lines, std::size_t first, const Vector& a, const Vector& b) {
  constexpr double kSamePlace = 1e-6;  // m
  if (lines.size() > first) {
    auto& points = lines.back().points;
    for (const auto& [from, to] : {std::pair{a, b}, {b, a}}) {
      if ((points.back() - from).length() > kSamePlace) continue;
      points.push_back(to);
      return;
    }
  }
  lines.emplace_back();
  lines.back().points = {a, b};
}

}  // namespace

std::vector<PlotLine> CutOf(const rws::adaptor::headless::Scene& scene, double time,
                            const Vector& point, const Vector& normal) {
  std::vector<PlotLine> lines;
  for (const rws::adaptor::headless::SceneNode* node : scene.GetNodes()) {
    const util::CMesh* const mesh =
        node->GetTag().empty() && node->IsVisible() && node->HasMesh() ? node->GetMesh() : nullptr;
    if (!mesh) continue;
    const util::Matrix<double> pose = node->WorldMatrix(time);
    std::vector<Vector> places;
    std::vector<double> heights;  // over the plane
    for (const Vector& vertex : mesh->vertices) {
      places.push_back(pose.transformPoint(vertex));
      heights.push_back((places.back() - point).dot(normal));
    }
    const std::size_t first = lines.size();
    for (std::size_t f = 0; f + 2 < mesh->faces.size(); f += 3) {
      std::vector<Vector> ends;
      for (std::size_t k = 0; k < 3; ++k) {
        const auto a = static_cast<std::size_t>(mesh->faces[f + k]);
        const auto b = static_cast<std::size_t>(mesh->faces[f + (k + 1) % 3]);
        if ((heights[a] < 0.0) == (heights[b] < 0.0)) continue;
        ends.push_back(places[a] +
                       (places[b] - places[a]) * (heights[a] / (heights[a] - heights[b])));
      }
      if (ends.size() == 2) Append(lines, first, ends[0], ends[1]);
    }
  }
  return lines;
}

}  // namespace orv::app
