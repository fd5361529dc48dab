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
std::string BlobText(double value) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  unsigned char bytes[kDoubleSize];
  for (std::size_t i = 0; i < kDoubleSize; ++i)
    bytes[i] = static_cast<unsigned char>(bits >> (8 * i));
  return util::xml::encodeBase64(bytes, kDoubleSize);
}

bool ParseBlob(const std::string& text, double& value) {
  std::vector<unsigned char> bytes;
  if (!util::xml::decodeBase64(text, bytes) || bytes.size() != kDoubleSize) return false;
  std::uint64_t bits = 0;
  for (std::size_t i = 0; i < kDoubleSize; ++i) bits |= std::uint64_t{bytes[i]} << (8 * i);
  std::memcpy(&value, &bits, sizeof value);
  return std::isfinite(value);
}

/// Text without the blanks that an editor may leave around it.
std::string TokenOf(const Element& item) {
  const std::string text = item.text();
  const std::size_t begin = text.find_first_not_of(" \t\r\n");
  if (begin == std::string::npos) return {};
  return text.substr(begin, text.find_last_not_of(" \t\r\n") - begin + 1);
}

bool ReadNumber(const Element& item, double& value) {
  const std::string token = TokenOf(item);
  if (item.attribute(kType) == kBlob) return ParseBlob(token, value);
  return util::parseNumber(token, value);
}

/// False when the item holds no value for this element.
bool ReadItem(const Element& item, ConfigElement& element) {
  std::string ignored;
  double value = 0.0;
  switch (element.GetKind()) {
    case Kind::kTextBox:
      return item.attribute(kType) != kBlob && element.SetValueText(item.text(), ignored);
    case Kind::kCheckBox:
      if (item.attribute(kType) != kBlob) return element.SetValueText(TokenOf(item), ignored);
      [[fallthrough]];
    case Kind::kSpinnerInt:
    case Kind::kComboBox:
      return ReadNumber(item, value) && element.SetNumber(std::round(value));
    case Kind::kSpinner:
      return ReadNumber(item, value) && element.SetNumber(value);
    case Kind::kGroup:
    case Kind::kButton:
    case Kind::kLabel:
      return true;  // nothing to set: the label of a button in an old file
  }
  return false;
}

Tag WriteItem(const ConfigElement& element) {
  Tag item(kItem);
  item.setAttribute(kId, std::to_string(element.GetId()));
  const bool isText = element.GetKind() == Kind::kTextBox;
  const bool isReal = element.GetKind() == Kind::kSpinner;
  if (isText || isReal) item.setAttribute(kType, isText ? kText : kBlob);
  item.setAttribute(kLabel, element.GetLabel());
  if (isReal)
    item.setText(BlobText(element.GetNumber()));
  else if (isText)
    item.setText(element.GetValueText());
  else
    item.setText(std::to_string(std::lround(element.GetNumber())));
  return item;
}

void WriteGroup(const ConfigElement& group, Element& out) {
  for (const auto& child : group.GetChildren()) {
    if (child->GetKind() == Kind::kGroup) {
      Tag tag(kGroup);
      tag.setAttribute(kId, "-1");
      tag.setAttribute(kLabel, child->GetLabel());
      WriteGroup(*child, tag);
      out.emplaceChild(std::move(tag));
    } else if (child->HasValue()) {
      out.emplaceChild(WriteItem(*child));
    }
  }
}

/// The first of a group's own elements that `wanted` accepts, else the first of the groups in it.
template <class Wanted>
ConfigElement* Search(const ConfigElement* group, const Wanted& wanted) {
  if (!group) return nullptr;
  for (const auto& child : group->GetChildren()) {
    if (wanted(*child)) return child.get();
  }
  for (const auto& child : group->GetChildren()) {
    if (ConfigElement* found = Search(child.get(), wanted)) return found;
  }
  return nullptr;
}

ConfigElement* SearchGroup(const ConfigElement* around, const std::string& label) {
  return Search(around, [&](const ConfigElement& element) {
    return element.GetKind() == Kind::kGroup && element.GetLabel() == label;
  });
}

}  // namespace

ConfigTree::ConfigTree() = default;

ConfigTree::~ConfigTree() = default;

// --- building ---

void ConfigTree::Begin() {
  if (!m_root) m_root.reset(new ConfigElement(Kind::kGroup, -1, {}, {}));
  m_open = m_root.get();
}

ConfigElement& ConfigTree::Append(Kind kind, std::string label, std::string tooltip, bool takesId) {
  if (!m_open) Begin();
  const int id = takesId ? static_cast<int>(m_byId.size()) : -1;
  std::unique_ptr<ConfigElement> element(
      new ConfigElement(kind, id, std::move(label), std::move(tooltip)));
  element->m_parent = m_open;
  m_elements.push_back(element.get());
  if (takesId) m_byId.push_back(element.get());
  m_open->m_children.push_back(std::move(element));
  return *m_elements.back();
}

void ConfigTree::BeginGroup(std::string label, std::string tooltip) {
  m_open = &Append(Kind::kGroup, std::move(label), std::move(tooltip), false);
}

