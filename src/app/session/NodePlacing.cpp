#include "app/session/NodePlacing.h"

#include <array>
#include <cmath>
#include <utility>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessNode.h"

namespace orv::app {

using rws::adaptor::Trs;
using rws::adaptor::headless::Channel;
using rws::adaptor::headless::ChannelPath;
using rws::adaptor::headless::HeadlessNode;
using rws::adaptor::headless::SceneNode;
using Vector = util::Vector3<double>;
using Quat = util::Quat<double>;

namespace {

constexpr double kRadians = 0.017453292519943295;

}  // namespace

Quat RotationFromDegrees(const Vector& degrees) {
  const Vector half = degrees * (kRadians / 2.0);
  const Quat x{std::sin(half.x), 0.0, 0.0, std::cos(half.x)};
  const Quat y{0.0, std::sin(half.y), 0.0, std::cos(half.y)};
  const Quat z{0.0, 0.0, std::sin(half.z), std::cos(half.z)};
  return (x * y * z).normalized();  // of two quaternions the first acts first
}

PlacedPose PoseOver(HeadlessNode& node, HeadlessNode& other, double time) {
  util::Matrix<double> local = other.GetWorldPose(time);
  if (const SceneNode* const parent = node.GetSceneNode()->GetParent())
    local = parent->WorldMatrix(time).affineInverse() * local;
  const Trs pose = rws::adaptor::Decompose(local);
  return {pose.translation, pose.rotation, {}};
}

PlacingResult PlaceNode(HeadlessNode& node, const PlacedPose& pose, double time) {
  SceneNode& scene = *node.GetSceneNode();
  Trs wanted = scene.GetPose();
  std::vector<Channel> changed;
  PlacingResult result;
  const auto place = [&](ChannelPath path, const char* name, auto& own, const auto& given,
                         auto numbersOf) {
    if (!given || !result.error.empty()) return;
    if (!scene.GetChannel(path)) {
      own = *given;
      return;
    }
    changed.push_back(*scene.GetChannel(path));
    const auto numbers = numbersOf(*given);
    if (changed.back().SetKey(time, numbers.data(), node.GetAdaptor().GetFrameDuration()))
      result.keyed.push_back(name);
    else
      result.error = "the key could not be set";
  };
  const auto three = [](const Vector& v) { return std::array<double, 3>{v.x, v.y, v.z}; };
  const auto four = [](const Quat& q) { return std::array<double, 4>{q.x, q.y, q.z, q.w}; };
  place(ChannelPath::kTranslation, "translation", wanted.translation, pose.translation, three);
  place(ChannelPath::kRotation, "rotation", wanted.rotation, pose.rotation, four);
  place(ChannelPath::kScale, "scale", wanted.scale, pose.scale, three);
  if (!result.error.empty()) return result;
  node.GetAdaptor().BeginUndoBlock("Place #" + scene.GetName());
  node.GetAdaptor().KeepPose(node);
  scene.SetPose(wanted);
  for (Channel& channel : changed) scene.SetChannel(std::move(channel));
  node.GetAdaptor().EndUndoBlock();
  return result;
}

}  // namespace orv::app
