#include "app/studio/timeline/Player.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/Scene.h"
#include "core/CoreImplementation.h"
#include "util/FrameGrid.h"

namespace orv::app {

using rws::core::RunState;

Player::Player(rws::core::CoreImplementation& core, rws::adaptor::headless::HeadlessAdaptor& host)
    : util::MessageNode("Player"), m_core(core), m_host(host), m_scene(&host.GetScene()) {
  seconds = [] {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
  };
  m_host.GetObservers().Add(*this);
  connect(&m_core);
  m_timer.setSingleShot(true);
  m_timer.setTimerType(Qt::PreciseTimer);
  QObject::connect(&m_timer, &QTimer::timeout, [this] { Tick(); });
}

Player::~Player() {
  disconnect(&m_core);
  m_host.GetObservers().Remove(*this);
}

// --- playing ---

void Player::Play(bool backwards) {
  if (m_core.GetRunState() != RunState::kIdle) return;
  const double duration = m_host.GetFrameDuration();
  double start = 0.0, end = 0.0;
  m_host.GetTimeRange(start, end);
  timeline::PlaySettings settings;
  settings.rate = m_host.GetFrameRate();
  settings.first = static_cast<int>(util::firstFrameFrom(start, duration));
  settings.last = static_cast<int>(util::lastFrameUntil(end, duration));
  settings.backwards = backwards;
  settings.loop = m_loop;
  settings.everyFrame = m_everyFrame;
  m_output.Stop();
  m_clock.Begin(seconds(), util::frameAtOrBefore(m_host.GetCurrentTime(), duration), settings);
  m_isPlaying = true;
  Tick();
  if (changed) changed();
}

void Player::Restart() {
  if (m_isPlaying) Play(IsBackwards());
}

void Player::Stop() {
  m_timer.stop();
  m_output.Stop();
  if (!std::exchange(m_isPlaying, false)) return;
  if (changed) changed();
}

void Player::SetLoop(bool loop) {
  m_loop = loop;
  Restart();
}

void Player::SetEveryFrame(bool every) {
  m_everyFrame = every;
  Restart();
}

void Player::Tick() {
  if (!m_isPlaying) return;
  const double now = seconds(), duration = m_host.GetFrameDuration();
  const timeline::PlayClock::Due due = m_clock.Look(now);
  const double time = due.frame * duration;
  if (time != m_host.GetCurrentTime()) {
    m_isMoving = true;
    m_host.SetCurrentTime(time);
    m_isMoving = false;
    if (!m_isPlaying) return;
  }
  if (due.isOver) return Stop();
  // What the frame has cost is no part of the sound's time.
  if (!IsBackwards() && !m_everyFrame) Hear(m_clock.GetPlace(seconds()) * duration);
  const double wait = std::ceil(1000.0 * m_clock.GetWait(seconds()));
  m_timer.start(static_cast<int>(std::clamp(wait, 1.0, 1000.0)));
}

// --- sound ---

void Player::SetSound(std::shared_ptr<sound::Sound> sound, double start) {
  m_hasSound = sound != nullptr;
  m_soundStart = start;
  m_output.SetSound(std::move(sound));
}

void Player::SetSoundStart(double start) {
  m_soundStart = start;
}

void Player::Hear(double time) {
  std::string problem;
  if (m_hasSound && !m_output.Follow(time - m_soundStart, problem) && soundFailed)
    soundFailed(problem);
}

void Player::HearTake(double time) {
  if (!m_hasSound) return;
  const bool slowed = static_cast<rws::core::RecordManager&>(m_core).GetSlowFactor() != 1.0;
  if (m_core.GetRunState() == RunState::kRecording && !slowed)
    Hear(time);
  else
    m_output.Stop();
}

// --- what comes in ---

void Player::OnTime(double time) {
  if (m_isMoving) return;
  if (m_core.IsRecording()) return HearTake(time);
  Stop();
}

void Player::OnTree() {
  if (m_scene == &m_host.GetScene()) return;
  m_scene = &m_host.GetScene();
  Stop();
}

void Player::onMessage(util::Message& message, bool) {
  if (!rws::core::NewsIn<rws::core::RunStateChanged>(message)) return;
  Stop();
  if (changed) changed();
}

}  // namespace orv::app
