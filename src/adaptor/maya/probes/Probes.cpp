#include <algorithm>

#include "adaptor/maya/probes/Probe.h"

namespace orv::rws::adaptor::maya {

namespace {

/// What is off, by Feature.
constexpr const char* kOffTexts[kFeatureCount] = {
    "Takes and resimulations are off",
    "Rigs can be neither made, cloned nor deleted",
    "Undo does not take our steps back",
    "Rigs are neither saved with scenes nor read from them",
    "The rigs of imported files stay closed",
    "The hot keys of takes are off",
    "There is no shelf",
    "The windows are off",
    "Nodes that come back by undo are not followed",
};

}  // namespace

const std::vector<Probe>& AllProbes() {
  static const std::vector<Probe> list = [] {
    std::vector<Probe> made;
    AddSceneProbes(made);
    AddGraphProbes(made);
    AddKeyProbes(made);
    AddShapeProbes(made);
    AddDetailProbes(made);
    std::sort(made.begin(), made.end(), [](const Probe& a, const Probe& b) { return a.id < b.id; });
    return made;
  }();
  return list;
}

std::vector<ProbeOutcome> RunProbes(const std::set<int>& forced) {
  std::vector<ProbeOutcome> outcomes;
  for (const Probe& probe : AllProbes()) {
    ProbeRun run;
    probe.run(run);
    if (forced.count(probe.id) != 0) run.Check(false, "refuted by hand");
    outcomes.push_back({&probe, run.GetState(), run.GetDetail(), run.GetNotes()});
  }
  return outcomes;
}

std::string RefutedText(const Probe& probe) {
  return std::string(kOffTexts[static_cast<std::size_t>(probe.feature)]) +
         " in this version of Maya: the plug-in relies on that " + probe.belief +
         ", which the self-test found otherwise (probe " + std::to_string(probe.id) +
         "; send its report to Orvel Motion)";
}

void ApplyRefuted(const std::vector<int>& ids) {
  for (const Probe& probe : AllProbes())
    if (std::find(ids.begin(), ids.end(), probe.id) != ids.end())
      Features::instance().SwitchOff(probe.feature, RefutedText(probe));
}

}  // namespace orv::rws::adaptor::maya
