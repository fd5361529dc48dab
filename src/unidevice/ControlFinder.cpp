#include "unidevice/ControlFinder.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "unidevice/ControlTag.h"
#include "unidevice/Device.h"
#include "unidevice/Driver.h"
#include "unidevice/DriverManager.h"
#include "unidevice/DummyDriver.h"
#include "unidevice/EmulatedTControl.h"
#include "unidevice/EmulatedTrinaryDevice.h"
#include "util/NumberText.h"

namespace orv::unidevice {

namespace {

constexpr double kLearning = 0.25;     ///< s
constexpr int kLeastLooks = 5;         ///< that tell how far a control shakes
constexpr double kShakings = 3.0;      ///< how many of them a movement must exceed
constexpr double kMostShaking = 0.25;  ///< more, while learning, is the user's hand
constexpr double kStraying = 1.5;      ///< how much further than seen it may stray
constexpr double kEnd = 0.9;           ///< from here on an axis stands at its end
constexpr double kWindow = 0.3;        ///< s, from the first movement to the choice
constexpr double kLongWindow = 1.0;    ///< s, while no movement is a clear one
constexpr double kClear = 0.25;        ///< distance from rest of a clear movement

ControlChoice choiceOf(const Control& control) {
  return {control.device ? control.device->name : std::string(), control.type, control.index};
}

std::string nameOf(const ControlFinder::Movement& movement) {
  return movement.control.device + ": " + movement.description;
}

}  // namespace

ControlFinder::ControlFinder(Wish wish) : m_wish(std::move(wish)) {}

void ControlFinder::cancel() {
  if (!isOver()) m_state = State::kCancelled;
}

// --- what is watched ---

/// Of a pair each part gives one direction: two buttons make a hat, two pedals an axis.
std::uint32_t ControlFinder::partKinds() const {
  if (!m_wish.pair) return m_wish.kinds;
  return (m_wish.kinds & kInfiniteControl) |
         (m_wish.kinds & kFiniteControl ? kBinaryControl | kFiniteControl : 0u);
}

bool ControlFinder::isTaken(const Control& control) const {
  const ControlChoice choice = choiceOf(control);
  return std::find(m_wish.exclude.begin(), m_wish.exclude.end(), choice) != m_wish.exclude.end();
}

void ControlFinder::begin(double now) {
  const DriverManager& drivers = DriverManager::instance();
  m_generation = DriverManager::generation();
  m_learnedFrom = now;
  m_state = State::kLearning;
  m_looks = 0;
  m_watched.clear();
  for (int d = 0; d < drivers.count(); ++d) {
    if (drivers.driver(d) == &drivers.dummyDriver()) continue;
    for (const Device* device : drivers.driver(d)->devices) {
      for (int i = 0; i < device->controlCount(); ++i) {
        Watched watched;
        watched.control = device->control(i);
        watched.taken = isTaken(*watched.control);
        watched.allowed = !watched.taken && (watched.control->flags & partKinds()) != 0;
        watched.last = watched.rest = watched.control->read();
        watched.reported = watched.control->reported || watched.last != 0.0;
        m_watched.push_back(watched);
      }
    }
  }
}

// --- looking ---

ControlFinder::State ControlFinder::look(double now) {
  if (isOver()) return m_state;
  if (!m_begun) m_began = now;
  if (!m_begun || m_generation != DriverManager::generation()) begin(now);
  m_begun = true;
  const Watched* chosen = nullptr;
  for (Watched& watched : m_watched)
    if (follow(watched) && watched.allowed && !chosen) chosen = &watched;
  if (!chosen) chosen = findMoved(now);
  if (chosen)
    take(*chosen, now);
  else if (m_wish.timeout > 0.0 && now - m_began >= m_wish.timeout && m_state != State::kMoving)
    giveUp();
  return m_state;
}

/// True when a button has gone down, or a hat away from its rest.
bool ControlFinder::follow(Watched& watched) {
  const double value = watched.control->read();
  const double last = std::exchange(watched.last, value);
  if (!(watched.control->flags & kInfiniteControl)) {
    const bool pressed = std::abs(value) > 0.5 && std::abs(last) <= 0.5;
    if (pressed) watched.peak = value;
    return pressed;
  }
  // Hardware that was not moved since it was plugged in tells 0 wherever it rests.
  const bool first = !watched.reported && value != 0.0;
  watched.reported = watched.reported || first;
  if (first && std::abs(value) > kEnd) {
    watched.rest = value;
    watched.looks = 0;
    watched.threshold = watched.control->detectionThreshold;
  }
  if (m_state != State::kLearning) {
    followMovement(watched, last - watched.rest, value - watched.rest);
    return false;
  }
  if (watched.looks++ == 0) {
    watched.least = watched.most = watched.rest = value;
    watched.sum = 0.0;
  }
  watched.least = std::min(watched.least, value);
  watched.most = std::max(watched.most, value);
  watched.sum += value;
  return false;
}

/// `before` and `now` are distances from rest. One look alone is no movement: a control that shakes
/// strays far now and then, and shakes more than it did while learning.
void ControlFinder::followMovement(Watched& watched, double before, double now) const {
  const double both = std::min(std::abs(before), std::abs(now));
  if (before * now > 0.0 && both > std::abs(watched.peak)) watched.peak = std::copysign(both, now);
  if (m_state == State::kWaiting && std::abs(watched.peak) <= watched.threshold)
    watched.threshold = std::max(watched.threshold, std::min(kClear, kStraying * std::abs(now)));
}

void ControlFinder::endLearning() {
  m_state = State::kWaiting;
  for (Watched& watched : m_watched) {
    watched.threshold = watched.control->detectionThreshold;
    if (!(watched.control->flags & kInfiniteControl) || watched.looks == 0) continue;
    const double mean = watched.sum / watched.looks;
    const double shaking = std::max(watched.most - mean, mean - watched.least);
    if (shaking <= kMostShaking) {
      watched.rest = mean;
      watched.threshold = std::max(watched.threshold, kShakings * shaking);
    } else {
      const double up = watched.most - watched.rest, down = watched.least - watched.rest;
      watched.peak = up > -down ? up : down;
    }
  }
}

const ControlFinder::Watched* ControlFinder::findMoved(double now) {
  if (m_state == State::kLearning) {
    const bool looked = m_watched.empty() || ++m_looks >= kLeastLooks;
    if (now - m_learnedFrom >= kLearning && looked) endLearning();
    if (m_state == State::kLearning) return nullptr;
  }
  const Watched* const moved = strongest(true);
  if (!moved) return nullptr;
  if (m_state == State::kWaiting) m_moved = now;
  m_state = State::kMoving;
  const double window = std::abs(moved->peak) >= kClear ? kWindow : kLongWindow;
  return now - m_moved >= window ? moved : nullptr;
}

const ControlFinder::Watched* ControlFinder::strongest(bool allowed) const {
  const Watched* best = nullptr;
  for (const Watched& watched : m_watched) {
    if (watched.allowed != allowed || std::abs(watched.peak) <= watched.threshold) continue;
    if (!best || std::abs(watched.peak) > std::abs(best->peak)) best = &watched;
  }
  return best;
}

void ControlFinder::take(const Watched& watched, double now) {
  m_found.push_back(movementOf(watched));
  m_wish.exclude.push_back(m_found.back().control);
  m_state = State::kFound;
  if (!wantsNegative()) return;
  m_began = now;
  begin(now);
}

ControlFinder::Movement ControlFinder::movementOf(const Watched& watched) {
  const Control& control = *watched.control;
  return {choiceOf(control), watched.peak < 0.0 ? -1 : 1,
          control.description.empty() ? control.type : control.description};
}

// --- the end ---

void ControlFinder::giveUp() {
  m_state = State::kTimedOut;
  const Watched* const missed = strongest(false);
  if (!missed) {
    m_missed = "Nothing has moved. Is the device plugged in?";
    return;
  }
  const std::string name = nameOf(movementOf(*missed));
  if (missed->taken)
    m_missed = {"%1 has moved, which another input has already.", {name}};
  else
    m_missed = {"%1 has moved, but this input takes no control of its kind.", {name}};
}

util::xml::Tag ControlFinder::tag() const {
  if (m_found.size() > 1) return pairTag(m_found[0].control, m_found[1].control);
  if (m_found.empty()) return util::xml::Tag(std::string());
  util::xml::Tag tag = m_found[0].control.tag();
  addTextChild(tag, "description", m_found[0].description);
  return tag;
}

util::Sentence ControlFinder::text() const {
  switch (m_state) {
    case State::kFound:
      if (m_found.size() > 1) return {"Found %1 and %2.", {nameOf(m_found[0]), nameOf(m_found[1])}};
      return {"Found %1.", {nameOf(m_found[0])}};
    case State::kCancelled:
      return "Nothing has changed.";
    case State::kTimedOut:
      break;
    default:
      if (!m_wish.pair) return "Press now!";
      return wantsNegative() ? "Press now what counts negative!"
                             : "Press now what counts positive!";
  }
  return m_missed;
}

// --- what an element names ---

std::vector<ControlChoice> choicesOf(const util::xml::Element& controlTag) {
  if (controlTag.name != kControlTag) return {};
  std::vector<ControlChoice> choices;
  const auto add = [&choices](const util::xml::Element& tag) {
    ControlChoice choice{tag.attribute("device"), tag.attribute("type"), 0};
    if (util::parseNumber(tag.attribute("index"), choice.index)) choices.push_back(choice);
  };
  if (controlTag.attribute("device") != EmulatedTrinaryDevice::kName)
    add(controlTag);
  else
    for (int i = 0; i < controlChildCount(controlTag); ++i) add(controlTag.child(kControlTag, i));
  return choices;
}

std::vector<ControlChoice> choicesOf(const Control& control) {
  if (const auto* pair = dynamic_cast<const EmulatedTControl*>(&control)) {
    if (!pair->positive || !pair->negative) return {};
    return {choiceOf(*pair->positive), choiceOf(*pair->negative)};
  }
  if (!control.device) return {};
  return {choiceOf(control)};
}

}  // namespace orv::unidevice
