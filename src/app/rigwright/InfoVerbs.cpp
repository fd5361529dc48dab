// tools, info.
#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>
#include <set>

#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/Scene.h"
#include "app/rigwright/GroundJson.h"
#include "app/rigwright/Program.h"
#include "app/rigwright/RunOptions.h"
#include "app/rigwright/SceneJob.h"
#include "app/rigwright/Texts.h"
#include "app/rigwright/Verbs.h"
#include "app/session/anyhost/Names.h"
#include "core/CoreImplementation.h"
#include "core/config/ConfigElement.h"
#include "core/instances/Instance.h"
#include "core/tools/Tool.h"
#include "unidevice/Property.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

using Json = nlohmann::ordered_json;
using rws::adaptor::headless::SceneNode;
using rws::core::ConfigElement;
using rws::core::Instance;
using rws::core::InstanceReference;
using unidevice::Property;

// --- tools ---

void runTools(Program& program) {
  SceneJob job(program);
  Json list = Json::array();
  Output& out = program.output();
  for (rws::core::Tool* tool : job.core().GetLibrary().GetTools()) {
    std::vector<std::string> categories;
    tool->GetCategories(categories);
    list.push_back({{"id", tool->GetDisplayId()},
                    {"name", tool->GetDisplayName()},
                    {"category", joined(categories)},
                    {"description", tool->GetDescription()}});
    out.line(tool->GetDisplayId() + "  (" + tool->GetDisplayName() + ", " + joined(categories) +
             ")");
    out.line(wrapped(tool->GetDescription(), 90, "    "));
    out.line("");
  }
  out.object()["tools"] = list;
  Json damaged = Json::array();
  for (const auto& [file, element, reason] : job.core().GetLibrary().GetProblems()) {
    if (damaged.empty()) out.line("Left out");
    damaged.push_back({{"file", file}, {"element", element}, {"reason", reason}});
    out.line("    " + file + ": " + element + ": " + reason);
  }
  out.object()["leftOut"] = damaged;
}

// --- info ---

std::string typeOf(const SceneNode& node) {
  if (node.lens()) return "camera";
  if (node.curve()) return "curve";
  return node.hasMesh() ? "mesh" : "transform";
}

const char* typeOf(const ConfigElement& element) {
  switch (element.kind()) {
    case ConfigElement::Kind::kSpinnerInt:
      return "integer";
    case ConfigElement::Kind::kSpinner:
      return "number";
    case ConfigElement::Kind::kCheckBox:
      return "check";
    case ConfigElement::Kind::kTextBox:
      return "text";
    case ConfigElement::Kind::kComboBox:
      return "choice";
    case ConfigElement::Kind::kButton:
      return "button";
    default:
      return "label";
  }
}

bool isSpinner(const ConfigElement& element) {
  return element.kind() == ConfigElement::Kind::kSpinner ||
         element.kind() == ConfigElement::Kind::kSpinnerInt;
}

Json parameterJson(const ConfigElement& element) {
  Json json = {{"id", element.id()},
               {"group", groupOf(element)},
               {"label", element.label()},
               {"type", typeOf(element)},
               {"value", valueOf(element)}};
  if (element.isReadOnly()) json["readOnly"] = true;
  if (isSpinner(element)) {
    json["min"] = element.range().min;
    json["max"] = element.range().max;
  }
  if (!element.items().empty()) json["items"] = element.items();
  return json;
}

std::string rangeText(const ConfigElement& element) {
  if (!element.items().empty()) return joined(element.items(), " | ");
  if (!isSpinner(element)) return typeOf(element);
  if (element.isReadOnly()) return "gauge, read only";
  return util::shortText(element.range().min) + " to " + util::shortText(element.range().max);
}

std::size_t sampleCount(Instance& rig, std::size_t input) {
  return input < rig.GetTracks().size() ? rig.GetTracks()[input].samples.size() : 0;
}

Json mappingJson(const Property& input) {
  Json json = {{"multiplier", input.multiplier},
               {"exponent", input.exponent},
               {"deadzone", input.deadzone},
               {"offset", input.offset},
               {"control", Json()}};
  const auto& control = input.savedControl;
  if (!control.name.empty()) {
    json["control"] = {{"device", control.attribute("device")},
                       {"type", control.attribute("type")},
                       {"index", control.attribute("index")},
                       {"description", control.child("description").text()},
                       {"present", input.control != nullptr}};
  }
  return json;
}

