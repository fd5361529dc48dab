// The clock of a take, and the run of a resimulation.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "core/CoreMessages.h"
#include "core/CoreSubSystem.h"
#include "core/services/TimerManager.h"
#include "core/take/DevicePolling.h"
#include "core/take/ForceFeedback.h"
#include "core/take/InputHistory.h"

namespace orv::rws::core {

class CountdownDialog;
class Instance;

/// What StartRecording and Resimulate answer while a take runs.
inline constexpr int kTakeRunning = 71;
/// What they answer when the licence covers none of the checked rigs, which a message box has told.
/// Where it covers some, the others are left out, with a warning in the log.
inline constexpr int kNotLicensed = 72;

/// Drives frames: a live take follows the real clock by timer 123, a resimulation runs as fast as
/// its caller lets it. Both step rigs through the same Instance calls. Times are seconds; a frame's
/// time is its index times the frame duration.
class RecordManager : public CoreSubSystem, public TimerManager {
 public:
  static constexpr int kTakeTimer = 123;
  static constexpr int kMaxFramesPerTick = 3;

  class ResimulateWindow;

  RecordManager();
  ~RecordManager() override;

  // A take.
  int StartRecording();
  /// Ends the take, also in its countdown. Nothing happens when no take runs.
  void StopRecording();
  /// The tick. `elapsedMs` are milliseconds of any origin, low 32 bits.
  void OnTimer(int id, unsigned elapsedMs) override;
  /// Reads the devices, as the idle milliseconds of a take do by themselves: for who holds a take
  /// up, around that. Tells nothing, so that it may be called within a widget's painting. Nothing
  /// happens without a take.
  void PollInputs();
  /// Whether the running take has a frame to catch up on, which fell due and is not stepped yet.
  bool IsBehind() const;
  /// How long ago (ms of real time) mapped controls were found moved, for each move that a frame
  /// stepped by now has taken. Each is told once.
  std::vector<double> TakeInputAges();
  /// The next take ends itself behind the frame at `seconds` after its start, before the range
  /// grows. Not positive: no limit.
  void SetTakeLength(double seconds) { m_takeLength = seconds; }
  /// The clock of the next take begins so many seconds ahead of its countdown, and time goes by
  /// what is keyed until the start is reached. Not positive: none.
  void SetPreRoll(double seconds) { m_preRoll = seconds; }
  /// Called when a take has been asked for, while the scene still is as the user left it; may be
  /// empty. It must not change the scene.
  std::function<void()> beforeTake;
  /// Called within the take's undo block, when its rigs have started and when they have stopped,
  /// and behind it, when the keys are there; may be empty. For a take that ends in its countdown
  /// the last two are left out.
  std::function<void()> takeStarted;
  std::function<void()> takeStopped;
  std::function<void()> takeEnded;
  /// The same of a resimulation.
  std::function<void()> runStarted;
  std::function<void()> runStopped;
  std::function<void()> runEnded;

  // A resimulation: `to` is the last time simulated.
  /// Begins a run and lets the window's timer pace it.
  int Resimulate(double from, double to);
  /// The window of the last run that Resimulate began.
  ResimulateWindow& GetResimulateWindow() { return *m_pResimulateWindow; }
  /// Begins a run that the caller paces by StepResimulation and EndResimulation.
  int BeginResimulation(double from, double to);
  /// Steps one frame; false when none is left.
  bool StepResimulation();
  void EndResimulation();

  bool IsRecording() const { return m_bRecording; }
  bool IsResimulating() const { return m_bResimulating; }
  RunState GetRunState() const;
  /// Progress of the resimulation, 0 to 1.
  float GetProgress() const { return m_resimProgress; }
  /// Time of the last frame stepped or being stepped (s).
  double GetFrameTime() const;
  double GetStartTime() const { return m_startTime; }
  double GetEndTime() const { return m_endTime; }
  double GetClock() const { return m_clock; }

  int GetSlowFactorIndex() const;
  void SetSlowFactorIndex(int index);
  double GetSlowFactor() const { return m_slowFactor; }

  /// Makes every frame last `duration` instead of what the host says; 0 ends that.
  void SetFixedFrameDuration(double duration);
  double GetFrameDuration() const;  ///< s
  double GetFrameRate() const;
  /// The floor of `t` on the frame grid.
  int FrameIndex(double t) const;
  /// `t`, or the nearest frame's time when that is within 1e-5 s.
  double SnapToFrame(double t) const;

  DevicePolling& GetDevices() { return m_devices; }
  /// The rigs of the running take, in list order.
  const std::vector<Instance*>& GetTakeInstances() const { return m_instances; }
  /// Leaves a rig out of the running take.
  void Forget(Instance* instance);

  /// Milliseconds of the system's own clock; may be replaced, so that a test scripts it.
  std::function<unsigned()> tickCount;

 protected:
  /// Lets go of what the old user interface made, and has the present one show what runs.
  void UserInterfaceChanged();

 private:
  friend class ResimulateWindow;

  bool IsLicensed();
  std::vector<Instance*> ListPerformers();
  void BeginTake(const char* undoName);
  void StartInstances(double t);
  void EndTake();
  /// False when it has ended the take.
  bool Tick(unsigned elapsedMs);
  double GetClockNow() const;
  bool StepDueFrame(double polledAt);
  void NoteInputs(double clock);
  void PlayForces(bool isFrame);
  double GetDue(int frame) const;
  void StepInstances(double t);
  bool HandleRangeEnd();
  bool IsBeyondTakeLength(int frame) const;
  void TellRunState();
  CountdownDialog* FindCountdown();
  void ShowCountdown();
  void HideCountdown();
  void HideHighPolyModels();
  void ShowHighPolyModels();
  void ShowSlowFactor();
  void TellSlowFactor();  ///< to the host
  void TellSlowFactorIndex();

  struct HiddenModels;

  std::unique_ptr<ResimulateWindow> m_pResimulateWindow;
  std::unique_ptr<CountdownDialog> m_pCountdownDialog;
  bool m_bFirstTick = true;
  double m_slowFactor = 1.0;  ///< a power of two
  double m_startTime = 0.0;
  double m_hostTime = 0.0;  ///< the host's time when the take was asked for
  double m_endTime = 0.0;   ///< grows during a take
  double m_fixedFrameDuration = 0.04;
  bool m_bFixedFrameDuration = false;
  std::vector<Instance*> m_instances;
  unsigned m_lastTick = 0;   ///< ms
  unsigned m_tickBegin = 0;  ///< by tickCount
  int m_frame = 0;           ///< last frame stepped
  double m_clock = 0.0;      ///< take clock (s)
  bool m_bRecording = false;
  bool m_bResimulating = false;
  float m_resimProgress = 0.0f;
  double m_resimTime = 0.0;  ///< next time to resimulate, on the frame grid
  double m_savedSlowFactor = 1.0;
  double m_takeLength = 0.0;
  double m_preRoll = 0.0;  ///< s
  int m_resimFrame = 0;    ///< index of m_resimTime
  DevicePolling m_devices;
  InputHistory m_inputs;  ///< of the running take
  ForceFeedback m_forces;
  RunState m_toldState = RunState::kIdle;
  std::vector<HiddenModels> m_hiddenModels;
};

}  // namespace orv::rws::core
