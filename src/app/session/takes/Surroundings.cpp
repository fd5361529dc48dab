#include "app/session/takes/Surroundings.h"

#include <QCryptographicHash>
#include <algorithm>

#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/SceneNode.h"
#include "core/instances/Instance.h"
#include "util/CMesh.h"

namespace orv::app {

namespace {

namespace headless = rws::adaptor::headless;

/// Numbers as files round them.
class FloatHash {
 public:
  void Add(const std::string& text) {
    m_hash.addData(text.data(), static_cast<int>(text.size()) + 1);
  }
  void Add(const double* from, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
      const float rounded = static_cast<float>(from[i]) + 0.0f;  // -0 is 0
      m_hash.addData(reinterpret_cast<const char*>(&rounded), sizeof rounded);
    }
  }
  void Add(const util::Vector3<double>& v) {
    const double numbers[] = {v.x, v.y, v.z};
    Add(numbers, 3);
  }
  template <class T>
  void AddWhole(const std::vector<T>& numbers) {
    m_hash.addData(reinterpret_cast<const char*>(numbers.data()),
                   static_cast<int>(numbers.size() * sizeof(T)));
  }
  std::string Result() const { return m_hash.result().toHex().toStdString(); }

 private:
  QCryptographicHash m_hash{QCryptographicHash::Sha1};
};

void AddPlace(FloatHash& hash, const headless::SceneNode& node) {
  const auto pose = node.LocalTrs(0.0);
  const double turn[] = {pose.rotation.x, pose.rotation.y, pose.rotation.z, pose.rotation.w};
  hash.Add(pose.translation);
  hash.Add(turn, 4);
  hash.Add(pose.scale);
  for (const auto& channel : node.GetAnimation().channels) {
    hash.Add(channel ? "keys" : "none");
    if (!channel) continue;
    hash.Add(channel->GetTimes().data(), channel->GetTimes().size());
    hash.Add(channel->GetValues().data(), channel->GetValues().size());
  }
}

bool IsOfUser(const headless::SceneNode& node) {
  return node.GetTag().empty();
}

}  // namespace

const std::string& Surroundings::HashOf(const std::shared_ptr<const util::CMesh>& mesh) {
  KnownMesh& known = m_meshes[mesh.get()];
  if (known.mesh.lock() == mesh) return known.hash;
  FloatHash hash;
  for (const auto& vertex : mesh->vertices) hash.Add(vertex);
  hash.AddWhole(mesh->faces);
  known = {mesh, hash.Result()};
  return known.hash;
}

std::string Surroundings::HashOf(const headless::SceneNode& node) {
  FloatHash hash;
  for (const auto* above = node.GetParent(); above && IsOfUser(*above); above = above->GetParent())
    AddPlace(hash, *above);
  std::vector<const headless::SceneNode*> open{&node};
  while (!open.empty()) {
    const headless::SceneNode* const at = open.back();
    open.pop_back();
    if (!IsOfUser(*at)) continue;
    AddPlace(hash, *at);
    hash.Add(at->IsVisible() ? "shown" : "hidden");
    if (const auto mesh = at->SharedMesh()) hash.Add(HashOf(mesh));
    if (const auto* curve = at->GetCurve()) {
      hash.Add(curve->closed ? "closed" : "open");
      for (const auto& point : curve->points) hash.Add(point);
    }
    for (const auto& child : at->GetChildren()) open.push_back(child.get());
  }
  return hash.Result();
}

std::vector<KeptSurface> Surroundings::Of(const rws::core::Instance& rig) {
  std::vector<KeptSurface> surfaces;
  for (rws::core::CoreNode* each : rig.GetNodes()) {
    const auto* node = static_cast<headless::HeadlessNode*>(each)->GetSceneNode();
    const auto* parent = node ? node->GetParent() : nullptr;
    if (!parent || !IsOfUser(*parent)) continue;
    const bool isKnown = std::any_of(surfaces.begin(), surfaces.end(), [&](const auto& surface) {
      return surface.node == parent->GetName();
    });
    if (!isKnown) surfaces.push_back({parent->GetName(), HashOf(*parent)});
  }
  return surfaces;
}

}  // namespace orv::app
