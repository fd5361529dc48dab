#include "plugins/release/splinespeedcontroller/CCurve.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "util/LeastBetween.h"

namespace orv::rws::addon {

using Vector = util::Vector3<double>;

namespace {

/// Step of the differences that tangent and curvature are taken from, in either parameter.
constexpr double kStep = 1e-05;
/// Half of one over the step, as stored takes were made with it.
constexpr double kCurvatureScale = 49999.99999999999;
/// A later chord replaces the first as the shortest only when it is shorter than this (m).
constexpr double kTinyChord = 1.1920928955078125e-07;

/// Chords may differ by this before a segment gets fewer samples than the least.
constexpr double kEvenness = 50.0;
constexpr double kLeastPerSegment = 16.0;
/// What a segment gets while the curve stays below kAmple samples.
constexpr double kWantedPerSegment = 64.0;
constexpr double kAmple = 200000.0;

/// Thirds by which a closest point is narrowed down.
constexpr int kRefinements = 60;

}  // namespace

// --- points ---

void CCurve::SetClosed(bool closed) {
  m_closed = closed;
  m_dirty = true;
}

void CCurve::SetEndStraight(bool straight) {
  m_endStraight = straight;
  m_dirty = true;
}

void CCurve::AddPoint(const Vector& point, double tensionIn, double tensionOut) {
  InsertPoint(m_points.size(), point, tensionIn, tensionOut);
}

void CCurve::InsertPoint(std::size_t index, const Vector& point, double tensionIn,
                         double tensionOut) {
  const auto at = static_cast<std::ptrdiff_t>(std::min(index, m_points.size()));
  m_points.insert(m_points.begin() + at, point);
  m_tensionsIn.insert(m_tensionsIn.begin() + at, tensionIn);
  m_tensionsOut.insert(m_tensionsOut.begin() + at, tensionOut);
  m_dirty = true;
}

void CCurve::Clear() {
  m_points.clear();
  m_tensionsIn.clear();
  m_tensionsOut.clear();
  m_dirty = true;
}

CCurve CCurve::Outline() const {
  CCurve outline(m_density);
  outline.m_closed = m_closed;
  outline.m_endStraight = m_endStraight;
  outline.m_points = m_points;
  outline.m_tensionsIn = m_tensionsIn;
  outline.m_tensionsOut = m_tensionsOut;
  return outline;
}

CurveState CCurve::State() {
  if (m_dirty) Rebuild();
  return m_state;
}

std::uint32_t CCurve::SampleCount() {
  State();
  return static_cast<std::uint32_t>(m_sampleChords.size());
}

std::size_t CCurve::ShortestChord() {
  State();
  const auto shortest = std::min_element(m_chords.begin(), m_chords.end());
  return static_cast<std::size_t>(shortest - m_chords.begin());
}

// --- segments ---

Vector CCurve::EvaluateSegment(double t, Vector p0, const Vector& p1, const Vector& p2, Vector p3,
                               double tensionOut1, double tensionIn2, bool duplicateEnds) const {
  const Vector way = p2 - p1;
  if (duplicateEnds && p0 == p1) p0 -= way;
  if (duplicateEnds && p2 == p3) p3 += way;
  // Two points in one place give the direction "up", which is meant: scenes are laid out with it.
  const Vector d0 = (p1 - p0).normalized();
  const Vector d1 = way.normalized();
  const Vector d2 = (p3 - p2).normalized();
  const double length = way.length();
  const double t2 = t * t, t3 = t2 * t;
  return p1 * (2 * t3 - 3 * t2 + 1) + p2 * (3 * t2 - 2 * t3) +
         (d0 + d1) * (0.5 * tensionOut1) * length * (t3 - 2 * t2 + t) +
         (d1 + d2) * (0.5 * tensionIn2) * length * (t3 - t2);
}

/// Closed, an index is wrapped once; open, it stays within the points.
std::size_t CCurve::Neighbour(std::ptrdiff_t index) const {
  const auto count = static_cast<std::ptrdiff_t>(m_points.size());
  if (!m_closed) return static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(index, 0, count - 1));
  if (index < 0) index += count;
  if (index >= count) index -= count;
  return static_cast<std::size_t>(index);
}

Vector CCurve::EvaluateAt(std::size_t segment, double t) const {
  const auto i = static_cast<std::ptrdiff_t>(segment);
  const std::size_t p1 = Neighbour(i), p2 = Neighbour(i + 1);
  return EvaluateSegment(t, m_points[Neighbour(i - 1)], m_points[p1], m_points[p2],
                         m_points[Neighbour(i + 2)], m_tensionsOut[p1], m_tensionsIn[p2],
                         m_endStraight);
}

