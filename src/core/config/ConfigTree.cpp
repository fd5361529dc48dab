#include "core/config/ConfigTree.h"

#include <cmath>
#include <cstdint>
#include <cstring>

#include "core/instances/RecordKeys.h"
#include "util/NumberText.h"
#include "util/xml/Base64.h"
#include "util/xml/Tag.h"

namespace orv::rws::core {

namespace {

using namespace record;
using Kind = ConfigElement::Kind;
using util::xml::Element;
using util::xml::Tag;

constexpr std::size_t kDoubleSize = 8;

/// Base64 of the eight bytes, lowest first.
std::string blobText(double value) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  unsigned char bytes[kDoubleSize];
  for (std::size_t i = 0; i < kDoubleSize; ++i)
    bytes[i] = static_cast<unsigned char>(bits >> (8 * i));
  return util::xml::encodeBase64(bytes, kDoubleSize);
}

bool parseBlob(const std::string& text, double& value) {
  std::vector<unsigned char> bytes;
  if (!util::xml::decodeBase64(text, bytes) || bytes.size() != kDoubleSize) return false;
  std::uint64_t bits = 0;
  for (std::size_t i = 0; i < kDoubleSize; ++i) bits |= std::uint64_t{bytes[i]} << (8 * i);
  std::memcpy(&value, &bits, sizeof value);
  return std::isfinite(value);
}

/// Text without the blanks that an editor may leave around it.
std::string tokenOf(const Element& item) {
  const std::string text = item.text();
  const std::size_t begin = text.find_first_not_of(" \t\r\n");
  if (begin == std::string::npos) return {};
  return text.substr(begin, text.find_last_not_of(" \t\r\n") - begin + 1);
}

bool readNumber(const Element& item, double& value) {
  const std::string token = tokenOf(item);
  if (item.attribute(kType) == kBlob) return parseBlob(token, value);
  return util::parseNumber(token, value);
}

/// False when the item holds no value for this element.
bool readItem(const Element& item, ConfigElement& element) {
  std::string ignored;
  double value = 0.0;
  switch (element.kind()) {
    case Kind::kTextBox:
      return item.attribute(kType) != kBlob && element.setValueText(item.text(), ignored);
    case Kind::kCheckBox:
      if (item.attribute(kType) != kBlob) return element.setValueText(tokenOf(item), ignored);
      [[fallthrough]];
    case Kind::kSpinnerInt:
    case Kind::kComboBox:
      return readNumber(item, value) && element.setNumber(std::round(value));
    case Kind::kSpinner:
      return readNumber(item, value) && element.setNumber(value);
    case Kind::kGroup:
    case Kind::kButton:
    case Kind::kLabel:
      return true;  // nothing to set: the label of a button in an old file
  }
  return false;
}

Tag writeItem(const ConfigElement& element) {
  Tag item(kItem);
  item.setAttribute(kId, std::to_string(element.id()));
  const bool isText = element.kind() == Kind::kTextBox;
  const bool isReal = element.kind() == Kind::kSpinner;
  if (isText || isReal) item.setAttribute(kType, isText ? kText : kBlob);
  item.setAttribute(kLabel, element.label());
  if (isReal)
    item.setText(blobText(element.number()));
  else if (isText)
    item.setText(element.valueText());
  else
    item.setText(std::to_string(std::lround(element.number())));
  return item;
}

void writeGroup(const ConfigElement& group, Element& out) {
  for (const auto& child : group.children()) {
    if (child->kind() == Kind::kGroup) {
      Tag tag(kGroup);
      tag.setAttribute(kId, "-1");
      tag.setAttribute(kLabel, child->label());
      writeGroup(*child, tag);
      out.emplaceChild(std::move(tag));
    } else if (child->hasValue()) {
      out.emplaceChild(writeItem(*child));
    }
  }
}

/// The first of a group's own elements that `wanted` accepts, else the first of the groups in it.
template <class Wanted>
ConfigElement* search(const ConfigElement* group, const Wanted& wanted) {
  if (!group) return nullptr;
  for (const auto& child : group->children()) {
    if (wanted(*child)) return child.get();
  }
  for (const auto& child : group->children()) {
    if (ConfigElement* found = search(child.get(), wanted)) return found;
  }
  return nullptr;
}

ConfigElement* searchGroup(const ConfigElement* around, const std::string& label) {
  return search(around, [&](const ConfigElement& element) {
    return element.kind() == Kind::kGroup && element.label() == label;
  });
}

}  // namespace

ConfigTree::ConfigTree() = default;

ConfigTree::~ConfigTree() = default;

// --- building ---

void ConfigTree::begin() {
  if (!m_root) m_root.reset(new ConfigElement(Kind::kGroup, -1, {}, {}));
  m_open = m_root.get();
}

ConfigElement& ConfigTree::append(Kind kind, std::string label, std::string tooltip, bool takesId) {
  if (!m_open) begin();
  const int id = takesId ? static_cast<int>(m_byId.size()) : -1;
  std::unique_ptr<ConfigElement> element(
      new ConfigElement(kind, id, std::move(label), std::move(tooltip)));
  element->m_parent = m_open;
  m_elements.push_back(element.get());
  if (takesId) m_byId.push_back(element.get());
  m_open->m_children.push_back(std::move(element));
  return *m_elements.back();
}

