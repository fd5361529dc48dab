#include "adaptor/maya/scene/StorageValues.h"

#include "util/NumberText.h"
#include "util/xml/Tag.h"

namespace orv::rws::adaptor::maya {

namespace {

using util::xml::Element;
using util::xml::Tag;

constexpr char kRawRoot[] = "storage";
constexpr char kRawText[] = "text";
constexpr char kRawList[] = "list";
constexpr char kRawNumber[] = "number";
constexpr char kRawEntry[] = "entry";
constexpr char kRawName[] = "name";
constexpr char kRawValue[] = "value";

Tag RawTag(const char* kind, const std::string& name, const std::string& value) {
  Tag tag(kind);
  tag.setAttribute(kRawName, name);
  tag.setAttribute(kRawValue, value);
  return tag;
}

template <class Map>
const typename Map::mapped_type& Look(const Map& map, const std::string& name) {
  static const typename Map::mapped_type none{};
  const auto found = map.find(name);
  return found == map.end() ? none : found->second;
}

}  // namespace

const std::string& StorageValues::Text(const std::string& name) const {
  return Look(m_texts, name);
}

const std::vector<std::string>& StorageValues::Texts(const std::string& name) const {
  return Look(m_lists, name);
}

int StorageValues::Number(const std::string& name) const {
  return Look(m_numbers, name);
}

std::string StorageValues::ToRaw() const {
  Tag root(kRawRoot);
  for (const auto& [name, value] : m_texts) root.emplaceChild(RawTag(kRawText, name, value));
  for (const auto& [name, value] : m_numbers)
    root.emplaceChild(RawTag(kRawNumber, name, std::to_string(value)));
  for (const auto& [name, values] : m_lists) {
    Tag list = RawTag(kRawList, name, {});
    for (const std::string& value : values) list.emplaceChild(RawTag(kRawEntry, {}, value));
    root.emplaceChild(std::move(list));
  }
  return root.toText("", "\n");
}

StorageValues StorageValues::FromRaw(const std::string& raw) {
  StorageValues values;
  Tag root("");
  if (root.loadText(raw) != 0) return values;
  for (const Element* child : root.children) {
    const std::string name = child->attribute(kRawName);
    const std::string value = child->attribute(kRawValue);
    int number = 0;
    if (child->isTag(kRawText)) values.SetText(name, value);
    if (child->isTag(kRawNumber) && util::parseNumber(value, number))
      values.SetNumber(name, number);
    if (!child->isTag(kRawList)) continue;
    std::vector<std::string> list;
    for (const Element* entry : child->children) list.push_back(entry->attribute(kRawValue));
    values.SetTexts(name, std::move(list));
  }
  return values;
}

}  // namespace orv::rws::adaptor::maya
