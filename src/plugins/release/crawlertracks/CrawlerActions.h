// The buttons of a crawler, in the order in which they stand.
#pragma once

namespace orv::rws::addon {

struct CrawlerAction {
  const char* label;
  const char* tooltip;
};

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

inline constexpr CrawlerAction kWheelActions[] = {
    {kAddWheel, "Adds a wheel behind the last one"},
    {kRemoveWheel, "Removes the last wheel"},
    {kAddSupportWheel, "Adds a wheel that carries the track without leading it"},
    {kRemoveSupportWheel, "Removes the last support wheel"}};
inline constexpr CrawlerAction kTrackActions[] = {
    {kCalculateSteps, "Finds how many steps go round the wheels with the gap as it is"},
    {kCalculateGap, "Finds the gap for the steps as many as they are"},
    {kCreateTrack, "Lays the track round the wheels"},
    {kRemoveTrack, "Removes the track"},
    {kAddStep, "Lays the track anew with one step more"},
    {kRemoveStep, "Lays the track anew with one step less"},
    {kSelectSteps, "Selects the nodes of all steps"}};

}  // namespace orv::rws::addon
