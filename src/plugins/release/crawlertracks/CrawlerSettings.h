// What a user sets on a crawler and a profile saves.
#pragma once

#include <vector>

#include "plugins/release/crawlertracks/BeltWorld.h"

namespace orv::rws::addon {

/// Most steps of a track, and the widest gap between two (units of the Frame).
inline constexpr int kMostSteps = 1000;
inline constexpr double kMostGap = 10.0;

/// What a user edits and a profile saves.
struct CrawlerSettings : BeltTuning {
  double gravity = 40.0;         ///< units of the Frame per s², against the GravityDirection's Z
  int subFrames = 10;            ///< extra steps within a frame
  bool setSubFrames = false;     ///< keys on sub-frames too
  double rotationInput = 5.0;    ///< of the driveWheel at full input (rad/s)
  int nrSteps = 0;               ///< of the track
  double trackGap = 0.0;         ///< between two steps (units of the Frame)
  double trackDensity = 1000.0;  ///< mass of a step by the volume of its box, in units of the Frame
  // Of the next wheel to be added.
  bool staticWheel = false;  ///< does not turn with the driveWheel
  bool innerWheel = true;    ///< the belt runs round it; off: along its outside
  bool trackWheel = true;    ///< the belt's line is laid round it

  bool hideHelpers = false;                 ///< TemplateStep, GravityDirection and the text
  bool hideHelpersDuringRecording = false;  ///< the same ones, in takes and resimulations
  bool hideTrackText = false;               ///< the text that tells where forward is

  /// The part of the save data that holds these boxes.
  static constexpr int kSavedBoxes = 1;
};

struct Parameter;
std::vector<Parameter> ParametersOf(CrawlerSettings& settings);

}  // namespace orv::rws::addon
