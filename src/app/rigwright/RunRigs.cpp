#include "app/rigwright/RunRigs.h"

#include <cmath>

#include "adaptor/headless/Scene.h"
#include "app/rigwright/Failure.h"
#include "app/rigwright/SceneJob.h"
#include "app/rigwright/Texts.h"
#include "core/CoreImplementation.h"
#include "core/Instance.h"
#include "core/InstanceReference.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

/// Index of a frame is a whole number of 32 bits in the engine.
constexpr double kMostFrames = 1e9;

}  // namespace

OnlyRigs::OnlyRigs(SceneJob& job, const std::vector<std::string>& names) {
  if (names.empty()) return;
  std::vector<rws::core::InstanceReference*> wanted;
  for (const std::string& name : names) wanted.push_back(&job.row(name));
  for (rws::core::Instance* instance : job.core().List(false)) {
    rws::core::InstanceReference& row = job.row(instance->GetInstanceName());
    m_before.emplace_back(&row, row.checked);
    row.checked = false;
  }
  for (rws::core::InstanceReference* row : wanted) row->checked = true;
}

OnlyRigs::~OnlyRigs() {
  for (const auto& [row, checked] : m_before) row->checked = checked;
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

TimeSpan spanOf(const rws::adaptor::headless::Scene& scene, const std::string& range) {
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

void requireRigs(SceneJob& job) {
  if (!job.core().List(true).empty()) return;
  throw Failure(job.path(), "the scene has no rig to step", "create one with rigwright add");
}

}  // namespace orv::app
