// Finds the control that the user moves.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "unidevice/Control.h"
#include "unidevice/ControlChoice.h"
#include "util/Sentence.h"
#include "util/xml/Tag.h"

namespace orv::unidevice {

/// "Press now!": waits until the user moves a control of hardware, and names it.
///
/// Whoever shows it keeps the devices polled and calls `look` after each poll with a time. First it
/// learns for a quarter of a second where each control rests and how far it shakes there; a button
/// that is pressed, and a hat that is pushed, counts at once, even then. An axis must leave its
/// rest by 0.1 and by more than three times its shaking. The first that does opens a short window,
/// in which the strongest movement wins: a pedal that shakes the wheel is the pedal. A trigger that
/// jumps from 0 to an end when it is first reported has not moved: it rests there.
///
/// A device that comes or goes meanwhile makes it learn anew.
class ControlFinder {
 public:
  struct Wish {
    std::uint32_t kinds = kAnyControl;   ///< bits of ControlKind that the input accepts
    bool pair = false;                   ///< two controls: first the positive, then the negative
    std::vector<ControlChoice> exclude;  ///< those that are taken
    double timeout = 10.0;               ///< for each control (s); not positive: it waits forever
  };

  enum class State {
    kLearning,  ///< where the controls rest; the user may move already
    kWaiting,   ///< for a movement
    kMoving,    ///< something moves; the strongest is being found
    kFound,     ///< `found` holds one control, or two of a pair
    kTimedOut,  ///< `text` says what moved that could not be had
    kCancelled,
  };

  struct Movement {
    ControlChoice control;
    int direction = 1;  ///< 1 or -1: which way it went from its rest
    std::string description;
  };

  explicit ControlFinder(Wish wish);

  /// `now` is in seconds of any origin and never falls. Once found, timed out or cancelled, nothing
  /// happens any more.
  State look(double now);
  State state() const { return m_state; }
  bool isOver() const { return m_state >= State::kFound; }
  void cancel();
  /// Of a pair: the positive control is found, and the negative one is looked for.
  bool wantsNegative() const { return m_wish.pair && m_found.size() == 1; }
  const std::vector<Movement>& found() const { return m_found; }
  /// The `control` element of what was found, as profiles hold it. Good in State::kFound.
  util::xml::Tag tag() const;
  /// What the user is to do, or how it ended.
  util::Sentence text() const;

 private:
  struct Watched {
    Control* control;
    bool allowed;             ///< by kind, and not taken
    bool taken;               ///< only so it is not allowed
    bool reported;            ///< the hardware has told a value
    double least, most, sum;  ///< while learning
    int looks = 0;
    double rest = 0.0;
    double threshold = 0.0;
    double peak = 0.0;  ///< greatest distance from rest since learning, with its sign
  };

  void begin(double now);
  void list();
  void learn();
  void endLearning();
  Watched* pressed();
  void follow();
  Watched* strongest(bool allowed);
  void take(const Watched& watched, double now);
  std::uint32_t partKinds() const;
  bool isExcluded(const Control& control) const;

  Wish m_wish;
  State m_state = State::kLearning;
  std::vector<Watched> m_watched;
  std::vector<Movement> m_found;
  util::Sentence m_missed;  ///< what moved and could not be had
  std::uint64_t m_generation = 0;
  bool m_begun = false;
  double m_began = 0.0;  ///< s, of the wait for this control
  double m_learnedFrom = 0.0;
  double m_moved = 0.0;  ///< s, when the window opened
};

/// The controls that a `control` element names: one, or the two of a pair.
std::vector<ControlChoice> choicesOf(const util::xml::Element& controlTag);
/// The same of a control that is there; none for one of no device.
std::vector<ControlChoice> choicesOf(const Control& control);

}  // namespace orv::unidevice
