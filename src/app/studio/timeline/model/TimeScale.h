// Where frames lie on a line of pixels.
#pragma once

namespace orv::app::timeline {

/// The part of the time line that is seen. Frames count with fractions, pixels from the left end of
/// the line.
class TimeScale {
 public:
  static constexpr double kMostPixels = 80.0;  ///< a frame, at the nearest
  static constexpr double kMostFrames = 1e7;   ///< on the line, at the farthest

  /// What stands at the left end stays there.
  void SetWidth(double pixels);
  double GetWidth() const { return m_width; }
  double GetPixelsPerFrame() const { return m_scale; }
  /// Frames `from` to `to`, and a little room beside them, fill the line.
  void Show(double from, double to);
  double ToPixel(double frame) const { return (frame - m_first) * m_scale; }
  double ToFrame(double pixel) const { return m_first + pixel / m_scale; }
  int SnapToFrame(double pixel) const;
  /// Above 1 goes nearer. The frame at `pixel` stays where it is.
  void Zoom(double factor, double pixel);
  /// What is seen moves so far to the right.
  void Pan(double pixels);
  /// Moves as far as `frame` needs to be seen; false where it is already.
  bool Reveal(double frame);

  /// Frames from mark to mark and from number to number of a ruler: whole frames, whole seconds
  /// where these are many enough. A number's frame has a mark.
  struct Steps {
    int mark = 1, number = 1;
  };
  Steps ChooseSteps(double rate, double leastMark, double leastNumber) const;

 private:
  void Hold();

  double m_width = 100.0;
  double m_first = 0.0;  ///< frame at the left end
  double m_scale = 1.0;  ///< pixels a frame
};

/// "1:02:03:04": hours where there are some, minutes, seconds, frames, at the whole rate next to
/// `rate`.
struct TimeCode {
  bool negative = false;
  int hours = 0, minutes = 0, seconds = 0, frames = 0;
};
TimeCode TimeCodeOf(int frame, double rate);

}  // namespace orv::app::timeline
