#include "plugins/common/HideModes.h"

#include <algorithm>
#include <utility>

#include "core/interface/CREEventUndo.h"
#include "plugins/common/ReplayedEvent.h"
#include "plugins/common/RigSceneNode.h"

namespace orv::rws::addon {

HideModes::Box& HideModes::BoxOf(const bool& on) {
  const auto found =
      std::find_if(m_boxes.begin(), m_boxes.end(), [&](const Box& box) { return box.on == &on; });
  if (found != m_boxes.end()) return *found;
  m_boxes.push_back({&on, {}, Hides::kNothing, false, {}});
  return m_boxes.back();
}

void HideModes::SetNodes(const bool& on, std::vector<RigSceneNode*> nodes) {
  BoxOf(on).nodes = std::move(nodes);
}

void HideModes::Define(const std::vector<Parameter>& parameters) {
  for (const Parameter& parameter : parameters) {
    if (parameter.hides == Hides::kNothing) continue;
    Box& box = BoxOf(*parameter.flag);
    box.label = parameter.label;
    box.when = parameter.hides;
  }
}

bool HideModes::IsHidden(const RigSceneNode* node) const {
  return std::any_of(m_boxes.begin(), m_boxes.end(), [&](const Box& box) {
    return *box.on && (m_recording || box.when == Hides::kAlways) &&
           std::find(box.nodes.begin(), box.nodes.end(), node) != box.nodes.end();
  });
}

void HideModes::Apply(const Box& box) const {
  for (const RigSceneNode* node : box.nodes) node->SetHidden(IsHidden(node));
}

void HideModes::Start() {
  m_recording = true;
  for (const Box& box : m_boxes)
    if (*box.on) Apply(box);
}

void HideModes::Stop() {
  m_recording = false;
  for (const Box& box : m_boxes)
    if (*box.on && box.when == Hides::kDuringTakes) Apply(box);
}

void HideModes::Restore() {
  for (Box& box : m_boxes) {
    box.applied = *box.on;
    if (*box.on && box.when == Hides::kAlways) Apply(box);
  }
}

bool HideModes::HandleEvent(CInterface& core, CInterface::Callback& rig, const std::string& name) {
  const ReplayedEvent event(name);
  const auto found = std::find_if(m_boxes.begin(), m_boxes.end(),
                                  [&](const Box& box) { return box.label == event.label; });
  if (found == m_boxes.end()) return false;
  Box& box = *found;
  // The value itself is taken back by the core, before or after this event; what is left to the rig
  // is to let the nodes match it.
  if (!event.IsReplay() && *box.on == box.applied) return true;
  box.applied = *box.on;
  // Outside takes the nodes don't depend on a box that acts in takes only.
  if (box.when == Hides::kAlways || m_recording) {
    Apply(box);
    core.RefreshViews();
  }
  if (!event.IsReplay() && box.when == Hides::kAlways)
    core.PushUndo(new CREEventUndo(&rig, kRealUndo + box.label, kRealRedo + box.label));
  return true;
}

}  // namespace orv::rws::addon
