// why.
#include <memory>
#include <nlohmann/json.hpp>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/Scene.h"
#include "app/rigwright/DeviceNotes.h"
#include "app/rigwright/Program.h"
#include "app/rigwright/SceneJob.h"
#include "app/rigwright/Verbs.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "core/take/Diagnosis.h"

namespace orv::app {

namespace {

using rws::core::Reason;

const char* TextOf(Reason::Severity severity) {
  switch (severity) {
    case Reason::Severity::kNote:
      return "note";
    case Reason::Severity::kWarning:
      return "warning";
    case Reason::Severity::kPrevents:
      break;
  }
  return "prevents";
}

void RunWhy(Program& program, const std::string& scene) {
  const DeviceNotes devices(program.GetOutput());
  SceneJob job(program, scene);
  job.GetAdaptor().SetCurrentTime(job.GetScene().GetRangeStart());  // where a take begins
  const rws::core::DevicePolling::Wake awake(job.GetCore());
  auto list = nlohmann::ordered_json::array();
  for (const Reason& reason : rws::core::Diagnose(job.GetCore())) {
    const auto* rig = job.GetCore().FindByIdentity(reason.row);
    list.push_back({{"severity", TextOf(reason.severity)},
                    {"rig", rig ? rig->GetInstanceName() : ""},
                    {"reason", reason.text.filled()},
                    {"remedy", reason.remedy.filled()}});
    program.GetOutput().Line(std::string(TextOf(reason.severity)) + ": " + reason.text.filled() +
                             " " + reason.remedy.filled());
  }
  program.GetOutput().GetObject()["reasons"] = list;
  if (list.empty()) program.GetOutput().Note("nothing that is known keeps the rigs from moving");
}

}  // namespace

void AddWhyVerb(Program& program) {
  auto scene = std::make_shared<std::string>();
  CLI::App& verb = program.AddVerb(
      "why", "Tell why nothing moves in a take: rigs, inputs, devices, ground and range",
      "rigwright why cam.glb", [scene](Program& p) { RunWhy(p, *scene); });
  program.MarkReadOnly(verb);
  AddScene(verb, *scene);
}

}  // namespace orv::app
