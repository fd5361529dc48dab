#include "plugins/release/templatetool/templatetool_TemplateReader.h"

#include <algorithm>
#include <cctype>
#include <set>
#include <utility>

#include "unidevice/Control.h"
#include "util/CMesh_Box.h"
#include "util/CMesh_Cylinder.h"
#include "util/MathScript.h"
#include "util/NumberText.h"

namespace orv::rws::addon {

using util::xml::Element;
using util::xml::Tag;
using Factories = util::FactoryManager<core::MathScript>;
using Vector = util::Vector3<double>;

namespace {

constexpr char kVersion[] = "1";
constexpr std::size_t kLongestName = 64;
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

std::string Quoted(const std::string& text) {
  return "\"" + text + "\"";
}

bool IsLetterOrDigit(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) && static_cast<unsigned char>(c) < 128;
}

/// Blanks at the ends go, others become one space each run.
std::string Plain(const std::string& text) {
  std::string plain;
  for (const char c : text) {
    const bool isBlank = c == ' ' || (c >= '\t' && c <= '\r');
    if (!isBlank)
      plain += c;
    else if (!plain.empty() && plain.back() != ' ')
      plain += ' ';
  }
  if (!plain.empty() && plain.back() == ' ') plain.pop_back();
  return plain;
}

/// Text where none belongs; blanks between elements are none.
bool IsStrayText(const Element& element) {
  return element.kind == util::xml::kText && !Plain(element.name).empty();
}

std::vector<std::string> Words(const std::string& text) {
  std::vector<std::string> words{""};
  for (const char c : Plain(text)) {
    if (c == ' ')
      words.emplace_back();
    else
      words.back() += c;
  }
  return words;
}

std::string Joined(const std::vector<std::string>& items) {
  std::string text;
  for (const std::string& item : items) text += (text.empty() ? "" : ", ") + item;
  return text;
}

/// A name in expressions: a letter first, then letters, digits, spaces and "_".
bool IsName(const std::string& name) {
  if (name.empty() || name.size() > kLongestName || name != Plain(name)) return false;
  if (!IsLetterOrDigit(name[0]) || std::isdigit(static_cast<unsigned char>(name[0]))) return false;
  return std::all_of(name.begin(), name.end(),
                     [](char c) { return IsLetterOrDigit(c) || c == ' ' || c == '_'; });
}

/// A part of names of scenes, folders and nodes: no spaces.
bool IsIdentifier(const std::string& name) {
  return IsName(name) && name.find(' ') == std::string::npos;
}

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
    return Refuse("the name may hold letters, digits, spaces and _, a letter first, and at most " +
                  std::to_string(kLongestName) + " characters");
  if (m_names.emplace(name, meaning).second) return true;
  const bool isReserved = m_names[name].kind <= Meaning::kDuration;
  return Refuse("the name " + Quoted(name) + (isReserved ? " is reserved" : " is taken"));
}

bool TemplateReader::TakeLabel(const std::string& label) {
  if (std::any_of(label.begin(), label.end(),
                  [](char c) { return static_cast<unsigned char>(c) < 32; }))
    return Refuse("the label holds a control character");
  if (std::find(m_labels.begin(), m_labels.end(), label) != m_labels.end())
    return Refuse("the label " + Quoted(label) + " is taken");
  m_labels.push_back(label);
  return true;
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
  for (std::size_t i = 0; i < m_definition->nodes.size(); ++i)
    if (m_definition->nodes[i].name == name) return static_cast<int>(i);
  return -1;
}

// --- the document ---

