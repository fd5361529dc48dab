#include "unidevice/CalibrationMeasure.h"

#include <algorithm>
#include <cmath>

#include "unidevice/Control.h"
#include "unidevice/DriverManager.h"
#include "util/NumberText.h"

namespace orv::unidevice {

namespace {

/// How far a control may shake that is said to rest.
constexpr double kMostShakingAtRest = 0.1;

}  // namespace

CalibrationMeasure::CalibrationMeasure(ControlChoice control, Calibration::Kind kind)
    : m_control(std::move(control)), m_kind(kind) {}

void CalibrationMeasure::look() {
  const Control* const control = DriverManager::instance().findControl(m_control.tag());
  if (!control || m_step == Step::kDone) return;
  m_reported = control->reported;
  m_value = control->hardware;
  m_seen.push_back(m_value);
  // Of the rest the latest counts: the user may press once, or still be letting go.
  if (m_step == Step::kRest && m_seen.size() > kRestLooks) m_seen.pop_front();
}

util::Sentence CalibrationMeasure::next() {
  if (m_step == Step::kDone) return {};
  util::Sentence problem{"%1 is not there. Plug it in.", {m_control.device}};
  if (!m_seen.empty()) {
    const auto [least, most] = std::minmax_element(m_seen.begin(), m_seen.end());
    const Extremes seen{*least, *most};
    problem = m_step == Step::kRest   ? endRest(seen)
              : m_step == Step::kFull ? endFull(seen)
                                      : endLow(seen);
  }
  m_seen.clear();
  return problem;
}

util::Sentence CalibrationMeasure::endRest(const Extremes& seen) {
  if (!m_reported)
    return {"%1 has told nothing yet. Move it once and let it go.", {m_control.device}};
  if (seen.most - seen.least > kMostShakingAtRest)
    return {"It moved by %1 while it was to rest. Let it go and wait a moment.",
            {util::shortText(std::round((seen.most - seen.least) * 100.0) / 100.0)}};
  m_rest = seen;
  m_step = Step::kFull;
  return {};
}

util::Sentence CalibrationMeasure::endFull(const Extremes& seen) {
  const bool rises = seen.most - m_rest.most >= m_rest.least - seen.least;
  Calibration result;
  result.kind = Calibration::Kind::kPedal;
  result.full = rises ? seen.most : seen.least;
  // The edge of the shaking, so that all of it reads 0.
  result.rest = rises ? m_rest.most : m_rest.least;
  if (m_kind == Calibration::Kind::kAxis) result.rest = (m_rest.least + m_rest.most) / 2.0;
  if (util::Sentence problem = result.problem()) return problem;
  m_result = result;
  m_step = m_kind == Calibration::Kind::kAxis ? Step::kLow : Step::kDone;
  return {};
}

util::Sentence CalibrationMeasure::endLow(const Extremes& seen) {
  Calibration result = m_result;
  result.kind = Calibration::Kind::kAxis;
  result.low = m_result.full > m_result.rest ? seen.least : seen.most;
  if (util::Sentence problem = result.problem()) return problem;
  m_result = result;
  m_step = Step::kDone;
  return {};
}

util::Sentence CalibrationMeasure::text() const {
  const bool pedal = m_kind == Calibration::Kind::kPedal;
  switch (m_step) {
    case Step::kRest:
      return pedal ? "Let go of the pedal or trigger."
                   : "Let go of it, so that it stands in its centre.";
    case Step::kFull:
      return pedal ? "Press it all the way down."
                   : "Move it all the way to the end that counts as 1.";
    case Step::kLow:
      return "Move it all the way to the other end.";
    case Step::kDone:
      break;
  }
  return {"It rests at %1 and is full at %2.",
          {util::shortText(m_result.rest), util::shortText(m_result.full)}};
}

}  // namespace orv::unidevice