/// The first segment that ends at the chord parameter or behind it.
std::size_t CCurve::SegmentAt(double chord) const {
  const auto end = std::lower_bound(m_ends.begin(), m_ends.end(), chord);
  return static_cast<std::size_t>(end - m_ends.begin());
}

double CCurve::LocalT(std::size_t segment, double chord) const {
  return 1.0 - (m_ends[segment] - chord) / (m_chords[segment] / m_chordSum);
}

bool CCurve::EvaluateChord(double chord, Vector& out) {
  if (State() != CurveState::kSampled) return false;
  const std::size_t segment = SegmentAt(chord);
  if (segment >= m_chords.size()) return false;
  out = EvaluateAt(segment, LocalT(segment, chord));
  return true;
}

// --- the tables ---

void CCurve::MeasureChords() {
  const std::size_t count = m_points.size();
  const std::size_t segments = m_closed ? count : count - 1;
  m_chords.resize(segments);
  m_ends.resize(segments);
  m_chordSum = 0.0;
  for (std::size_t i = 0; i < segments; ++i) {
    m_chords[i] = (m_points[Neighbour(static_cast<std::ptrdiff_t>(i) + 1)] - m_points[i]).length();
    m_chordSum += m_chords[i];
    m_ends[i] = m_chordSum;
  }
  for (double& end : m_ends) end /= m_chordSum;
}

double CCurve::WantedSamples() const {
  const double longest = *std::max_element(m_chords.begin(), m_chords.end());
  double shortest = m_chords.front();
  // Meant, though it looks the wrong way round: a later chord counts only when it is next to
  // nothing. In practice the first chord decides, and two points in one place ask for more samples
  // than a curve may have.
  for (const double chord : m_chords)
    if (chord < shortest && std::abs(chord) < kTinyChord) shortest = chord;

  // Enough for every segment as long as the chords differ by no more than kEvenness.
  const double least =
      std::max(*std::min_element(m_chords.begin(), m_chords.end()), longest / kEvenness);
  const double segments = m_chordSum / least;
  const double even =
      std::max(kLeastPerSegment * segments, std::min(kWantedPerSegment * segments, kAmple));
  const double density = std::max(m_density, std::ceil(even) * shortest / longest);
  return std::trunc(longest * density / shortest);
}

void CCurve::Rebuild() {
  m_dirty = false;
  m_state = CurveState::kTooFewPoints;
  m_length = 0.0;
  m_chords.clear();
  m_ends.clear();
  m_sampleChords.clear();
  m_sampleArcs.clear();
  m_pointSamples.clear();
  m_pointArcs.assign(1, 0.0);
  if (m_points.size() < 2) return;
  MeasureChords();
  const double wanted = WantedSamples();
  if (!(wanted <= kMostSamples)) {
    m_state = CurveState::kTooManySamples;
    return;
  }
  TakeSamples(static_cast<std::uint32_t>(wanted));
  m_state = m_length > 0.0 && std::isfinite(m_length) ? CurveState::kSampled
                                                      : CurveState::kTooManySamples;
}

void CCurve::TakeSamples(std::uint32_t count) {
  const std::size_t room = count + 1 + m_chords.size();
  m_sampleChords.reserve(room);
  m_sampleArcs.reserve(room);
  Vector last;
  const auto append = [&](const Vector& point, double chord) {
    if (!m_sampleChords.empty()) m_length += (point - last).length();
    last = point;
    m_sampleChords.push_back(chord);
    m_sampleArcs.push_back(m_length);
  };
  // Each control point is a sample of its own, ahead of the first sample behind it.
  std::size_t segment = 0, begun = 0;
  for (std::uint32_t i = 0; i <= count; ++i) {
    const double chord = static_cast<double>(i) / count;
    while (segment + 1 < m_ends.size() && m_ends[segment] < chord) ++segment;
    for (; begun <= segment; ++begun) {
      m_pointSamples.push_back(static_cast<std::uint32_t>(m_sampleChords.size()));
      append(EvaluateAt(begun, 0.0), m_ends[begun] - m_chords[begun] / m_chordSum);
    }
    append(EvaluateAt(segment, LocalT(segment, chord)), chord);
  }
  m_pointSamples.push_back(static_cast<std::uint32_t>(m_sampleChords.size() - 1));
  m_pointArcs.clear();
  for (double& arc : m_sampleArcs) arc /= m_length;
  for (const std::uint32_t sample : m_pointSamples) m_pointArcs.push_back(m_sampleArcs[sample]);
}

