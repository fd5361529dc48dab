#include "app/session/anyhost/RunRigs.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

#include "adaptor/headless/FrameRate.h"
#include "adaptor/headless/Scene.h"
#include "app/rigwright/Failure.h"
#include "app/rigwright/Program.h"
#include "app/rigwright/SceneJob.h"
#include "app/rigwright/Texts.h"
#include "core/CoreImplementation.h"
#include "core/Instance.h"
#include "core/InstanceReference.h"
#include "util/NumberText.h"

namespace orv::app {

namespace headless = rws::adaptor::headless;

namespace {

/// Index of a frame is a whole number of 32 bits in the engine.
constexpr double kMostFrames = 1e9;

/// Whether some key of the scene stands between the frames.
bool hasKeysOffTheGrid(const headless::Scene& scene) {
  for (const auto* node : scene.nodes()) {
    const auto channels = node->animation().channels;
    for (const auto& channel : channels) {
      if (!channel) continue;
      for (const double time : channel->times())
        if (!headless::standsOnFrame(time, scene.frameRate())) return true;
    }
  }
  return false;
}

}  // namespace

OnlyRigs::OnlyRigs(SceneJob& job, const std::vector<std::string>& names) {
  if (names.empty() && job.core().List(true).empty())
    throw Failure(job.path(), "no rig takes part in takes", "check one with rigwright check");
  if (names.empty()) return;
  std::vector<rws::core::InstanceReference*> wanted;
  for (const std::string& name : names) wanted.push_back(&job.row(name));
  for (rws::core::InstanceReference* row : job.core().GetRows()) {
    m_before.emplace_back(row, row->IsChecked());
    row->SetChecked(row->IsGroup());
  }
  for (rws::core::InstanceReference* row : wanted) row->SetChecked(true);
}

OnlyRigs::~OnlyRigs() {
  for (const auto& [row, checked] : m_before) row->SetChecked(checked);
}

void requireFrameNumbers(const TimeSpan& span, double frameRate, const std::string& what,
                         const std::string& hint) {
  const double time = std::abs(span.from) > std::abs(span.to) ? span.from : span.to;
  if (std::abs(time) * frameRate <= kMostFrames) return;
  throw Failure(what,
                util::shortText(time) + " s at " + util::shortText(frameRate) +
                    " frames/s is beyond the last frame that can be numbered, " +
                    util::shortText(kMostFrames),
                hint);
}

TimeSpan spanOf(const headless::Scene& scene, const std::string& range) {
  TimeSpan span{scene.rangeStart(), scene.rangeEnd()};
  if (!range.empty()) parseRange(range, span.from, span.to);
  if (span.to < span.from) {
    throw Failure("--range",
                  "the end, " + util::shortText(span.to) + " s, lies before the start, " +
                      util::shortText(span.from) + " s",
                  "give both, as a:b");
  }
  requireFrameNumbers(span, scene.frameRate(), range.empty() ? "the playback range" : "--range",
                      range.empty() ? "give a --range" : "give a range nearer to 0");
  return span;
}

namespace {

/// The least span that has all keys and recorded inputs in it, and `span`.
TimeSpan spanWithKeys(SceneJob& job, TimeSpan span) {
  const auto reach = [&span](double first, double last) {
    span = {std::min(span.from, first), std::max(span.to, last)};
  };
  for (const headless::SceneNode* node : job.scene().nodes())
    for (const auto& channel : node->animation().channels)
      if (channel && !channel->times().empty())
        reach(channel->times().front(), channel->times().back());
  for (rws::core::Instance* rig : job.core().List(false))
    for (const auto& track : rig->GetTracks())
      if (!track.samples.empty()) reach(track.samples.front().time, track.samples.back().time);
  return span;
}

void changeRange(SceneJob& job, const TimeSpan& before, const TimeSpan& now) {
  job.scene().setRange(now.from, now.to);
  job.program().output().object()["playbackRange"] = {now.from, now.to};
  if (now.from == before.from && now.to == before.to) return;
  job.program().output().note("the playback range is now " + rangeText(now) + ", it was " +
                              rangeText(before));
}

}  // namespace

void stretchRange(SceneJob& job, const TimeSpan& span) {
  const TimeSpan before{job.scene().rangeStart(), job.scene().rangeEnd()};
  changeRange(job, before, {std::min(before.from, span.from), std::max(before.to, span.to)});
}

void settleRange(SceneJob& job, const TimeSpan& before, const TimeSpan& performed) {
  const TimeSpan keyed = spanWithKeys(job, performed);
  changeRange(job, before,
              {std::min(performed.from, std::max(before.from, keyed.from)),
               std::max(performed.to, std::min(before.to, keyed.to))});
}

CLI::Option* addFrameRate(CLI::App& verb, std::optional<double>& rate) {
  const auto read = [&rate](const std::string& text) {
    double number = 0.0;
    if (!headless::parseFrameRate(text, number))
      throw CLI::ValidationError("--fps", "\"" + text + "\" is no rate such as 25 or 30000/1001");
    const std::string wrong = mustBeFrom(number, 1e-3, 1e6);
    if (!wrong.empty()) throw CLI::ValidationError("--fps", text + " " + wrong);
    rate = number;
  };
  return verb
      .add_option_function<std::string>("--fps", read,
                                        "New frame rate of the scene, such as 24 or 30000/1001")
      ->type_name("RATE");
}

void setFrameRate(SceneJob& job, double rate) {
  const double before = job.scene().frameRate();
  if (!job.scene().setFrameRate(rate))
    throw Failure("--fps", util::shortText(rate) + " is no frame rate");
  if (before == rate || !hasKeysOffTheGrid(job.scene())) return;
  job.program().output().warn("the scene ran at " + headless::frameRateText(before) +
                              " frames per second: keys keep their times, and no longer fall on "
                              "frames of " +
                              headless::frameRateText(rate));
}

std::string timeText(double seconds) {
  return util::shortText(std::round(seconds * 1e6) / 1e6);
}

std::string rangeText(const TimeSpan& span) {
  return timeText(span.from) + " to " + timeText(span.to) + " s";
}

void requireRigs(SceneJob& job) {
  if (!job.core().List(false).empty()) return;
  throw Failure(job.path(), "the scene has no rig to step", "create one with rigwright add");
}

}  // namespace orv::app
