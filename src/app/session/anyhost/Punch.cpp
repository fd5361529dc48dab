#include "app/session/anyhost/Punch.h"

#include <algorithm>
#include <set>

#include "app/session/anyhost/InputFile.h"
#include "app/session/anyhost/Names.h"
#include "core/CoreImplementation.h"
#include "core/host/AdaptorInterface.h"
#include "core/instances/Instance.h"
#include "core/instances/InstanceReference.h"
#include "core/take/TakeUndo.h"
#include "unidevice/Property.h"

namespace orv::app {

using rws::core::CoreImplementation;
using rws::core::Instance;

Punch::Punch(CoreImplementation& core, const RowsToStep& rows, double lastKey)
    : m_core(core), m_rows(rows), m_end(lastKey) {
  for (Instance* rig : core.List(rows.empty())) {
    m_tracks[rig->GetIdentity()] = rig->GetTracks();
    for (const Track& track : rig->GetTracks())
      if (!track.samples.empty()) m_end = std::max(m_end, track.samples.back().time);
  }
}

void Punch::JoinTracks(Instance& rig, const std::vector<Track>& old, const TimeSpan& performed,
                       bool goOn, double blend) {
  m_core.GetAdaptor()->PushUndo(new rws::core::TakeUndo(rig, rws::core::TakeUndo::Of::kTracks));
  for (std::size_t i = 0; i < std::min(old.size(), rig.GetTracks().size()); ++i) {
    // One that the take played, or that nobody had recorded before, is as it should be.
    if (rig.IsPlayed(static_cast<int>(i)) || old[i].samples.empty()) continue;
    Track joined = rig.GetTracks()[i];
    for (auto& sample : joined.samples) {
      if (sample.time <= performed.from || !(blend > 0.0)) continue;
      double near = sample.time - performed.from;
      if (goOn) near = std::min(near, performed.to - sample.time);
      const double share = std::clamp(near / blend, 0.0, 1.0);
      const double before = old[i].value(sample.time);
      if (share < 1.0) sample.value = before + (sample.value - before) * share;
    }
    // A take records nothing at the frame that it begins with, and drops what stood there.
    for (const auto& sample : goOn ? old[i].samples : Track().samples)
      if (sample.time > performed.to || sample.time == performed.from)
        joined.set(sample.time, sample.value);
    // The take's own: a live spinner begins again where the take did.
    rig.GetTracks()[i] = std::move(joined);
  }
}

bool Punch::Join(const TimeSpan& performed, bool goOn, double blend, const Monitor& monitor) {
  const double end = goOn ? std::max(m_end, performed.to) : performed.to;
  // Also where nothing lies behind: the frame that the take begins with has lost what it played.
  if (!goOn && !(blend > 0.0)) return false;
  for (Instance* rig : m_core.List(m_rows.empty())) {
    const auto found = m_tracks.find(rig->GetIdentity());
    if (found != m_tracks.end()) JoinTracks(*rig, found->second, performed, goOn, blend);
  }
  return Resimulate(m_core, {performed.from, end}, monitor, m_rows).began;
}

std::string ArmInputs(CoreImplementation& core, const std::vector<std::string>& names) {
  std::set<const unidevice::Property*> armed;
  for (const std::string& name : names) {
    const std::size_t star = name.rfind(":*");
    if (star != std::string::npos && star > 0 && star + 2 == name.size()) {
      Instance* rig = core.FindInstance(name.substr(0, star));
      if (!rig) {
        std::vector<std::string> known;
        for (Instance* each : core.List(false)) known.push_back(each->GetInstanceName());
        return "no rig is called " + name.substr(0, star) + "; " +
               HintFor(name.substr(0, star), known, "rigs");
      }
      for (const auto& entry : rig->GetProperties().entries) armed.insert(entry.second);
      continue;
    }
    const FoundInput found = FindInput(core, name);
    if (!found.input) return name + ": " + found.why;
    armed.insert(found.input);
  }
  for (Instance* rig : core.List(false)) {
    std::vector<bool> inputs;
    for (const auto& entry : rig->GetProperties().entries)
      inputs.push_back(armed.count(entry.second) > 0);
    rig->SetArmed(names.empty() ? std::nullopt : std::make_optional(std::move(inputs)));
  }
  return {};
}

}  // namespace orv::app
