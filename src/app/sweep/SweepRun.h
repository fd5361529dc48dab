// Simulates the variants of a sweep.
#pragma once

#include <string>

#include "app/sweep/SweepRow.h"

namespace orv::app {

class Monitor;
class SceneSession;
struct SweepAxis;
struct SweepPlan;

/// Gives the scene one value of an axis. Empty, or why it can't be had as it stands.
std::string ApplySweepValue(SceneSession& session, const SweepAxis& axis, const std::string& value);

/// Opens the plan's scene in `session`, makes row `number` of it and simulates it. What the row has
/// comes from the plan and its files alone, so it is the same whoever asks. The session holds the
/// simulated scene afterwards. A row whose values can't be had, or whose run can't begin, tells so
/// as its error; one that was cancelled is told by the monitor.
SweepRow RunSweepRow(SceneSession& session, const SweepPlan& plan, long number,
                     const Monitor& monitor);

}  // namespace orv::app