bool TemplateReader::Read(const std::string& document, TemplateDefinition& definition) {
  definition = {};
  m_definition = &definition;
  m_names = {{"time", {Meaning::kTime, 0}}, {"frame duration", {Meaning::kDuration, 0}}};
  m_labels = {"General Modes", "Hide Helpers", "Hide Helpers During Recording", "Re-Initialize"};
  m_reads.clear();
  m_path = {"document"};
  m_element.clear();
  Element root;
  if (const int error = root.loadText(document)) return Refuse(util::xml::errorText(error));
  if (root.name != "template")
    return Refuse("it begins with <" + root.name + ">, and a template with <template>");
  m_path.clear();
  const Place place(*this, root);
  const Names sections = {"description", "parameters", "inputs", "nodes", "outputs"};
  if (!CheckShape(root, {"version", "id", "name", "category", "author"}, sections)) return false;
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
    parameter.kind = TemplateParameter::Kind::kCheckBox;
    parameter.max = 1.0;
  } else {
    attributes.insert(attributes.end(), {"min", "max", "step", "live"});
    if (element.name == "spinner") attributes.emplace_back("decimals");
    if (element.name == "integer") parameter.kind = TemplateParameter::Kind::kInteger;
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
  if (parameter.kind == TemplateParameter::Kind::kCheckBox) {
    bool on = false;
    if (!ReadFlag(element, "value", on)) return false;
    parameter.value = on ? 1.0 : 0.0;
    return true;
  }
  const bool isWhole = parameter.kind == TemplateParameter::Kind::kInteger;
  for (const char* needed : {"value", "min", "max"})
    if (!element.hasAttribute(needed))
      return Refuse(std::string("the attribute ") + Quoted(needed) + " is missing");
  parameter.step = isWhole ? 1.0 : 0.01;
  double* const numbers[] = {&parameter.value, &parameter.min, &parameter.max, &parameter.step};
  const char* const attributes[] = {"value", "min", "max", "step"};
  for (int i = 0; i < 4; ++i) {
    int whole = static_cast<int>(*numbers[i]);
    if (isWhole && !ReadWhole(element, attributes[i], whole)) return false;
    if (isWhole) *numbers[i] = whole;
    if (!isWhole && !ReadNumber(element, attributes[i], *numbers[i])) return false;
  }
  if (!ReadWhole(element, "decimals", parameter.decimals) ||
      !ReadFlag(element, "live", parameter.asInput))
    return false;
  if (parameter.decimals < 0 || parameter.decimals > 15)
    return Refuse("decimals is not from 0 to 15");
  if (!(parameter.step > 0.0)) return Refuse("step is not above 0");
  if (!(parameter.min < parameter.max)) return Refuse("min is not below max");
  if (parameter.value < parameter.min || parameter.value > parameter.max)
    return Refuse("value does not lie from min to max");
  return true;
}

// --- inputs ---

bool TemplateReader::ReadInputs(const Element& section) {
  if (section.isEmpty()) return true;
  const Place place(*this, section);
  if (!CheckShape(section, {}, {"input", "motion"})) return false;
  for (const Element* child : section.children)
    if (child->name == "input" && child->kind == util::xml::kTag && !ReadInput(*child))
      return false;
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
  for (const TemplateInput& other : m_definition->inputs)
    if (other.label == input.label) return Refuse("the label " + Quoted(input.label) + " is taken");
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
  for (const Element* child : section.children)
    if (child->name == "motion" && child->kind == util::xml::kTag && !ReadMotion(*child))
      return false;
  return true;
}

