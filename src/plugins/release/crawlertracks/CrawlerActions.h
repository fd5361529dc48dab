// The buttons of a crawler, in the order in which they stand.
#pragma once

namespace orv::rws::addon {

inline constexpr char kAddWheel[] = "Add Wheel";
inline constexpr char kRemoveWheel[] = "Remove Wheel";
inline constexpr char kAddSupportWheel[] = "Add Support Wheel";
inline constexpr char kRemoveSupportWheel[] = "Remove Support Wheel";
inline constexpr char kCalculateSteps[] = "Calculate Number of Steps";
inline constexpr char kCalculateGap[] = "Calculate Gap";
inline constexpr char kCreateTrack[] = "Create Track";
inline constexpr char kRemoveTrack[] = "Remove Track";
inline constexpr char kAddStep[] = "Add Step";
inline constexpr char kRemoveStep[] = "Remove Step";
inline constexpr char kSelectSteps[] = "Select All Steps in Track";

}  // namespace orv::rws::addon