std::string mappingText(const Property& input) {
  const auto& control = input.savedControl;
  if (control.name.empty()) return "not mapped";
  const std::string device = control.attribute("device");
  const std::string ofTwo = control.child("description").text();
  const std::string one = (device.empty() ? "any device" : device) + " " +
                          control.attribute("type") + " " + control.attribute("index");
  return (control.child("control").isEmpty() || ofTwo.empty() ? one : ofTwo) +
         (input.control ? "" : " (not present)");
}

std::string curveText(const Property& input) {
  return "x " + util::shortText(input.multiplier) + ", ^ " + util::shortText(input.exponent) +
         ", dead " + util::shortText(input.deadzone) + ", + " + util::shortText(input.offset);
}

Json groupAround(const InstanceReference& row) {
  return row.parent->parent ? Json(row.parent->GetLabel()) : Json();
}

Json rigJson(Instance& rig, const InstanceReference& row) {
  Json parameters = Json::array();
  for (const ConfigElement* element : rig.GetConfig().elements())
    if (element->id() >= 0) parameters.push_back(parameterJson(*element));
  Json inputs = Json::array();
  const auto& entries = rig.GetProperties().entries;
  for (std::size_t i = 0; i < entries.size(); ++i) {
    inputs.push_back({{"name", entries[i].first},
                      {"mapping", mappingJson(*entries[i].second)},
                      {"samples", sampleCount(rig, i)}});
  }
  const auto ground = groundOf(rig);
  Json outputs = Json::array();
  for (const Property* output : rig.GetOutputs())
    outputs.push_back({{"name", output->name}, {"value", output->read()}});
  return {{"name", rig.GetInstanceName()},
          {"kind", rig.GetTool()->GetDisplayId()},
          {"profile", rig.GetCurrentProfile()},
          {"checked", row.IsChecked()},
          {"group", groupAround(row)},
          {"ground", ground ? groundJson(*ground) : Json()},
          {"parameters", parameters},
          {"inputs", inputs},
          {"outputs", outputs}};
}

Json nodeJson(const SceneNode& node) {
  return {{"name", node.name()},
          {"type", typeOf(node)},
          {"parent", node.parent() ? Json(node.parent()->name()) : Json()},
          {"rig", !node.tag().empty()},
          {"keys", node.hasKeys()}};
}

void tellNodes(Output& out, const std::vector<const SceneNode*>& nodes) {
  const std::set<const SceneNode*> told(nodes.begin(), nodes.end());
  Table table;
  for (const SceneNode* node : nodes) {
    std::string indent = "  ";
    for (const SceneNode* above = node->parent(); above; above = above->parent())
      if (told.count(above)) indent += "  ";
    table.add({indent + node->name(), typeOf(*node), node->tag().empty() ? "" : "rig",
               node->hasKeys() ? "keys" : ""});
  }
  out.line("");
  out.line("Nodes (" + std::to_string(nodes.size()) + ")");
  for (const std::string& line : table.lines()) out.line(line);
}

/// The rows with their checks, where a user has made something of them.
void tellRows(Output& out, const std::vector<InstanceReference*>& rows) {
  const auto isPlain = [](const InstanceReference* row) {
    return row->IsChecked() && !row->IsGroup();
  };
  if (std::all_of(rows.begin(), rows.end(), isPlain)) return;
  out.line("");
  out.line("Order; [x] takes part in takes, with the groups around it");
  for (const InstanceReference* row : rows) {
    std::string indent = "  ";
    for (const InstanceReference* above = row->parent; above->parent; above = above->parent)
      indent += "  ";
    out.line(indent + (row->IsChecked() ? "[x] " : "[ ] ") + row->GetLabel() +
             (row->IsGroup() ? "  (group)" : ""));
  }
}

