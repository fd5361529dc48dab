// Measures rest and full of a pedal, or centre and ends of an axis.
#pragma once

#include "unidevice/Calibration.h"
#include "unidevice/ControlChoice.h"
#include "util/Sentence.h"

namespace orv::unidevice {

/// Asks for the control's positions one after the other and takes the extremes that it sees in
/// each: so noise at rest reads 0, and a push that bounces reads 1. Whoever shows it keeps the
/// devices polled, calls `look` after each poll, shows `text`, and calls `next` when the user says
/// that it is so.
class CalibrationMeasure {
 public:
  enum class Step {
    kRest,  ///< nobody touches it
    kFull,  ///< all the way down, or to the end that is to be 1
    kLow,   ///< of an axis: to the other end
    kDone,
  };

  /// A pedal is rest and full, an axis centre and both ends. Any other kind is a mistake.
  CalibrationMeasure(ControlChoice control, Calibration::Kind kind);

  /// Takes the hardware's present value. Nothing happens while the device is away.
  void look();
  /// Ends the present step. Empty when that is well; else why not, and the step begins anew.
  util::Sentence next();
  Step step() const { return m_step; }
  /// What the user is to do now.
  util::Sentence text() const;
  /// The hardware's value when `look` saw it last.
  double value() const { return m_value; }
  /// Good once the step is kDone.
  const Calibration& result() const { return m_result; }
  const ControlChoice& control() const { return m_control; }

 private:
  struct Extremes {
    double least = 0.0, most = 0.0;
    bool seen = false;
  };

  util::Sentence endRest();
  util::Sentence endFull();
  util::Sentence endLow();

  ControlChoice m_control;
  Calibration::Kind m_kind;
  Step m_step = Step::kRest;
  Extremes m_seen;  ///< in this step
  Extremes m_rest;
  bool m_reported = false;  ///< the hardware has told a value at all
  double m_value = 0.0;
  Calibration m_result;
};

}  // namespace orv::unidevice
