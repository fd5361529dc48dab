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

/// Steps only these rows for as long as it lives; afterwards each row's check is what it was. Both
/// changes are told and belong to the run's undo block.
class OnlyRigs {
 public:
  OnlyRigs(CoreImplementation& core, const RowsToStep& rows) : m_core(core) {
    if (rows.empty()) return;
    Checks now;
    for (const InstanceReference* row : core.GetRows()) {
      m_before.emplace_back(row->GetId(), row->IsChecked());
      now.emplace_back(row->GetId(), row->IsGroup() || Holds(rows, row));
    }
    core.SetChecked(now);
  }
  ~OnlyRigs() {
    if (!m_before.empty()) m_core.SetChecked(m_before);
  }
  OnlyRigs(const OnlyRigs&) = delete;
  OnlyRigs& operator=(const OnlyRigs&) = delete;

  static bool Holds(const RowsToStep& rows, const InstanceReference* row) {
    return std::find(rows.begin(), rows.end(), row) != rows.end();
  }

 private:
  using Checks = std::vector<std::pair<int, bool>>;  ///< by InstanceReference::GetId

  CoreImplementation& m_core;
  Checks m_before;
};

RunResult Resimulate(CoreImplementation& core, const TimeSpan& span, const Monitor& monitor,
                     const RowsToStep& only, const std::function<void()>& afterFrame) {
  constexpr long kTold = 16;  // frames between two looks of the monitor's progress
  RunResult result;
  if (core.IsRecording()) return result;
  UndoBlock block(*core.GetAdaptor(), "Resimulating");
  const OnlyRigs stepped(core, only);
  result.began = core.BeginResimulation(span.from, span.to) == 0;
  if (!result.began) return result;
  const double rate = core.GetFrameRate();
  const auto total = static_cast<long>(std::floor((span.to - span.from) * rate + 1e-3));
  while (!monitor.IsCancelled() && core.StepResimulation()) {
    if (afterFrame) afterFrame();
    if (++result.frames % kTold == 0) monitor.Tell(result.frames, total);
  }
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
                    std::function<void()> ended, const RowsToStep& only) {
  if (m_core.IsRecording()) return false;
  rws::AdaptorInterface& adaptor = *m_core.GetAdaptor();
  m_monitor = &monitor;
  m_ended = std::move(ended);
  m_result = {};
  m_rate = adaptor.GetFrameRate();
  m_total = static_cast<long>(std::floor(seconds * m_rate));
  m_first = m_core.FrameIndex(m_core.SnapToFrame(start));
  m_block = std::make_unique<UndoBlock>(adaptor, "Record");
  m_only = std::make_unique<OnlyRigs>(m_core, only);
  adaptor.SetCurrentTime(start);
  m_core.SetTakeLength(seconds);
  m_result.began = m_core.StartRecording() == 0;
  if (!m_result.began) {
    m_only.reset();
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

void TakeRun::Settle() {
  if (m_block && !m_core.IsRecording()) End();
}

void TakeRun::End() {
  // Who hears meanwhile that the core is idle may ask to settle what is being settled here.
  std::unique_ptr<UndoBlock> block = std::move(m_block);
  if (!block) return;
  if (m_look) m_look.release()->deleteLater();  // it may be its own timeout that calls
  m_core.StopRecording();
  m_core.SetTakeLength(0.0);
  m_result.seconds = m_monitor->Seconds();
  const double start = m_core.GetStartTime();
  m_performed = {start, std::max(start, m_core.GetFrameTime())};
  m_only.reset();
  if (!m_result.cancelled && finish) finish(m_performed);
  if (!m_result.cancelled) block->Keep();
  block.reset();
  const auto ended = std::move(m_ended);  // the program may destroy the run in there
  if (ended) ended();
}

std::vector<StakedInput> InputsAtStake(CoreImplementation& core, double start,
                                       const RowsToStep& only) {
  std::vector<StakedInput> result;
  for (rws::core::Instance* rig : core.List(only.empty())) {
    if (!only.empty() && !OnlyRigs::Holds(only, core.Find(rig->GetInstanceName()))) continue;
    const auto& entries = rig->GetProperties().entries;
    const auto& tracks = rig->GetTracks();
    for (std::size_t i = 0; i < std::min(entries.size(), tracks.size()); ++i) {
      if (entries[i].second->control || rig->IsPlayed(static_cast<int>(i))) continue;
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
