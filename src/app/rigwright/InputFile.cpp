#include "app/rigwright/InputFile.h"

#include "app/rigwright/Failure.h"
#include "app/rigwright/SceneJob.h"
#include "core/Instance.h"
#include "unidevice/Property.h"

namespace orv::app {

using rws::core::Instance;

namespace {

std::string keyOf(const Instance& rig, const unidevice::Property& input) {
  return rig.GetInstanceName() + ":" + input.name;
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
