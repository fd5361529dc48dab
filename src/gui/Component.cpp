#include "gui/Component.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "gui/Texts.h"

namespace orv::gui {

namespace {

/// A message under way from a component to its root; those of nested ones are chained.
struct Delivery {
  explicit Delivery(Component* source);
  ~Delivery();
  void Forget(const Component* dead) { std::replace(path.begin(), path.end(), dead, kGone); }

  static constexpr const Component* kGone = nullptr;
  std::vector<const Component*> path;  ///< from the source to the root; null once destroyed
  Delivery* outer;
};

Delivery* g_delivery = nullptr;
int g_held = 0;
bool g_scheduled = false;  ///< a toolkit will call DestroyRetired

Delivery::Delivery(Component* source) : outer(std::exchange(g_delivery, this)) {
  for (const Component* node = source; node; node = node->parent()) path.push_back(node);
}

Delivery::~Delivery() {
  g_delivery = outer;
}

// Never destroyed themselves, as components of a process's last objects may retire after them.
std::vector<ComponentPtr>& Retired() {
  static auto* components = new std::vector<ComponentPtr>;
  return *components;
}

std::vector<std::unique_ptr<Peer>>& RetiredPeers() {
  static auto* peers = new std::vector<std::unique_ptr<Peer>>;
  return *peers;
}

void Schedule(Toolkit& toolkit) {
  g_scheduled = true;
  toolkit.ScheduleRetired();
}

void DestroyAll() {
  g_scheduled = false;
  for (auto& retired = Retired(); !retired.empty();) {
    const ComponentPtr component = std::move(retired.back());
    retired.pop_back();
  }
  // From the top down: a widget takes those within it along.
  const std::vector<std::unique_ptr<Peer>> peers = std::exchange(RetiredPeers(), {});
}

Background* ReadBackground(const util::xml::Element& tag) {
  RegisterBackgrounds();
  return util::AbstractFactory<Background>::instance().create(tag);
}

}  // namespace

Component::Component(const util::xml::Element& tag) : MessageNode(tag.name) {
  for (const auto& [name, value] : tag.attributes) ReadAttribute(m_attributes, name, value);
  // The size that is told is a wish; what comes of it is stored in its place.
  if (m_attributes.desiredWidth == kUnset) m_attributes.desiredWidth = m_attributes.width;
  if (m_attributes.desiredHeight == kUnset) m_attributes.desiredHeight = m_attributes.height;
  for (const util::xml::Element* child : tag.children) {
    if (child->kind != util::xml::kTag) continue;
    if (child->name == "background") m_background.reset(ReadBackground(*child));
    if (child->name == "abackground") m_activeBackground.reset(ReadBackground(*child));
    if (child->name == "tooltip") m_tooltip = child->text();
    if (child->name == "flag") {
      const int bit = ReadInt(child->attribute("value"), -1);
      if (bit >= 0 && bit < 64) m_flags |= std::uint64_t(1) << bit;
    }
    if (child->name == "popup") {
      m_popup = std::make_unique<Menu>();
      m_popup->Read(*child);
    }
  }
}

bool Component::KnowsAttribute(std::string_view name) const {
  return IsCommonAttribute(name);
}

bool Component::OwnsTag(std::string_view name) const {
  static constexpr std::string_view kTags[] = {"background", "abackground", "popup",
                                               "tooltip",    "flag",        "color"};
  return std::find(std::begin(kTags), std::end(kTags), name) != std::end(kTags);
}

Component* Component::Find(int id) {
  if (id == kNoId) return nullptr;
  if (m_attributes.id == id) return this;
  for (Component* child : m_children)
    if (Component* found = child->Find(id)) return found;
  return nullptr;
}

Component& Component::GetRoot() {
  Component* root = this;
  while (root->m_parent) root = root->m_parent;
  return *root;
}

Component* Component::GetRowRoot() {
  Component* node = this;
  while (node && node->m_row == 0) node = node->m_parent;
  return node;
}

int Component::GetRow() const {
  const Component* row = const_cast<Component*>(this)->GetRowRoot();
  return row ? row->m_row : 0;
}

bool Component::Post(std::int32_t id, std::int32_t param, void* data) {
  util::Message message(id, param, reinterpret_cast<std::uintptr_t>(data));
  message.origin = this;
  Delivery delivery(this);
  std::vector<const MessageNode*> told;
  for (std::size_t step = 0; step < delivery.path.size(); ++step) {
    // A listener may leave, or end this node: both are asked for anew after each call.
    for (int i = delivery.path[step] ? delivery.path[step]->listenerCount() - 1 : -1; i >= 0; --i) {
      auto* node = const_cast<Component*>(delivery.path[step]);
      if (!node) break;
      MessageNode* listener = node->listener(i);
      if (!listener || std::find(told.begin(), told.end(), listener) != told.end()) continue;
      told.push_back(listener);
      message.sender = node;
      message.target = listener;
      listener->onMessage(message, true);
    }
  }
  // Without a toolkit nobody's event is being handled further out.
  if (!delivery.outer && g_held == 0 && !g_scheduled) DestroyAll();
  return delivery.path.front() != nullptr;
}

void Component::Retire() {
  Toolkit* toolkit = m_toolkit;
  if (m_parent) m_parent->removeChild(this);
  Unrealise();
  Retired().emplace_back(this);
  if (toolkit)
    Schedule(*toolkit);
  else
    DestroyRetired();
}

void Component::RetirePeer(std::unique_ptr<Peer> peer, Toolkit& toolkit) {
  RetiredPeers().push_back(std::move(peer));
  if (IsDelivering()) Schedule(toolkit);
}

void DestroyRetired() {
  if (!IsDelivering()) DestroyAll();
}

bool IsDelivering() {
  return g_delivery || g_held > 0;
}

bool HasRetired() {
  return !Retired().empty() || !RetiredPeers().empty();
}

HoldRetired::HoldRetired() {
  ++g_held;
}

HoldRetired::~HoldRetired() {
  --g_held;
}

Component::~Component() {
  for (Delivery* delivery = g_delivery; delivery; delivery = delivery->outer)
    delivery->Forget(this);
}

}  // namespace orv::gui