void tellRig(Output& out, Instance& rig) {
  out.line("");
  out.line("Rig " + rig.GetInstanceName() + "  (" + rig.GetTool()->GetDisplayId() + ", profile " +
           rig.GetCurrentProfile() + ")");
  if (const auto ground = groundOf(rig)) out.line("  " + groundText(*ground));
  Table parameters;
  for (const ConfigElement* element : rig.GetConfig().elements())
    if (element->id() >= 0)
      parameters.add({"#" + std::to_string(element->id()), groupOf(*element), element->label(),
                      element->valueText(), rangeText(*element)});
  if (!parameters.empty()) out.line("  Parameters: id, group, label, value, range");
  for (const std::string& line : parameters.lines("    ")) out.line(line);
  Table inputs;
  const auto& entries = rig.GetProperties().entries;
  for (std::size_t i = 0; i < entries.size(); ++i)
    inputs.add({entries[i].first, mappingText(*entries[i].second), curveText(*entries[i].second),
                std::to_string(sampleCount(rig, i)) + " samples"});
  if (!inputs.empty()) out.line("  Inputs: name, control, curve, recorded");
  for (const std::string& line : inputs.lines("    ")) out.line(line);
  Table outputs;
  for (const Property* output : rig.GetOutputs())
    outputs.add({output->name, util::shortText(output->read())});
  if (!outputs.empty()) out.line("  Outputs: name, value in the latest frame");
  for (const std::string& line : outputs.lines("    ")) out.line(line);
}

struct InfoOptions {
  std::string scene, rig;
};

/// The nodes that are told: all, or those of one rig and what hangs on them.
std::vector<const SceneNode*> chosenNodes(SceneJob& job, Instance* only) {
  std::set<const SceneNode*> own;
  if (only)
    for (rws::core::CoreNode* node : only->GetNodes())
      own.insert(static_cast<rws::adaptor::headless::HeadlessNode*>(node)->GetSceneNode());
  std::vector<const SceneNode*> chosen;
  for (const SceneNode* node : job.scene().nodes()) {
    if (node->parent() && own.count(node->parent())) own.insert(node);
    if (!only || own.count(node)) chosen.push_back(node);
  }
  return chosen;
}

void runInfo(Program& program, const InfoOptions& options) {
  SceneJob job(program, options.scene);
  const auto& scene = job.scene();
  Instance* const only = options.rig.empty() ? nullptr : &job.rig(options.rig);
  const std::vector<const SceneNode*> nodes = chosenNodes(job, only);
  const std::vector<Instance*> rigs = rigsNamed(job, options.rig);
  Output& out = program.output();
  Json& json = out.object();
  json["frameRate"] = scene.frameRate();
  json["range"] = {scene.rangeStart(), scene.rangeEnd()};
  json["clips"] = scene.clips();
  json["nodes"] = Json::array();
  for (const SceneNode* node : nodes) json["nodes"].push_back(nodeJson(*node));
  json["rigs"] = Json::array();
  const std::vector<InstanceReference*> rows = job.core().GetRows();
  for (Instance* rig : rigs)
    json["rigs"].push_back(rigJson(*rig, *job.core().Find(rig->GetInstanceName())));
  json["groups"] = Json::array();
  for (const InstanceReference* row : rows)
    if (row->IsGroup())
      json["groups"].push_back(
          {{"name", row->GetLabel()}, {"checked", row->IsChecked()}, {"group", groupAround(*row)}});

  out.line(options.scene + ": " + util::shortText(scene.frameRate()) + " frames per second, " +
           util::shortText(scene.rangeStart()) + " to " + util::shortText(scene.rangeEnd()) + " s");
  if (scene.clips().size() > 1) out.line("Clips: " + joined(scene.clips()));
  tellNodes(out, nodes);
  tellRows(out, rows);
  for (Instance* rig : rigs) tellRig(out, *rig);
}

}  // namespace

void addInfoVerbs(Program& program) {
  program.markReadOnly(
      program.addVerb("tools", "List the kinds of rigs", "rigwright tools", runTools));
  auto o = std::make_shared<InfoOptions>();
  CLI::App& info =
      program.addVerb("info", "Tell what is in a scene: nodes, rigs, parameters, inputs",
                      "rigwright info shaky.glb", [o](Program& p) { runInfo(p, *o); });
  addScene(info, o->scene);
  info.add_option("--rig", o->rig, "Only this rig, its nodes and what hangs on them (default: all)")
      ->type_name("RIG")
      ->check(checkNotEmpty);
  program.markReadOnly(info);
}

}  // namespace orv::app
