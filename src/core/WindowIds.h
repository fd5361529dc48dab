// The numbers by which code finds the components of the core's windows.
#pragma once

namespace orv::rws::core {

/// Documents of the windows, below the data root and below the resources.
inline constexpr char kResimulationLayout[] = "/core/layout/rws_resimulate.xml";
inline constexpr char kProductPopupLayout[] = "/core/layout/rws_popout_product.xml";

/// The main window. A number means what it means within one window: those below hold some of these.
enum MainWindowId : int {
  kResimulateFromFirstFrame = 112,  ///< check box
  kAutoExpandTimeline = 113,        ///< check box
  kLowPolyOnRecord = 114,           ///< check box
  kSlowMotionFactor = 115,          ///< spinner; shows the index, not the factor
  kResimulateButton = 117,
};

/// The dialog of a resimulation.
enum ResimulationWindowId : int {
  kResimulationDialog = 98,
  kStopButton = 99,
  kProgressBar = 100,
  kRangeLabel = 101,
  kFramesDoneLabel = 102,
  kRemainingLabel = 103,
  kCurrentFrameGroup = 104,
  kUpdateViewport = 112,  ///< check box
  kUpdateViewportLabel = 113,
};

}  // namespace orv::rws::core
