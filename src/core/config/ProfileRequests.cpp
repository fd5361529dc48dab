#include "core/config/ProfileRequests.h"

#include "core/CoreImplementation.h"
#include "core/CoreRequest.h"
#include "core/instances/Instance.h"
#include "core/tools/Tool.h"

namespace orv::rws::core {

namespace {

constexpr char kGone[] = "the rig has gone";

/// The answer of a request that gives a text, empty when it was done.
ProfileResult ResultOf(std::string problem, const std::string& name) {
  if (!problem.empty()) return {ProfileResult::Answer::kRefused, std::move(problem), {}};
  return {ProfileResult::Answer::kDone, {}, {name}};
}

}  // namespace

ProfileRequests::ProfileRequests(CoreImplementation& core, int row, Kind kind)
    : m_core(core), m_row(row), m_kind(kind) {}

Instance* ProfileRequests::FindRig() const {
  return m_core.FindByIdentity(m_row);
}

XMLFileManager& ProfileRequests::ManagerOf(Instance& rig) const {
  Tool& tool = *rig.GetTool();
  if (m_kind == Kind::kInputs) return tool.GetInputProfiles();
  return tool.GetConfigProfiles();
}

std::vector<ProfileRequests::Entry> ProfileRequests::List() const {
  std::vector<Entry> entries;
  Instance* const rig = FindRig();
  if (!rig) return entries;
  const XMLFileManager& profiles = ManagerOf(*rig);
  const InputProfileManager& inputs = rig->GetTool()->GetInputProfiles();
  for (const std::string& name : profiles.GetNames()) {
    const bool isCurrent = m_kind == Kind::kInputs ? inputs.IsHeldBy(name, rig->GetProperties())
                                                   : name == rig->GetCurrentProfile();
    entries.push_back({name, profiles.IsReadOnly(name), profiles.IsFixed(name), isCurrent});
  }
  return entries;
}

// --- the rig ---

ProfileResult ProfileRequests::Load(const std::string& name) {
  Instance* const rig = FindRig();
  if (!rig) return ResultOf(kGone, name);
  if (name.empty()) return ResultOf(kSelectProfile, name);
  if (m_kind == Kind::kInputs) return ResultOf(m_core.LoadInputProfile(*rig, name), name);
  ProfileResult result = ResultOf(m_core.LoadProfile(rig->GetInstanceName(), name), name);
  if (result.Done()) result.message = rig->GetTool()->GetConfigProfiles().GetVersionWarning(name);
  return result;
}

ProfileResult ProfileRequests::LoadFactorySettings() {
  Instance* const rig = FindRig();
  if (!rig) return ResultOf(kGone, kFactorySettings);
  if (m_kind == Kind::kConfig) return Load(kFactorySettings);
  return ResultOf(m_core.LoadInputFactorySettings(*rig), kFactorySettings);
}

// --- files ---

ProfileResult ProfileRequests::Save(bool confirmed) {
  Instance* const rig = FindRig();
  if (!rig) return ResultOf(kGone, {});
  if (m_kind == Kind::kInputs) return ResultOf(kSelectProfile, {});  // which one is not noted
  return SaveAs(rig->GetCurrentProfile(), confirmed);
}

ProfileResult ProfileRequests::SaveAs(const std::string& name, bool confirmed) {
  Instance* const rig = FindRig();
  if (!rig) return ResultOf(kGone, name);
  if (m_kind == Kind::kInputs && m_core.IsResimulating())
    return ResultOf("a resimulation runs, which feeds the inputs", name);
  const CoreRequest request(m_core);
  Tool& tool = *rig->GetTool();
  if (m_kind == Kind::kInputs)
    return tool.GetInputProfiles().Save(name, rig->GetProperties(), confirmed);
  ProfileResult result = tool.GetConfigProfiles().Save(name, rig->GetConfig(), confirmed);
  if (result.Done()) rig->SetCurrentProfile(name);
  return result;
}

ProfileResult ProfileRequests::SaveStartProfile() {
  Instance* const rig = FindRig();
  if (!rig) return ResultOf(kGone, kStartProfile);
  const CoreRequest request(m_core);
  Tool& tool = *rig->GetTool();
  if (m_kind == Kind::kInputs)
    return tool.GetInputProfiles().SaveStartProfile(rig->GetProperties());
  return tool.GetConfigProfiles().SaveStartProfile(rig->GetConfig());
}

ProfileResult ProfileRequests::Rename(const std::string& name, const std::string& newName) {
  Instance* const rig = FindRig();
  if (!rig) return ResultOf(kGone, name);
  const CoreRequest request(m_core);
  ProfileResult result = ManagerOf(*rig).Rename(name, newName);
  if (!result.Done() || m_kind == Kind::kInputs) return result;
  for (Instance* other : rig->GetTool()->GetInstances())
    if (other->GetCurrentProfile() == name) other->SetCurrentProfile(newName);
  return result;
}

ProfileResult ProfileRequests::Delete(const std::string& name, bool confirmed) {
  Instance* const rig = FindRig();
  if (!rig) return ResultOf(kGone, name);
  const CoreRequest request(m_core);
  return ManagerOf(*rig).Delete(name, confirmed);
}

ProfileResult ProfileRequests::Import(const std::string& path, bool confirmed) {
  Instance* const rig = FindRig();
  if (!rig) return ResultOf(kGone, path);
  const CoreRequest request(m_core);
  Tool& tool = *rig->GetTool();
  if (m_kind == Kind::kInputs) return tool.GetInputProfiles().Import(path, confirmed);
  return tool.GetConfigProfiles().Import(path, rig->GetConfig(), confirmed);
}

ProfileResult ProfileRequests::Export(const std::string& name, const std::string& path) const {
  Instance* const rig = FindRig();
  if (!rig) return ResultOf(kGone, name);
  return ManagerOf(*rig).Export(name, path);
}

}  // namespace orv::rws::core