double CCurve::Length() {
  State();
  return m_length;
}

double CCurve::WaypointPosition(std::size_t index) {
  State();
  return m_pointArcs[std::min(index, m_pointArcs.size() - 1)];
}

// --- along the arc ---

double CCurve::ChordAt(double u) {
  if (State() != CurveState::kSampled) return 0.0;
  if (m_closed) {
    u = std::fmod(u, 1.0);
    if (u < 0.0) u += 1.0;
    if (u == 1.0) u = 0.0;
  } else {
    u = std::clamp(u, 0.0, 1.0);
  }
  const auto behind = std::upper_bound(m_sampleArcs.begin() + 1, m_sampleArcs.end(), u);
  if (behind == m_sampleArcs.end()) return m_sampleChords.back();
  const auto i = static_cast<std::size_t>(behind - m_sampleArcs.begin());
  const double share = (u - m_sampleArcs[i - 1]) / (m_sampleArcs[i] - m_sampleArcs[i - 1]);
  return m_sampleChords[i - 1] + (m_sampleChords[i] - m_sampleChords[i - 1]) * share;
}

Vector CCurve::Position(double u) {
  Vector point = m_points.empty() ? Vector() : m_points.front();
  EvaluateChord(ChordAt(u), point);
  return point;
}

void CCurve::PositionAndTangent(double u, Vector& position, Vector& tangent) {
  position = Position(u);
  Vector from = position, to = position;
  if (u + kStep >= 1.0) {
    EvaluateChord(0.99999, from);
    EvaluateChord(1.0, to);
  } else {
    to = Position(u + kStep);
  }
  tangent = (to - from).normalized();
}

void CCurve::PositionTangentAndCurvature(double u, Vector& position, Vector& tangent,
                                         Vector& curvature) {
  position = Position(u);
  Vector p0 = position, p1 = position, p2 = position;
  if (u + 2 * kStep >= 1.0) {
    EvaluateChord(0.99998, p0);
    EvaluateChord(0.99999, p1);
    EvaluateChord(1.0, p2);
  } else {
    p1 = Position(u + kStep);
    p2 = Position(u + 2 * kStep);
  }
  tangent = (p2 - p0).normalized();
  curvature = ((p2 - p1).normalized() - (p1 - p0).normalized()) * kCurvatureScale;
}

std::vector<Vector> CCurve::Sample(int count) {
  std::vector<Vector> points;
  const double last = m_closed ? count : count - 1;
  for (int i = 0; i < count; ++i) points.push_back(Position(last > 0.0 ? i / last : 0.0));
  return points;
}

double CCurve::ArcAt(double chord) const {
  const auto behind = std::upper_bound(m_sampleChords.begin(), m_sampleChords.end(), chord);
  if (behind == m_sampleChords.begin()) return 0.0;
  if (behind == m_sampleChords.end()) return 1.0;
  const auto i = static_cast<std::size_t>(behind - m_sampleChords.begin());
  const double share =
      (chord - m_sampleChords[i - 1]) / (m_sampleChords[i] - m_sampleChords[i - 1]);
  return m_sampleArcs[i - 1] + (m_sampleArcs[i] - m_sampleArcs[i - 1]) * share;
}

double CCurve::Closest(const Vector& point) {
  if (State() != CurveState::kSampled) return 0.0;
  const auto distance = [&](double chord) {
    Vector at;
    return EvaluateChord(chord, at) ? (at - point).lengthSquared()
                                    : std::numeric_limits<double>::infinity();
  };
  std::size_t best = 0;
  double least = std::numeric_limits<double>::infinity();
  for (std::size_t i = 0; i < m_sampleChords.size(); ++i) {
    const double here = distance(m_sampleChords[i]);
    if (here < least) least = here, best = i;
  }
  // Between the neighbours of the closest sample the distance has one minimum.
  const double low = m_sampleChords[best > 0 ? best - 1 : 0];
  const double high = m_sampleChords[std::min(best + 1, m_sampleChords.size() - 1)];
  const double middle = util::leastBetween(low, high, kRefinements, distance);
  return distance(middle) < least ? ArcAt(middle) : m_sampleArcs[best];
}

}  // namespace orv::rws::addon
