#include "app/session/anyhost/InputFile.h"

#include <algorithm>
#include <cmath>

#include "app/rigwright/Failure.h"
#include "app/rigwright/Program.h"
#include "app/rigwright/SceneJob.h"
#include "core/Instance.h"
#include "unidevice/Property.h"
#include "util/NumberText.h"

namespace orv::app {

using rws::core::Instance;

namespace {

std::string keyOf(const Instance& rig, const unidevice::Property& input) {
  return rig.GetInstanceName() + ":" + input.name;
}

/// No control gives a value beyond 1, so one in a file is a slip more often than not; it is taken.
void warnOfLargeValues(const unidevice::RecordedInput& input, const std::string& path,
                       Output& out) {
  for (const auto& column : input.columns) {
    const auto& samples = column.track.samples;
    const auto largest = std::max_element(
        samples.begin(), samples.end(),
        [](const auto& a, const auto& b) { return std::abs(a.value) < std::abs(b.value); });
    if (largest == samples.end() || std::abs(largest->value) <= 1.0) continue;
    out.warn(path + ": " + column.name + " is " + util::shortText(largest->value) + " at " +
             util::shortText(largest->time) +
             " s, and a control gives -1 to 1; it is taken as it stands");
  }
}

}  // namespace

InputFile::InputFile(SceneJob& job, const std::string& path) : m_path(path) {
  const auto resolve = [&job](const std::string& name) {
    unidevice::RecordedInput::Resolution result;
    Instance* rig = nullptr;
    if (const unidevice::Property* input = job.findInput(name, rig, result.why)) {
      result.known = true;
      result.key = keyOf(*rig, *input);
    }
    return result;
  };
  std::string error;
  if (!m_input.load(path, resolve, error)) throw Failure("", error);
  for (const auto& column : m_input.columns) {
    Target target;
    std::string ignored;
    target.input = job.findInput(column.key, target.rig, ignored);
    m_targets.push_back(target);
  }
  warnOfLargeValues(m_input, path, job.program().output());
}

void InputFile::putIntoTracks() const {
  for (std::size_t i = 0; i < m_targets.size(); ++i) {
    Instance& rig = *m_targets[i].rig;
    const auto& entries = rig.GetProperties().entries;
    for (std::size_t k = 0; k < entries.size(); ++k)
      if (entries[k].second == m_targets[i].input)
        rig.SetTrack(static_cast<int>(k), m_input.columns[i].track);
  }
}

unidevice::RecordedInput recordedInputs(const std::vector<Instance*>& rigs) {
  unidevice::RecordedInput result;
  for (Instance* rig : rigs) {
    const auto& entries = rig->GetProperties().entries;
    const auto& tracks = rig->GetTracks();
    for (std::size_t i = 0; i < entries.size() && i < tracks.size(); ++i) {
      if (tracks[i].samples.empty()) continue;
      const std::string name = keyOf(*rig, *entries[i].second);
      result.columns.push_back({name, name, tracks[i]});
    }
  }
  return result;
}

}  // namespace orv::app
