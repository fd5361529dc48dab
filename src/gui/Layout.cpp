#include "gui/Layout.h"

#include <utility>
#include <vector>

namespace orv::gui {

namespace {

bool IsRoot(const std::string& name) {
  return name == "dialog" || name == "list" || name == "border";
}

/// Why the document is too large to be built, or an empty text.
std::string TooLarge(const util::xml::Element& root) {
  std::vector<std::pair<const util::xml::Element*, int>> open{{&root, 1}};
  for (int count = 0; !open.empty();) {
    const auto [element, depth] = open.back();
    open.pop_back();
    if (element->kind != util::xml::kTag) continue;
    if (depth > kMaxLayoutDepth)
      return "its elements are nested deeper than " + std::to_string(kMaxLayoutDepth);
    if (++count > kMaxLayoutElements)
      return "it has more than " + std::to_string(kMaxLayoutElements) + " elements";
    for (const util::xml::Element* child : element->children) open.emplace_back(child, depth + 1);
  }
  return {};
}

}  // namespace

Layout::Layout(LayoutServices services, const Factories* factories)
    : m_services(std::move(services)),
      m_factories(factories ? *factories : util::AbstractFactory<Component>::instance()) {
  if (!factories) RegisterElements();
}

Layout::~Layout() = default;

void Layout::Log(const std::string& line) const {
  if (m_services.log) m_services.log(line);
}

void Layout::LogOnce(const std::string& line) {
  if (m_logged.insert(line).second) Log(line);
}

void Layout::Forget() {
  m_documents.clear();
}

std::unique_ptr<util::xml::Element> Layout::Parse(std::string_view bytes, const std::string& name,
                                                  std::string& problem) const {
  auto root = std::make_unique<util::xml::Element>();
  if (root->loadText(bytes, &problem) != util::xml::kReadOk) {
    problem = name + ": " + problem;
    return nullptr;
  }
  problem.clear();
  if (!IsRoot(root->name))
    problem = "its root is \"" + root->name + "\", and not dialog, list or border";
  else
    problem = TooLarge(*root);
  if (problem.empty()) return root;
  problem = name + ": " + problem;
  return nullptr;
}

std::unique_ptr<util::xml::Element> Layout::Read(const std::string& path) {
  std::string bytes, problem;
  std::unique_ptr<util::xml::Element> carried;
  if (m_services.readFactory && m_services.readFactory(path, bytes)) {
    carried = Parse(bytes, path, problem);
    if (!carried) Log("The program's own layout can't be used: " + problem);
  }
  if (!m_services.readUser || !m_services.readUser(path, bytes)) {
    if (!carried && problem.empty()) Log("There is no layout " + path);
    return carried;
  }
  std::unique_ptr<util::xml::Element> user = Parse(bytes, path, problem);
  if (user && carried && user->name != carried->name) {
    problem = path + ": its root is \"" + user->name + "\", and must be \"" + carried->name + "\"";
    user.reset();
  }
  if (user) return user;
  Log("The layout in the data folder is passed over: " + problem +
      "; mend or delete the file to be rid of this message");
  return carried;
}

const util::xml::Element* Layout::Document(const std::string& path) {
  const auto known = m_documents.find(path);
  if (known != m_documents.end()) return known->second.get();
  std::unique_ptr<util::xml::Element> document = Read(path);
  // What can't be used is tried again the next time: the user may have mended it.
  if (!document) return nullptr;
  return (m_documents[path] = std::move(document)).get();
}

ComponentPtr Layout::Load(const std::string& path) {
  const util::xml::Element* document = Document(path);
  return document ? Build(*document, path) : nullptr;
}

ComponentPtr Layout::LoadText(std::string_view document, const std::string& name) {
  std::string problem;
  const std::unique_ptr<util::xml::Element> root = Parse(document, name, problem);
  if (root) return Build(*root, name);
  Log("The layout can't be used: " + problem);
  return nullptr;
}

Component* Layout::Instantiate(const std::string& path, Component& parent, int index) {
  ComponentPtr row = Load(path);
  if (!row) return nullptr;
  parent.insertChild(row.get(), index < 0 ? parent.childCount() : index);
  return row.release();
}

ComponentPtr Layout::Build(const util::xml::Element& tag, const std::string& name) {
  ComponentPtr component(m_factories.create(tag));
  if (!component) {
    LogOnce(name + ": there is no element \"" + tag.name + "\"; it is left out");
    return nullptr;
  }
  for (const auto& attribute : tag.attributes)
    if (!component->KnowsAttribute(attribute.first))
      LogOnce(name + ": " + tag.name + " has no attribute \"" + attribute.first +
              "\"; it is passed over");
  for (const util::xml::Element* child : tag.children) {
    if (child->kind != util::xml::kTag || component->OwnsTag(child->name)) continue;
    if (ComponentPtr built = Build(*child, name)) component->addChild(built.release());
  }
  return component;
}

}  // namespace orv::gui
