#include "app/session/anyhost/GroundText.h"

#include <nlohmann/json.hpp>

#include "app/rigwright/Program.h"
#include "app/rigwright/SceneJob.h"
#include "app/rigwright/Texts.h"
#include "core/CoreImplementation.h"
#include "core/Instance.h"
#include "core/interface/CCamera.h"
#include "core/interface/GroundReport.h"

namespace orv::app {

using Json = nlohmann::ordered_json;

Json groundJson(rws::core::Instance& rig) {
  rws::GroundReport report;
  if (rig.GetRig()->Extension(rws::kTellGround, &report, nullptr) <= 0) return {};
  Json json = {{"title", report.title},         {"declaredBy", report.declaredBy},
               {"nodes", report.nodes},         {"meshes", report.meshes},
               {"triangles", report.triangles}, {"stored", report.isStored}};
  if (report.meshes == 0) json["otherwise"] = report.otherwise;
  return json;
}

std::string groundText(const Json& ground) {
  if (ground.is_null()) return {};
  const std::string title = ground["title"].get<std::string>() + ": ";
  if (ground.contains("otherwise")) return title + ground["otherwise"].get<std::string>();
  const auto count = [&](const char* key, const std::string& one, const std::string& many) {
    const auto number = ground[key].get<std::int64_t>();
    return std::to_string(number) + " " + (number == 1 ? one : many);
  };
  const std::string what = ground["stored"].get<bool>()
                               ? "the stored copy"
                               : joined(ground["nodes"].get<std::vector<std::string>>());
  return title + what + " (" + count("meshes", "mesh", "meshes") + ", " +
         count("triangles", "triangle", "triangles") + ")";
}

namespace {

Json allGrounds(SceneJob& job) {
  Json all = Json::array();
  for (rws::core::Instance* rig : job.core().List(false)) all.push_back(groundJson(*rig));
  return all;
}

}  // namespace

GroundWatch::GroundWatch(SceneJob& job) : m_job(job), m_before(allGrounds(job).dump()) {}

void GroundWatch::tellChanges(const std::string& node) const {
  const Json before = Json::parse(m_before);
  Json& told = m_job.program().output().object()["grounds"] = Json::array();
  std::size_t i = 0;
  for (rws::core::Instance* rig : m_job.core().List(false)) {
    Json now = groundJson(*rig);
    const Json& was = before[i++];
    if (now.is_null() || (now == was && now["declaredBy"] != node)) continue;
    m_job.program().output().note(rig->GetInstanceName() + ": " + groundText(now));
    now["rig"] = rig->GetInstanceName();
    told.push_back(std::move(now));
  }
}

}  // namespace orv::app
