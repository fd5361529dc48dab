// licence.
#include <nlohmann/json.hpp>

#include "app/rigwright/Program.h"
#include "app/rigwright/SceneJob.h"
#include "app/rigwright/Verbs.h"
#include "core/CoreImplementation.h"
#include "core/tools/Tool.h"

namespace orv::app {

namespace {

using rws::core::LicenceState;

void RunLicence(Program& program) {
  SceneJob job(program);
  rws::core::Licensing& licensing = job.GetCore().GetLicensing();
  const LicenceState state = licensing.GetState();
  const rws::core::Licence& licence = licensing.GetLicence();
  auto& object = program.GetOutput().GetObject();
  object["state"] = rws::core::NameOf(state);
  object["file"] = rws::core::Licensing::GetPath();
  object["text"] = licensing.GetText();
  if (!licence.signature.empty()) {
    object["licensee"] = licence.licensee;
    object["id"] = licence.id;
    object["validUntil"] = licence.validUntil;
    object["features"] = licence.features;
  }
  program.GetOutput().Line(licensing.GetText());
  auto& kinds = object["kinds"] = nlohmann::ordered_json::array();
  for (rws::core::Tool* tool : job.GetCore().GetLibrary().GetTools()) {
    const std::string feature = tool->GetLicenceName();
    const bool allowed = licensing.Allows(feature);
    kinds.push_back({{"kind", tool->GetDisplayId()}, {"feature", feature}, {"allowed", allowed}});
    if (!allowed)
      program.GetOutput().Line(tool->GetDisplayId() + ": not allowed (feature \"" + feature +
                               "\")");
  }
}

}  // namespace

void AddLicenceVerb(Program& program) {
  CLI::App& verb =
      program.AddVerb("licence",
                      "Print what the licence allows\n"
                      "Without it a rig opens, shows, exports and saves, and can't be created or "
                      "performed. The licence is the file licence.txt of the data root.",
                      "rigwright licence", RunLicence);
  program.MarkReadOnly(verb);
}

}  // namespace orv::app
