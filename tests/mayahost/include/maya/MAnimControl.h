// Time and playback.
#pragma once
#include <maya/MFnAnimCurve.h>
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
  static bool isScrubbing();
  static double playbackSpeed();
  static MStatus setPlaybackSpeed(double speed);
  static double playbackBy();
  static MStatus setPlaybackBy(double by);
  static PlaybackMode playbackMode();
  static MStatus setPlaybackMode(PlaybackMode mode);
  static PlaybackViewMode viewMode();
  static MStatus setViewMode(PlaybackViewMode mode);
  static MFnAnimCurve::TangentType globalInTangentType(MStatus* status = NULL);
  static MStatus setGlobalInTangentType(const MFnAnimCurve::TangentType& type);
  static MFnAnimCurve::TangentType globalOutTangentType(MStatus* status = NULL);
  static MStatus setGlobalOutTangentType(const MFnAnimCurve::TangentType& type);
  static bool weightedTangents(MStatus* status = NULL);
  static MStatus setWeightedTangents(bool weighted);
  static MStatus playForward();
  static MStatus playBackward() { return playForward(); }
  static MStatus stop();
  static bool autoKeyMode();
  static MStatus setAutoKeyMode(bool on);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
