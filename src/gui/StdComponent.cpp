#include "gui/StdComponent.h"

#include <utility>

#include "gui/GuiMessages.h"
#include "gui/Texts.h"

namespace orv::gui {

StdComponent::StdComponent(const util::xml::Element& tag) : Component(tag) {
  WatchPopup();
}

StdComponent::~StdComponent() {
  StdComponent::Unrealise();
  // While this is still whole.
  while (!m_children.empty()) m_children.back()->destroyNode();
}

void StdComponent::Changed(unsigned changes) {
  if (m_peer) m_peer->Update(changes);
}

void StdComponent::SetLabel(const std::string& label) {
  m_labelIsEnglish = false;
  if (std::exchange(m_attributes.label, label) != label) Changed(kLabelChange);
}

std::string StdComponent::GetShownLabel() const {
  return m_labelIsEnglish ? Translate(m_attributes.label) : m_attributes.label;
}

void StdComponent::SetTooltip(const std::string& tooltip) {
  m_tooltipIsEnglish = false;
  if (std::exchange(m_tooltip, tooltip) != tooltip) Changed(kTooltipChange);
}

std::string StdComponent::GetShownTooltip() const {
  if (!m_attributes.enabled && !m_whyDisabled.empty()) return m_whyDisabled;
  if (m_tooltip.empty() && m_attributes.tooltipId != kUnset)
    return Translate(TooltipText(m_attributes.tooltipId));
  return m_tooltipIsEnglish ? Translate(m_tooltip) : m_tooltip;
}

void StdComponent::SetAccessibleName(const std::string& name) {
  m_attributes.name = name;
  m_nameIsEnglish = false;
  Changed(kNameChange);
}

std::string StdComponent::GetShownName() const {
  return m_nameIsEnglish ? Translate(m_attributes.name) : m_attributes.name;
}

void StdComponent::SetEnabled(bool enabled, const std::string& why) {
  const std::string reason = enabled ? std::string() : why;
  unsigned changes = 0;
  if (std::exchange(m_attributes.enabled, enabled) != enabled) changes |= kEnabledChange;
  if (std::exchange(m_whyDisabled, reason) != reason) changes |= kTooltipChange;
  if (changes) Changed(changes | kTooltipChange);
}

void StdComponent::SetVisible(bool visible) {
  if (std::exchange(m_attributes.visible, visible) != visible) Changed(kVisibleChange);
}

void StdComponent::SetMarked(bool marked) {
  if (std::exchange(m_marked, marked) != marked) Changed(kMarkChange);
}

void StdComponent::SetMinSize(int width, int height) {
  m_attributes.minWidth = width == kUnset ? 0 : width;
  m_attributes.minHeight = height == kUnset ? 0 : height;
  Changed(kSizeChange);
}

void StdComponent::SetMaxSize(int width, int height) {
  m_attributes.maxWidth = width == kUnset ? kNoLimit : width;
  m_attributes.maxHeight = height == kUnset ? kNoLimit : height;
  Changed(kSizeChange);
}

void StdComponent::SetDesiredSize(int width, int height) {
  m_attributes.desiredWidth = width;
  m_attributes.desiredHeight = height;
  Changed(kSizeChange);
}

void StdComponent::Moved(int left, int top, int width, int height) {
  m_attributes.left = left;
  m_attributes.top = top;
  m_attributes.width = width;
  m_attributes.height = height;
  Post(kMsgMoved, PackSize(width, height));
}

void StdComponent::SetStyle(const std::string& style) {
  if (std::exchange(m_attributes.style, style) != style) Changed(kStyleChange);
}

void StdComponent::SetBackground(Background* background) {
  m_background.reset(background);
  Changed(kStyleChange);
}

Menu& StdComponent::MakePopup() {
  if (!m_popup) {
    m_popup = std::make_unique<Menu>();
    WatchPopup();
  }
  return *m_popup;
}

void StdComponent::WatchPopup() {
  if (m_popup) m_popup->SetObserver([this](bool) { Changed(kMenuChange); });
}

void StdComponent::OpenPopup(int x, int y) {
  if (m_popup && m_peer) m_peer->OpenPopup(x, y);
}

void StdComponent::SetDropFiles(bool accept) {
  m_dropFiles = accept;
  Changed(kValueChange);
}

void StdComponent::TakeFocus() {
  if (m_peer) m_peer->TakeFocus();
}

void StdComponent::Retranslate() {
  Changed(kLabelChange | kTooltipChange | kMenuChange | kItemsChange | kNameChange);
  for (Component* child : m_children) child->Retranslate();
}

void StdComponent::SetPathAlias(const std::string& alias, const std::vector<std::string>& folders) {
  m_aliases[alias] = folders;
  Changed(kImageChange);
}

std::vector<std::string> StdComponent::ResolvePath(const std::string& path) const {
  for (const auto& [alias, folders] : m_aliases) {
    if (path.compare(0, alias.size(), alias) != 0) continue;
    std::vector<std::string> paths;
    for (const std::string& folder : folders) paths.push_back(folder + path.substr(alias.size()));
    return paths;
  }
  return m_parent ? m_parent->ResolvePath(path) : std::vector<std::string>{path};
}

void StdComponent::Realise(Toolkit& toolkit, Peer* parent) {
  if (m_peer) return;
  m_toolkit = &toolkit;
  m_peer = toolkit.Create(*this, parent);
  if (m_frozen > 0) m_peer->Freeze(true);
  for (int i = 0; i < childCount(); ++i) AddToPeer(*m_children[i], i);
  m_peer->Update(kAllChanges);
}

void StdComponent::AddToPeer(Component& child, int index) {
  child.Realise(*m_toolkit, m_peer.get());
  m_peer->AddChild(child, index);
}

void StdComponent::Unrealise() {
  if (!m_peer) return;
  std::vector<std::unique_ptr<Peer>> peers;
  Toolkit& toolkit = *m_toolkit;
  TakePeers(peers);
  for (std::size_t i = peers.size(); i-- > 0;) peers[i]->Detach(i == 0);
  for (std::unique_ptr<Peer>& peer : peers) RetirePeer(std::move(peer), toolkit);
  DestroyRetired();
}

void StdComponent::TakePeers(std::vector<std::unique_ptr<Peer>>& peers) {
  if (!m_peer) return;
  PeerGoes();
  peers.push_back(std::move(m_peer));
  m_toolkit = nullptr;
  for (Component* child : m_children)
    if (auto* standard = dynamic_cast<StdComponent*>(child)) standard->TakePeers(peers);
}

void StdComponent::Freeze() {
  if (m_frozen++ == 0 && m_peer) m_peer->Freeze(true);
}

void StdComponent::Thaw() {
  if (--m_frozen == 0 && m_peer) m_peer->Freeze(false);
}

void StdComponent::childRemoving() {
  if (!m_peer) return;
  if (m_parent && m_parent->GetPeer()) m_parent->GetPeer()->RemoveChild(*this);
  Unrealise();
}

void StdComponent::onChildAdded(Component* child, int index) {
  if (m_peer) AddToPeer(*child, index);
}

}  // namespace orv::gui
