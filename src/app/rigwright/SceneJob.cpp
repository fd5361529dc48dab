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
    : m_program(program), m_ui(program.output(), program.options().yes) {
  core().SetUserInterface(&m_ui);
}

SceneJob::SceneJob(Program& program, const std::string& path) : SceneJob(program) {
  m_path = path;
  const std::string error = m_session.open(path, program.options().clip);
  tellWarnings();
  if (!error.empty()) throw Failure("", error);
}

SceneJob::~SceneJob() {
  core().SetUserInterface(nullptr);
}

void SceneJob::tellWarnings() {
  for (const std::string& text : m_session.takeWarnings()) m_program.output().warn(text);
}

// --- looking things up ---

rws::core::Tool& SceneJob::tool(const std::string& kind) {
  if (rws::core::Tool* found = core().GetLibrary().Find(kind)) return *found;
  std::vector<std::string> known;
  for (rws::core::Tool* tool : core().GetLibrary().GetTools())
    known.push_back(tool->GetDisplayId());
  throw Failure("kind " + kind, "there is no such kind of rig",
                hintFor(kind, known, "kinds of rigs"));
}

std::vector<std::string> SceneJob::rigNames() {
  std::vector<std::string> names;
  for (Instance* instance : core().List(false)) names.push_back(instance->GetInstanceName());
  return names;
}

InstanceReference& SceneJob::row(const std::string& rig) {
  if (InstanceReference* found = core().Find(rig)) return *found;
  throw Failure(m_path, "there is no rig \"" + rig + "\"", hintFor(rig, rigNames(), "rigs"));
}

Instance& SceneJob::rig(const std::string& name) {
  return *row(name).GetInstance();
}

rws::adaptor::headless::SceneNode& SceneJob::node(const std::string& name) {
  if (rws::adaptor::headless::SceneNode* found = scene().find(name)) return *found;
  std::vector<std::string> known;
  for (rws::adaptor::headless::SceneNode* node : scene().nodes()) known.push_back(node->name());
  throw Failure(m_path, "there is no node \"" + name + "\"", hintFor(name, known, "nodes"));
}

rws::adaptor::headless::HeadlessNode& SceneJob::hostNode(const std::string& name) {
  return *adaptor().FindSceneNode(node(name).name());
}

Instance& SceneJob::rigOf(const std::string& text, std::string& rest) {
  for (std::size_t colon = text.rfind(':'); colon != std::string::npos && colon > 0;
       colon = text.rfind(':', colon - 1)) {
    if (Instance* found = core().FindInstance(text.substr(0, colon))) {
      rest = text.substr(colon + 1);
      return *found;
    }
  }
  return rig(text.substr(0, text.find(':')));
}

ConfigElement& SceneJob::element(Instance& rig, const std::string& label, bool buttons) {
  const std::string what = rig.GetInstanceName() + ":" + label;
  const std::string kind = buttons ? "button" : "parameter";
  const auto fits = [buttons](const ConfigElement* e) {
    return e->id() >= 0 && (e->kind() == ConfigElement::Kind::kButton) == buttons;
  };
  std::vector<std::string> known;
  for (const ConfigElement* e : rig.GetConfig().elements())
    if (fits(e)) known.push_back(e->label());

  int id = -1;
  if (label.size() > 1 && label[0] == '#' && util::parseNumber(label.substr(1), id)) {
    ConfigElement* found = rig.GetConfig().find(id);
    if (found && fits(found)) return *found;
    throw Failure(
        what, found ? "the element with this id is no " + kind : "there is no element with this id",
        "rigwright info tells the ids");
  }
  std::vector<ConfigElement*> found;
  for (ConfigElement* e : rig.GetConfig().findAll(label))
    if (fits(e)) found.push_back(e);
  if (found.size() == 1) return *found.front();
  if (found.empty())
    throw Failure(what, "there is no such " + kind, hintFor(label, known, kind + "s"));
  std::vector<std::string> choices;
  for (const ConfigElement* e : found)
    choices.push_back("#" + std::to_string(e->id()) + " in " + groupOf(*e));
  throw Failure(what, "several " + kind + "s have this label",
                "name one by its id: " + joined(choices));
}

