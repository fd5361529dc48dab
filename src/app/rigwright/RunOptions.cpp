#include "app/rigwright/RunOptions.h"

#include <nlohmann/json.hpp>

#include "adaptor/headless/FrameRate.h"
#include "adaptor/headless/Scene.h"
#include "app/rigwright/Failure.h"
#include "app/rigwright/Program.h"
#include "app/rigwright/SceneJob.h"
#include "app/rigwright/Texts.h"
#include "app/session/SceneRange.h"
#include "core/CoreImplementation.h"
#include "util/NumberText.h"

namespace orv::app {

namespace headless = rws::adaptor::headless;

std::vector<rws::core::InstanceReference*> RowsToRun(SceneJob& job,
                                                     const std::vector<std::string>& names) {
  if (names.empty() && job.GetCore().List(true).empty())
    throw Failure(job.GetPath(), "no rig takes part in takes", "check one with rigwright check");
  std::vector<rws::core::InstanceReference*> rows;
  for (const std::string& name : names) rows.push_back(&job.FindRow(name));
  return rows;
}

std::vector<rws::core::Instance*> RigsNamed(SceneJob& job, const std::string& name) {
  if (name.empty()) return job.GetCore().List(false);
  return {&job.FindRig(name)};
}

void RequireFrameNumbers(const TimeSpan& span, double frameRate, const std::string& what,
                         const std::string& hint) {
  const std::string wrong = CheckFrameNumbers(span, frameRate);
  if (!wrong.empty()) throw Failure(what, wrong, hint);
}

TimeSpan SpanOf(const headless::Scene& scene, const std::string& range) {
  TimeSpan span = PlaybackRange(scene);
  if (!range.empty()) ParseRange(range, span.from, span.to);
  if (span.to < span.from) {
    throw Failure("--range",
                  "the end, " + util::shortText(span.to) + " s, lies before the start, " +
                      util::shortText(span.from) + " s",
                  "give both, as a:b");
  }
  RequireFrameNumbers(span, scene.GetFrameRate(), range.empty() ? "the playback range" : "--range",
                      range.empty() ? "give a --range" : "give a range nearer to 0");
  return span;
}

void TellRange(SceneJob& job, const TimeSpan& before) {
  const TimeSpan now = PlaybackRange(job.GetScene());
  Output& out = job.GetProgram().GetOutput();
  out.GetObject()["playbackRange"] = {now.from, now.to};
  if (!(now == before))
    out.Note("the playback range is now " + RangeText(now) + ", it was " + RangeText(before));
}

CLI::Option* AddFrameRate(CLI::App& verb, std::optional<double>& rate) {
  const auto read = [&rate](const std::string& text) {
    double number = 0.0;
    if (!headless::ParseFrameRate(text, number))
      throw CLI::ValidationError("--fps", "\"" + text + "\" is no rate such as 25 or 30000/1001");
    const std::string wrong = MustBeFrom(number, 1e-3, 1e6);
    if (!wrong.empty()) throw CLI::ValidationError("--fps", text + " " + wrong);
    rate = number;
  };
  return verb
      .add_option_function<std::string>("--fps", read,
                                        "New frame rate of the scene, such as 24 or 30000/1001")
      ->type_name("RATE");
}

void ChangeTiming(SceneJob& job, const TimeSpan& range, std::optional<double> rate) {
  if (!SetTiming(job.GetSession(), range, rate))
    throw Failure(job.GetPath(), RangeText(range) + " can't be its playback range");
}

void WarnOfRate(SceneJob& job, double rate) {
  const double before = job.GetScene().GetFrameRate();
  if (before == rate || !HasKeysOffTheGrid(job.GetScene(), rate)) return;
  job.GetProgram().GetOutput().Warn("the scene ran at " + headless::FrameRateText(before) +
                                    " frames per second: keys keep their times, and no longer "
                                    "fall on frames of " +
                                    headless::FrameRateText(rate));
}

void RequireRigs(SceneJob& job) {
  if (!job.GetCore().List(false).empty()) return;
  throw Failure(job.GetPath(), "the scene has no rig to step", "create one with rigwright add");
}

}  // namespace orv::app
