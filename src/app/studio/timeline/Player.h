// Playback of what a scene holds.
#pragma once

#include <QTimer>
#include <functional>
#include <memory>
#include <string>

#include "adaptor/headless/HostObservers.h"
#include "app/studio/sound/SoundOutput.h"
#include "app/studio/timeline/model/PlayClock.h"
#include "util/MessageNode.h"

namespace orv::rws::adaptor::headless {
class HeadlessAdaptor;
}
namespace orv::rws::core {
class CoreImplementation;
}

namespace orv::app {

/// Moves the host's time by a steady clock, frame by frame, and has the scene's sound heard with it
/// and with takes. Always in real time: the slow factor is for performing, and what was performed
/// slowly is to be seen as it will be. A take, another scene, and whoever else sets the time end
/// it.
///
/// The sound is silent where it could only limp: backwards, where every frame waits to be drawn,
/// and in takes that are slowed.
class Player : private rws::adaptor::headless::HostObserver, private util::MessageNode {
 public:
  /// Both outlive it.
  Player(rws::core::CoreImplementation& core, rws::adaptor::headless::HeadlessAdaptor& host);
  ~Player() override;

  /// Nothing happens while a take or a resimulation runs.
  void Play(bool backwards);
  void Stop();
  bool IsPlaying() const { return m_isPlaying; }
  bool IsBackwards() const { return m_clock.GetSettings().backwards; }
  void SetLoop(bool loop);
  bool IsLoop() const { return m_loop; }
  void SetEveryFrame(bool every);
  bool IsEveryFrame() const { return m_everyFrame; }

  /// Null for none; `start` is when it begins (s).
  void SetSound(std::shared_ptr<sound::Sound> sound, double start);
  void SetSoundStart(double start);
  bool IsHeard() const { return m_output.IsPlaying(); }

  /// Playback, or a run of the core, begins or ends.
  std::function<void()> changed;
  /// The sound can't be played, and why.
  std::function<void(const std::string& problem)> soundFailed;
  /// Seconds of a steady clock; may be replaced, so that a test scripts it.
  std::function<double()> seconds;
  /// Shows the frame that is due; the timer calls it.
  void Tick();

 private:
  // HostObserver, util::MessageNode
  void OnTime(double time) override;
  void OnTree() override;
  void onMessage(util::Message& message, bool broadcast) override;

  void Restart();
  void Hear(double time);
  void HearTake(double time);

  rws::core::CoreImplementation& m_core;
  rws::adaptor::headless::HeadlessAdaptor& m_host;
  const void* m_scene = nullptr;
  timeline::PlayClock m_clock;
  sound::SoundOutput m_output;
  bool m_hasSound = false;
  double m_soundStart = 0.0;  ///< s
  QTimer m_timer;
  bool m_isPlaying = false;
  bool m_isMoving = false;  ///< this one sets the time
  bool m_loop = false, m_everyFrame = false;
};

}  // namespace orv::app
