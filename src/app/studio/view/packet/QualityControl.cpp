#include "app/studio/view/packet/QualityControl.h"

#include <algorithm>

namespace orv::app::view {

namespace {

constexpr double kTooLong = 45.0;  ///< ms a picture
constexpr double kEasy = 16.0;     ///< ms; twice the pixels are still well below the above
/// What a step down must come to, in parts of the cost before.
constexpr double kGain = 0.85;
constexpr int kMostPatience = 64;

}  // namespace

QualityControl::QualityControl(bool isSoftware) : m_best(isSoftware ? 2 : 0), m_step(m_best) {}

void QualityControl::Restart() {
  m_count = 0;
  m_lowest = kSteps.size() - 1;
  m_before = 0.0;
  m_isTrying = false;
  m_patience = 1;
  m_easy = 0;
}

void QualityControl::Note(double cost) {
  m_costs[m_count++] = cost;
  if (m_count < kWindow) return;
  m_count = 0;
  std::nth_element(m_costs.begin(), m_costs.begin() + kWindow / 2, m_costs.end());
  const double typical = m_costs[kWindow / 2];
  if (m_before > 0.0 && typical > kGain * m_before) {
    m_before = 0.0;
    m_lowest = --m_step;
    return;
  }
  m_before = 0.0;
  m_easy = typical < kEasy ? m_easy + 1 : 0;
  if (typical > kTooLong && m_step < m_lowest) {
    // What was given back too early is given back later the next time.
    if (m_isTrying) m_patience = std::min(2 * m_patience, kMostPatience);
    m_isTrying = false;
    m_before = typical;
    ++m_step;
  } else if (m_easy >= m_patience && m_step > m_best) {
    m_isTrying = true;
    m_easy = 0;
    --m_step;
  } else {
    m_isTrying = m_isTrying && typical > kTooLong;
  }
}

}  // namespace orv::app::view
