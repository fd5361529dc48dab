// verify.
#include <QString>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "adaptor/headless/Scene.h"
#include "app/rigwright/Failure.h"
#include "app/rigwright/Interrupt.h"
#include "app/rigwright/Program.h"
#include "app/rigwright/ProgressBar.h"
#include "app/rigwright/RunOptions.h"
#include "app/rigwright/SceneJob.h"
#include "app/rigwright/Verbs.h"
#include "app/session/Verification.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

constexpr int kDiffers = 3;  ///< exit status
constexpr std::size_t kMostLines = 8;

struct VerifyOptions {
  std::string scene, range;
};

/// How much it is: four digits.
std::string RoughText(double value) {
  return QString::number(value, 'g', 4).toStdString();
}

std::string TextOf(const KeyDifference& difference) {
  const bool turned = difference.channel == "rotation";
  const bool moved = difference.channel == "translation";
  return QString::number(difference.time, 'g', 9).toStdString() + " s: " + difference.channel +
         " of " + difference.node + " by " + RoughText(difference.amount) +
         (turned  ? " degrees"
          : moved ? " m"
                  : "");
}

nlohmann::ordered_json JsonOf(const KeyDifference& difference) {
  return {{"time", difference.time},
          {"node", difference.node},
          {"channel", difference.channel},
          {"amount", difference.amount}};
}

void Tell(Output& out, const VerifyReport& report) {
  auto& object = out.GetObject();
  object["same"] = report.IsSame();
  object["range"] = {report.span.from, report.span.to};
  object["nodes"] = report.nodes;
  object["keys"] = report.keys;
  object["differing"] = report.differing;
  object["first"] = report.first ? JsonOf(*report.first) : nlohmann::ordered_json();
  object["largest"] = report.largest ? JsonOf(*report.largest) : nlohmann::ordered_json();
  object["growth"] = nlohmann::ordered_json::array();
  for (const KeyDifference& each : report.growth) object["growth"].push_back(JsonOf(each));
  object["missing"] = report.missing;
  object["reasons"] = report.reasons;
  const std::string compared = util::counted(report.keys, "key") + " of " +
                               util::counted(report.nodes, "node") + ", " + RangeText(report.span);
  if (report.IsSame()) {
    out.Line("same: " + compared);
    return;
  }
  out.Line("differs: " + std::to_string(report.differing) + " of " + compared);
  if (report.first) out.Line("first   " + TextOf(*report.first));
  const std::size_t step = (report.growth.size() + kMostLines - 1) / kMostLines;
  for (std::size_t i = 0; i < report.growth.size(); i += step)
    out.Line(std::string(i == 0 ? "grows   " : "        ") + TextOf(report.growth[i]));
  if (report.largest) out.Line("largest " + TextOf(*report.largest));
  for (std::size_t i = 0; i < report.missing.size(); ++i) {
    out.Line(i < kMostLines ? "nodes   " + report.missing[i]
                            : "nodes   and " + std::to_string(report.missing.size() - i) + " more");
    if (i == kMostLines) break;
  }
  for (const std::string& reason : report.reasons) out.Line("why     " + reason);
}

void RunVerify(Program& program, const VerifyOptions& o) {
  SceneJob job(program, o.scene);
  RequireRigs(job);
  std::optional<TimeSpan> span;
  if (!o.range.empty()) span = SpanOf(job.GetScene(), o.range);
  VerifyReport report;
  {
    const ProgressBar bar(program.GetOutput(), "verify");
    report = Verify(job.GetSession(), span, bar.GetMonitor());
  }
  CheckInterrupt();
  if (!report.problem.empty())
    throw Failure(o.scene, report.problem, "simulate it with rigwright resim first");
  Tell(program.GetOutput(), report);
  if (!report.IsSame()) program.SetStatus(kDiffers);
}

}  // namespace

void AddVerifyVerb(Program& program) {
  auto o = std::make_shared<VerifyOptions>();
  CLI::App& verb = program.AddVerb(
      "verify",
      "Tell whether the keys are what inputs and parameters come to: simulates and writes nothing\n"
      "Exit status 0 when they are the same to the bit, 3 when not, 1 when it could not be told.",
      "rigwright verify take.glb", [o](Program& p) { RunVerify(p, *o); });
  program.MarkReadOnly(verb);
  AddScene(verb, o->scene);
  AddRange(verb, o->range, "Seconds from and to (default: from the first input to the last key)");
}

}  // namespace orv::app
