#include "core/take/RunStatus.h"

#include <algorithm>
#include <cmath>

#include "core/take/RecordManager.h"
#include "util/NumberText.h"

namespace orv::rws::core {

namespace {

std::string TimeText(double seconds) {
  return util::shortText(std::round(seconds * 100.0) / 100.0);
}

util::Sentence TextOf(const RunStatus& status) {
  const std::string frame = std::to_string(status.frame);
  switch (status.state) {
    case RunState::kIdle:
      break;
    case RunState::kCountdown:
      return {"The take begins in %1 s.", {std::to_string(status.secondsLeft)}};
    case RunState::kRecording:
      if (status.framesBehind == 0)
        return {"Recording frame %1 (%2 s).", {frame, TimeText(status.time)}};
      if (status.framesBehind == 1)
        return {"Recording frame %1 (%2 s), one frame behind.", {frame, TimeText(status.time)}};
      return {"Recording frame %1 (%2 s), %3 frames behind.",
              {frame, TimeText(status.time), std::to_string(status.framesBehind)}};
    case RunState::kResimulating:
      return {"Resimulating frame %1 (%2 %).",
              {frame, std::to_string(std::lround(status.progress * 100.0))}};
  }
  return "Ready.";
}

}  // namespace

RunStatus GetRunStatus(const RecordManager& manager) {
  RunStatus status;
  status.state = manager.GetRunState();
  if (status.state != RunState::kIdle) {
    status.time = manager.GetFrameTime();
    status.frame = static_cast<int>(std::lround(status.time / manager.GetFrameDuration()));
  }
  if (status.state == RunState::kCountdown) {
    const double left = manager.GetStartTime() - manager.GetClock();
    status.secondsLeft = std::max(1, static_cast<int>(left + 0.999));
  }
  // The frame that the clock is in is stepped at its beginning.
  if (status.state == RunState::kRecording)
    status.framesBehind = std::max(0, manager.FrameIndex(manager.GetClock()) + 1 - status.frame);
  if (status.state == RunState::kResimulating) status.progress = manager.GetProgress();
  status.text = TextOf(status);
  return status;
}

}  // namespace orv::rws::core