ConfigElement* ConfigTree::EndGroup() {
  if (m_open && m_open->m_parent) m_open = m_open->m_parent;
  return m_open;
}

int ConfigTree::AddSpinnerInt(std::string label, std::string tooltip, int* value, int min, int max,
                              int step, Callback* cb) {
  ConfigElement& element = Append(Kind::kSpinnerInt, std::move(label), std::move(tooltip), true);
  element.m_variable = value;
  element.m_range = {double(min), double(max), double(step), 0};
  element.m_callback = cb;
  return element.GetId();
}

int ConfigTree::AddSpinner(std::string label, std::string tooltip, double* value, double min,
                           double max, double step, int decimals, Callback* cb) {
  ConfigElement& element = Append(Kind::kSpinner, std::move(label), std::move(tooltip), true);
  element.m_variable = value;
  element.m_range = {min, max, step, decimals};
  element.m_callback = cb;
  return element.GetId();
}

int ConfigTree::AddCheckBox(std::string label, std::string tooltip, bool* value, Callback* cb) {
  ConfigElement& element = Append(Kind::kCheckBox, std::move(label), std::move(tooltip), true);
  element.m_variable = value;
  element.m_range = {0.0, 1.0, 1.0, 0};
  element.m_callback = cb;
  return element.GetId();
}

int ConfigTree::AddTextBox(std::string label, std::string tooltip, std::string* value,
                           Callback* cb) {
  ConfigElement& element = Append(Kind::kTextBox, std::move(label), std::move(tooltip), true);
  element.m_variable = value;
  element.m_callback = cb;
  return element.GetId();
}

int ConfigTree::AddComboBox(std::string label, std::string tooltip, std::vector<std::string> items,
                            int* index, Callback* cb) {
  ConfigElement& element = Append(Kind::kComboBox, std::move(label), std::move(tooltip), true);
  element.m_variable = index;
  element.m_items = std::move(items);
  element.m_callback = cb;
  return element.GetId();
}

int ConfigTree::AddButton(std::string label, std::string tooltip, Callback* cb) {
  ConfigElement& element = Append(Kind::kButton, std::move(label), std::move(tooltip), true);
  element.m_callback = cb;
  return element.GetId();
}

void ConfigTree::AddLabel(std::string text) {
  Append(Kind::kLabel, std::move(text), {}, false);
}

// --- looking up ---

ConfigElement* ConfigTree::Find(int id) const {
  if (id < 0 || static_cast<std::size_t>(id) >= m_byId.size()) return nullptr;
  return m_byId[static_cast<std::size_t>(id)];
}

std::vector<ConfigElement*> ConfigTree::FindAll(const std::string& label) const {
  std::vector<ConfigElement*> found;
  for (ConfigElement* element : m_byId) {
    if (element->GetLabel() == label) found.push_back(element);
  }
  return found;
}

// --- profiles ---

void ConfigTree::Write(Tag& profile) const {
  profile.setAttribute(record::kVersion, kVersion);
  if (m_root) WriteGroup(*m_root, profile);
}

std::string ConfigTree::Read(const Element& profile) {
  std::string problem;
  ReadGroup(profile, m_root.get(), problem);
  return problem;
}

ConfigElement* ConfigTree::ResolveItem(const Element& item, const ConfigElement* around) const {
  if (item.hasAttribute(kId)) {
    int id = -1;
    return util::parseNumber(item.attribute(kId), id) ? Find(id) : nullptr;
  }
  const std::string label = item.attribute(kLabel);
  return Search(around, [&](const ConfigElement& element) {
    return element.GetId() >= 0 && element.GetLabel() == label;
  });
}

void ConfigTree::ReadGroup(const Element& group, const ConfigElement* around,
                           std::string& problem) {
  for (const Element* child : group.children) {
    if (child->kind != util::xml::kTag) continue;
    if (child->name == kGroup) {
      ReadGroup(*child, SearchGroup(around, child->attribute(kLabel)), problem);
    } else if (child->name == kItem) {
      ConfigElement* element = ResolveItem(*child, around);
      if (!element || !element->HasValue()) continue;
      if (ReadItem(*child, *element))
        element->Apply();
      else
        problem += (problem.empty() ? "no value for \"" : ", \"") + element->GetLabel() + "\"";
    }
  }
}

void ConfigTree::Upgrade(Element& profile) const {
  UpgradeGroup(profile, m_root.get());
}

void ConfigTree::UpgradeGroup(Element& group, const ConfigElement* around) const {
  for (Element* child : group.children) {
    if (child->kind != util::xml::kTag) continue;
    if (child->name == kGroup) {
      UpgradeGroup(*child, SearchGroup(around, child->attribute(kLabel)));
    } else if (child->name == kItem && !child->hasAttribute(kId)) {
      const ConfigElement* element = ResolveItem(*child, around);
      if (!element) continue;
      child->attributes.insert(child->attributes.begin(), {kId, std::to_string(element->GetId())});
      double value = 0.0;
      if (element->GetKind() != Kind::kSpinner || !ReadNumber(*child, value)) continue;
      child->attributes.insert(child->attributes.begin() + 1, {kType, kBlob});
      child->setText(BlobText(value));
    }
  }
}

}  // namespace orv::rws::core
