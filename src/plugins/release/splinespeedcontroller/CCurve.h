// A smooth curve through control points, run along by arc length.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "util/Vector3.h"

namespace orv::rws::addon {

/// What became of sampling a curve.
enum class CurveState {
  kTooFewPoints,    ///< under two: the first point (or the origin) is all there is
  kSampled,         ///< ready
  kTooManySamples,  ///< the chords differ too much; no table was built
};

/// Cubic Hermite segments through the points, whose tangents scale with the segment and a tension,
/// so that uneven spacing does not overshoot. Points, lengths and results are in the curve's own
/// space (m). Two parameters run along it, both 0 to 1: the chord parameter (share of the summed
/// chords) and the arc parameter u (share of the arc length), mapped to each other by a table of
/// samples that is rebuilt at the first question after a change. A lookup is logarithmic in the
/// samples. Copying copies the tables.
class CCurve {
 public:
  using Vector = util::Vector3<double>;

  /// Samples that a curve may have at most; one that needs more is refused.
  static constexpr std::uint32_t kMostSamples = 1000000;
  /// Samples per longest chord over shortest; raising it evens out the speed and costs memory.
  static constexpr double kDensity = 1000.0;

  explicit CCurve(double density = kDensity) : m_density(density) {}
  virtual ~CCurve() = default;
  CCurve(const CCurve&) = default;
  CCurve& operator=(const CCurve&) = default;

  bool IsClosed() const { return m_closed; }
  void SetClosed(bool closed);
  bool IsEndStraight() const { return m_endStraight; }
  void SetEndStraight(bool straight);

  void AddPoint(const Vector& point, double tensionIn, double tensionOut);
  /// Ahead of point `index`; at the end when there is none.
  void InsertPoint(std::size_t index, const Vector& point, double tensionIn, double tensionOut);
  void Clear();
  /// A copy without the tables.
  CCurve Outline() const;
  const std::vector<Vector>& Points() const { return m_points; }
  const std::vector<double>& TensionsIn() const { return m_tensionsIn; }
  const std::vector<double>& TensionsOut() const { return m_tensionsOut; }

  /// Builds the tables if they are out of date.
  CurveState State();
  std::uint32_t SampleCount();
  /// The first of the two points that lie closest to each other.
  std::size_t ShortestChord();

  /// The point at a chord parameter; false, with `out` as it was, where there is none.
  bool EvaluateChord(double chord, Vector& out);
  Vector Position(double u);
  void PositionAndTangent(double u, Vector& position, Vector& tangent);
  /// Curvature is the change of the unit tangent per unit of u, halved, towards the inside.
  void PositionTangentAndCurvature(double u, Vector& position, Vector& tangent, Vector& curvature);
  /// Chord parameter of the arc parameter.
  double ChordAt(double u);
  double Length();
  /// Arc parameter of control point `index`; one more point than there are is the curve's end.
  double WaypointPosition(std::size_t index);
  /// `count` points at equal arcs; of an open curve the last one is its end.
  std::vector<Vector> Sample(int count);
  /// Arc parameter of the point of the curve that is closest to `point`.
  double Closest(const Vector& point);

 protected:
  /// Point at t in 0 to 1 between p1 and p2. `duplicateEnds` carries the curve straight on where p0
  /// or p3 is a copy of its neighbour.
  virtual Vector EvaluateSegment(double t, Vector p0, const Vector& p1, const Vector& p2, Vector p3,
                                 double tensionOut1, double tensionIn2, bool duplicateEnds) const;

 private:
  std::size_t SegmentAt(double chord) const;
  double LocalT(std::size_t segment, double chord) const;
  std::size_t Neighbour(std::ptrdiff_t index) const;
  Vector EvaluateAt(std::size_t segment, double t) const;
  double ArcAt(double chord) const;
  void Rebuild();
  void MeasureChords();
  /// Samples that the curve needs; above kMostSamples, or no number, where it can't have them.
  double WantedSamples() const;
  void TakeSamples(std::uint32_t count);

  bool m_closed = false;
  bool m_endStraight = false;
  std::vector<Vector> m_points;
  std::vector<double> m_tensionsIn, m_tensionsOut;
  double m_density;
  bool m_dirty = true;

  // The tables.
  CurveState m_state = CurveState::kTooFewPoints;
  std::vector<double> m_chords;               ///< point to point, last to first when closed
  std::vector<double> m_ends;                 ///< chord parameter at which each segment ends
  double m_chordSum = 0.0;                    ///< m
  double m_length = 0.0;                      ///< of the line through the samples (m)
  std::vector<double> m_sampleChords;         ///< chord parameter of each sample
  std::vector<double> m_sampleArcs;           ///< arc parameter of each sample
  std::vector<std::uint32_t> m_pointSamples;  ///< the sample at which each control point falls
  std::vector<double> m_pointArcs;            ///< arc parameter of each control point
};

}  // namespace orv::rws::addon
