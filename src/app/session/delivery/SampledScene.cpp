#include "app/session/delivery/SampledScene.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <map>
#include <tuple>
#include <utility>

#include "adaptor/common/Euler.h"
#include "adaptor/common/LegalNames.h"
#include "adaptor/headless/Scene.h"
#include "app/session/anyhost/FrameTimes.h"
#include "app/session/anyhost/Monitor.h"
#include "util/Angles.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

using rws::adaptor::RotationOrder;
using rws::adaptor::Trs;
using rws::adaptor::headless::Lens;
using rws::adaptor::headless::Scene;
using rws::adaptor::headless::SceneNode;
using util::Vector3;
using Matrix = util::Matrix<double>;

/// A quaternion's squared length may miss 1 by this much before it counts as a scale.
constexpr double kUnitLength = 1e-14;
/// Part of its size by which a pose may miss the matrix that it stands for; rounding does less.
constexpr double kShear = 1e-12;
/// Poses that are held in memory, some 1.5 GB.
constexpr double kMostPoses = 2e7;

/// Rotations that went through floats are not quite of length 1, which scales what they turn.
Trs WithUnitRotation(Trs pose) {
  const auto& q = pose.rotation;
  const double squared = q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w;
  if (std::abs(squared - 1.0) <= kUnitLength) return pose;
  pose.scale = pose.scale * squared;
  pose.rotation = squared > 0.0 ? q.normalized() : util::Quat<double>();
  return pose;
}

bool IsNear(const Matrix& a, const Matrix& b) {
  for (int i = 0; i < 3; ++i)
    if ((a.axisRow(i) - b.axisRow(i)).length() > kShear * b.axisRow(i).length()) return false;
  return true;
}

