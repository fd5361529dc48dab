// Paces a resimulation in slices and tells its progress.
#pragma once

#include <memory>

#include "core/UserInterface.h"
#include "core/services/TimerManager.h"
#include "core/take/RecordManager.h"
#include "util/DynamicObject.h"
#include "util/MessageNode.h"

namespace orv::rws::core {

/// Steps frames for half a second of each second and leaves the rest to the host's event loop. The
/// view may be missing: then the run is paced all the same and nothing is shown.
class RecordManager::ResimulateWindow : public util::DynamicObject,
                                        public util::MessageNode,
                                        public TimerManager {
 public:
  explicit ResimulateWindow(RecordManager& manager);

  /// Opens the dialog for the run that has begun at `from` (s) and starts the timer.
  void Open(double from);
  /// Stops the timer and closes the dialog; the object stays for the next run.
  void Close();
  /// Shows the run in the present user interface, and drops what another one made.
  void UserInterfaceChanged();
  void OnTimer(int id, unsigned elapsedMs) override;

  /// Button 99.
  void OnStopButton() { m_manager.EndResimulation(); }
  /// Check box 112; kept in the preferences too.
  void OnUpdateViewport(bool on);

 private:
  void OpenView();
  void UpdateTexts();
  int FrameAt(double t) const;

  RecordManager& m_manager;
  std::unique_ptr<ResimulationView> m_pView;
  float m_lastFrame = 0.0f;        ///< frame shown at the previous update
  unsigned m_startTick = 0;        ///< ms, start of the run
  unsigned m_lastRefreshTick = 0;  ///< ms, last viewport refresh
  bool m_bUpdateViewport = false;
  int m_remainingSeconds = kUnknownRemaining;

  static constexpr int kUnknownRemaining = -1;
};

}  // namespace orv::rws::core
