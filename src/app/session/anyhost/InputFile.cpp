#include "app/session/anyhost/InputFile.h"

#include <algorithm>
#include <cmath>

#include "app/session/anyhost/Names.h"
#include "core/CoreImplementation.h"
#include "core/host/AdaptorInterface.h"
#include "core/instances/Instance.h"
#include "core/instances/InstanceHost.h"
#include "core/take/TakeUndo.h"
#include "unidevice/Property.h"
#include "util/NumberText.h"

namespace orv::app {

using rws::core::Instance;

namespace {

std::string KeyOf(const Instance& rig, const unidevice::Property& input) {
  return rig.GetInstanceName() + ":" + input.name;
}

}  // namespace

std::string FoundInput::Name() const {
  return KeyOf(*rig, *input);
}

FoundInput FindInput(rws::core::CoreImplementation& core, const std::string& text) {
  std::vector<std::string> known;
  std::vector<Instance*> holders;
  for (Instance* rig : core.List(false)) {
    const std::string prefix = rig->GetInstanceName() + ":";
    for (const auto& [name, property] : rig->GetProperties().entries) {
      known.push_back(prefix + name);
      if (known.back() == text) return {rig, property, {}};
      if (name == text) holders.push_back(rig);
    }
  }
  if (holders.size() == 1)
    return {holders.front(), holders.front()->GetProperties().find(text), {}};
  if (holders.empty())
    return {nullptr, nullptr, "no rig has such an input; " + HintFor(text, known, "inputs")};
  return {nullptr, nullptr,
          "several rigs have this input; write " + holders.front()->GetInstanceName() + ":" + text +
              ", for example"};
}

std::string InputFile::Load(rws::core::CoreImplementation& core, const std::string& path) {
  const auto resolve = [&core](const std::string& name) {
    const FoundInput found = FindInput(core, name);
    return unidevice::RecordedInput::Resolution{
        found.input != nullptr, found.input ? found.Name() : std::string(), found.why};
  };
  std::string error;
  if (!m_input.load(path, resolve, error)) return error;
  m_targets.clear();
  for (const auto& column : m_input.columns) m_targets.push_back(FindInput(core, column.key));
  WarnOfLargeValues(path);
  return {};
}

const util::AVar_Linear<double>* TrackOf(const FoundInput& input) {
  const auto& entries = input.rig->GetProperties().entries;
  const auto& tracks = input.rig->GetTracks();
  for (std::size_t i = 0; i < std::min(entries.size(), tracks.size()); ++i)
    if (entries[i].second == input.input) return &tracks[i];
  return nullptr;
}

void ReplaceTrack(const FoundInput& input, util::AVar_Linear<double> track) {
  Instance& rig = *input.rig;
  rig.GetHost().GetAdaptor()->PushUndo(
      new rws::core::TakeUndo(rig, rws::core::TakeUndo::Of::kTracks));
  const auto& entries = rig.GetProperties().entries;
  for (std::size_t i = 0; i < entries.size(); ++i)
    if (entries[i].second == input.input) rig.SetTrack(static_cast<int>(i), std::move(track));
}

/// No control gives a value beyond 1, so one in a file is a slip more often than not; it is taken.
void InputFile::WarnOfLargeValues(const std::string& path) {
  m_warnings.clear();
  for (const auto& column : m_input.columns) {
    const auto& samples = column.track.samples;
    const auto largest = std::max_element(
        samples.begin(), samples.end(),
        [](const auto& a, const auto& b) { return std::abs(a.value) < std::abs(b.value); });
    if (largest == samples.end() || std::abs(largest->value) <= 1.0) continue;
    m_warnings.push_back(path + ": " + column.name + " is " + util::shortText(largest->value) +
                         " at " + util::shortText(largest->time) +
                         " s, and a control gives -1 to 1; it is taken as it stands");
  }
}

void InputFile::PutIntoTracks() const {
  for (std::size_t i = 0; i < m_targets.size(); ++i)
    ReplaceTrack(m_targets[i], m_input.columns[i].track);
}

unidevice::RecordedInput RecordedInputs(const std::vector<Instance*>& rigs) {
  unidevice::RecordedInput result;
  for (Instance* rig : rigs) {
    const auto& entries = rig->GetProperties().entries;
    const auto& tracks = rig->GetTracks();
    for (std::size_t i = 0; i < entries.size() && i < tracks.size(); ++i) {
      if (tracks[i].samples.empty()) continue;
      const std::string name = KeyOf(*rig, *entries[i].second);
      result.columns.push_back({name, name, tracks[i]});
    }
  }
  return result;
}

}  // namespace orv::app
