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

void RunTools(Program& program) {
  SceneJob job(program);
  Json list = Json::array();
  Output& out = program.GetOutput();
  for (rws::core::Tool* tool : job.GetCore().GetLibrary().GetTools()) {
    std::vector<std::string> categories;
    tool->GetCategories(categories);
    list.push_back({{"id", tool->GetDisplayId()},
                    {"name", tool->GetDisplayName()},
                    {"category", Joined(categories)},
                    {"simulationVersion", tool->GetSimulationVersion()},
                    {"description", tool->GetDescription()}});
    out.Line(tool->GetDisplayId() + "  (" + tool->GetDisplayName() + ", " + Joined(categories) +
             ")");
    out.Line(Wrapped(tool->GetDescription(), 90, "    "));
    out.Line("");
  }
  out.GetObject()["tools"] = list;
  Json damaged = Json::array();
  for (const auto& [file, element, reason] : job.GetCore().GetLibrary().GetProblems()) {
    if (damaged.empty()) out.Line("Left out");
    damaged.push_back({{"file", file}, {"element", element}, {"reason", reason}});
    out.Line("    " + file + ": " + element + ": " + reason);
  }
  out.GetObject()["leftOut"] = damaged;
}

// --- info ---

std::string TypeOf(const SceneNode& node) {
  if (node.GetLens()) return "camera";
  if (node.GetCurve()) return "curve";
  return node.HasMesh() ? "mesh" : "transform";
}

