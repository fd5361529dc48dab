#include "app/session/takes/RigSettings.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "adaptor/headless/HeadlessNode.h"
#include "app/session/takes/Surroundings.h"
#include "core/config/ConfigElement.h"
#include "core/config/InputUndo.h"
#include "core/config/ParameterUndo.h"
#include "core/host/AdaptorInterface.h"
#include "core/instances/Instance.h"
#include "core/instances/InstanceHost.h"
#include "core/instances/RecordKeys.h"
#include "core/tools/Tool.h"
#include "unidevice/Property.h"
#include "util/NumberText.h"
#include "util/xml/Tag.h"

namespace orv::app {

namespace record = rws::core::record;
using rws::core::Instance;

namespace {

std::vector<KeptParameter> ParametersOf(const Instance& rig) {
  std::vector<KeptParameter> parameters;
  for (const auto& value : rws::core::ParameterState(rig).values)
    if (!rig.GetConfig().Find(value.element)->IsReadOnly())
      parameters.push_back({value.element, value.number, value.text});
  return parameters;
}

std::string BindingsOf(Instance& rig) {
  util::xml::Tag profile(record::kProfile);
  for (int i = 0; i < rig.GetProperties().count(); ++i) {
    util::xml::Tag tag(record::kProperty);
    unidevice::Property& property = *rig.GetProperties().property(i);
    // What is bound for a while, such as a file that is played, is no mapping of the user's.
    unidevice::Control* const bound = std::exchange(property.control, nullptr);
    property.save(tag);
    property.control = bound;
    profile.emplaceChild(std::move(tag));
  }
  return profile.toText("", "");
}

/// Whether a live spinner turns the parameter, and it stands where the latest run left it.
bool IsTurned(const Instance& rig, const KeptParameter& kept, double now) {
  for (const auto& span : rig.GetLiveSpinnerSpans())
    if (span.elementId == kept.element && span.start == kept.number && span.end == now) return true;
  return false;
}

std::string TextOf(const KeptParameter& parameter) {
  return parameter.text.empty() ? util::shortText(parameter.number) : "\"" + parameter.text + "\"";
}

std::vector<std::string> ChangedParameters(const KeptRig& kept, const Instance& rig) {
  std::vector<std::string> changed;
  for (const KeptParameter& now : ParametersOf(rig)) {
    for (const KeptParameter& before : kept.parameters) {
      if (before.element != now.element || before == now || IsTurned(rig, before, now.number))
        continue;
      changed.push_back(rig.GetConfig().Find(now.element)->GetLabel() + " is " + TextOf(now) +
                        " and was " + TextOf(before));
    }
  }
  return changed;
}

std::vector<std::string> ChangedSurfaces(const KeptRig& kept, const std::vector<KeptSurface>& now) {
  const auto hashIn = [](const std::vector<KeptSurface>& list, const std::string& node) {
    const auto found = std::find_if(list.begin(), list.end(),
                                    [&node](const auto& each) { return each.node == node; });
    return found == list.end() ? std::string() : found->hash;
  };
  std::vector<std::string> changed;
  for (const KeptSurface& surface : now) {
    const std::string before = hashIn(kept.surfaces, surface.node);
    if (before.empty()) changed.push_back("it hangs on " + surface.node + " and did not");
    if (!before.empty() && before != surface.hash)
      changed.push_back("what it stands on or reads, " + surface.node + ", has changed");
  }
  for (const KeptSurface& surface : kept.surfaces)
    if (hashIn(now, surface.node).empty())
      changed.push_back("it hung on " + surface.node + " and does not");
  return changed;
}

}  // namespace

double FirstOf(Instance& rig) {
  double first = kForever;
  for (const auto& track : rig.GetTracks())
    if (!track.samples.empty()) first = std::min(first, track.samples.front().time);
  for (rws::core::CoreNode* each : rig.GetNodes()) {
    const auto* node = static_cast<rws::adaptor::headless::HeadlessNode*>(each)->GetSceneNode();
    if (!node) continue;
    for (const auto& channel : node->GetAnimation().channels)
      if (channel && !channel->IsEmpty()) first = std::min(first, channel->GetTimes().front());
  }
  return first;
}

KeptRig SettingsOf(Instance& rig, Surroundings& surroundings) {
  KeptRig kept;
  kept.name = rig.GetInstanceName();
  kept.kind = rig.GetTool()->GetDisplayId();
  kept.simulation = rig.GetTool()->GetSimulationVersion();
  kept.profile = rig.GetCurrentProfile();
  kept.parameters = ParametersOf(rig);
  kept.bindings = BindingsOf(rig);
  kept.surfaces = surroundings.Of(rig);
  return kept;
}

void PutBindings(Instance& rig, const std::string& bindings) {
  util::xml::Tag profile("");
  if (BindingsOf(rig) == bindings || profile.loadText(bindings) != 0) return;
  std::vector<int> all;
  for (int i = 0; i < rig.GetProperties().count(); ++i) all.push_back(i);
  rig.GetHost().GetAdaptor()->PushUndo(new rws::core::InputUndo(rig, all));
  for (const util::xml::Element* tag : profile.children)
    if (auto* property = rig.GetProperties().find(tag->attribute(record::kName)))
      property->load(*tag);
  rig.RebindInputs();
}

void PutParameters(Instance& rig, const KeptRig& kept) {
  auto before = std::make_shared<rws::core::ParameterState>(rig);
  rws::core::ParameterState wanted;
  wanted.profile = kept.profile;
  for (const KeptParameter& parameter : kept.parameters) {
    const auto* element = rig.GetConfig().Find(parameter.element);
    if (!element || !element->HasValue()) continue;
    wanted.values.emplace_back(*element);
    wanted.values.back().number = parameter.number;
    wanted.values.back().text = parameter.text;
  }
  rig.GetHost().GetAdaptor()->PushUndo(new rws::core::ParameterUndo(rig, before));
  wanted.WriteTo(rig);
  before->KeepChanged(rig);
}

void PutInputs(Instance& rig, const KeptRig& kept, double start) {
  for (int i = 0; i < rig.GetProperties().count(); ++i) {
    const auto index = static_cast<std::size_t>(i);
    util::AVar_Linear<double> track;
    if (index < rig.GetTracks().size()) track = rig.GetTracks()[index];
    track.cutFrom(start);
    for (const KeptInput& input : kept.inputs)
      if (input.name == rig.GetProperties().property(i)->name)
        for (const auto& sample : input.track.samples) track.set(sample.time, sample.value);
    rig.SetTrack(i, std::move(track));
  }
}

std::vector<KeptInput> InputsOf(Instance& rig, double start) {
  std::vector<KeptInput> inputs;
  for (int i = 0; i < rig.GetProperties().count(); ++i) {
    const auto index = static_cast<std::size_t>(i);
    if (index >= rig.GetTracks().size()) break;
    KeptInput input{rig.GetProperties().property(i)->name, {}};
    for (const auto& sample : rig.GetTracks()[index].samples)
      if (sample.time >= start) input.track.samples.push_back(sample);
    if (!input.track.samples.empty()) inputs.push_back(std::move(input));
  }
  return inputs;
}

std::vector<std::string> DifferencesFrom(const KeptRig& kept, Instance& rig,
                                         Surroundings& surroundings) {
  std::vector<std::string> changed = ChangedParameters(kept, rig);
  if (rig.GetCurrentProfile() != kept.profile && !changed.empty())
    changed.insert(changed.begin(), "the profile is \"" + rig.GetCurrentProfile() +
                                        "\" and was \"" + kept.profile + "\"");
  const int simulation = rig.GetTool()->GetSimulationVersion();
  if (kept.simulation != 0 && kept.simulation != simulation)
    changed.push_back("the simulation of " + kept.kind + " has changed since (version " +
                      std::to_string(kept.simulation) + ", now " + std::to_string(simulation) +
                      ")");
  if (BindingsOf(rig) != kept.bindings)
    changed.push_back("its inputs are mapped, multiplied or bent otherwise");
  for (std::string& text : ChangedSurfaces(kept, surroundings.Of(rig)))
    changed.push_back(std::move(text));
  for (std::string& text : changed) text = rig.GetInstanceName() + ": " + text;
  return changed;
}

}  // namespace orv::app
