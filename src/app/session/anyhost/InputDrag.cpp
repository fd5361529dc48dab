#include "app/session/anyhost/InputDrag.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <utility>

#include "app/session/anyhost/UndoBlock.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "core/services/Translation.h"
#include "core/take/TakeUndo.h"
#include "core/tools/Tool.h"
#include "unidevice/Property.h"
#include "util/FrameGrid.h"

namespace orv::app {

using rws::core::Instance;
using rws::core::RunState;

namespace {

constexpr const char* kEditStep = rws::core::Translatable("Edit Inputs");

Instance* FindByIdentity(rws::core::CoreImplementation& core, int identity) {
  for (Instance* rig : core.List(false))
    if (rig->GetIdentity() == identity) return rig;
  return nullptr;
}

}  // namespace

double InputDrag::FindFirstChange(const Track& before, const Track& after) {
  const auto& a = before.samples;
  const auto& b = after.samples;
  const auto differ = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
  if (differ.first == a.end() && differ.second == b.end())
    return std::numeric_limits<double>::infinity();
  if (differ.first == a.begin()) return -std::numeric_limits<double>::infinity();
  return std::prev(differ.first)->time;
}

bool InputDrag::ResumesExactly(const Instance& rig) {
  if (rig.GetTool()->NeedsReplay()) return false;
  // A parameter that an input turns begins each run where its take began.
  const auto& entries = rig.GetProperties().entries;
  const auto& tracks = const_cast<Instance&>(rig).GetTracks();
  for (const auto& spinner : rig.GetLiveSpinners())
    for (std::size_t i = 0; i < std::min(entries.size(), tracks.size()); ++i)
      if (entries[i].second == spinner.second)
        for (const auto& sample : tracks[i].samples)
          if (sample.value != 0.0) return false;
  return true;
}

InputDrag::InputDrag(rws::core::CoreImplementation& core) : m_core(core) {}

InputDrag::~InputDrag() {
  Cancel();
}

/// Gives back up to when the tracks read what they did.
double InputDrag::PutTracks(const std::vector<Edited>& tracks) {
  double first = std::numeric_limits<double>::infinity();
  for (const Edited& edited : tracks) {
    Instance* rig = FindByIdentity(m_core, edited.rig);
    const auto index = static_cast<std::size_t>(edited.input);
    if (!rig || index >= rig->GetTracks().size()) continue;
    const double change = FindFirstChange(rig->GetTracks()[index], edited.track);
    if (change == std::numeric_limits<double>::infinity()) continue;
    first = std::min(first, change);
    m_core.GetAdaptor()->PushUndo(new rws::core::TakeUndo(*rig, rws::core::TakeUndo::Of::kTracks));
    rig->SetTrack(edited.input, edited.track);
  }
  return first;
}

bool InputDrag::Begin(double firstChange) {
  double start = 0.0, end = 0.0;
  m_core.GetAdaptor()->GetTimeRange(start, end);
  bool resumes = true;
  for (Instance* rig : m_core.List(true)) {
    resumes = resumes && ResumesExactly(*rig);
    for (const Track& track : rig->GetTracks())
      if (!track.samples.empty()) end = std::max(end, track.samples.back().time);
  }
  const double duration = m_core.GetFrameDuration();
  const double from = resumes && firstChange > start
                          ? util::frameAtOrBefore(firstChange, duration) * duration
                          : start;
  m_isRunning = m_core.BeginResimulation(std::max(start, from), end) == 0;
  return m_isRunning;
}

bool InputDrag::Move(const std::vector<Edited>& tracks) {
  if (!m_isRunning && m_core.GetRunState() != RunState::kIdle) return false;
  Cancel();
  m_time = m_core.GetAdaptor()->GetCurrentTime();
  m_block = std::make_unique<UndoBlock>(*m_core.GetAdaptor(), kEditStep);
  const double change = PutTracks(tracks);
  m_hasChanged = change < std::numeric_limits<double>::infinity();
  if (!m_hasChanged || Begin(change)) return true;
  Cancel();
  return false;
}

bool InputDrag::Go(double seconds) {
  using Clock = std::chrono::steady_clock;
  const auto begun = Clock::now();
  while (m_isRunning) {
    if (!m_core.StepResimulation()) End();
    if (std::chrono::duration<double>(Clock::now() - begun).count() >= seconds) break;
  }
  return !m_isRunning;
}

void InputDrag::End() {
  if (!std::exchange(m_isRunning, false)) return;
  m_core.EndResimulation();
  if (m_core.GetAdaptor()->GetCurrentTime() != m_time) m_core.GetAdaptor()->SetCurrentTime(m_time);
}

double InputDrag::GetProgress() const {
  return m_isRunning ? static_cast<double>(m_core.GetProgress()) : 1.0;
}

bool InputDrag::Keep() {
  if (!m_block) return false;
  Go(std::numeric_limits<double>::infinity());
  if (m_hasChanged) m_block->Keep();
  m_block.reset();
  return std::exchange(m_hasChanged, false);
}

void InputDrag::Cancel() {
  End();
  m_block.reset();
  m_hasChanged = false;
}

void InputDrag::Abandon() {
  if (m_block) m_block->Keep();
  m_block.reset();
  m_hasChanged = m_isRunning = false;
}

}  // namespace orv::app
