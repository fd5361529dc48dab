#include "plugins/release/templatetool/templatetool_TemplateReader.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

#include "plugins/release/templatetool/templatetool_TemplateText.h"
#include "unidevice/Control.h"
#include "util/CMesh_Box.h"
#include "util/CMesh_Cylinder.h"
#include "util/NumberText.h"

namespace orv::rws::addon {

using util::xml::Element;
using Vector = util::Vector3<double>;

namespace {

constexpr char kVersion[] = "1";
/// Bound of all numbers in a file; beyond it arithmetic on them could leave what a double holds.
constexpr double kHuge = 1e18;
constexpr int kMostSegments = 512;

/// One row per channel, in the order of TemplateChannel.
const char* const kChannelNames[kTemplateChannels] = {
    "translate x", "translate y", "translate z", "rotate x",      "rotate y",      "rotate z",
    "scale x",     "scale y",     "scale z",     "field of view", "focus distance"};

struct ControlKindName {
  const char* name;
  unsigned kind;
};
const ControlKindName kControlKinds[] = {{"button", unidevice::kBinaryControl},
                                         {"hat", unidevice::kFiniteControl},
                                         {"axis", unidevice::kInfiniteControl}};

}  // namespace

const char* TemplateChannelName(int channel) {
  return kChannelNames[channel];
}

int TemplateChannelOf(const std::string& name) {
  for (int i = 0; i < kTemplateChannels; ++i)
    if (kChannelNames[i] == name) return i;
  return -1;
}

// --- the frame of a message ---

TemplateReader::Place::Place(TemplateReader& reader, const Element& element) : m_reader(reader) {
  std::string text = element.name;
  for (const char* attribute : {"name", "label", "node"}) {
    if (!element.hasAttribute(attribute)) continue;
    text += " " + Quoted(element.attribute(attribute));
    if (element.hasAttribute("channel")) text += " " + Quoted(element.attribute("channel"));
    break;
  }
  m_reader.m_path.push_back(text);
}

bool TemplateReader::Refuse(const std::string& reason) {
  // Of a deep expression the ends tell enough.
  constexpr std::size_t kShown = 8;
  for (std::size_t i = 0; i < m_path.size(); ++i) {
    if (m_path.size() > kShown && i == kShown / 2) {
      m_element += "/...";
      i = m_path.size() - kShown / 2;
    }
    m_element += (i > 0 ? "/" : "") + m_path[i];
  }
  m_reason = reason;
  return false;
}

bool TemplateReader::RefuseText(const Element& text) {
  return Refuse("the text " + Quoted(Plain(text.name).substr(0, 40)) + " means nothing here");
}

bool TemplateReader::CheckShape(const Element& element, const Names& attributes,
                                const Names& children) {
  const auto among = [](const Names& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
  };
  std::set<std::string> seen;
  for (const auto& [name, value] : element.attributes) {
    if (!among(attributes, name))
      return Refuse("there is no attribute " + Quoted(name) +
                    (attributes.empty() ? " here" : " here, only " + Joined(attributes)));
    if (!seen.insert(name).second) return Refuse("the attribute " + Quoted(name) + " stands twice");
  }
  for (const Element* child : element.children) {
    if (child->kind == util::xml::kTag && !among(children, child->name))
      return Refuse("there is no element <" + child->name + "> here" +
                    (children.empty() ? "" : ", only " + Joined(children)));
    if (IsStrayText(*child)) return RefuseText(*child);
  }
  return true;
}

// --- attributes; one that is absent keeps its value ---

bool TemplateReader::ReadText(const Element& element, const char* attribute, std::string& text) {
  if (element.hasAttribute(attribute)) text = Plain(element.attribute(attribute));
  if (!text.empty()) return true;
  return Refuse(std::string("the attribute ") + Quoted(attribute) + " is missing or empty");
}

bool TemplateReader::ReadNumber(const Element& element, const char* attribute, double& number) {
  if (!element.hasAttribute(attribute)) return true;
  const std::string text = Plain(element.attribute(attribute));
  if (util::parseNumber(text, number) && number >= -kHuge && number <= kHuge) return true;
  return Refuse(std::string(attribute) + " is " + Quoted(text) +
                ", which is no number of at most " + util::shortText(kHuge));
}

bool TemplateReader::ReadWhole(const Element& element, const char* attribute, int& number) {
  if (!element.hasAttribute(attribute)) return true;
  const std::string text = Plain(element.attribute(attribute));
  if (util::parseNumber(text, number)) return true;
  return Refuse(std::string(attribute) + " is " + Quoted(text) + ", which is no whole number");
}

bool TemplateReader::ReadFlag(const Element& element, const char* attribute, bool& flag) {
  if (!element.hasAttribute(attribute)) return true;
  const std::string text = Plain(element.attribute(attribute));
  flag = text == "yes" || text == "1";
  if (flag || text == "no" || text == "0") return true;
  return Refuse(std::string(attribute) + " is " + Quoted(text) + "; write yes or no");
}

bool TemplateReader::ReadVector(const Element& element, const char* attribute, Vector& vector) {
  if (!element.hasAttribute(attribute)) return true;
  const std::string text = element.attribute(attribute);
  const std::vector<std::string> words = Words(text);
  bool isGood = words.size() == 3;
  for (int i = 0; isGood && i < 3; ++i) {
    double number = 0.0;
    isGood = util::parseNumber(words[static_cast<std::size_t>(i)], number) && number >= -kHuge &&
             number <= kHuge;
    vector[i] = number;
  }
  if (isGood) return true;
  return Refuse(std::string(attribute) + " is " + Quoted(text) +
                "; write three numbers such as \"0 1.5 -2\"");
}

// --- names ---

bool TemplateReader::TakeName(const std::string& name, const Meaning& meaning) {
  if (!IsName(name))
    return Refuse("the name " + Quoted(name) +
                  " may hold letters, digits, spaces and _, a letter first, and at most " +
                  std::to_string(kLongestName) + " characters");
  if (m_names.emplace(name, meaning).second) return true;
  const bool isReserved = m_names[name].kind <= Meaning::kDuration;
  return Refuse("the name " + Quoted(name) + (isReserved ? " is reserved" : " is taken"));
}

bool TemplateReader::TakeLabel(const std::string& label) {
  if (std::any_of(label.begin(), label.end(),
                  [](char c) { return static_cast<unsigned char>(c) < 32; }))
    return Refuse("the label holds a control character");
  return m_labels.insert(label).second || Refuse("the label " + Quoted(label) + " is taken");
}

int TemplateReader::SlotOf(const Meaning& meaning) const {
  const TemplateDefinition& d = *m_definition;
  switch (meaning.kind) {
    case Meaning::kTime:
      return TemplateDefinition::kTimeSlot;
    case Meaning::kDuration:
      return TemplateDefinition::kDurationSlot;
    case Meaning::kParameter:
      return d.ParameterSlot() + meaning.index;
    case Meaning::kInput:
      return d.InputSlot() + meaning.index;
    case Meaning::kMotion:
      return d.MotionSlot() + meaning.index;
    case Meaning::kOutput:
      break;
  }
  return d.OutputSlot() + meaning.index;
}

int TemplateReader::FindNode(const std::string& name) const {
  const auto found = m_nodes.find(name);
  return found == m_nodes.end() ? -1 : found->second;
}

// --- the document ---

bool TemplateReader::Read(const std::string& document, TemplateDefinition& definition) {
  definition = {};
  m_definition = &definition;
  m_names = {{"time", {Meaning::kTime, 0}}, {"frame duration", {Meaning::kDuration, 0}}};
  m_labels = {"General Modes", "Hide Helpers", "Hide Helpers During Recording", "Re-Initialize"};
  m_nodes.clear();
  m_inputLabels.clear();
  m_reads.clear();
  m_path = {"document"};
  m_element.clear();
  Element root;
  std::string problem;
  if (root.loadText(document, &problem) != 0) return Refuse(problem);
  if (root.name != "template")
    return Refuse("it begins with <" + root.name + ">, and a template with <template>");
  m_path.clear();
  const Place place(*this, root);
  const Names sections = {"description", "parameters", "inputs", "nodes", "outputs"};
  if (!CheckShape(root, {"version", "id", "name", "category", "author", "simulation"}, sections))
    return false;
  for (const std::string& section : sections)
    if (!root.child(section, 1).isEmpty()) return Refuse("<" + section + "> stands twice");
  // Motions name nodes, and outputs name anything.
  return ReadHead(root) && ReadParameters(root.child("parameters"), -1) &&
         ReadInputs(root.child("inputs")) && ReadNodes(root.child("nodes")) &&
         ReadOutputHeads(root.child("outputs")) && ReadMotions(root.child("inputs")) &&
         ReadOutputs(root.child("outputs")) && SortOutputs();
}

bool TemplateReader::ReadHead(const Element& root) {
  TemplateDefinition& d = *m_definition;
  std::string version;
  d.category = "Accessory";
  if (!ReadText(root, "version", version)) return false;
  if (version != kVersion)
    return Refuse("version " + Quoted(version) + " is not known, only " + kVersion);
  if (!ReadText(root, "id", d.id) || !ReadText(root, "name", d.name) ||
      !ReadText(root, "category", d.category))
    return false;
  if (!IsIdentifier(d.id))
    return Refuse("the id " + Quoted(d.id) + " may hold letters, digits and _, a letter first");
  double simulation = d.simulation;
  if (!root.attribute("simulation").empty() && !ReadNumber(root, "simulation", simulation))
    return false;
  if (simulation < 1.0 || simulation > 1e6 || simulation != std::floor(simulation))
    return Refuse("simulation is a whole number from 1 up");
  d.simulation = static_cast<int>(simulation);
  d.author = Plain(root.attribute("author"));
  const Element& description = root.child("description");
  d.description = Plain(description.text());
  return true;
}

// --- parameters ---

bool TemplateReader::ReadParameters(const Element& section, int group) {
  if (section.isEmpty()) return true;
  const Place place(*this, section);
  const bool isGroup = group >= 0;
  Names kinds = {"spinner", "integer", "checkbox"};
  if (!isGroup) kinds.emplace_back("group");
  if (!CheckShape(section, isGroup ? Names{"label", "tooltip"} : Names{}, kinds)) return false;
  for (const Element* child : section.children) {
    if (child->kind != util::xml::kTag) continue;
    if (child->name != "group") {
      if (!ReadParameter(*child, group)) return false;
      continue;
    }
    TemplateGroup inner;
    if (!ReadText(*child, "label", inner.label)) return false;
    inner.tooltip = Plain(child->attribute("tooltip"));
    m_definition->groups.push_back(std::move(inner));
    if (!ReadParameters(*child, static_cast<int>(m_definition->groups.size()) - 1)) return false;
  }
  return true;
}

bool TemplateReader::ReadParameter(const Element& element, int group) {
  const Place place(*this, element);
  TemplateParameter parameter;
  parameter.group = group;
  Names attributes = {"name", "label", "tooltip", "value"};
  if (element.name == "checkbox") {
    parameter.kind = ParameterKind::kFlag;
    parameter.range.max = 1.0;
  } else {
    attributes.insert(attributes.end(), {"min", "max", "step", "live"});
    if (element.name == "spinner") attributes.emplace_back("decimals");
    if (element.name == "integer") parameter.kind = ParameterKind::kCount;
  }
  if (!CheckShape(element, attributes, {})) return false;
  const int index = static_cast<int>(m_definition->parameters.size());
  std::string name;
  if (!ReadText(element, "name", name) || !TakeName(name, {Meaning::kParameter, index}))
    return false;
  parameter.tooltip = Plain(element.attribute("tooltip"));
  if (!ReadText(element, "label", parameter.label) || !TakeLabel(parameter.label)) return false;
  if (!ReadRange(element, parameter)) return false;
  m_definition->parameters.push_back(std::move(parameter));
  return true;
}

bool TemplateReader::ReadRange(const Element& element, TemplateParameter& parameter) {
  if (parameter.kind == ParameterKind::kFlag) {
    bool on = false;
    if (!ReadFlag(element, "value", on)) return false;
    parameter.value = on ? 1.0 : 0.0;
    return true;
  }
  const bool isWhole = parameter.kind == ParameterKind::kCount;
  for (const char* needed : {"value", "min", "max"})
    if (!element.hasAttribute(needed))
      return Refuse(std::string("the attribute ") + Quoted(needed) + " is missing");
  parameter.range.step = isWhole ? 1.0 : 0.01;
  double* const numbers[] = {&parameter.value, &parameter.range.min, &parameter.range.max,
                             &parameter.range.step};
  const char* const attributes[] = {"value", "min", "max", "step"};
  for (int i = 0; i < 4; ++i) {
    int whole = static_cast<int>(*numbers[i]);
    if (isWhole && !ReadWhole(element, attributes[i], whole)) return false;
    if (isWhole) *numbers[i] = whole;
    if (!isWhole && !ReadNumber(element, attributes[i], *numbers[i])) return false;
  }
  if (!ReadWhole(element, "decimals", parameter.range.decimals) ||
      !ReadFlag(element, "live", parameter.asInput))
    return false;
  if (parameter.range.decimals < 0 || parameter.range.decimals > 15)
    return Refuse("decimals is not from 0 to 15");
  if (!(parameter.range.step > 0.0)) return Refuse("step is not above 0");
  if (!(parameter.range.min < parameter.range.max)) return Refuse("min is not below max");
  if (parameter.value < parameter.range.min || parameter.value > parameter.range.max)
    return Refuse("value does not lie from min to max");
  return true;
}

// --- inputs ---

bool TemplateReader::ReadInputs(const Element& section) {
  if (section.isEmpty()) return true;
  const Place place(*this, section);
  if (!CheckShape(section, {}, {"input", "motion"})) return false;
  for (const Element* child : section.children)
    if (child->isTag("input") && !ReadInput(*child)) return false;
  return true;
}

bool TemplateReader::ReadInput(const Element& element) {
  const Place place(*this, element);
  if (!CheckShape(element, {"name", "label", "kinds"}, {})) return false;
  TemplateInput input;
  std::string name;
  const int index = static_cast<int>(m_definition->inputs.size());
  if (!ReadText(element, "name", name) || !TakeName(name, {Meaning::kInput, index}) ||
      !ReadText(element, "label", input.label))
    return false;
  if (!m_inputLabels.insert(input.label).second)
    return Refuse("the label " + Quoted(input.label) + " is taken");
  if (input.label.rfind("Spinner: ", 0) == 0)
    return Refuse("a label that begins with \"Spinner: \" is reserved");
  std::string kinds = "axis button hat";
  if (!ReadText(element, "kinds", kinds)) return false;
  for (const std::string& word : Words(kinds)) {
    const auto* const kind =
        std::find_if(std::begin(kControlKinds), std::end(kControlKinds),
                     [&](const ControlKindName& known) { return known.name == word; });
    if (kind == std::end(kControlKinds))
      return Refuse(Quoted(word) + " is no kind of control; write axis, button or hat");
    input.kinds |= kind->kind;
  }
  m_definition->inputs.push_back(std::move(input));
  return true;
}

bool TemplateReader::ReadMotions(const Element& section) {
  if (section.isEmpty()) return true;
  const Place place(*this, section);
  FindCarriedNodes();
  for (const Element* child : section.children)
    if (child->isTag("motion") && !ReadMotion(*child)) return false;
  return true;
}

void TemplateReader::FindCarriedNodes() {
  m_isCarried.clear();
  for (const TemplateNode& node : m_definition->nodes)  // parents first
    m_isCarried.push_back(node.IsMoved() || (node.parent >= 0 && m_isCarried[node.parent]));
}

bool TemplateReader::ReadMotion(const Element& element) {
  const Place place(*this, element);
  std::string node, channel;
  if (!CheckShape(element, {"name", "node", "channel"}, {}) || !ReadText(element, "node", node) ||
      !ReadText(element, "channel", channel))
    return false;
  TemplateMotion motion;
  motion.node = FindNode(node);
  motion.channel = TemplateChannelOf(channel);
  if (motion.node < 0) return Refuse("there is no node " + Quoted(node));
  if (motion.channel < 0 || motion.channel >= kPoseChannels)
    return Refuse(Quoted(channel) + " is no channel of a pose, such as translate x");
  if (m_isCarried[static_cast<std::size_t>(motion.node)])
    return Refuse("the node " + Quoted(node) +
                  " is moved by the outputs of this template: read those");
  std::string name;
  const int index = static_cast<int>(m_definition->motions.size());
  if (!ReadText(element, "name", name) || !TakeName(name, {Meaning::kMotion, index})) return false;
  m_definition->motions.push_back(motion);
  return true;
}

// --- nodes ---

bool TemplateReader::ReadNodes(const Element& section) {
  if (section.isEmpty()) return Refuse("there are no <nodes>: a tool has at least one");
  const Place place(*this, section);
  if (!CheckShape(section, {}, {"box", "cylinder", "camera"})) return false;
  for (const Element* child : section.children)
    if (child->kind == util::xml::kTag && !ReadNode(*child)) return false;
  return !m_definition->nodes.empty() || Refuse("there is no node: a tool has at least one");
}

bool TemplateReader::ReadNode(const Element& element) {
  const Place place(*this, element);
  Names attributes = {"name", "parent", "at", "helper"};
  if (element.name == "box") attributes.insert(attributes.end(), {"size", "centre", "colour"});
  if (element.name == "cylinder")
    attributes.insert(attributes.end(),
                      {"radius", "length", "segments", "axis", "centre", "colour"});
  if (element.name == "camera") attributes.insert(attributes.end(), {"fieldofview", "nearclip"});
  TemplateNode node;
  if (!CheckShape(element, attributes, {}) || !ReadText(element, "name", node.name)) return false;
  if (!IsIdentifier(node.name))
    return Refuse("the name of a node may hold letters, digits and _, a letter first");
  const int index = static_cast<int>(m_definition->nodes.size());
  if (!m_nodes.emplace(node.name, index).second)
    return Refuse("the node name " + Quoted(node.name) + " is taken");
  if (element.hasAttribute("parent")) {
    const std::string parent = Plain(element.attribute("parent"));
    node.parent = FindNode(parent);
    if (node.parent < 0 || node.parent == index)
      return Refuse("there is no node " + Quoted(parent) + " above it to be its parent");
  }
  if (!ReadVector(element, "at", node.place) || !ReadFlag(element, "helper", node.isHelper) ||
      !ReadShape(element, node))
    return false;
  m_definition->nodes.push_back(std::move(node));
  return true;
}

bool TemplateReader::ReadShape(const Element& element, TemplateNode& node) {
  if (element.hasAttribute("colour")) {
    Vector colour;
    if (!ReadVector(element, "colour", colour)) return false;
    for (int i = 0; i < 3; ++i)
      if (colour[i] < 0.0 || colour[i] > 1.0)
        return Refuse("a colour is red, green and blue from 0 to 1");
    node.colour = colour;
  }
  Vector centre;
  if (!ReadVector(element, "centre", centre)) return false;
  if (element.name == "camera") {
    node.isCamera = true;
    if (!ReadNumber(element, "fieldofview", node.lens.fieldOfView) ||
        !ReadNumber(element, "nearclip", node.lens.nearClip))
      return false;
    return node.lens.IsPossible() ||
           Refuse("fieldofview must lie between 0 and 180 degrees, nearclip above 0");
  }
  if (element.name == "box") {
    Vector size(1.0, 1.0, 1.0);
    if (!ReadVector(element, "size", size)) return false;
    if (!(size.x > 0.0 && size.y > 0.0 && size.z > 0.0)) return Refuse("size is not above 0");
    node.mesh = util::CMesh_Box(size.x, size.y, size.z, centre);
    return true;
  }
  double radius = 0.5;
  double length = 1.0;
  int segments = 24;
  std::string axis = "y";
  if (!ReadNumber(element, "radius", radius) || !ReadNumber(element, "length", length) ||
      !ReadWhole(element, "segments", segments) || !ReadText(element, "axis", axis))
    return false;
  if (!(radius > 0.0 && length > 0.0)) return Refuse("radius or length is not above 0");
  if (segments < 3 || segments > kMostSegments)
    return Refuse("segments is not from 3 to " + std::to_string(kMostSegments));
  if (axis.size() != 1 || axis[0] < 'x' || axis[0] > 'z') return Refuse("axis is not x, y or z");
  node.mesh = util::CMesh_Cylinder(radius, length, segments, axis[0] - 'x');
  for (Vector& vertex : node.mesh.vertices) vertex = vertex + centre;
  return true;
}

}  // namespace orv::rws::addon
