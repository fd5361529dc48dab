#include "app/studio/PicturePace.h"

#include <algorithm>
#include <utility>

namespace orv::app {

namespace {

constexpr double kCountedTime = 1.0;  ///< s, that pictures are counted in
constexpr std::size_t kMostLatencies = 4096;

}  // namespace

void PicturePace::BeginTake(int frame) {
  m_figures = {};
  m_latencies.clear();
  m_frame = frame;
}

void PicturePace::NoteBegin(double now) {
  m_begun = now;
  m_isBegun = true;
}

void PicturePace::NotePicture(double now, int frame, const std::vector<double>& latencies) {
  m_ended = now;
  if (std::exchange(m_isBegun, false)) m_rest = std::min(now - m_begun, kLongestRest);
  ++m_figures.painted;
  m_figures.dropped += std::max(0, frame - m_frame - 1);
  m_frame = std::max(m_frame, frame);
  m_seen.push_back(now);
  while (now - m_seen.front() > kCountedTime) m_seen.pop_front();
  m_latencies.insert(m_latencies.end(), latencies.begin(), latencies.end());
  while (m_latencies.size() > kMostLatencies) m_latencies.pop_front();
}

PictureFigures PicturePace::GetFigures(double now) const {
  PictureFigures figures = m_figures;
  const auto isRecent = [now](double seen) { return now - seen <= kCountedTime; };
  figures.perSecond =
      static_cast<double>(std::count_if(m_seen.begin(), m_seen.end(), isRecent)) / kCountedTime;
  if (m_latencies.empty()) return figures;
  std::vector<double> sorted(m_latencies.begin(), m_latencies.end());
  std::sort(sorted.begin(), sorted.end());
  figures.latencies = static_cast<long>(sorted.size());
  figures.medianMs = sorted[sorted.size() / 2];
  figures.p95Ms = sorted[sorted.size() * 19 / 20];
  return figures;
}

}  // namespace orv::app
