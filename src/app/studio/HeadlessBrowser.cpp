#include "app/studio/HeadlessBrowser.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "adaptor/common/Euler.h"
#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/Scene.h"
#include "app/session/NodePlacing.h"
#include "app/session/anyhost/CarFit.h"
#include "app/session/anyhost/GroundText.h"
#include "app/session/anyhost/UndoBlock.h"
#include "app/studio/CarGuess.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "gui/Texts.h"
#include "util/Angles.h"

namespace orv::app {

using gui::Translate;
using rws::adaptor::Trs;

namespace {

std::string LineOf(const Problem& problem) {
  if (!problem) return {};
  std::string text = problem.what.empty() ? problem.why : problem.what + ": " + problem.why;
  if (!problem.hint.empty()) text += " (" + problem.hint + ")";
  return text;
}

}  // namespace

HeadlessBrowser::HeadlessBrowser(rws::core::CoreImplementation& core,
                                 rws::adaptor::headless::HeadlessAdaptor& host,
                                 std::function<std::string(double)> setFrameRate)
    : m_core(core), m_host(host), m_setFrameRate(std::move(setFrameRate)) {
  m_host.GetObservers().Add(*this);
}

HeadlessBrowser::~HeadlessBrowser() {
  m_host.GetObservers().Remove(*this);
}

// --- observers ---

void HeadlessBrowser::AddObserver(Observer& observer) {
  m_observers.push_back(&observer);
}

void HeadlessBrowser::RemoveObserver(Observer& observer) {
  m_observers.erase(std::remove(m_observers.begin(), m_observers.end(), &observer),
                    m_observers.end());
}

template <class Tell>
void HeadlessBrowser::ForObservers(Tell&& tell) {
  const std::vector<Observer*> observers = m_observers;
  for (Observer* observer : observers) tell(*observer);
}

void HeadlessBrowser::OnTree() {
  m_isOld = true;
  ForObservers([](Observer& observer) { observer.OnNodes(); });
}

void HeadlessBrowser::OnSelection() {
  std::vector<int> keys;
  for (rws::adaptor::HostNode* node : m_host.GetSelection())
    if (const SceneNode* from = static_cast<HostNode*>(node)->GetSceneNode())
      keys.push_back(KeyOf(*from));
  Select(keys);
}

void HeadlessBrowser::OnRefresh() {
  ForObservers([](Observer& observer) { observer.OnRefresh(); });
}

// --- keys ---

int HeadlessBrowser::KeyOf(const SceneNode& node) {
  int& key = m_keys[&node];
  if (key == 0) key = ++m_lastKey;
  return key;
}

void HeadlessBrowser::Number() {
  if (!m_isOld && m_scene == &m_host.GetScene()) return;
  if (m_scene != &m_host.GetScene()) m_keys.clear();
  m_scene = &m_host.GetScene();
  m_isOld = false;
  m_nodes.clear();
  for (SceneNode* node : m_host.GetScene().GetNodes()) m_nodes[KeyOf(*node)] = node;
}

HeadlessBrowser::SceneNode* HeadlessBrowser::Find(int key) {
  Number();
  const auto found = m_nodes.find(key);
  return found == m_nodes.end() ? nullptr : found->second;
}

HeadlessBrowser::HostNode* HeadlessBrowser::FindHostNode(int key) {
  SceneNode* node = Find(key);
  return node ? &m_host.HandOut(*node) : nullptr;
}

rws::core::Instance* HeadlessBrowser::FindRig(int row) const {
  const rws::core::InstanceReference* found = m_core.FindRow(row);
  return found ? found->GetInstance() : nullptr;
}

// --- nodes ---

std::vector<HeadlessBrowser::Node> HeadlessBrowser::GetNodes() {
  Number();
  std::vector<Node> nodes;
  nodes.reserve(m_nodes.size());
  for (const SceneNode* from : m_host.GetScene().GetNodes()) {
    Node node;
    node.key = KeyOf(*from);
    node.parent = from->GetParent() ? KeyOf(*from->GetParent()) : 0;
    node.type = from->GetLens()    ? Type::kCamera
                : from->HasMesh()  ? Type::kMesh
                : from->GetCurve() ? Type::kCurve
                                   : Type::kGroup;
    node.name = from->GetName();
    node.keyed = from->HasKeys();
    node.ofRig = !from->GetTag().empty() || from->IsHub();
    nodes.push_back(std::move(node));
  }
  return nodes;
}

std::vector<int> HeadlessBrowser::GetSelection() {
  std::vector<int> keys;
  for (const int key : m_selection)
    if (Find(key)) keys.push_back(key);
  return keys;
}

void HeadlessBrowser::Select(const std::vector<int>& keys) {
  m_selection = keys;
  ForObservers([](Observer& observer) { observer.OnNodeSelection(); });
}

void HeadlessBrowser::SelectNamed(const std::vector<std::string>& names) {
  std::vector<int> keys;
  for (const std::string& name : names)
    if (const SceneNode* node = m_host.GetScene().Find(name)) keys.push_back(KeyOf(*node));
  Select(keys);
}

std::vector<int> HeadlessBrowser::GetDriven(int rigRow) {
  const rws::core::Instance* rig = FindRig(rigRow);
  std::vector<int> keys;
  std::unordered_set<const SceneNode*> driven;
  if (rig)
    for (rws::core::CoreNode* node : rig->GetNodes())
      driven.insert(static_cast<HostNode*>(node)->GetSceneNode());
  // Parents come before their children.
  for (const SceneNode* node : m_host.GetScene().GetNodes()) {
    if (!driven.count(node) && (!node->GetParent() || !driven.count(node->GetParent()))) continue;
    driven.insert(node);
    keys.push_back(KeyOf(*node));
  }
  return keys;
}

// --- poses ---

bool HeadlessBrowser::GetPose(int key, Space space, Pose& pose) {
  const SceneNode* node = Find(key);
  if (!node) return false;
  const double time = m_host.GetCurrentTime();
  const Trs held = space == Space::kParent ? node->LocalTrs(time)
                                           : rws::adaptor::Decompose(node->WorldMatrix(time));
  pose.translation = held.translation;
  pose.rotation = rws::adaptor::ToEuler(held.rotation, rws::adaptor::RotationOrder::kXyz) *
                  util::kDegreesPerRadian;
  pose.scale = held.scale;
  return true;
}

std::string HeadlessBrowser::SetPose(int key, Space space, const Pose& pose) {
  HostNode* node = FindHostNode(key);
  Pose held;
  if (!node || !GetPose(key, space, held)) return Translate("The node is gone.");
  const double time = m_host.GetCurrentTime();
  const bool moved = pose.translation != held.translation, turned = pose.rotation != held.rotation,
             scaled = pose.scale != held.scale;
  Trs wanted;
  wanted.translation = pose.translation;
  wanted.rotation = RotationFromDegrees(pose.rotation);
  wanted.scale = pose.scale;
  if (const SceneNode* parent = node->GetSceneNode()->GetParent();
      parent && space == Space::kWorld &&
      !rws::adaptor::PoseUnder(parent->WorldMatrix(time), rws::adaptor::Compose(wanted), wanted))
    return Translate("%1 can't be placed in the world: a node above it has a scale of 0.",
                     {node->GetSceneName()});
  if (!rws::adaptor::IsFinite(wanted)) return Translate("That is no place in the scene.");
  // What stays gets no key.
  PlacedPose placed;
  if (moved) placed.translation = wanted.translation;
  if (turned) placed.rotation = wanted.rotation;
  if (scaled) placed.scale = wanted.scale;
  if (!moved && !turned && !scaled) return {};
  UndoBlock block(m_host, "Place #" + node->GetSceneName());
  std::string error = PlaceNode(*node, placed, time).error;
  if (!error.empty()) return error;
  m_core.UpdateTime(time);  // nodes that a rig lets follow go in the same step
  block.Keep();
  return {};
}

// --- the tree ---

std::string HeadlessBrowser::Hang(HostNode& node, HostNode* parent) {
  if (parent && (parent == &node || parent->GetSceneNode()->IsUnder(*node.GetSceneNode())))
    return Translate("%1 can't hang below itself.", {node.GetSceneName()});
  return node.SetParent(parent)
             ? std::string()
             : Translate("%1 can't hang there and keep its place: a scale of 0 stands above it.",
                         {node.GetSceneName()});
}

std::string HeadlessBrowser::MoveUnder(const std::vector<int>& keys, int parent) {
  HostNode* under = parent == 0 ? nullptr : FindHostNode(parent);
  if (parent != 0 && !under) return Translate("The node is gone.");
  UndoBlock block(m_host, "Move nodes");
  for (const int key : keys) {
    HostNode* node = FindHostNode(key);
    if (!node) continue;
    // What hangs on another one that moves stays on it.
    bool carried = false;
    for (const SceneNode* at = node->GetSceneNode()->GetParent(); at; at = at->GetParent())
      carried = carried || std::find(keys.begin(), keys.end(), KeyOf(*at)) != keys.end();
    const std::string problem = carried ? std::string() : Hang(*node, under);
    if (!problem.empty()) return problem;
  }
  block.Keep();
  return {};
}

std::string HeadlessBrowser::UseAsGround(int rigRow, const std::vector<int>& keys,
                                         std::string& told) {
  rws::core::Instance* rig = FindRig(rigRow);
  const auto ground = rig ? GroundOf(*rig) : std::nullopt;
  if (!ground) return Translate("This rig meets no ground.");
  HostNode* marker = m_host.FindSceneNode(ground->declaredBy);
  if (!marker) return Translate("The rig's node that tells its ground is gone; undo its deletion.");
  UndoBlock block(m_host, "Use as ground");
  // The marker hangs on the first, all others hang on the marker.
  bool first = true;
  for (const int key : keys) {
    HostNode* node = FindHostNode(key);
    if (!node) continue;
    const std::string problem = first ? Hang(*marker, node) : Hang(*node, marker);
    if (!problem.empty()) return problem;
    first = false;
  }
  const auto met = GroundOf(*rig);
  if (!met || met->meshes == 0) return Translate("There is no mesh in what is selected.");
  block.Keep();
  told = GroundText(*met);
  return {};
}

// --- a car ---

std::string HeadlessBrowser::WhyNotFit(int rigRow) {
  rws::core::Instance* rig = FindRig(rigRow);
  if (!rig) return Translate("Select a rig first.");
  return LineOf(CheckFittedRig(*rig));
}

HeadlessBrowser::Car HeadlessBrowser::GuessCar(int key) {
  Car car;
  const SceneNode* chosen = Find(key);
  for (const SceneNode* node : m_host.GetScene().GetNodes()) {
    if (!node->GetTag().empty() || node->IsHub()) continue;
    const int wheel = WheelOfName(node->GetName());
    if (wheel >= 0 && car.wheels[wheel] == 0) car.wheels[wheel] = KeyOf(*node);
    if (wheel < 0 && car.body == 0 && IsBodyName(node->GetName())) car.body = KeyOf(*node);
  }
  if (chosen && chosen->GetTag().empty() && WheelOfName(chosen->GetName()) < 0) car.body = key;
  return car;
}

std::string HeadlessBrowser::FitCar(int rigRow, const Car& car, std::string& told) {
  rws::core::Instance* rig = FindRig(rigRow);
  CarModel model;
  model.body = FindHostNode(car.body);
  bool complete = rig && model.body;
  for (std::size_t i = 0; i < car.wheels.size(); ++i) {
    model.wheels[i] = FindHostNode(car.wheels[i]);
    complete = complete && model.wheels[i];
  }
  if (!complete) return Translate("The rig or a part of the car is gone.");
  const CarFit fit = app::FitCar(*rig, model);
  for (const Problem& odd : fit.odd) told += (told.empty() ? "" : "\n") + LineOf(odd);
  return LineOf(fit.problem);
}

// --- undo ---

HeadlessBrowser::UndoSteps HeadlessBrowser::GetUndoSteps() {
  UndoSteps steps;
  steps.names = m_host.GetUndo().entryNames();
  steps.position = steps.names.size();
  for (std::string& name : m_host.GetUndo().redoNames()) steps.names.push_back(std::move(name));
  return steps;
}

bool HeadlessBrowser::GoToStep(std::size_t position) {
  for (;;) {
    const UndoSteps steps = GetUndoSteps();
    if (steps.position == position) return true;
    if (!(steps.position > position ? m_core.Undo() : m_core.Redo())) return false;
    // What changed nothing would go on forever.
    if (GetUndoSteps().position == steps.position) return false;
  }
}

}  // namespace orv::app
