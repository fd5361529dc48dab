// Pictures of a sweep.
#pragma once

#include <string>
#include <vector>

namespace orv::app {

struct SweepPlan;
struct SweepRow;

/// All paths from above in one picture, coloured by the values of the axis that has the most; PNG.
/// Empty when the encoder failed. Needs a QGuiApplication, as the others do.
std::string DrawSweepPaths(const SweepPlan& plan, const std::vector<SweepRow>& rows);

/// Sheets that all rows need.
int SweepSheetCount(const std::vector<SweepRow>& rows);
/// A contact sheet: a cell a row with its path, all at one scale, its values and its measures. What
/// was not picked is grey.
std::string DrawSweepSheet(const SweepPlan& plan, const std::vector<SweepRow>& rows, int sheet);

}  // namespace orv::app
