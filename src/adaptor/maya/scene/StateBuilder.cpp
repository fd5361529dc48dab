#include "adaptor/maya/scene/StateBuilder.h"

#include <utility>

#include "util/xml/Tag.h"

namespace orv::rws::adaptor::maya {

namespace {

constexpr char kStateRoot[] = "state";
constexpr char kStateOrder[] = "order";
constexpr char kStateRig[] = "rig";
constexpr char kStateRows[] = "groups";
// An attribute keeps blanks at the ends of a text.
constexpr char kStateText[] = "value";

}  // namespace

StateBuilder::StateBuilder(std::string name, std::string text)
    : m_name(std::move(name)), m_text(std::move(text)) {}

StateBuilder& StateBuilder::Add(const std::string& name, const std::string& text) {
  auto* const piece = new StateBuilder(name, text);
  addChild(piece);
  return *piece;
}

const StateBuilder* StateBuilder::Find(const std::string& name) const {
  for (const StateBuilder* piece : children())
    if (piece->GetName() == name) return piece;
  return nullptr;
}

void StateBuilder::Write(util::xml::Element& out) const {
  if (!m_text.empty()) out.setAttribute(kStateText, m_text);
  for (const StateBuilder* piece : children()) {
    util::xml::Tag tag(piece->m_name);
    piece->Write(tag);
    out.emplaceChild(std::move(tag));
  }
}

std::string StateBuilder::Build() const {
  util::xml::Tag tag(m_name);
  Write(tag);
  return tag.toText("", "");
}

void StateBuilder::Take(const util::xml::Element& from) {
  m_text = from.attribute(kStateText);
  for (const util::xml::Element* child : from.children)
    if (child->kind == util::xml::kTag) Add(child->name).Take(*child);
}

std::unique_ptr<StateBuilder> StateBuilder::Read(const std::string& text, std::string& problem) {
  util::xml::Tag tag("");
  if (tag.loadText(text, &problem) != 0) return nullptr;
  auto root = std::make_unique<StateBuilder>(tag.name);
  root->Take(tag);
  return root;
}

std::string BuildState(const SceneState& state) {
  StateBuilder root(kStateRoot);
  StateBuilder& order = root.Add(kStateOrder);
  for (const std::string& name : state.order) order.Add(kStateRig, name);
  if (!state.rows.empty()) root.Add(kStateRows, state.rows);
  return root.Build();
}

bool ReadState(const std::string& text, SceneState& state, std::string& problem) {
  state = {};
  if (text.empty()) return true;
  const std::unique_ptr<StateBuilder> root = StateBuilder::Read(text, problem);
  if (!root) return false;
  if (const StateBuilder* order = root->Find(kStateOrder))
    for (const StateBuilder* rig : order->children()) state.order.push_back(rig->GetText());
  if (const StateBuilder* rows = root->Find(kStateRows)) state.rows = rows->GetText();
  return true;
}

}  // namespace orv::rws::adaptor::maya