const char* TypeOf(const ConfigElement& element) {
  switch (element.GetKind()) {
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

bool IsSpinner(const ConfigElement& element) {
  return element.GetKind() == ConfigElement::Kind::kSpinner ||
         element.GetKind() == ConfigElement::Kind::kSpinnerInt;
}

Json ParameterJson(const ConfigElement& element) {
  Json json = {{"id", element.GetId()},
               {"group", GroupOf(element)},
               {"label", element.GetLabel()},
               {"type", TypeOf(element)},
               {"value", ValueOf(element)}};
  if (element.IsReadOnly()) json["readOnly"] = true;
  if (IsSpinner(element)) {
    json["min"] = element.GetRange().min;
    json["max"] = element.GetRange().max;
  }
  if (!element.GetItems().empty()) json["items"] = element.GetItems();
  return json;
}

std::string RangeText(const ConfigElement& element) {
  if (!element.GetItems().empty()) return Joined(element.GetItems(), " | ");
  if (!IsSpinner(element)) return TypeOf(element);
  if (element.IsReadOnly()) return "gauge, read only";
  return util::shortText(element.GetRange().min) + " to " + util::shortText(element.GetRange().max);
}

std::size_t SampleCount(Instance& rig, std::size_t input) {
  return input < rig.GetTracks().size() ? rig.GetTracks()[input].samples.size() : 0;
}

Json MappingJson(const Property& input) {
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

std::string MappingText(const Property& input) {
  const auto& control = input.savedControl;
  if (control.name.empty()) return "not mapped";
  const std::string device = control.attribute("device");
  const std::string ofTwo = control.child("description").text();
  const std::string one = (device.empty() ? "any device" : device) + " " +
                          control.attribute("type") + " " + control.attribute("index");
  return (control.child("control").isEmpty() || ofTwo.empty() ? one : ofTwo) +
         (input.control ? "" : " (not present)");
}

std::string CurveText(const Property& input) {
  return "x " + util::shortText(input.multiplier) + ", ^ " + util::shortText(input.exponent) +
         ", dead " + util::shortText(input.deadzone) + ", + " + util::shortText(input.offset);
}

Json GroupAround(const InstanceReference& row) {
  return row.parent->parent ? Json(row.parent->GetLabel()) : Json();
}

Json RigJson(Instance& rig, const InstanceReference& row) {
  Json parameters = Json::array();
  for (const ConfigElement* element : rig.GetConfig().GetElements())
    if (element->GetId() >= 0) parameters.push_back(ParameterJson(*element));
  Json inputs = Json::array();
  const auto& entries = rig.GetProperties().entries;
  for (std::size_t i = 0; i < entries.size(); ++i) {
    inputs.push_back({{"name", entries[i].first},
                      {"mapping", MappingJson(*entries[i].second)},
                      {"samples", SampleCount(rig, i)}});
  }
  const auto ground = GroundOf(rig);
  Json outputs = Json::array();
  for (const Property* output : rig.GetOutputs())
    outputs.push_back({{"name", output->name}, {"value", output->read()}});
  return {{"name", rig.GetInstanceName()},
          {"kind", rig.GetTool()->GetDisplayId()},
          {"simulationVersion", rig.GetTool()->GetSimulationVersion()},
          {"profile", rig.GetCurrentProfile()},
          {"checked", row.IsChecked()},
          {"group", GroupAround(row)},
          {"ground", ground ? GroundJson(*ground) : Json()},
          {"parameters", parameters},
          {"inputs", inputs},
          {"outputs", outputs}};
}

Json NodeJson(const SceneNode& node) {
  return {{"name", node.GetName()},
          {"type", TypeOf(node)},
          {"parent", node.GetParent() ? Json(node.GetParent()->GetName()) : Json()},
          {"rig", !node.GetTag().empty()},
          {"keys", node.HasKeys()}};
}

void TellNodes(Output& out, const std::vector<const SceneNode*>& nodes) {
  const std::set<const SceneNode*> told(nodes.begin(), nodes.end());
  Table table;
  for (const SceneNode* node : nodes) {
    std::string indent = "  ";
    for (const SceneNode* above = node->GetParent(); above; above = above->GetParent())
      if (told.count(above)) indent += "  ";
    table.Add({indent + node->GetName(), TypeOf(*node), node->GetTag().empty() ? "" : "rig",
               node->HasKeys() ? "keys" : ""});
  }
  out.Line("");
  out.Line("Nodes (" + std::to_string(nodes.size()) + ")");
  for (const std::string& line : table.Lines()) out.Line(line);
}

/// The rows with their checks, where a user has made something of them.
void TellRows(Output& out, const std::vector<InstanceReference*>& rows) {
  const auto isPlain = [](const InstanceReference* row) {
    return row->IsChecked() && !row->IsGroup();
  };
  if (std::all_of(rows.begin(), rows.end(), isPlain)) return;
  out.Line("");
  out.Line("Order; [x] takes part in takes, with the groups around it");
  for (const InstanceReference* row : rows) {
    std::string indent = "  ";
    for (const InstanceReference* above = row->parent; above->parent; above = above->parent)
      indent += "  ";
    out.Line(indent + (row->IsChecked() ? "[x] " : "[ ] ") + row->GetLabel() +
             (row->IsGroup() ? "  (group)" : ""));
  }
}

void TellRig(Output& out, Instance& rig) {
  out.Line("");
  out.Line("Rig " + rig.GetInstanceName() + "  (" + rig.GetTool()->GetDisplayId() + ", profile " +
           rig.GetCurrentProfile() + ")");
  if (const auto ground = GroundOf(rig)) out.Line("  " + GroundText(*ground));
  Table parameters;
  for (const ConfigElement* element : rig.GetConfig().GetElements())
    if (element->GetId() >= 0)
      parameters.Add({"#" + std::to_string(element->GetId()), GroupOf(*element),
                      element->GetLabel(), element->GetValueText(), RangeText(*element)});
  if (!parameters.IsEmpty()) out.Line("  Parameters: id, group, label, value, range");
  for (const std::string& line : parameters.Lines("    ")) out.Line(line);
  Table inputs;
  const auto& entries = rig.GetProperties().entries;
  for (std::size_t i = 0; i < entries.size(); ++i)
    inputs.Add({entries[i].first, MappingText(*entries[i].second), CurveText(*entries[i].second),
                std::to_string(SampleCount(rig, i)) + " samples"});
  if (!inputs.IsEmpty()) out.Line("  Inputs: name, control, curve, recorded");
  for (const std::string& line : inputs.Lines("    ")) out.Line(line);
  Table outputs;
  for (const Property* output : rig.GetOutputs())
    outputs.Add({output->name, util::shortText(output->read())});
  if (!outputs.IsEmpty()) out.Line("  Outputs: name, value in the latest frame");
  for (const std::string& line : outputs.Lines("    ")) out.Line(line);
}

struct InfoOptions {
  std::string scene, rig;
};

/// The nodes that are told: all, or those of one rig and what hangs on them.
std::vector<const SceneNode*> ChosenNodes(SceneJob& job, Instance* only) {
  std::set<const SceneNode*> own;
  if (only)
    for (rws::core::CoreNode* node : only->GetNodes())
      own.insert(static_cast<rws::adaptor::headless::HeadlessNode*>(node)->GetSceneNode());
  std::vector<const SceneNode*> chosen;
  for (const SceneNode* node : job.GetScene().GetNodes()) {
    if (node->GetParent() && own.count(node->GetParent())) own.insert(node);
    if (!only || own.count(node)) chosen.push_back(node);
  }
  return chosen;
}

void RunInfo(Program& program, const InfoOptions& options) {
  SceneJob job(program, options.scene);
  const auto& scene = job.GetScene();
  Instance* const only = options.rig.empty() ? nullptr : &job.FindRig(options.rig);
  const std::vector<const SceneNode*> nodes = ChosenNodes(job, only);
  const std::vector<Instance*> rigs = RigsNamed(job, options.rig);
  Output& out = program.GetOutput();
  Json& json = out.GetObject();
  json["frameRate"] = scene.GetFrameRate();
  json["range"] = {scene.GetRangeStart(), scene.GetRangeEnd()};
  json["clips"] = scene.GetClips();
  json["nodes"] = Json::array();
  for (const SceneNode* node : nodes) json["nodes"].push_back(NodeJson(*node));
  json["rigs"] = Json::array();
  const std::vector<InstanceReference*> rows = job.GetCore().GetRows();
  for (Instance* rig : rigs)
    json["rigs"].push_back(RigJson(*rig, *job.GetCore().Find(rig->GetInstanceName())));
  json["groups"] = Json::array();
  for (const InstanceReference* row : rows)
    if (row->IsGroup())
      json["groups"].push_back(
          {{"name", row->GetLabel()}, {"checked", row->IsChecked()}, {"group", GroupAround(*row)}});

  out.Line(options.scene + ": " + util::shortText(scene.GetFrameRate()) + " frames per second, " +
           util::shortText(scene.GetRangeStart()) + " to " + util::shortText(scene.GetRangeEnd()) +
           " s");
  if (scene.GetClips().size() > 1) out.Line("Clips: " + Joined(scene.GetClips()));
  TellNodes(out, nodes);
  TellRows(out, rows);
  for (Instance* rig : rigs) TellRig(out, *rig);
}

}  // namespace

void AddInfoVerbs(Program& program) {
  program.MarkReadOnly(
      program.AddVerb("tools", "List the kinds of rigs", "rigwright tools", RunTools));
  auto o = std::make_shared<InfoOptions>();
  CLI::App& info =
      program.AddVerb("info", "Tell what is in a scene: nodes, rigs, parameters, inputs",
                      "rigwright info shaky.glb", [o](Program& p) { RunInfo(p, *o); });
  AddScene(info, o->scene);
  info.add_option("--rig", o->rig, "Only this rig, its nodes and what hangs on them (default: all)")
      ->type_name("RIG")
      ->check(CheckNotEmpty);
  program.MarkReadOnly(info);
}

}  // namespace orv::app