bool TemplateReader::IsCarried(int node) const {
  for (; node >= 0; node = m_definition->nodes[static_cast<std::size_t>(node)].parent)
    if (m_definition->nodes[static_cast<std::size_t>(node)].IsMoved()) return true;
  return false;
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
  if (IsCarried(motion.node))
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
  if (FindNode(node.name) >= 0) return Refuse("the node name " + Quoted(node.name) + " is taken");
  if (element.hasAttribute("parent")) {
    const std::string parent = Plain(element.attribute("parent"));
    node.parent = FindNode(parent);
    if (node.parent < 0)
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

// --- outputs ---

bool TemplateReader::ReadOutputHeads(const Element& section) {
  if (section.isEmpty()) return true;
  const Place place(*this, section);
  if (!CheckShape(section, {}, {"output"})) return false;
  for (const Element* child : section.children)
    if (child->kind == util::xml::kTag && !ReadOutputHead(*child)) return false;
  HoldTheRestOfPoses();
  return true;
}

bool TemplateReader::ReadOutputHead(const Element& element) {
  const Place place(*this, element);
  for (const auto& [name, value] : element.attributes)
    if (name != "name" && name != "node" && name != "channel")
      return Refuse("there is no attribute " + Quoted(name) + " here, only name, node, channel");
  TemplateOutput output;
  const int index = static_cast<int>(m_definition->outputs.size());
  output.name = Plain(element.attribute("name"));
  if (element.hasAttribute("node") || element.hasAttribute("channel")) {
    std::string node, channel;
    if (!ReadText(element, "node", node) || !ReadText(element, "channel", channel)) return false;
    output.node = FindNode(node);
    output.channel = TemplateChannelOf(channel);
    if (output.node < 0) return Refuse("there is no node " + Quoted(node));
    if (output.channel < 0) return Refuse("there is no channel " + Quoted(channel));
    TemplateNode& target = m_definition->nodes[static_cast<std::size_t>(output.node)];
    if (output.channel >= kPoseChannels && !target.isCamera)
      return Refuse("the node " + Quoted(node) + " is no camera and has no lens");
    int& held = target.outputs[static_cast<std::size_t>(output.channel)];
    if (held >= 0) return Refuse("another output writes this channel of the node");
    held = index;
    if (output.name.empty()) output.name = node + " " + channel;
  }
  if (output.name.empty()) return Refuse("it has neither a name nor a node and a channel");
  if (!TakeName(output.name, {Meaning::kOutput, index})) return false;
  m_definition->outputs.push_back(std::move(output));
  return true;
}

/// A pose is written whole: what no output gives keeps the value that it has when a take begins.
void TemplateReader::HoldTheRestOfPoses() {
  for (std::size_t n = 0; n < m_definition->nodes.size(); ++n) {
    TemplateNode& node = m_definition->nodes[n];
    const auto first = node.outputs.begin();
    if (std::all_of(first, first + kPoseChannels, [](int output) { return output < 0; })) continue;
    for (int channel = 0; channel < kPoseChannels; ++channel) {
      int& held = node.outputs[static_cast<std::size_t>(channel)];
      if (held >= 0) continue;
      held = static_cast<int>(m_definition->outputs.size());
      TemplateOutput output;
      output.name = node.name + "/" + TemplateChannelName(channel);  // no name that a file can have
      output.node = static_cast<int>(n);
      output.channel = channel;
      output.isRemembered = output.readsMemory = true;
      m_definition->outputs.push_back(std::move(output));
    }
  }
}

bool TemplateReader::ReadOutputs(const Element& section) {
  m_reads.resize(m_definition->outputs.size());
  if (section.isEmpty()) return true;
  const Place place(*this, section);
  int index = 0;
  for (const Element* child : section.children)
    if (child->kind == util::xml::kTag && !ReadOutput(*child, index++)) return false;
  return true;
}

bool TemplateReader::ReadOutput(const Element& element, int index) {
  const Place place(*this, element);
  TemplateOutput& output = m_definition->outputs[static_cast<std::size_t>(index)];
  for (const Element* child : element.children) {
    if (IsStrayText(*child)) return RefuseText(*child);
    if (child->kind != util::xml::kTag) continue;
    if (child->name == "start") {
      if (output.HasStart()) return Refuse("<start> stands twice");
      if (!ReadStart(*child, output.start, index)) return false;
      continue;
    }
    if (output.HasExpression()) return Refuse("there is more than one expression");
    output.expression = *child;
    if (!ReadExpression(output.expression, {index, false})) return false;
  }
  return output.HasExpression() || Refuse("there is no expression");
}

bool TemplateReader::ReadStart(const Element& element, Tag& start, int index) {
  const Place place(*this, element);
  for (const Element* child : element.children) {
    if (IsStrayText(*child)) return RefuseText(*child);
    if (child->kind != util::xml::kTag) continue;
    if (!start.name.empty()) return Refuse("there is more than one expression");
    start = *child;
    if (!ReadExpression(start, {index, true})) return false;
  }
  return !start.name.empty() || Refuse("there is no expression");
}

/// Checks an expression and turns its names into slots. As deep as a document can be read, which is
/// bounded.
bool TemplateReader::ReadExpression(Element& element, const Use& use) {
  const Place place(*this, element);
  if (!element.attributes.empty())
    return Refuse("there is no attribute " + Quoted(element.attributes[0].first) + " here");
  const bool isReference = element.name == "parameter" || element.name == "before";
  if (isReference) return ReadReference(element, use);
  const auto* factory = Factories::instance().find(element.name);
  if (!factory) return Refuse("there is no function <" + element.name + ">");
  const int most = factory->GetOperandCount();
  int count = 0;
  for (Element* child : element.children) {
    if (element.name != "constant" && IsStrayText(*child)) return RefuseText(*child);
    if (child->kind != util::xml::kTag) continue;
    if (most >= 0 && ++count > most)
      return Refuse("<" + element.name + "> takes at most " + std::to_string(most) +
                    (most == 1 ? " expression" : " expressions"));
    if (!ReadExpression(*child, use)) return false;
  }
  if (element.name != "constant") return true;
  double number = 0.0;
  const std::string text = Plain(element.text());
  return util::parseNumber(text, number) || Refuse(Quoted(text) + " is no number");
}

bool TemplateReader::ReadReference(Element& element, const Use& use) {
  for (const Element* child : element.children)
    if (child->kind == util::xml::kTag) return Refuse("<" + element.name + "> holds a name alone");
  if (element.name == "before") return ReadBefore(element, use);
  const std::string name = Plain(element.text());
  const auto found = m_names.find(name);
  if (found == m_names.end())
    return Refuse("there is no parameter, input or output " + Quoted(name));
  const Meaning& meaning = found->second;
  if (use.isStart && meaning.kind == Meaning::kInput)
    return Refuse("<start> can't read the input " + Quoted(name) +
                  ": a take and its resimulation would begin differently");
  if (meaning.kind == Meaning::kOutput) {
    const bool isReady =
        m_definition->outputs[static_cast<std::size_t>(meaning.index)].HasStart() &&
        meaning.index < use.output;
    if (use.isStart && !isReady)
      return Refuse(
          "<start> can read an output that stands above and has a <start> itself, which " +
          Quoted(name) + " does not");
    if (!use.isStart) m_reads[static_cast<std::size_t>(use.output)].push_back(meaning.index);
  }
  element.setText(std::to_string(SlotOf(meaning)));
  return true;
}

bool TemplateReader::ReadBefore(Element& element, const Use& use) {
  if (use.isStart) return Refuse("<start> has no frame before");
  const std::string name = Plain(element.text());
  int output = use.output;
  if (!name.empty()) {
    const auto found = m_names.find(name);
    if (found == m_names.end() || found->second.kind != Meaning::kOutput)
      return Refuse("there is no output " + Quoted(name) + "; <before> reads outputs alone");
    output = found->second.index;
  }
  m_definition->outputs[static_cast<std::size_t>(output)].isRemembered = true;
  m_definition->outputs[static_cast<std::size_t>(use.output)].readsMemory = true;
  element.setName("parameter");
  element.setText(std::to_string(m_definition->BeforeSlot() + output));
  return true;
}

/// Each output behind those that it reads in the same frame; else in the order of the file.
bool TemplateReader::SortOutputs() {
  const std::size_t count = m_reads.size();
  std::vector<int> missing(count, 0);
  std::vector<std::vector<int>> readers(count);
  for (std::size_t i = 0; i < count; ++i) {
    for (const int read : m_reads[i]) readers[static_cast<std::size_t>(read)].push_back(int(i));
    missing[i] = static_cast<int>(m_reads[i].size());
  }
  std::set<int> ready;
  for (std::size_t i = 0; i < count; ++i)
    if (missing[i] == 0) ready.insert(static_cast<int>(i));
  while (!ready.empty()) {
    const int next = *ready.begin();
    ready.erase(ready.begin());
    m_definition->order.push_back(next);
    const bool readsMemory = m_definition->outputs[static_cast<std::size_t>(next)].readsMemory;
    for (const int reader : readers[static_cast<std::size_t>(next)]) {
      if (readsMemory) m_definition->outputs[static_cast<std::size_t>(reader)].readsMemory = true;
      if (--missing[static_cast<std::size_t>(reader)] == 0) ready.insert(reader);
    }
  }
  if (m_definition->order.size() == count) return true;
  // From an output that is left over the way through others that are never ends: it comes round.
  const auto isLeft = [&](int i) { return missing[static_cast<std::size_t>(i)] > 0; };
  int at = 0;
  while (!isLeft(at)) ++at;
  std::vector<int> way;
  while (std::find(way.begin(), way.end(), at) == way.end()) {
    way.push_back(at);
    const std::vector<int>& reads = m_reads[static_cast<std::size_t>(at)];
    at = *std::find_if(reads.begin(), reads.end(), isLeft);
  }
  std::string circle;
  for (auto it = std::find(way.begin(), way.end(), at); it != way.end(); ++it)
    circle += Quoted(m_definition->outputs[static_cast<std::size_t>(*it)].name) + " reads ";
  m_path.emplace_back("outputs");
  Refuse(circle + Quoted(m_definition->outputs[static_cast<std::size_t>(at)].name) +
         " in the same frame; read one of them with <before>");
  m_path.pop_back();
  return false;
}

}  // namespace orv::rws::addon
