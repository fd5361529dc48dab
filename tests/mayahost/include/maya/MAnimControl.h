// Time and playback.
#pragma once
#include <maya/MTime.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MAnimControl {
 public:
  enum PlaybackMode { kPlaybackOnce, kPlaybackLoop, kPlaybackOscillate };
  enum PlaybackViewMode { kPlaybackViewAll, kPlaybackViewActive };
  static MTime currentTime();
  static MStatus setCurrentTime(const MTime& time);
  static MTime minTime();
  static MTime maxTime();
  static MTime animationStartTime();
  static MTime animationEndTime();
  static MStatus setMinTime(MTime time);
  static MStatus setMaxTime(MTime time);
  static MStatus setMinMaxTime(MTime min, MTime max);
  static MStatus setAnimationStartTime(MTime time);
  static MStatus setAnimationEndTime(MTime time);
  static MStatus setAnimationStartEndTime(MTime start, MTime end);
  static bool isPlaying();
  static MStatus playForward();
  static MStatus playBackward() { return playForward(); }
  static MStatus stop();
  static bool autoKeyMode();
  static MStatus setAutoKeyMode(bool on);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
