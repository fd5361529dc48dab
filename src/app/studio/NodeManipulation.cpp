#include "app/studio/NodeManipulation.h"

#include <algorithm>
#include <cmath>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/Scene.h"
#include "app/session/NodePlacing.h"
#include "app/session/anyhost/UndoBlock.h"
#include "app/studio/HeadlessBrowser.h"
#include "core/CoreImplementation.h"
#include "gui/NumberField.h"
#include "gui/Texts.h"

namespace orv::app {

using gui::Translate;
using rws::adaptor::Trs;
using util::Matrix;
using util::Vector3;
using view::NewPose;
using view::Pixel;
using view::Selection;
using view::Target;

namespace {

/// A node's origin is meant by a pointer within this (pixels of the desktop).
constexpr double kOriginReach = 12.0;
/// What a rig has moved by more than this (m) does not stand where it was put.
constexpr double kMoved = 1e-6;

const char* VerbOf(view::Tool tool) {
  return tool == view::Tool::kTurn ? "Turn" : tool == view::Tool::kScale ? "Scale" : "Move";
}

Trs Replaced(const NewPose& pose, const Trs& held) {
  return {pose.translation.value_or(held.translation), pose.rotation.value_or(held.rotation),
          pose.scale.value_or(held.scale)};
}

}  // namespace

struct NodeManipulation::Placing {
  SceneNode* node;
  PlacedPose pose;
};

NodeManipulation::NodeManipulation(rws::core::CoreImplementation& core,
                                   rws::adaptor::headless::HeadlessAdaptor& host,
                                   HeadlessBrowser& browser, view::SceneFrames& frames)
    : m_core(core), m_host(host), m_browser(browser), m_frames(frames) {}

NodeManipulation::~NodeManipulation() = default;

// --- what is selected ---

bool NodeManipulation::ReadTarget(SceneNode& node, double time, Target& target) {
  target.id = m_browser.GetKey(node);
  target.parent = node.GetParent() ? node.GetParent()->WorldMatrix(time) : Matrix<double>();
  target.world = node.WorldMatrix(time);
  const Trs local = node.LocalTrs(time);
  target.translation = local.translation;
  target.rotation = local.rotation;
  target.scale = local.scale;
  return target.parent.affineInverse()[15] != 0.0;
}

void NodeManipulation::Read(Selection& selection) {
  selection.targets.clear();
  selection.blocked.clear();
  selection.reference.reset();
  if (m_core.GetRunState() != rws::core::RunState::kIdle) {
    selection.blocked = Translate(m_core.WhyLocked().text);
    return;
  }
  const double time = m_host.GetCurrentTime();
  std::vector<SceneNode*> nodes;
  for (const int key : m_browser.GetSelection())
    if (SceneNode* node = m_browser.GetNode(key)) nodes.push_back(node);
  if (nodes.empty()) return;
  for (SceneNode* node : nodes) {
    const SceneNode* above = node->GetParent();
    while (above && std::find(nodes.begin(), nodes.end(), above) == nodes.end())
      above = above->GetParent();
    if (above) continue;
    Target target;
    if (!ReadTarget(*node, time, target))
      selection.blocked =
          Translate("%1 can't be placed: a node above it has a scale of 0.", {node->GetName()});
    selection.targets.push_back(std::move(target));
  }
  ReadTarget(*nodes.back(), time, selection.active);
  if (const SceneNode* reference = m_reference ? m_browser.GetNode(m_reference) : nullptr)
    selection.reference = reference->WorldMatrix(time);
}

void NodeManipulation::TakeReference() {
  const std::vector<int> keys = m_browser.GetSelection();
  if (!keys.empty()) m_reference = keys.back();
}

std::string NodeManipulation::GetReferenceName() {
  const SceneNode* node = m_reference ? m_browser.GetNode(m_reference) : nullptr;
  return node ? node->GetName() : std::string();
}

// --- trying ---

void NodeManipulation::Preview(const Selection& selection, const std::vector<NewPose>& poses) {
  view::SceneFrames::Preview preview;
  const double time = m_host.GetCurrentTime();
  for (std::size_t i = 0; i < poses.size(); ++i)
    if (const SceneNode* node = m_browser.GetNode(selection.targets[i].id))
      preview.emplace_back(node,
                           selection.targets[i].parent *
                               rws::adaptor::Compose(Replaced(poses[i], node->LocalTrs(time))));
  m_frames.SetPreview(std::move(preview));
  if (changed) changed();
}

void NodeManipulation::EndPreview() {
  m_surfaces.reset();
  m_frames.SetPreview({});
  if (changed) changed();
}

// --- setting ---

std::string NodeManipulation::Commit(view::Tool tool, const Selection& selection,
                                     const std::vector<NewPose>& poses) {
  std::vector<Placing> placings;
  for (std::size_t i = 0; i < poses.size(); ++i)
    if (SceneNode* node = m_browser.GetNode(selection.targets[i].id))
      placings.push_back({node, {poses[i].translation, poses[i].rotation, poses[i].scale}});
  return Place(VerbOf(tool), placings);
}

std::string NodeManipulation::Place(const char* verb, const std::vector<Placing>& placings) {
  const double time = m_host.GetCurrentTime();
  std::vector<Trs> wanted;
  std::string keyed;
  if (placings.empty()) return {};
  std::string name = std::string(verb) + " #" + placings.front().node->GetName();
  if (placings.size() > 1) name += " +" + std::to_string(placings.size() - 1);
  UndoBlock block(m_host, name);
  for (const auto& [node, pose] : placings) {
    wanted.push_back(Replaced({pose.translation, pose.rotation, pose.scale}, node->LocalTrs(time)));
    if (!pose.translation && !pose.rotation && !pose.scale) continue;
    if (!rws::adaptor::IsFinite(wanted.back())) return Translate("That is no place in the scene.");
    const PlacingResult placed = PlaceNode(m_host.HandOut(*node), pose, time);
    if (!placed.error.empty())
      return Translate("%1 can't be placed: %2", {node->GetName(), Translate(placed.error)});
    if (!placed.keyed.empty()) keyed = node->GetName();
  }
  m_core.UpdateTime(time);  // nodes that a rig lets follow go in the same step
  block.Keep();
  m_note.clear();
  if (!keyed.empty())
    m_note = Translate("%1 has keys: its pose became a key at %2 s, the others stay.",
                       {keyed, gui::ShownNumber(std::round(time * 1000.0) / 1000.0, 0)});
  for (std::size_t i = 0; i < placings.size(); ++i) {
    const Vector3<double> at = placings[i].node->LocalTrs(time).translation;
    if ((at - wanted[i].translation).length() > kMoved)
      m_note = Translate("The rig of %1 decides where it stands, and has moved it on.",
                         {placings[i].node->GetName()});
  }
  m_host.RefreshViews();
  return {};
}

std::string NodeManipulation::DropToGround() {
  Selection selection;
  Read(selection);
  if (!selection.blocked.empty()) return selection.blocked;
  if (selection.targets.empty()) return Translate("Select a node in the scene first.");
  const double time = m_host.GetCurrentTime();
  std::vector<Placing> placings;
  const SceneSurfaces& surfaces = GetSurfaces(selection);
  std::string lost;
  for (const Target& target : selection.targets) {
    SceneNode* node = m_browser.GetNode(target.id);
    const std::optional<double> rise = FindRise(m_core, m_host, surfaces, *node, time);
    if (!rise) lost = node->GetName();
    if (!rise || *rise == 0.0) continue;
    PlacedPose pose;
    pose.translation =
        target.translation + target.parent.affineInverse().transformVector({0.0, *rise, 0.0});
    placings.push_back({node, pose});
  }
  m_surfaces.reset();
  if (placings.empty() && !lost.empty()) return Translate("Nothing lies under %1.", {lost});
  return Place("Drop", placings);
}

// --- what there is to snap to ---

const SceneSurfaces& NodeManipulation::GetSurfaces(const Selection& selection) {
  if (m_surfaces) return *m_surfaces;
  std::vector<SceneNode*> without;
  for (const Target& target : selection.targets)
    if (SceneNode* node = m_browser.GetNode(target.id)) without.push_back(node);
  m_surfaces = std::make_unique<SceneSurfaces>(m_host, m_host.GetCurrentTime(), without);
  return *m_surfaces;
}

bool NodeManipulation::Meet(const Selection& selection, const view::Ray& ray,
                            Vector3<double>& point) {
  SceneSurfaces::Hit hit;
  if (!GetSurfaces(selection).Meet(ray.origin, ray.direction, hit)) return false;
  point = hit.point;
  return true;
}

bool NodeManipulation::FindNode(const Selection& selection, const view::ViewFrame& view,
                                const Pixel& at, Matrix<double>& world) {
  const SceneSurfaces& surfaces = GetSurfaces(selection);
  const double time = m_host.GetCurrentTime();
  const SceneNode* found = nullptr;
  double nearest = kOriginReach;
  for (const SceneNode* node : surfaces.GetNodes()) {
    Pixel shown;
    if (!view.Project(node->WorldMatrix(time).translation(), shown)) continue;
    const double distance = (at - shown).Length();
    if (distance > nearest) continue;
    nearest = distance;
    found = node;
  }
  const view::Ray ray = view.RayAt(at);
  SceneSurfaces::Hit hit;
  if (!found && surfaces.Meet(ray.origin, ray.direction, hit)) found = hit.node;
  if (found) world = found->WorldMatrix(time);
  return found != nullptr;
}

double NodeManipulation::GetDepth(const Selection& selection) {
  const double time = m_host.GetCurrentTime();
  double depth = 0.0;
  for (const Target& target : selection.targets)
    if (const SceneNode* node = m_browser.GetNode(target.id))
      depth = std::max(depth,
                       selection.active.world.translation().y - FindLowest(*node, time).box.low.y);
  return depth;
}

}  // namespace orv::app
