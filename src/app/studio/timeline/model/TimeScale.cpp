#include "app/studio/timeline/model/TimeScale.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <vector>

namespace orv::app::timeline {

namespace {

constexpr double kMargin = 0.03;     ///< of the line, beside what is shown
constexpr double kFarthest = 1e9;    ///< frame
constexpr double kLeastShown = 4.0;  ///< frames

int WholeRate(double rate) {
  return std::max(1, static_cast<int>(std::lround(rate)));
}

}  // namespace

void TimeScale::SetWidth(double pixels) {
  m_width = std::max(1.0, pixels);
  Hold();
}

void TimeScale::Hold() {
  m_scale = std::clamp(m_scale, m_width / kMostFrames, kMostPixels);
  m_first = std::clamp(m_first, -kFarthest, kFarthest);
}

void TimeScale::Show(double from, double to) {
  const double shown = std::max(kLeastShown, to - from);
  m_scale = m_width * (1.0 - 2.0 * kMargin) / shown;
  Hold();
  m_first = 0.5 * (from + to - m_width / m_scale);
  Hold();
}

int TimeScale::SnapToFrame(double pixel) const {
  return static_cast<int>(
      std::lround(std::clamp(ToFrame(pixel), -2.0 * kFarthest, 2.0 * kFarthest)));
}

void TimeScale::Zoom(double factor, double pixel) {
  const double frame = ToFrame(pixel);
  m_scale *= factor;
  Hold();
  m_first = frame - pixel / m_scale;
  Hold();
}

void TimeScale::Pan(double pixels) {
  m_first -= pixels / m_scale;
  Hold();
}

bool TimeScale::Reveal(double frame) {
  const double pixel = ToPixel(frame), room = kMargin * m_width;
  if (pixel >= 0.0 && pixel <= m_width) return false;
  // A page on, so that playback does not move it with every frame.
  m_first = pixel < 0.0 ? frame - (m_width - room) / m_scale : frame - room / m_scale;
  Hold();
  return true;
}

TimeScale::Steps TimeScale::ChooseSteps(double rate, double leastMark, double leastNumber) const {
  const int second = WholeRate(rate);
  std::vector<int> steps;
  for (const int frames : {1, 2, 5, 10})
    if (frames < second) steps.push_back(frames);
  for (const int seconds : {1, 2, 5, 10, 30, 60, 120, 300, 600, 1800, 3600, 7200, 18000, 36000})
    steps.push_back(seconds * second);
  Steps chosen;
  const auto fits = [this](int step, double least) { return step * m_scale >= least; };
  chosen.number = steps.back();
  for (auto step = steps.rbegin(); step != steps.rend(); ++step)
    if (fits(*step, leastNumber)) chosen.number = *step;
  chosen.mark = chosen.number;
  for (auto step = steps.rbegin(); step != steps.rend(); ++step)
    if (*step < chosen.number && chosen.number % *step == 0 && fits(*step, leastMark))
      chosen.mark = *step;
  return chosen;
}

TimeCode TimeCodeOf(int frame, double rate) {
  const int second = WholeRate(rate);
  const long at = std::labs(static_cast<long>(frame));
  TimeCode code;
  code.negative = frame < 0;
  code.frames = static_cast<int>(at % second);
  code.seconds = static_cast<int>(at / second % 60);
  code.minutes = static_cast<int>(at / second / 60 % 60);
  code.hours = static_cast<int>(at / second / 3600);
  return code;
}

}  // namespace orv::app::timeline
