#include "app/rigwright/SceneJob.h"

#include <nlohmann/json.hpp>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/Scene.h"
#include "app/rigwright/Failure.h"
#include "app/rigwright/Interrupt.h"
#include "app/rigwright/Program.h"
#include "app/session/Losses.h"
#include "app/session/SavingNote.h"
#include "app/session/anyhost/InputFile.h"
#include "app/session/anyhost/Names.h"
#include "core/CoreImplementation.h"
#include "core/config/ConfigElement.h"
#include "core/instances/Instance.h"
#include "core/tools/Tool.h"
#include "util/NumberText.h"

namespace orv::app {

using rws::core::ConfigElement;
using rws::core::Instance;
using rws::core::InstanceReference;

SceneJob::SceneJob(Program& program)
    : m_program(program), m_ui(program.GetOutput(), program.GetOptions().yes) {
  GetCore().SetUserInterface(&m_ui);
}

SceneJob::SceneJob(Program& program, const std::string& path) : SceneJob(program) {
  m_path = path;
  const std::string error = m_session.Open(path, program.GetOptions().clip);
  TellWarnings();
  if (!error.empty()) throw Failure("", error);
}

SceneJob::~SceneJob() {
  GetCore().SetUserInterface(nullptr);
}

void SceneJob::TellWarnings() {
  for (const std::string& text : m_session.TakeWarnings()) m_program.GetOutput().Warn(text);
}

// --- looking things up ---

rws::core::Tool& SceneJob::FindTool(const std::string& kind) {
  if (rws::core::Tool* found = GetCore().GetLibrary().Find(kind)) return *found;
  std::vector<std::string> known;
  for (rws::core::Tool* tool : GetCore().GetLibrary().GetTools())
    known.push_back(tool->GetDisplayId());
  throw Failure("kind " + kind, "there is no such kind of rig",
                HintFor(kind, known, "kinds of rigs"));
}

std::vector<std::string> SceneJob::RigNames() {
  std::vector<std::string> names;
  for (Instance* instance : GetCore().List(false)) names.push_back(instance->GetInstanceName());
  return names;
}

InstanceReference& SceneJob::FindRow(const std::string& rig) {
  if (InstanceReference* found = GetCore().Find(rig)) return *found;
  throw Failure(m_path, "there is no rig \"" + rig + "\"", HintFor(rig, RigNames(), "rigs"));
}

Instance& SceneJob::FindRig(const std::string& name) {
  return *FindRow(name).GetInstance();
}

rws::adaptor::headless::SceneNode& SceneJob::FindNode(const std::string& name) {
  if (rws::adaptor::headless::SceneNode* found = GetScene().Find(name)) return *found;
  std::vector<std::string> known;
  for (rws::adaptor::headless::SceneNode* node : GetScene().GetNodes())
    known.push_back(node->GetName());
  throw Failure(m_path, "there is no node \"" + name + "\"", HintFor(name, known, "nodes"));
}

rws::adaptor::headless::HeadlessNode& SceneJob::FindHostNode(const std::string& name) {
  return *GetAdaptor().FindSceneNode(FindNode(name).GetName());
}

Instance& SceneJob::RigOf(const std::string& text, std::string& rest) {
  for (std::size_t colon = text.rfind(':'); colon != std::string::npos && colon > 0;
       colon = text.rfind(':', colon - 1)) {
    if (Instance* found = GetCore().FindInstance(text.substr(0, colon))) {
      rest = text.substr(colon + 1);
      return *found;
    }
  }
  return FindRig(text.substr(0, text.find(':')));
}

ConfigElement& SceneJob::FindElement(Instance& rig, const std::string& label, bool buttons) {
  const std::string what = rig.GetInstanceName() + ":" + label;
  const std::string kind = buttons ? "button" : "parameter";
  const auto fits = [buttons](const ConfigElement* e) {
    return e->GetId() >= 0 && (e->GetKind() == ConfigElement::Kind::kButton) == buttons;
  };
  std::vector<std::string> known;
  for (const ConfigElement* e : rig.GetConfig().GetElements())
    if (fits(e)) known.push_back(e->GetLabel());

  int id = -1;
  if (label.size() > 1 && label[0] == '#' && util::parseNumber(label.substr(1), id)) {
    ConfigElement* found = rig.GetConfig().Find(id);
    if (found && fits(found)) return *found;
    throw Failure(
        what, found ? "the element with this id is no " + kind : "there is no element with this id",
        "rigwright info tells the ids");
  }
  std::vector<ConfigElement*> found;
  for (ConfigElement* e : rig.GetConfig().FindAll(label))
    if (fits(e)) found.push_back(e);
  if (found.size() == 1) return *found.front();
  if (found.empty())
    throw Failure(what, "there is no such " + kind, HintFor(label, known, kind + "s"));
  std::vector<std::string> choices;
  for (const ConfigElement* e : found)
    choices.push_back("#" + std::to_string(e->GetId()) + " in " + GroupOf(*e));
  throw Failure(what, "several " + kind + "s have this label",
                "name one by its id: " + Joined(choices));
}

SceneJob::Parameter SceneJob::FindAssigned(const std::string& assignment, std::string& value) {
  std::string rest;
  Instance& instance = RigOf(assignment, rest);
  // A label may hold "=" itself: the longest one that there is counts.
  std::size_t equals = rest.find('=');
  for (std::size_t at = equals; at != std::string::npos; at = rest.find('=', at + 1))
    if (!instance.GetConfig().FindAll(rest.substr(0, at)).empty()) equals = at;
  if (equals == std::string::npos)
    throw Failure(assignment, "there is no value", "write RIG:LABEL=VALUE");
  value = rest.substr(equals + 1);
  return {instance, FindElement(instance, rest.substr(0, equals), false)};
}

SceneJob::Parameter SceneJob::SetParameter(const std::string& assignment) {
  std::string value, problem;
  const Parameter found = FindAssigned(assignment, value);
  const ConfigElement& target = found.element;
  const std::string name = found.rig.GetInstanceName() + ":" + target.GetLabel();
  if (!GetCore().EditParameter(found.rig, target.GetId(), value, problem)) {
    throw Failure(name, problem,
                  target.GetItems().empty() ? "" : "choose one of: " + Joined(target.GetItems()));
  }
  if (!problem.empty()) m_program.GetOutput().Warn(name + ": " + problem);
  return found;
}

void SceneJob::LoadProfile(Instance& rig, const std::string& name) {
  const std::string old = rig.GetTool()->GetConfigProfiles().GetVersionWarning(name);
  if (!old.empty()) m_program.GetOutput().Warn("profile " + name + ": " + old);
  const std::string problem = GetCore().LoadProfile(rig.GetInstanceName(), name);
  if (!problem.empty()) throw Failure("profile " + name, problem);
}

// --- writing ---

void SceneJob::Save(const std::string& output, const LossReasons& why) {
  CheckInterrupt();
  std::string error;
  {
    const SavingNote note(MakeSavingNote(m_program.GetOutput(), output));
    error = m_session.Save(output);
  }
  if (!error.empty()) FailWriting(error);
  TellWarnings();
  const LossReport lost = m_session.FindLosses();
  const auto warn = [this](const std::string& what, const std::string& reason) {
    if (!what.empty())
      m_program.GetOutput().Warn("dropped " + what + (reason.empty() ? "" : ": " + reason));
  };
  warn(lost.keys, why.keys);
  warn(lost.input, why.input);
  m_program.GetOutput().GetObject()["output"] = output;
}

InputFile ReadInputs(SceneJob& job, const std::string& path) {
  InputFile file;
  const std::string error = file.Load(job.GetCore(), path);
  if (!error.empty()) throw Failure("", error);
  for (const std::string& odd : file.GetWarnings()) job.GetProgram().GetOutput().Warn(odd);
  return file;
}

std::function<void()> MakeSavingNote(Output& output, const std::string& path) {
  if (output.quiet) return {};
  return [&output, path] { output.Note("saving " + path); };
}

std::string GroupOf(const ConfigElement& element) {
  std::string path;
  // The root is no group of the user's.
  for (const ConfigElement* group = element.GetParent(); group && group->GetParent();
       group = group->GetParent())
    path = group->GetLabel() + (path.empty() ? "" : " / ") + path;
  return path;
}

nlohmann::ordered_json ValueOf(const ConfigElement& element) {
  switch (element.GetKind()) {
    case ConfigElement::Kind::kSpinnerInt:
    case ConfigElement::Kind::kSpinner:
      return element.GetNumber();
    case ConfigElement::Kind::kCheckBox:
      return element.GetNumber() != 0.0;
    case ConfigElement::Kind::kTextBox:
    case ConfigElement::Kind::kComboBox:
      return element.GetValueText();
    default:
      return {};
  }
}

std::string CheckRigPart(const std::string& text) {
  const std::size_t colon = text.find(':');
  if (colon != std::string::npos && colon > 0 && colon + 1 < text.size()) return {};
  return "\"" + text + "\" names no rig and label; write RIG:LABEL";
}

std::string CheckAssignment(const std::string& text) {
  const std::size_t colon = text.find(':');
  const std::size_t equals = colon == std::string::npos ? colon : text.find('=', colon);
  if (equals != std::string::npos && colon > 0 && equals > colon + 1) return {};
  return "\"" + text + "\" is no assignment; write RIG:LABEL=VALUE or RIG:#ID=VALUE";
}

}  // namespace orv::app
