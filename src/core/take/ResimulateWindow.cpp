#include "core/take/ResimulateWindow.h"

#include <cmath>
#include <string>

#include "core/CoreImplementation.h"
#include "core/host/AdaptorInterface.h"
#include "core/services/Log.h"
#include "core/services/Translation.h"
#include "util/FrameGrid.h"

namespace orv::rws::core {

namespace {

constexpr int kSliceTimer = 1;
constexpr double kSlicePeriod = 1.0;         ///< s
constexpr unsigned kSliceLength = 500;       ///< ms of work per slice
constexpr unsigned kRefreshInterval = 2000;  ///< ms between two refreshes of the views

/// Before the first frame is done nothing is known of the time.
std::string RemainingText(int seconds) {
  if (seconds < 0) return Translate("99 hrs and 59 minutes");
  return Translate("%1 minutes and %2 seconds",
                   {std::to_string(seconds / 60), std::to_string(seconds % 60)});
}

}  // namespace

RecordManager::ResimulateWindow::ResimulateWindow(RecordManager& manager)
    : MessageNode("ResimulateWindow"), m_manager(manager) {}

void RecordManager::ResimulateWindow::Open(double from) {
  CoreImplementation& core = *m_manager.GetCore();
  m_startTick = m_manager.tickCount();
  m_lastRefreshTick = m_startTick;
  m_remainingSeconds = kUnknownRemaining;
  m_lastFrame = static_cast<float>(FrameAt(from));
  const bool canShow = core.GetAdaptor()->CanShowFramesDuringRun();
  m_bUpdateViewport = canShow && core.GetPreferences().updateViewport;
  OpenView();
  StartTimer(kSliceTimer, kSlicePeriod);
}

void RecordManager::ResimulateWindow::OpenView() {
  CoreImplementation& core = *m_manager.GetCore();
  if (!m_pView && core.GetUserInterface())
    m_pView.reset(core.GetUserInterface()->CreateResimulationView());
  if (m_pView) m_pView->Open(core.GetAdaptor()->CanShowFramesDuringRun(), m_bUpdateViewport);
  UpdateTexts();
}

void RecordManager::ResimulateWindow::UserInterfaceChanged() {
  m_pView.reset();
  if (!IsTimerRunning(kSliceTimer)) return;
  OpenView();
  if (m_pView) m_pView->SetProgress(m_manager.GetProgress());
}

void RecordManager::ResimulateWindow::Close() {
  KillTimer(kSliceTimer);
  if (!m_pView) return;
  m_pView->SetProgress(1.0f);
  m_pView->Close();
  m_pView.reset();
}

void RecordManager::ResimulateWindow::OnTimer(int id, unsigned) {
  if (id != kSliceTimer || !m_manager.IsResimulating()) return;
  if (!m_bUpdateViewport) UpdateTexts();
  if (m_pView) m_pView->SetProgress(m_manager.GetProgress());
  const unsigned begin = m_manager.tickCount();
  for (;;) {
    const unsigned now = m_manager.tickCount();
    // Differences, so that the counter's overflow does no harm.
    if (now - begin > kSliceLength) {
      if (m_bUpdateViewport && now - m_lastRefreshTick >= kRefreshInterval) {
        m_lastRefreshTick = now;
        UpdateTexts();
        m_manager.GetCore()->GetAdaptor()->SetCurrentTime(m_manager.m_resimTime);
      }
      return;
    }
    if (!m_manager.StepResimulation()) break;
  }
  m_manager.EndResimulation();
}

void RecordManager::ResimulateWindow::OnUpdateViewport(bool on) {
  m_bUpdateViewport = on;
  Preferences& preferences = m_manager.GetCore()->GetPreferences();
  preferences.updateViewport = on;
  std::string error;
  if (!preferences.Save(&error, {"updateviewport"})) LogEntry(LogLevel::kWarning, error);
}

int RecordManager::ResimulateWindow::FrameAt(double t) const {
  return static_cast<int>(util::nearestFrame(t, m_manager.GetFrameDuration()));
}

void RecordManager::ResimulateWindow::UpdateTexts() {
  const int first = FrameAt(m_manager.m_startTime);
  const int last = FrameAt(m_manager.m_endTime);
  const int current = m_manager.m_resimFrame - 1;
  const double elapsed = (m_manager.tickCount() - m_startTick) / 1000.0;
  const float done = static_cast<float>(current) - m_lastFrame;
  if (done > 0.0f && elapsed > 0.0) {
    m_remainingSeconds = static_cast<int>(std::lround((last - current) * elapsed / done));
    m_lastFrame = static_cast<float>(current);
  }
  if (!m_pView) return;
  const float progress = m_manager.GetProgress();
  ResimulationStatus status;
  status.progress = progress;
  const std::string remaining = RemainingText(m_remainingSeconds);
  status.title = std::to_string(std::lround(progress * 100.0f)) + "% - " + remaining;
  status.range =
      Translate("Resimulating frame %1 to %2...", {std::to_string(first), std::to_string(last)});
  status.currentFrame = Translate("Current frame: %1", {std::to_string(current)});
  status.framesDone = Translate("%1 out of %2 frames.",
                                {std::to_string(current - first), std::to_string(last - first)});
  status.remaining = remaining + ".";
  m_pView->SetStatus(status);
}

}  // namespace orv::rws::core
