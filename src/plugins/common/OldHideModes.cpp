#include "plugins/common/OldHideModes.h"

#include <algorithm>
#include <utility>

#include "core/interface/CREEventUndo.h"
#include "plugins/common/ReplayedEvent.h"
#include "plugins/common/RigSceneNode.h"

namespace orv::rws::addon {

OldHideModes::Box& OldHideModes::Add(std::string label, std::string tooltip, When when,
                               std::vector<RigSceneNode*> nodes) {
  Box box;
  box.label = std::move(label);
  box.tooltip = std::move(tooltip);
  box.when = when;
  box.nodes = std::move(nodes);
  m_boxes.push_back(std::move(box));
  return m_boxes.back();
}

void OldHideModes::Define(CInterface& core, CInterface::Callback& rig) {
  core.BeginGroup("General Modes", "What is shown");
  DefineBoxes(core, rig);
  core.EndGroup();
}

void OldHideModes::DefineBoxes(CInterface& core, CInterface::Callback& rig) {
  for (Box& box : m_boxes) core.AddCheckBox(box.label, box.tooltip, &box.on, &rig);
}

bool OldHideModes::IsHidden(const RigSceneNode* node) const {
  return std::any_of(m_boxes.begin(), m_boxes.end(), [&](const Box& box) {
    return box.on && (m_recording || box.when == kAlways) &&
           std::find(box.nodes.begin(), box.nodes.end(), node) != box.nodes.end();
  });
}

void OldHideModes::Apply(const Box& box) const {
  for (const RigSceneNode* node : box.nodes) node->SetHidden(IsHidden(node));
}

void OldHideModes::Start() {
  m_recording = true;
  for (const Box& box : m_boxes)
    if (box.on) Apply(box);
}

void OldHideModes::Stop() {
  m_recording = false;
  for (const Box& box : m_boxes)
    if (box.on && box.when == kDuringTakes) Apply(box);
}

void OldHideModes::Restore() {
  for (Box& box : m_boxes) {
    box.applied = box.on;
    if (box.on && box.when == kAlways) Apply(box);
  }
}

bool OldHideModes::OnCallback(CInterface& core, CInterface::Callback& rig, const std::string& name) {
  const ReplayedEvent event(name);
  const auto found = std::find_if(m_boxes.begin(), m_boxes.end(),
                                  [&](const Box& box) { return box.label == event.label; });
  if (found == m_boxes.end()) return false;
  Box& box = *found;
  // The value itself is taken back by the core, before or after this event; what is left to the rig
  // is to let the nodes match it.
  if (!event.IsReplay() && box.on == box.applied) return true;
  box.applied = box.on;
  // Outside takes the nodes don't depend on a box that acts in takes only.
  if (box.when == kAlways || m_recording) {
    Apply(box);
    core.RefreshViews();
  }
  if (!event.IsReplay() && box.when == kAlways)
    core.PushUndo(new CREEventUndo(&rig, kRealUndo + box.label, kRealRedo + box.label));
  return true;
}

}  // namespace orv::rws::addon
