// The outputs of a template: what they write, what their expressions read, and in which order.
#include <algorithm>
#include <set>
#include <utility>

#include "plugins/release/templatetool/templatetool_TemplateReader.h"
#include "plugins/release/templatetool/templatetool_TemplateText.h"
#include "util/MathScript.h"

namespace orv::rws::addon {

using util::xml::Element;
using util::xml::Tag;
using Factories = util::FactoryManager<core::MathScript>;

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
    if (held >= 0)
      return Refuse("another output writes this channel of the node: " +
                    Quoted(m_definition->outputs[static_cast<std::size_t>(held)].name));
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

bool TemplateReader::RefuseSecond(const Element& first, const Element& second) {
  return Refuse("there is more than one expression: <" + second.name + "> behind <" + first.name +
                ">");
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
    if (output.HasExpression()) return RefuseSecond(output.expression, *child);
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
    if (!start.name.empty()) return RefuseSecond(start, *child);
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
                    (most == 1 ? " expression" : " expressions") + ": <" + child->name +
                    "> is one too many");
    if (!ReadExpression(*child, use)) return false;
  }
  if (element.name != "constant") return true;
  double number = 0.0;
  return core::MathScript::ReadNumber(element, number) ||
         Refuse(Quoted(Plain(element.text())) + " is no number");
}

bool TemplateReader::ReadReference(Element& element, const Use& use) {
  for (const Element* child : element.children)
    if (child->kind == util::xml::kTag)
      return Refuse("<" + element.name + "> holds a name alone, and no <" + child->name + ">");
  if (element.name == "before") return ReadBefore(element, use);
  const std::string name = Plain(element.text());
  if (int number = 0; core::MathScript::ReadNumber(element, number)) {
    const int count = static_cast<int>(m_definition->parameters.size());
    if (number < 0 || number >= count)
      return Refuse("there is no parameter number " + std::to_string(number) + " of the " +
                    std::to_string(count) + ", counted from 0");
    element.setText(std::to_string(m_definition->ParameterSlot() + number));
    return true;
  }
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
  RefuseCircle(missing);
  return false;
}

/// `missing` counts what each output still waits for. From one that waits the way through others
/// that do never ends: it comes round.
void TemplateReader::RefuseCircle(const std::vector<int>& missing) {
  const auto isLeft = [&](int i) { return missing[static_cast<std::size_t>(i)] > 0; };
  int at = 0;
  while (!isLeft(at)) ++at;
  std::vector<int> way;
  std::vector<bool> isPassed(missing.size(), false);
  while (!isPassed[static_cast<std::size_t>(at)]) {
    isPassed[static_cast<std::size_t>(at)] = true;
    way.push_back(at);
    const std::vector<int>& reads = m_reads[static_cast<std::size_t>(at)];
    at = *std::find_if(reads.begin(), reads.end(), isLeft);
  }
  constexpr int kShown = 8;  // of a long circle the first tell enough
  std::string circle;
  int shown = 0;
  for (auto it = std::find(way.begin(), way.end(), at); it != way.end(); ++it, ++shown) {
    if (shown == kShown) circle += "... reads ";
    if (shown < kShown)
      circle += Quoted(m_definition->outputs[static_cast<std::size_t>(*it)].name) + " reads ";
  }
  m_path.emplace_back("outputs");
  Refuse(circle + Quoted(m_definition->outputs[static_cast<std::size_t>(at)].name) +
         " in the same frame; read one of them with <before>");
  m_path.pop_back();
}

}  // namespace orv::rws::addon
