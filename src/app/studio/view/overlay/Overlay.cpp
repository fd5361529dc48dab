#include "app/studio/view/overlay/Overlay.h"

#include <algorithm>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/Scene.h"
#include "app/studio/view/overlay/RunClock.h"
#include "core/instances/Instance.h"
#include "core/interface/CCamera.h"
#include "core/services/Translation.h"
#include "unidevice/Property.h"

namespace orv::app::view {

const std::array<OverlayKindText, kOverlayKindCount>& GetOverlayKinds() {
  using rws::core::Translatable;
  static constexpr std::array<OverlayKindText, kOverlayKindCount> kinds{{
      {"paths", Translatable("&Paths of nodes"), true},
      {"ghost", Translatable("&Ghost of the take before"), true},
      {"contacts", Translatable("Wheel &contacts, load and slip"), true},
      {"rays", Translatable("&Rays at the ground"), false},
      {"speeds", Translatable("&Speeds of belts and carriages"), true},
      {"shots", Translatable("S&hots"), true},
      {"targets", Translatable("&Targets"), false},
      {"tracks", Translatable("Trac&ks of rails and their waypoints"), true},
      {"inputs", Translatable("&Inputs in a take"), true},
      {"names", Translatable("&Names"), false},
      {"rate", Translatable("Pictures a second and &latency"), false},
  }};
  return kinds;
}

Overlay::Overlay(rws::core::CoreImplementation& core, rws::adaptor::headless::HeadlessAdaptor& host)
    : m_core(core), m_host(host), m_ghost(core, host), m_paths(core, host) {
  for (std::size_t i = 0; i < kOverlayKindCount; ++i) m_choice.set(i, GetOverlayKinds()[i].isShown);
  m_host.GetObservers().Add(*this);
}

Overlay::~Overlay() {
  m_host.GetObservers().Remove(*this);
}

void Overlay::Select(const std::vector<const SceneNode*>& nodes) {
  m_scene = &m_host.GetScene();
  m_selection.clear();
  for (const SceneNode* node : nodes)
    m_selection.push_back(&m_host.NodeFor(const_cast<SceneNode&>(*node)));
  m_isOld = true;
}

// --- what is looked at ---

void Overlay::FindRigs() {
  m_isOld = false;
  m_rows = m_core.GetSelection();
  m_rigs.clear();
  m_ways.clear();
  if (m_scene != &m_host.GetScene()) m_selection.clear();
  m_scene = &m_host.GetScene();
  m_selection.erase(std::remove_if(m_selection.begin(), m_selection.end(),
                                   [](HeadlessNode* node) { return !node->IsValid(); }),
                    m_selection.end());
  const auto add = [&](rws::core::Instance* rig, std::size_t most) {
    if (m_rigs.size() >= most ||
        std::find(m_rigs.begin(), m_rigs.end(), rig->GetIdentity()) != m_rigs.end())
      return;
    m_rigs.push_back(rig->GetIdentity());
    // The first node of a rig is the one that is placed.
    const std::vector<rws::core::CoreNode*> nodes = rig->GetNodes();
    if (!nodes.empty()) m_ways.push_back(static_cast<HeadlessNode*>(nodes.front()));
  };
  const std::vector<rws::core::Instance*> rigs = m_core.List(false);
  for (const int row : m_rows)
    if (const auto* found = m_core.FindRow(row); found && found->GetInstance())
      add(found->GetInstance(), kMostRigs);
  for (HeadlessNode* node : m_selection)
    for (SceneNode* at = node->GetSceneNode(); at; at = at->GetParent())
      for (rws::core::Instance* rig : rigs)
        if (static_cast<rws::CInterface*>(rig) == m_host.NodeFor(*at).GetOwner())
          add(rig, kMostRigs);
  if (m_rigs.empty() && m_selection.empty())
    for (rws::core::Instance* rig : rigs) add(rig, kUsualRigs);
  for (HeadlessNode* node : m_selection)
    if (std::find(m_ways.begin(), m_ways.end(), node) == m_ways.end()) m_ways.push_back(node);
  FindNames();
}

/// Rigs at the place of their first node, and what is selected.
void Overlay::FindNames() {
  m_names.clear();
  for (HeadlessNode* node : m_selection)
    m_names.push_back({node, QString::fromStdString(node->GetSceneName()), true});
  for (rws::core::Instance* rig : m_core.List(false)) {
    const std::vector<rws::core::CoreNode*> nodes = rig->GetNodes();
    if (nodes.empty()) continue;
    auto* node = static_cast<HeadlessNode*>(nodes.front());
    if (std::find(m_selection.begin(), m_selection.end(), node) != m_selection.end()) continue;
    m_names.push_back({node, QString::fromStdString(rig->GetInstanceName()), false});
  }
}

/// Inputs that something drives; rigs that are looked at come first.
void Overlay::FindPerformers() {
  m_performers.clear();
  std::vector<rws::core::Instance*> rigs = m_core.GetTakeInstances();
  std::stable_partition(rigs.begin(), rigs.end(), [&](rws::core::Instance* rig) {
    return std::find(m_rigs.begin(), m_rigs.end(), rig->GetIdentity()) != m_rigs.end();
  });
  for (rws::core::Instance* rig : rigs) {
    Performer performer{QString::fromStdString(rig->GetInstanceName()), {}};
    for (const auto& [name, property] : rig->GetProperties().entries)
      if (property->control) performer.inputs.push_back({property, QString::fromStdString(name)});
    if (!performer.inputs.empty()) m_performers.push_back(std::move(performer));
  }
}

// --- each picture ---

bool Overlay::IsAnyMarkShown() const {
  for (const OverlayKind kind : {kOverlayContacts, kOverlayRays, kOverlaySpeeds, kOverlayShots,
                                 kOverlayTargets, kOverlayTracks})
    if (m_choice[kind]) return true;
  return false;
}

void Overlay::ReadMarks() {
  m_marks.resize(m_rigs.size());
  for (std::size_t i = 0; i < m_rigs.size(); ++i) {
    m_marks[i].Begin(m_time);
    const rws::core::Instance* rig = m_core.FindByIdentity(m_rigs[i]);
    if (rig && IsAnyMarkShown()) rig->GetRig()->Extension(rws::kTellMarks, &m_marks[i], nullptr);
  }
}

void Overlay::Read() {
  if (m_isOld || m_rows != m_core.GetSelection()) FindRigs();
  // A run holds its rigs from its begin to its end, and lets go of one that is deleted.
  const bool isRunning = m_host.IsRecording();
  std::size_t performers = 0;
  if (isRunning && m_choice[kOverlayInputs]) performers = m_core.GetTakeInstances().size();
  if (isRunning != m_isRunning || performers != m_performing) {
    m_isRunning = isRunning;
    m_performing = performers;
    m_performers.clear();
    if (performers > 0) FindPerformers();
  }
  m_time = isRunning ? GetLatestFrame(m_core) : m_host.GetCurrentTime();
  m_ghost.Follow();
  m_film = m_choice[kOverlayGhost] ? m_ghost.GetFilm() : nullptr;
  static const std::vector<HeadlessNode*> kNone;
  m_paths.Follow(m_choice[kOverlayPaths] ? m_ways : kNone);
  ReadMarks();
}

}  // namespace orv::app::view