bool IsFinite(const Vector3<double>& v) {
  return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

/// In a file points are floats.
bool FitFloats(const std::vector<Vector3<double>>& points, double metre) {
  return std::all_of(points.begin(), points.end(), [metre](const Vector3<double>& p) {
    const Vector3<double> q = p * metre;
    return IsFinite({static_cast<float>(q.x), static_cast<float>(q.y), static_cast<float>(q.z)});
  });
}

class Sampler {
 public:
  Sampler(const Scene& scene, const SampleRequest& request)
      : m_scene(scene),
        m_request(request),
        m_frames(request.span.from, request.span.to, scene.GetFrameDuration()) {}

  SampledScene Run(const Monitor& monitor);

 private:
  /// Where a node stands in a frame, in rig space.
  struct Place {
    Trs pose;                ///< as it is written
    Matrix world;            ///< what the written poses come to; known where `isSheared`
    bool isSheared = false;  ///< and is not quite the node's true place for that
  };

  void ListNodes();
  void ListShapes();
  void NameNodes();
  void CheckSize();
  void SampleFrame(long frame);
  void TellShear(std::size_t i);
  Place PlaceOf(const SampledNode& node, double time) const;
  void AddPose(SampledNode& node, const Trs& pose, long frame);
  void Fail(const SceneNode& node, const std::string& what);

  const Scene& m_scene;
  const SampleRequest& m_request;
  FrameTimes m_frames;
  SampledScene m_result;
  std::vector<Place> m_places;  ///< of all nodes in the frame that is sampled
  std::vector<Trs> m_first;     ///< poses in the first frame
  std::vector<bool> m_isTold;   ///< that the node is sheared
};

void Sampler::Fail(const SceneNode& node, const std::string& what) {
  if (m_result.error.empty())
    m_result.error = node.GetName() + ": " + what + " is no number, or too large for the file";
}

/// Below a node stand those children of it that are in the file too.
void Sampler::ListNodes() {
  const std::set<const SceneNode*> only(m_request.only.begin(), m_request.only.end());
  const auto isIn = [&](const SceneNode* n) { return only.empty() || only.count(n) > 0; };
  std::map<const SceneNode*, std::vector<SceneNode*>> below;
  for (SceneNode* node : m_scene.GetNodes())
    if (isIn(node)) below[isIn(node->GetParent()) ? node->GetParent() : nullptr].push_back(node);
  std::vector<std::pair<const SceneNode*, int>> open;  // with the parent's place
  const auto put = [&](const SceneNode* parent, int place) {
    const auto& children = below[parent];
    for (auto child = children.rbegin(); child != children.rend(); ++child)
      open.emplace_back(*child, place);
    return static_cast<int>(children.size());
  };
  put(nullptr, -1);
  while (!open.empty()) {
    SampledNode sampled;
    std::tie(sampled.node, sampled.parent) = open.back();
    open.pop_back();
    const int place = static_cast<int>(m_result.nodes.size());
    if (sampled.parent >= 0)
      sampled.depth = m_result.nodes[static_cast<std::size_t>(sampled.parent)].depth + 1;
    sampled.children = put(sampled.node, place);
    sampled.isVisible = sampled.node->IsVisible();
    for (const SceneNode* up = sampled.node; sampled.parent < 0 && up; up = up->GetParent())
      sampled.isVisible = sampled.isVisible && up->IsVisible();
    m_result.nodes.push_back(std::move(sampled));
  }
}

void Sampler::NameNodes() {
  rws::adaptor::LegalNames names(m_request.taken);
  std::vector<std::string> wishes;
  for (const SampledNode& node : m_result.nodes) wishes.push_back(node.node->GetName());
  wishes = names.Add(wishes);
  for (std::size_t i = 0; i < wishes.size(); ++i) m_result.nodes[i].name = wishes[i];
  for (SampledNode& node : m_result.nodes)
    for (SampledShape& shape : node.shapes) shape.name = names.Add(node.name + "Shape");
}

void Sampler::ListShapes() {
  for (SampledNode& sampled : m_result.nodes) {
    const SceneNode& node = *sampled.node;
    const auto add = [&](ShapeKind kind, const char* what,
                         const std::vector<Vector3<double>>& points) {
      sampled.shapes.push_back({kind, {}});
      if (!FitFloats(points, m_request.metre)) Fail(node, what);
    };
    const util::CMesh* const mesh = m_request.hasGeometry ? node.GetMesh() : nullptr;
    if (mesh && !mesh->faces.empty()) add(ShapeKind::kMesh, "a point of its mesh", mesh->vertices);
    if (const Lens* const lens = node.GetLens()) {
      const Film film = FilmOf(*lens);
      add(ShapeKind::kCamera, "its lens",
          {{film.focalLength, film.width, film.height},
           {film.nearClip, film.farClip, lens->focusDistance}});
    }
    const rws::adaptor::Curve* const curve = m_request.hasGeometry ? node.GetCurve() : nullptr;
    if (curve && curve->points.size() > 1)
      add(ShapeKind::kCurve, "a point of its curve", curve->points);
    if (sampled.shapes.empty()) sampled.shapes.push_back({ShapeKind::kHelper, {}});
  }
}

/// The parent's place in the frame is known already.
Sampler::Place Sampler::PlaceOf(const SampledNode& sampled, double time) const {
  const SceneNode& node = *sampled.node;
  const Place* const parent =
      sampled.parent < 0 ? nullptr : &m_places[static_cast<std::size_t>(sampled.parent)];
  Place place;
  place.pose = WithUnitRotation(node.LocalTrs(time));
  const bool keepsParent = parent ? !parent->isSheared : !node.GetParent();
  if (keepsParent && IsNear(rws::adaptor::Compose(place.pose), node.LocalMatrix(time)))
    return place;
  Matrix above;
  if (parent) above = parent->isSheared ? parent->world : node.GetParent()->WorldMatrix(time);
  const Matrix world = node.WorldMatrix(time);
  if (rws::adaptor::PoseUnder(above, world, place.pose)) place.pose = WithUnitRotation(place.pose);
  place.world = above * rws::adaptor::Compose(place.pose);
  place.isSheared = !IsNear(place.world, world);
  return place;
}

void Sampler::AddPose(SampledNode& node, const Trs& pose, long frame) {
  const rws::adaptor::Space space{m_request.up, 1.0};
  const Trs told = node.parent < 0 ? space.TopLevelToHost(pose) : pose;
  const Vector3<double> before =
      node.poses.empty() ? Vector3<double>() : node.poses.back().degrees * util::kRadiansPerDegree;
  const SampledPose sampled{
      told.translation * m_request.metre,
      ToEulerNear(told.rotation, RotationOrder::kXyz, before) * util::kDegreesPerRadian,
      told.scale};
  if (!IsFinite(sampled.translation) || !IsFinite(sampled.degrees) || !IsFinite(sampled.scale))
    Fail(*node.node, "its pose at frame " + std::to_string(m_frames.first + frame) + " (" +
                         util::shortText(m_frames.Time(m_frames.first + frame)) + " s)");
  node.poses.push_back(sampled);
}

/// What is below a node that lost a shear has lost it with that.
void Sampler::TellShear(std::size_t i) {
  const SampledNode& node = m_result.nodes[i];
  const bool isFirst =
      node.parent < 0 || !m_places[static_cast<std::size_t>(node.parent)].isSheared;
  if (!m_places[i].isSheared || !isFirst || m_isTold[i]) return;
  m_isTold[i] = true;
  m_result.warnings.push_back(node.node->GetName() +
                              ": it is sheared, by an uneven scale above it that is not exported "
                              "or by a matrix, and loses that");
}

void Sampler::SampleFrame(long frame) {
  for (std::size_t i = 0; i < m_result.nodes.size(); ++i) {
    SampledNode& node = m_result.nodes[i];
    m_places[i] = PlaceOf(node, m_frames.Time(m_frames.first + frame));
    const Trs& pose = m_places[i].pose;
    TellShear(i);
    if (frame == 0) {
      m_first[i] = pose;
      AddPose(node, pose, 0);
      continue;
    }
    if (!node.isMoving) {
      if (pose == m_first[i]) continue;
      node.isMoving = true;
      node.poses.reserve(static_cast<std::size_t>(m_frames.Count()));
      node.poses.resize(static_cast<std::size_t>(frame), node.poses.front());
    }
    AddPose(node, pose, frame);
  }
}

void Sampler::CheckSize() {
  if (m_result.nodes.empty()) m_result.error = "there is no node in the scene";
  if (m_result.frames == 0)
    m_result.error = "no frame lies in " + RangeText(m_request.span) + "; export a longer range";
  if (static_cast<double>(m_result.frames) * static_cast<double>(m_result.nodes.size()) >
      kMostPoses)
    m_result.error = util::counted(m_result.frames, "frame") + " of " +
                     util::counted(m_result.nodes.size(), "node") +
                     " are too many for one file; export fewer nodes or a shorter range";
}

SampledScene Sampler::Run(const Monitor& monitor) {
  m_result.firstFrame = m_frames.first;
  m_result.frames = m_frames.Count();
  m_result.frameRate = m_scene.GetFrameRate();
  m_result.up = m_request.up;
  m_result.metre = m_request.metre;
  ListNodes();
  ListShapes();
  NameNodes();
  CheckSize();
  m_places.resize(m_result.nodes.size());
  m_first.resize(m_result.nodes.size());
  m_isTold.resize(m_result.nodes.size());
  for (long frame = 0; frame < m_result.frames && m_result.error.empty(); ++frame) {
    m_result.isCancelled = monitor.IsCancelled();
    if (m_result.isCancelled) break;
    SampleFrame(frame);
    monitor.Tell(frame, m_result.frames);
  }
  return std::move(m_result);
}

}  // namespace

SampledScene SampleScene(const Scene& scene, const SampleRequest& request, const Monitor& monitor) {
  return Sampler(scene, request).Run(monitor);
}

Film FilmOf(const Lens& lens) {
  constexpr double kWidth = 36.0, kLeastFocal = 2.5;  // mm
  constexpr double kUsualAspect = 16.0 / 9.0, kFarthest = 1e5;
  const double aspect = lens.aspectRatio > 0.0 ? lens.aspectRatio : kUsualAspect;
  const double height = kWidth / aspect;
  const double focal = height / 2.0 / std::tan(lens.fieldOfView / 2.0 * util::kRadiansPerDegree);
  const double larger = focal < kLeastFocal ? kLeastFocal / focal : 1.0;
  return {focal * larger, kWidth * larger, height * larger, lens.nearClip,
          lens.farClip > 0.0 ? lens.farClip : std::max(kFarthest, lens.nearClip * 2.0)};
}

}  // namespace orv::app