SceneJob::Parameter SceneJob::setParameter(const std::string& assignment) {
  std::string rest;
  Instance& instance = rigOf(assignment, rest);
  // A label may hold "=" itself: the longest one that there is counts.
  std::size_t equals = rest.find('=');
  for (std::size_t at = equals; at != std::string::npos; at = rest.find('=', at + 1))
    if (!instance.GetConfig().findAll(rest.substr(0, at)).empty()) equals = at;
  if (equals == std::string::npos)
    throw Failure(assignment, "there is no value", "write RIG:LABEL=VALUE");
  ConfigElement& target = element(instance, rest.substr(0, equals), false);
  const std::string name = instance.GetInstanceName() + ":" + target.label();
  std::string problem;
  if (!core().EditParameter(instance, target.id(), rest.substr(equals + 1), problem)) {
    throw Failure(name, problem,
                  target.items().empty() ? "" : "choose one of: " + joined(target.items()));
  }
  if (!problem.empty()) m_program.output().warn(name + ": " + problem);
  return {instance, target};
}

void SceneJob::loadProfile(Instance& rig, const std::string& name) {
  const std::string old = rig.GetTool()->GetConfigProfiles().GetVersionWarning(name);
  if (!old.empty()) m_program.output().warn("profile " + name + ": " + old);
  const std::string problem = core().LoadProfile(rig.GetInstanceName(), name);
  if (!problem.empty()) throw Failure("profile " + name, problem);
}

// --- writing ---

void SceneJob::save(const std::string& output, const LossReasons& why) {
  checkInterrupt();
  std::string error;
  {
    const SavingNote note(savingNote(m_program.output(), output));
    error = m_session.save(output);
  }
  if (!error.empty()) failWriting(error);
  tellWarnings();
  const LossReport lost = m_session.losses();
  const auto warn = [this](const std::string& what, const std::string& reason) {
    if (!what.empty())
      m_program.output().warn("dropped " + what + (reason.empty() ? "" : ": " + reason));
  };
  warn(lost.keys, why.keys);
  warn(lost.input, why.input);
  m_program.output().object()["output"] = output;
}

InputFile readInputs(SceneJob& job, const std::string& path) {
  InputFile file;
  const std::string error = file.load(job.core(), path);
  if (!error.empty()) throw Failure("", error);
  for (const std::string& odd : file.warnings()) job.program().output().warn(odd);
  return file;
}

std::function<void()> savingNote(Output& output, const std::string& path) {
  if (output.quiet) return {};
  return [&output, path] { output.note("saving " + path); };
}

std::string groupOf(const ConfigElement& element) {
  std::string path;
  // The root is no group of the user's.
  for (const ConfigElement* group = element.parent(); group && group->parent();
       group = group->parent())
    path = group->label() + (path.empty() ? "" : " / ") + path;
  return path;
}

nlohmann::ordered_json valueOf(const ConfigElement& element) {
  switch (element.kind()) {
    case ConfigElement::Kind::kSpinnerInt:
    case ConfigElement::Kind::kSpinner:
      return element.number();
    case ConfigElement::Kind::kCheckBox:
      return element.number() != 0.0;
    case ConfigElement::Kind::kTextBox:
    case ConfigElement::Kind::kComboBox:
      return element.valueText();
    default:
      return {};
  }
}

std::string checkRigPart(const std::string& text) {
  const std::size_t colon = text.find(':');
  if (colon != std::string::npos && colon > 0 && colon + 1 < text.size()) return {};
  return "\"" + text + "\" names no rig and label; write RIG:LABEL";
}

std::string checkAssignment(const std::string& text) {
  const std::size_t colon = text.find(':');
  const std::size_t equals = colon == std::string::npos ? colon : text.find('=', colon);
  if (equals != std::string::npos && colon > 0 && equals > colon + 1) return {};
  return "\"" + text + "\" is no assignment; write RIG:LABEL=VALUE or RIG:#ID=VALUE";
}

}  // namespace orv::app
