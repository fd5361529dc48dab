#include "util/xml/Element.h"

#include <algorithm>
#include <memory>

namespace orv::util::xml {

namespace {

bool hasName(const Element& element, std::string_view name) {
  return element.kind != kText && element.kind != kComment && element.name == name;
}

bool equalAlone(const Element& a, const Element& b) {
  return a.kind == b.kind && a.name == b.name && a.attributes == b.attributes &&
         a.children.size() == b.children.size();
}

}  // namespace

const char* errorText(int readError) {
  switch (readError) {
    case kReadOk:
      return "no error";
    case kCannotRead:
      return "the file is absent or cannot be read";
    case kNoRoot:
      return "it holds no tag";
    case kOutsideRoot:
      return "text or a second tag stands beside the root tag";
    case kWrongClosing:
      return "a closing tag does not match the open one";
    case kMalformed:
      return "an attribute is broken, a tag is not closed, or a closing tag holds an attribute";
    case kBadName:
      return "a tag has no name, or one that begins or ends with \"/\" or begins with \"!\"";
    case kTooDeep:
      return "tags are nested more than 1000 deep";
    default:
      return "unknown error";
  }
}

Element::Element(const Element& other) : Element() {
  // A list of what is still to do in place of recursion: depth costs no stack.
  std::vector<std::pair<const Element*, Element*>> pending = {{&other, this}};
  while (!pending.empty()) {
    const auto [from, to] = pending.back();
    pending.pop_back();
    to->attributes = from->attributes;
    to->name = from->name;
    to->kind = from->kind;
    to->children.reserve(from->children.size());
    for (const Element* child : from->children) {
      to->children.push_back(new Element);
      pending.emplace_back(child, to->children.back());
    }
  }
}

Element::Element(Element&& other) noexcept
    : attributes(std::move(other.attributes)),
      children(std::move(other.children)),
      name(std::move(other.name)),
      kind(other.kind) {
  other.attributes.clear();
  other.children.clear();
  other.name.clear();
  other.kind = 0;
}

Element& Element::operator=(Element&& other) noexcept {
  if (this == &other) return *this;
  Element taken(std::move(other));  // first, as `other` may be a child that the next lines delete
  attributes.swap(taken.attributes);
  children.swap(taken.children);
  name.swap(taken.name);
  kind = taken.kind;
  return *this;
}

Element& Element::operator=(const Element& other) {
  if (this != &other) Element::operator=(Element(other));
  return *this;
}

Element::~Element() {
  destroyChildren();
}

void Element::destroyChildren() noexcept {
  std::vector<Element*> pending;
  pending.swap(children);
  while (!pending.empty()) {
    Element* element = pending.back();
    pending.pop_back();
    for (Element* child : element->children) {
      if (child->children.empty()) {
        delete child;
      } else {
        pending.push_back(child);
      }
    }
    element->children.clear();
    delete element;
  }
}

const std::string& Element::setName(const std::string& newName) {
  name = newName;
  return name;
}

Element& Element::adopt(Element* child) {
  std::unique_ptr<Element> owned(child);
  children.push_back(child);
  return *owned.release();
}

Element& Element::addChild(const Element& child) {
  if (child.name.empty() && child.children.empty()) return *this;
  return adopt(new Element(child));
}

Element& Element::emplaceChild(Element&& child) {
  if (child.name.empty() && child.children.empty()) return *this;
  return adopt(new Element(std::move(child)));
}

bool Element::removeChild(const Element& child) {
  const auto found = std::find_if(children.begin(), children.end(),
                                  [&](const Element* own) { return *own == child; });
  if (found == children.end()) return false;
  const std::unique_ptr<Element> doomed(*found);
  children.erase(found);
  return true;
}

Element* Element::findChild(std::string_view childName, int index) {
  if (index < 0) return nullptr;
  for (Element* child : children) {
    if (hasName(*child, childName) && index-- == 0) return child;
  }
  return nullptr;
}

const Element& Element::child(std::string_view childName, int index) const {
  const Element* found = const_cast<Element*>(this)->findChild(childName, index);
  return found ? *found : empty();
}

const Element& Element::empty() {
  static const Element shared;
  return shared;
}

bool Element::hasAttribute(std::string_view attributeName) const {
  return std::any_of(attributes.begin(), attributes.end(),
                     [&](const auto& pair) { return pair.first == attributeName; });
}

std::string Element::attribute(std::string_view attributeName) const {
  for (const auto& [key, value] : attributes) {
    if (key == attributeName) return value;
  }
  return {};
}

void Element::setAttribute(std::string_view attributeName, std::string_view value) {
  for (auto& [key, old] : attributes) {
    if (key == attributeName) {
      old = value;
      return;
    }
  }
  attributes.emplace_back(attributeName, value);
}

std::string Element::text() const {
  std::string joined;
  for (const Element* child : children) {
    if (child->kind == kText) joined += child->name;
  }
  return joined;
}

void Element::setText(std::string_view content) {
  Element text;
  text.kind = kText;
  text.name = content;  // before the old text goes, which `content` may be part of
  const auto behind = std::stable_partition(children.begin(), children.end(),
                                            [](const Element* c) { return c->kind != kText; });
  std::for_each(behind, children.end(), [](Element* old) { delete old; });
  children.erase(behind, children.end());
  emplaceChild(std::move(text));
}

bool operator==(const Element& a, const Element& b) {
  std::vector<std::pair<const Element*, const Element*>> pending = {{&a, &b}};
  while (!pending.empty()) {
    const auto [left, right] = pending.back();
    pending.pop_back();
    if (!equalAlone(*left, *right)) return false;
    for (std::size_t i = 0; i < left->children.size(); ++i) {
      pending.emplace_back(left->children[i], right->children[i]);
    }
  }
  return true;
}

}  // namespace orv::util::xml
