// What a user edits through the core: parameters, mappings of inputs, profiles.
#include <cmath>
#include <numeric>
#include <utility>

#include "core/CoreRequest.h"
#include "core/config/ConfigElement.h"
#include "core/config/ConfigProfileManager.h"
#include "core/config/InputUndo.h"
#include "core/config/ParameterEdit.h"
#include "core/config/ParameterUndo.h"
#include "core/config/ResponseEdit.h"
#include "core/host/AdaptorInterface.h"
#include "core/instances/Instance.h"
#include "core/instances/RecordKeys.h"
#include "core/services/CalibrationFile.h"
#include "core/tools/Tool.h"
#include "unidevice/Control.h"
#include "unidevice/ControlFinder.h"
#include "unidevice/DriverManager.h"
#include "unidevice/EmulatedTControl.h"
#include "unidevice/Property.h"

namespace orv::rws::core {

namespace {

constexpr char kNotFinite[] = "a number of the response is not finite";
constexpr char kFedInputs[] = "the run that goes on plays what was recorded of it";

std::vector<int> AllInputs(const Instance& instance) {
  std::vector<int> all(static_cast<std::size_t>(instance.GetProperties().count()));
  std::iota(all.begin(), all.end(), 0);
  return all;
}

std::string NoInput(int input) {
  return "there is no input with the index " + std::to_string(input);
}

bool IsFinite(const InputResponse& response) {
  return std::isfinite(response.multiplier + response.exponent + response.deadzone +
                       response.offset);
}

}  // namespace

// --- parameters ---

ConfigElement* CoreImplementation::FindEditable(Instance& instance, int elementId,
                                                std::string& problem) const {
  ConfigElement* const element = instance.GetConfig().Find(elementId);
  if (!element) {
    problem = "there is no parameter with the id " + std::to_string(elementId);
    return nullptr;
  }
  if (!element->IsReadOnly()) return element;
  problem = "it is a gauge, which the rig computes; it can't be set";
  return nullptr;
}

bool CoreImplementation::EditParameter(Instance& instance, int elementId, const std::string& text,
                                       std::string& problem) {
  ConfigElement* const element = FindEditable(instance, elementId, problem);
  if (!element) return false;
  const CoreRequest request(*this);
  ParameterEdit edit(instance, *element);
  if (!edit.Set(text, problem)) return false;
  edit.End(true);
  return true;
}

bool CoreImplementation::BeginEdit(Instance& instance, int elementId, std::string& problem) {
  ConfigElement* const element = FindEditable(instance, elementId, problem);
  if (!element) return false;
  const CoreRequest request(*this);
  m_edit = std::make_shared<ParameterEdit>(instance, *element);
  return true;
}

bool CoreImplementation::DragEdit(Instance& instance, int elementId, const std::string& text,
                                  std::string& problem) {
  const MessageQueue::Hold hold(m_messages);
  // A box that the rig shows may end it.
  const auto edit = std::dynamic_pointer_cast<ParameterEdit>(m_edit);
  if (edit && edit->Is(instance, elementId)) return edit->Drag(text, problem);
  problem = "no edit of it is open";
  return false;
}

void CoreImplementation::EndEdit() {
  const MessageQueue::Hold hold(m_messages);
  if (const auto edit = std::exchange(m_edit, nullptr)) edit->End();
}

void CoreImplementation::CancelEdit() {
  const MessageQueue::Hold hold(m_messages);
  if (const auto edit = std::exchange(m_edit, nullptr)) edit->Cancel();
}

bool CoreImplementation::PressButton(Instance& instance, int elementId) {
  ConfigElement* element = instance.GetConfig().Find(elementId);
  if (!element || element->GetKind() != ConfigElement::Kind::kButton) return false;
  const CoreRequest request(*this);
  GetAdaptor()->BeginUndoBlock(element->GetLabel());
  m_messages.Tell(ParametersChanged{instance.GetIdentity(), ParametersChanged::kAll});
  const std::shared_ptr<OwnedBlock> steps = IsRecording() ? nullptr : instance.OpenOwnedBlock();
  element->Apply();
  GetAdaptor()->EndUndoBlock();
  return true;
}

std::string CoreImplementation::LoadProfile(const std::string& toolName,
                                            const std::string& profileName) {
  Instance* instance = FindInstance(toolName);
  if (!instance) return "there is no rig \"" + toolName + "\"";
  ConfigProfileManager& profiles = instance->GetTool()->GetConfigProfiles();
  if (!profiles.Find(profileName)) return "there is no profile \"" + profileName + "\"";
  const CoreRequest request(*this);
  const auto before = std::make_shared<ParameterState>(*instance);
  GetAdaptor()->BeginUndoBlock("Load profile");
  GetAdaptor()->PushUndo(new ParameterUndo(*instance, before));
  const std::string problem = profiles.Apply(profileName, *instance);
  before->KeepChanged(*instance);
  GetAdaptor()->EndUndoBlock();
  return problem;
}

// --- what parameters are compared with ---

ProfileValues CoreImplementation::GetBaseValues(const Instance& instance,
                                                ParameterBase base) const {
  const ConfigProfileManager& profiles = instance.GetTool()->GetConfigProfiles();
  std::vector<const util::xml::Element*> documents{profiles.Find(kFactorySettings)};
  if (!documents[0]) return {};
  const util::xml::Tag* const own = profiles.Find(instance.GetCurrentProfile());
  if (base == ParameterBase::kProfile && own) documents.push_back(own);
  return {instance.GetConfig(), documents};
}

std::string CoreImplementation::ResetElements(Instance& instance,
                                              const std::vector<ConfigElement*>& elements,
                                              ParameterBase base, const std::string& what) {
  const ProfileValues values = GetBaseValues(instance, base);
  std::vector<ConfigElement*> changed;
  for (ConfigElement* element : elements)
    if (values.Differs(*element)) changed.push_back(element);
  if (changed.empty()) return {};
  const CoreRequest request(*this);
  const auto before = std::make_shared<ParameterState>(instance);
  GetAdaptor()->BeginUndoBlock("Reset " + what);
  GetAdaptor()->PushUndo(new ParameterUndo(instance, before));
  for (ConfigElement* element : changed) values.WriteTo(*element);
  before->KeepChanged(instance);
  GetAdaptor()->EndUndoBlock();
  instance.RefreshConfig();
  return {};
}

std::string CoreImplementation::ResetParameters(Instance& instance,
                                                const std::vector<int>& elements,
                                                ParameterBase base) {
  std::vector<ConfigElement*> found;
  for (const int id : elements) {
    std::string problem;
    found.push_back(FindEditable(instance, id, problem));
    if (!found.back()) return problem;
  }
  return ResetElements(instance, found, base,
                       found.size() == 1 ? found[0]->GetLabel() : "parameters");
}

std::string CoreImplementation::ResetGroup(Instance& instance, const ConfigElement& group,
                                           ParameterBase base) {
  std::vector<ConfigElement*> inside;
  for (ConfigElement* element : instance.GetConfig().GetElements()) {
    const ConfigElement* around = element->GetParent();
    while (around && around != &group) around = around->GetParent();
    if (around && element->HasValue()) inside.push_back(element);
  }
  return ResetElements(instance, inside, base,
                       group.GetLabel().empty() ? "all parameters" : group.GetLabel());
}

// --- inputs ---

std::string CoreImplementation::ChangeInputs(Instance& instance, const std::string& undoName,
                                             std::vector<int> inputs,
                                             const std::function<void()>& change) {
  const int input = inputs.size() == 1 ? inputs[0] : InputsChanged::kAll;
  if (IsResimulating() || instance.IsFed(inputs.size() == 1 ? input : -1)) return kFedInputs;
  const CoreRequest request(*this);
  GetAdaptor()->BeginUndoBlock(undoName);
  GetAdaptor()->PushUndo(new InputUndo(instance, std::move(inputs)));
  change();
  GetAdaptor()->EndUndoBlock();
  m_messages.Tell(InputsChanged{instance.GetIdentity(), input});
  return {};
}

std::string CoreImplementation::MapInput(Instance& instance, int input,
                                         unidevice::Control* control) {
  unidevice::Property* const property = instance.GetProperties().property(input);
  if (!property) return NoInput(input);
  if (control && (control->flags & property->flags) == 0)
    return property->name + " takes no control of this kind";
  return ChangeInputs(instance, "Map " + property->name, {input},
                      [=] { property->assign(control); });
}

std::string CoreImplementation::MapInputTo(Instance& instance, int input,
                                           const util::xml::Tag& controlTag) {
  unidevice::Property* const property = instance.GetProperties().property(input);
  if (!property) return NoInput(input);
  const auto parts = unidevice::choicesOf(controlTag);
  if (!controlTag.name.empty() && parts.empty()) return "it names no control";
  if (!parts.empty()) {
    std::uint32_t kind = parts[0].kind();
    if (parts.size() > 1) kind = unidevice::EmulatedTControl::pairKind(kind, parts[1].kind());
    if ((kind & property->flags) == 0) return property->name + " takes no control of this kind";
  }
  return ChangeInputs(instance, "Map " + property->name, {input}, [&] {
    util::xml::Tag mapping(record::kProperty);  // without numbers, which stay
    if (!parts.empty()) mapping.addChild(controlTag);
    property->load(mapping);
  });
}

std::string CoreImplementation::SetInputResponse(Instance& instance, int input,
                                                 const InputResponse& response) {
  unidevice::Property* const property = instance.GetProperties().property(input);
  if (!property) return NoInput(input);
  if (!IsFinite(response)) return kNotFinite;
  return ChangeInputs(instance, "Change response of " + property->name, {input},
                      [=] { response.WriteTo(*property); });
}

std::string CoreImplementation::ArmInputs(Instance& instance, const std::vector<bool>& armed) {
  if (GetRunState() != RunState::kIdle) return "a take or resimulation runs";
  const CoreRequest request(*this);
  const auto inputs = static_cast<std::size_t>(instance.GetProperties().count());
  if (armed.size() >= inputs && std::count(armed.begin(), armed.end(), false) == 0)
    instance.SetArmed(std::nullopt);
  else
    instance.SetArmed(armed);
  m_messages.Tell(InputsChanged{instance.GetIdentity(), InputsChanged::kAll});
  return {};
}

std::string CoreImplementation::BeginResponseEdit(Instance& instance, int input) {
  if (!instance.GetProperties().property(input)) return NoInput(input);
  if (IsResimulating() || instance.IsFed(input)) return kFedInputs;
  const CoreRequest request(*this);
  m_edit = std::make_shared<ResponseEdit>(instance, input);
  return {};
}

std::string CoreImplementation::DragResponse(Instance& instance, int input,
                                             const InputResponse& response) {
  const MessageQueue::Hold hold(m_messages);
  const auto edit = std::dynamic_pointer_cast<ResponseEdit>(m_edit);
  if (!edit || !edit->Is(instance, input)) return "no edit of it is open";
  if (!IsFinite(response)) return kNotFinite;
  edit->Set(response);
  return {};
}

std::string CoreImplementation::LoadInputProfile(Instance& instance,
                                                 const std::string& profileName) {
  InputProfileManager& profiles = instance.GetTool()->GetInputProfiles();
  if (!profiles.Find(profileName)) return "there is no input profile \"" + profileName + "\"";
  std::string problem;
  const std::string refused =
      ChangeInputs(instance, "Load input profile", AllInputs(instance),
                   [&] { problem = profiles.Apply(profileName, instance.GetProperties()); });
  return refused.empty() ? problem : refused;
}

std::string CoreImplementation::LoadInputFactorySettings(Instance& instance) {
  const util::xml::Tag& factory = instance.GetTool()->GetInputProfiles().GetFactorySettings();
  return ChangeInputs(instance, "Load input profile", AllInputs(instance),
                      [&] { InputProfileManager::ApplyTo(factory, instance.GetProperties()); });
}

// --- calibration ---

std::string CoreImplementation::ChangeCalibration(
    const std::function<void(unidevice::CalibrationTable&)>& change) {
  if (IsRecording()) return "a take or a resimulation runs";
  unidevice::CalibrationTable& table = unidevice::DriverManager::instance().calibrations();
  CalibrationFile::Load();  // another program may have changed it
  auto before = table.all();
  change(table);
  std::string problem = CalibrationFile::Save();
  if (!problem.empty()) table.replace(std::move(before));
  if (problem.empty()) m_messages.Tell(CalibrationsChanged{});
  return problem;
}

std::string CoreImplementation::SetCalibration(const unidevice::ControlChoice& control,
                                               const unidevice::Calibration& calibration) {
  if (control.device.empty()) return "it names no device";
  if (control.index < 0) return "controls are numbered from 0";
  if (const unidevice::ChoiceProblem problem = control.check()) return problem.why;
  if (control.kind() != unidevice::kInfiniteControl)
    return "only an axis or a slider can be calibrated";
  if (const util::Sentence problem = calibration.problem()) return problem.filled();
  return ChangeCalibration([&](auto& table) { table.set(control, calibration); });
}

std::string CoreImplementation::ClearCalibration(const unidevice::ControlChoice& control) {
  if (!unidevice::DriverManager::instance().calibrations().find(control))
    return "it is not calibrated";
  return ChangeCalibration([&](auto& table) { table.clear(control); });
}

// --- undo ---

bool CoreImplementation::Undo() {
  const CoreRequest request(*this);
  return GetAdaptor()->HostUndo();
}

bool CoreImplementation::UndoBlock(int block) {
  const CoreRequest request(*this);
  return GetAdaptor()->UndoBlock(block);
}

bool CoreImplementation::Redo() {
  const CoreRequest request(*this);
  return GetAdaptor()->HostRedo();
}

}  // namespace orv::rws::core
