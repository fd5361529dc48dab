// Which frame is due when a scene is played.
#pragma once

namespace orv::app::timeline {

struct PlaySettings {
  double rate = 25.0;  ///< frames per second
  int first = 0, last = 0;
  bool backwards = false;
  bool loop = false;
  /// None is dropped, however long each takes to be drawn; else real time rules.
  bool everyFrame = false;
};

/// Works out frames by the times of a steady clock, which are given in seconds of any origin. A
/// frame lasts until the next one; without a loop it is over when the last one is due.
class PlayClock {
 public:
  struct Due {
    int frame = 0;
    bool isOver = false;
  };

  /// From `frame`; from the range's other end where that lies outside the range or at its end.
  void Begin(double now, int frame, const PlaySettings& settings);
  Due Look(double now);
  /// Place in the range with fractions of frames, for what goes along with the pictures.
  double GetPlace(double now) const;
  /// From `now` to the next frame (s).
  double GetWait(double now) const;
  const PlaySettings& GetSettings() const { return m_settings; }

 private:
  double CountFrames(double now) const;
  double PlaceOf(double count) const;
  int GetLength() const { return m_settings.last - m_settings.first + 1; }

  PlaySettings m_settings;
  double m_begun = 0.0;  ///< when frame `m_start` was due
  int m_start = 0;
  long m_shown = 0;  ///< frames since m_start
};

}  // namespace orv::app::timeline