void ConfigTree::beginGroup(std::string label, std::string tooltip) {
  m_open = &append(Kind::kGroup, std::move(label), std::move(tooltip), false);
}

ConfigElement* ConfigTree::endGroup() {
  if (m_open && m_open->m_parent) m_open = m_open->m_parent;
  return m_open;
}

int ConfigTree::addSpinnerInt(std::string label, std::string tooltip, int* value, int min, int max,
                              int step, Callback* cb) {
  ConfigElement& element = append(Kind::kSpinnerInt, std::move(label), std::move(tooltip), true);
  element.m_variable = value;
  element.m_range = {double(min), double(max), double(step), 0};
  element.m_callback = cb;
  return element.id();
}

int ConfigTree::addSpinner(std::string label, std::string tooltip, double* value, double min,
                           double max, double step, int decimals, Callback* cb) {
  ConfigElement& element = append(Kind::kSpinner, std::move(label), std::move(tooltip), true);
  element.m_variable = value;
  element.m_range = {min, max, step, decimals};
  element.m_callback = cb;
  return element.id();
}

int ConfigTree::addCheckBox(std::string label, std::string tooltip, bool* value, Callback* cb) {
  ConfigElement& element = append(Kind::kCheckBox, std::move(label), std::move(tooltip), true);
  element.m_variable = value;
  element.m_range = {0.0, 1.0, 1.0, 0};
  element.m_callback = cb;
  return element.id();
}

int ConfigTree::addTextBox(std::string label, std::string tooltip, std::string* value,
                           Callback* cb) {
  ConfigElement& element = append(Kind::kTextBox, std::move(label), std::move(tooltip), true);
  element.m_variable = value;
  element.m_callback = cb;
  return element.id();
}

int ConfigTree::addComboBox(std::string label, std::string tooltip, std::vector<std::string> items,
                            int* index, Callback* cb) {
  ConfigElement& element = append(Kind::kComboBox, std::move(label), std::move(tooltip), true);
  element.m_variable = index;
  element.m_items = std::move(items);
  element.m_callback = cb;
  return element.id();
}

int ConfigTree::addButton(std::string label, std::string tooltip, Callback* cb) {
  ConfigElement& element = append(Kind::kButton, std::move(label), std::move(tooltip), true);
  element.m_callback = cb;
  return element.id();
}

void ConfigTree::addLabel(std::string text) {
  append(Kind::kLabel, std::move(text), {}, false);
}

// --- looking up ---

ConfigElement* ConfigTree::find(int id) const {
  if (id < 0 || static_cast<std::size_t>(id) >= m_byId.size()) return nullptr;
  return m_byId[static_cast<std::size_t>(id)];
}

std::vector<ConfigElement*> ConfigTree::findAll(const std::string& label) const {
  std::vector<ConfigElement*> found;
  for (ConfigElement* element : m_byId) {
    if (element->label() == label) found.push_back(element);
  }
  return found;
}

// --- profiles ---

void ConfigTree::write(Tag& profile) const {
  profile.setAttribute(record::kVersion, kVersion);
  if (m_root) writeGroup(*m_root, profile);
}

std::string ConfigTree::read(const Element& profile) {
  std::string problem;
  readGroup(profile, m_root.get(), problem);
  return problem;
}

ConfigElement* ConfigTree::resolveItem(const Element& item, const ConfigElement* around) const {
  if (item.hasAttribute(kId)) {
    int id = -1;
    return util::parseNumber(item.attribute(kId), id) ? find(id) : nullptr;
  }
  const std::string label = item.attribute(kLabel);
  return search(around, [&](const ConfigElement& element) {
    return element.id() >= 0 && element.label() == label;
  });
}

void ConfigTree::readGroup(const Element& group, const ConfigElement* around,
                           std::string& problem) {
  for (const Element* child : group.children) {
    if (child->kind != util::xml::kTag) continue;
    if (child->name == kGroup) {
      readGroup(*child, searchGroup(around, child->attribute(kLabel)), problem);
    } else if (child->name == kItem) {
      ConfigElement* element = resolveItem(*child, around);
      if (!element || !element->hasValue()) continue;
      if (readItem(*child, *element))
        element->apply();
      else
        problem += (problem.empty() ? "no value for \"" : ", \"") + element->label() + "\"";
    }
  }
}

void ConfigTree::upgrade(Element& profile) const {
  upgradeGroup(profile, m_root.get());
}

void ConfigTree::upgradeGroup(Element& group, const ConfigElement* around) const {
  for (Element* child : group.children) {
    if (child->kind != util::xml::kTag) continue;
    if (child->name == kGroup) {
      upgradeGroup(*child, searchGroup(around, child->attribute(kLabel)));
    } else if (child->name == kItem && !child->hasAttribute(kId)) {
      const ConfigElement* element = resolveItem(*child, around);
      if (!element) continue;
      child->attributes.insert(child->attributes.begin(), {kId, std::to_string(element->id())});
      double value = 0.0;
      if (element->kind() != Kind::kSpinner || !readNumber(*child, value)) continue;
      child->attributes.insert(child->attributes.begin() + 1, {kType, kBlob});
      child->setText(blobText(value));
    }
  }
}

}  // namespace orv::rws::core
