#include "app/session/anyhost/RunRigs.h"

#include <QTimer>
#include <algorithm>
#include <cmath>

#include "app/session/anyhost/UndoBlock.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "core/instances/InstanceReference.h"
#include "unidevice/Property.h"

namespace orv::app {

using rws::core::CoreImplementation;
using rws::core::InstanceReference;

OnlyRigs::OnlyRigs(CoreImplementation& core, const std::vector<InstanceReference*>& rows) {
  if (rows.empty()) return;
  for (InstanceReference* row : core.GetRows()) {
    m_before.emplace_back(row, row->IsChecked());
    row->SetChecked(row->IsGroup());
  }
  for (InstanceReference* row : rows) row->SetChecked(true);
}

OnlyRigs::~OnlyRigs() {
  for (const auto& [row, checked] : m_before) row->SetChecked(checked);
}

RunResult Resimulate(CoreImplementation& core, const TimeSpan& span, const Monitor& monitor) {
  constexpr long kTold = 16;  // frames between two looks of the monitor's progress
  RunResult result;
  if (core.IsRecording()) return result;
  UndoBlock block(*core.GetAdaptor(), "Resimulating");
  result.began = core.BeginResimulation(span.from, span.to) == 0;
  if (!result.began) return result;
  const double rate = core.GetFrameRate();
  const auto total = static_cast<long>(std::floor((span.to - span.from) * rate + 1e-3));
  while (!monitor.IsCancelled() && core.StepResimulation())
    if (++result.frames % kTold == 0) monitor.Tell(result.frames, total);
  core.EndResimulation();
  result.cancelled = monitor.IsCancelled();
  result.seconds = monitor.Seconds();
  if (!result.cancelled) block.Keep();
  return result;
}

// --- a take ---

TakeRun::TakeRun(CoreImplementation& core) : m_core(core) {}

TakeRun::~TakeRun() {
  m_look.reset();
  m_ended = nullptr;
  m_result.cancelled = true;
  if (m_block) End();
}

bool TakeRun::Begin(double start, double seconds, const Monitor& monitor,
                    std::function<void()> ended) {
  if (m_core.IsRecording()) return false;
  rws::AdaptorInterface& adaptor = *m_core.GetAdaptor();
  m_monitor = &monitor;
  m_ended = std::move(ended);
  m_result = {};
  m_rate = adaptor.GetFrameRate();
  m_total = static_cast<long>(std::floor(seconds * m_rate));
  m_first = m_core.FrameIndex(m_core.SnapToFrame(start));
  m_block = std::make_unique<UndoBlock>(adaptor, "Record");
  adaptor.SetCurrentTime(start);
  m_core.SetTakeLength(seconds);
  m_result.began = m_core.StartRecording() == 0;
  if (!m_result.began) {
    m_block.reset();
    return false;
  }
  constexpr int kLookMs = 10;  // how often its end and the monitor's flag are looked for
  m_look = std::make_unique<QTimer>();
  QObject::connect(m_look.get(), &QTimer::timeout, [this] { Look(); });
  m_look->start(kLookMs);
  return true;
}

void TakeRun::Look() {
  m_result.cancelled = m_monitor->IsCancelled();
  if (m_result.cancelled) m_core.StopRecording();
  m_result.frames = std::lround(m_core.GetFrameTime() * m_rate) - m_first;
  if (!m_core.IsRecording())
    End();
  else if (m_core.GetClock() >= m_core.GetStartTime())
    m_monitor->Tell(m_result.frames, m_total);
}

void TakeRun::End() {
  if (m_look) m_look.release()->deleteLater();  // it may be its own timeout that calls
  m_core.StopRecording();
  m_core.SetTakeLength(0.0);
  m_result.seconds = m_monitor->Seconds();
  const double start = m_core.GetStartTime();
  m_performed = {start, std::max(start, m_core.GetFrameTime())};
  if (!m_result.cancelled) m_block->Keep();
  m_block.reset();
  const auto ended = std::move(m_ended);  // the program may destroy the run in there
  if (ended) ended();
}

std::vector<StakedInput> InputsAtStake(CoreImplementation& core, double start) {
  std::vector<StakedInput> result;
  for (rws::core::Instance* rig : core.List(true)) {
    const auto& entries = rig->GetProperties().entries;
    const auto& tracks = rig->GetTracks();
    for (std::size_t i = 0; i < std::min(entries.size(), tracks.size()); ++i) {
      if (entries[i].second->control) continue;
      TimeSpan span{start, start};
      bool moved = false;
      for (const auto& sample : tracks[i].samples) {
        const bool atRest = sample.time < start || sample.value == 0.0;
        if (!atRest) span.to = sample.time;
        moved = moved || !atRest;
        if (!moved) span.from = std::max(start, sample.time);
      }
      if (moved) result.push_back({rig->GetInstanceName() + ":" + entries[i].first, span});
    }
  }
  return result;
}

}  // namespace orv::app
