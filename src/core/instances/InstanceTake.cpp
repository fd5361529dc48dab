// What an instance does in a take and in a resimulation.
#include <algorithm>
#include <utility>

#include "core/MessageQueue.h"
#include "core/config/ConfigElement.h"
#include "core/host/AdaptorInterface.h"
#include "core/host/CoreNode.h"
#include "core/instances/Instance.h"
#include "core/instances/InstanceHost.h"
#include "core/interface/CCamera.h"
#include "core/take/RunDataUndo.h"
#include "core/take/TakeUndo.h"
#include "unidevice/Control.h"
#include "unidevice/Property.h"
#include "util/Simd.h"

namespace orv::rws::core {

namespace {

/// Bytes of a rig object that are fetched ahead of its step; most rigs' frames read no more.
constexpr std::size_t kPrefetchedRigSize = 512;
/// The same of a scene node.
constexpr std::size_t kPrefetchedNodeSize = 192;

void PrefetchLines(const void* object, std::size_t size) {
  constexpr std::size_t kLine = 64;
  for (std::size_t at = 0; at < size; at += kLine)
    util::prefetch(static_cast<const char*>(object) + at);
}

}  // namespace

void Instance::Start(double t) {
  const bool resimulates = m_host.IsResimulating();
  Adaptor().PushUndo(
      new TakeUndo(*this, resimulates ? TakeUndo::Of::kResimulation : TakeUndo::Of::kTake));
  m_running = true;
  StartLiveSpinners();
  m_plannedInputs = 0;
  if (IsFed(-1)) {
    FollowInputs();
    FeedInputs(t);
  }
  m_recordStart = false;
  m_pRig->Start(t);
  FollowInputs();  // a rig may have gained some
  const std::vector<CoreNode*> nodes = GetNodes();
  for (CoreNode* node : nodes) node->StartTake(t);
  for (std::size_t i = 0; i < m_prefetchedNodes.size(); ++i)
    m_prefetchedNodes[i] = i < nodes.size() ? nodes[i] : nullptr;
  if (resimulates) return;
  for (std::size_t i = 0; i < m_tracks.size(); ++i)
    if (!IsFed(static_cast<int>(i))) m_tracks[i].cutFrom(t);
  if (m_recordStart) RecordInputs(t);
}

void Instance::Step(double t) {
  if (m_properties.count() != m_plannedInputs) FollowInputs();
  FeedInputs(t);
  if (!m_host.IsResimulating()) RecordInputs(t);
  ApplyLiveSpinners();
  m_pRig->Step(t);
}

void Instance::Stop(double) {
  m_pRig->Stop();
  StopLiveSpinners();
  if (IsFed(-1)) RestoreControls();
  m_running = false;
  Adaptor().PushUndo(new RunDataUndo(*this));
}

void Instance::Prefetch() const {
  PrefetchLines(this, sizeof *this);
}

void Instance::PrefetchRig() const {
  PrefetchLines(m_pRig, kPrefetchedRigSize);
  for (const CoreNode* node : m_prefetchedNodes)
    if (node) PrefetchLines(node, kPrefetchedNodeSize);
}

void Instance::Update(double t) {
  m_updating = true;
  m_pRig->Update(t);
  m_updating = false;
}

void Instance::RefreshConfig() {
  // The host's time changes with each tick of a run, at whose end all is told.
  if (m_updating && m_host.IsRecording()) return;
  m_host.GetMessages().Tell(ParametersChanged{m_identity, ParametersChanged::kAll});
}

void Instance::RecordInputs(double t) {
  for (int i = 0; i < m_properties.count(); ++i)
    if (!IsPlayed(i)) m_tracks[static_cast<std::size_t>(i)].set(t, m_properties.property(i)->raw());
}

bool Instance::IsPlayed(int input) const {
  if (!m_armed) return false;
  const auto index = static_cast<std::size_t>(input);
  return index >= m_armed->size() || !(*m_armed)[index];
}

bool Instance::IsFed(int input) const {
  if (!m_running) return false;
  if (m_host.IsResimulating()) return true;
  for (int i = 0; input < 0 && i < m_properties.count(); ++i)
    if (IsPlayed(i)) return true;
  return input >= 0 && IsPlayed(input);
}

/// Makes the running take ready for the inputs that have come since the last call.
void Instance::FollowInputs() {
  const int inputs = m_properties.count();
  if (inputs == m_plannedInputs) return;
  // Never shortened: a rig that gained an input since the last take gets an empty track.
  if (m_tracks.size() < static_cast<std::size_t>(inputs))
    m_tracks.resize(static_cast<std::size_t>(inputs));
  if (IsFed(-1)) UseTemporaryControls();
  PlanFeeds();
  m_plannedInputs = inputs;
}

/// An input with an empty track reads the track's default in every frame: its control gets that
/// once, and no frame comes by it again.
void Instance::PlanFeeds() {
  m_feeds.clear();
  m_liveFeeds.clear();
  for (int i = 0; i < m_properties.count(); ++i) {
    if (!IsFed(i)) continue;
    unidevice::Control* control = m_properties.property(i)->control;
    const auto& track = m_tracks[static_cast<std::size_t>(i)];
    if (i >= m_plannedInputs) control->push(track.defaultValue);
    if (!track.samples.empty()) m_feeds.push_back({control, &track});
  }
  for (const auto& [id, property] : m_liveSpinners) {
    if (ConfigElement* element = m_config.Find(id)) m_liveFeeds.push_back({element, property});
  }
}

void Instance::FeedInputs(double t) {
  for (const Feed& feed : m_feeds) feed.control->push(feed.track->value(t));
}

void Instance::UseTemporaryControls() {
  for (int i = m_plannedInputs; i < m_properties.count(); ++i) {
    const auto index = static_cast<std::size_t>(i);
    if (m_temporaryControls.size() <= index)
      m_temporaryControls.push_back(std::make_unique<unidevice::Control>(
          kAnyControl, "Temporary control", i, "Temporary control"));
    if (m_savedControls.size() <= index) m_savedControls.emplace_back();
    if (!IsFed(i)) continue;
    unidevice::Control& temporary = *m_temporaryControls[index];
    temporary.previous = temporary.current = 0.0;
    unidevice::Property& property = *m_properties.property(i);
    m_savedControls[index].Hold(property.control);
    property.bind(&temporary);
  }
}

void Instance::RestoreControls() {
  for (int i = 0; i < m_plannedInputs; ++i) {
    if (!IsFed(i)) continue;
    const auto index = static_cast<std::size_t>(i);
    m_properties.property(i)->bind(m_savedControls[index].Get());
    m_savedControls[index].Hold(nullptr);
  }
  m_properties.rebind();  // devices may have come back meanwhile
  m_host.GetMessages().Tell(InputsChanged{m_identity, InputsChanged::kAll});
}

void Instance::SetTrack(int index, util::AVar_Linear<double> track) {
  if (index < 0 || index >= m_properties.count()) return;
  if (m_tracks.size() <= static_cast<std::size_t>(index))
    m_tracks.resize(static_cast<std::size_t>(m_properties.count()));
  m_tracks[static_cast<std::size_t>(index)] = std::move(track);
  for (const auto& [id, property] : m_liveSpinners) {
    if (property != m_properties.property(index)) continue;
    const auto isOfInput = [element = id](const LiveSpinnerSpan& span) {
      return span.elementId == element;
    };
    m_liveSpinnerSpans.erase(
        std::remove_if(m_liveSpinnerSpans.begin(), m_liveSpinnerSpans.end(), isOfInput),
        m_liveSpinnerSpans.end());
  }
}

// --- live spinners ---

/// Beyond all inputs for a spinner that is gone.
int Instance::InputOfSpinner(int elementId) const {
  for (const auto& [id, property] : m_liveSpinners) {
    if (id != elementId) continue;
    for (int i = 0; i < m_properties.count(); ++i)
      if (m_properties.property(i) == property) return i;
  }
  return m_properties.count();
}

void Instance::StartLiveSpinners() {
  // A parameter that still stands where the take left it goes back to where the take began. Else
  // the user has set it since, and that is where the run begins.
  for (const LiveSpinnerSpan& span : m_liveSpinnerSpans) {
    if (!IsFed(InputOfSpinner(span.elementId))) continue;
    ConfigElement* element = m_config.Find(span.elementId);
    if (!element || element->GetNumber() != span.end || span.start == span.end) continue;
    element->SetNumber(span.start);
    element->Apply();
  }
  m_liveSpinnerSpans.clear();
  for (const auto& [id, property] : m_liveSpinners) {
    if (const ConfigElement* element = m_config.Find(id))
      m_liveSpinnerSpans.push_back({id, element->GetNumber(), element->GetNumber()});
  }
}

void Instance::StopLiveSpinners() {
  for (LiveSpinnerSpan& span : m_liveSpinnerSpans) {
    if (const ConfigElement* element = m_config.Find(span.elementId))
      span.end = element->GetNumber();
  }
}

void Instance::ApplyLiveSpinners() {
  for (const LiveFeed& feed : m_liveFeeds) {
    if (!feed.property->control) continue;
    // At rate 0 too: what the rig does about the value it does in every frame.
    feed.element->SetNumber(feed.element->GetNumber() + feed.property->control->read());
    feed.element->Apply();
  }
}

}  // namespace orv::rws::core
