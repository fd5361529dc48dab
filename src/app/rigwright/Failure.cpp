#include "app/rigwright/Failure.h"

#include "adaptor/headless/Scene.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

std::string ScaleText(const std::string& node, double factor,
                      const rws::adaptor::headless::Scene& scene) {
  util::Vector3<double> scale(1.0, 1.0, 1.0);
  if (const auto* found = scene.Find(node)) scale = found->GetPose().scale;
  scale = scale * factor;
  return util::shortText(scale.x) + "," + util::shortText(scale.y) + "," + util::shortText(scale.z);
}

std::string CommandOf(const Remedy& remedy, const rws::adaptor::headless::Scene& scene) {
  const std::string node = remedy.thing.empty() ? "NODE" : remedy.thing;
  switch (remedy.kind) {
    case Remedy::Kind::kAddRig:
      return "rigwright add SCENE " + remedy.thing + " -o OUT";
    case Remedy::Kind::kHangInWorld:
      return "rigwright parent SCENE " + node + " / -o OUT";
    case Remedy::Kind::kScale:
      return "rigwright place SCENE " + node + " --scale " +
             ScaleText(remedy.thing, remedy.factor, scene) + " -o OUT";
    case Remedy::Kind::kTurnUp:
      return "rigwright place SCENE " + node + " --rotate=-90,0,0 -o OUT";
    case Remedy::Kind::kNone:
      break;
  }
  return {};
}

}  // namespace

std::string TextOf(const Problem& problem, const rws::adaptor::headless::Scene& scene) {
  const std::string command = CommandOf(problem.remedy, scene);
  const std::string both = problem.hint.empty() || command.empty() ? "" : ": ";
  return Failure(problem.what, problem.why, problem.hint + both + command).what();
}

}  // namespace orv::app
