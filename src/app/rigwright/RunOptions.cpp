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

std::vector<rws::core::InstanceReference*> rowsToRun(SceneJob& job,
                                                     const std::vector<std::string>& names) {
  if (names.empty() && job.core().List(true).empty())
    throw Failure(job.path(), "no rig takes part in takes", "check one with rigwright check");
  std::vector<rws::core::InstanceReference*> rows;
  for (const std::string& name : names) rows.push_back(&job.row(name));
  return rows;
}

std::vector<rws::core::Instance*> rigsNamed(SceneJob& job, const std::string& name) {
  if (name.empty()) return job.core().List(false);
  return {&job.rig(name)};
}

void requireFrameNumbers(const TimeSpan& span, double frameRate, const std::string& what,
                         const std::string& hint) {
  const std::string wrong = checkFrameNumbers(span, frameRate);
  if (!wrong.empty()) throw Failure(what, wrong, hint);
}

TimeSpan spanOf(const headless::Scene& scene, const std::string& range) {
  TimeSpan span = playbackRange(scene);
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

void tellRange(SceneJob& job, const TimeSpan& before) {
  const TimeSpan now = playbackRange(job.scene());
  Output& out = job.program().output();
  out.object()["playbackRange"] = {now.from, now.to};
  if (!(now == before))
    out.note("the playback range is now " + rangeText(now) + ", it was " + rangeText(before));
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

void requireRigs(SceneJob& job) {
  if (!job.core().List(false).empty()) return;
  throw Failure(job.path(), "the scene has no rig to step", "create one with rigwright add");
}

}  // namespace orv::app
