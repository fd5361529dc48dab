// What all elements do alike.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "gui/Component.h"

namespace orv::gui {

class StdComponent : public Component {
 public:
  explicit StdComponent(const util::xml::Element& tag);
  ~StdComponent() override;

  void SetLabel(const std::string& label) override;
  std::string GetShownLabel() const override;
  void SetTooltip(const std::string& tooltip) override;
  std::string GetShownTooltip() const override;
  void SetAccessibleName(const std::string& name) override;
  std::string GetShownName() const override;
  void SetEnabled(bool enabled, const std::string& why = {}) override;
  void SetVisible(bool visible) override;
  void SetMarked(bool marked) override;
  void SetMinSize(int width, int height) override;
  void SetMaxSize(int width, int height) override;
  void SetDesiredSize(int width, int height) override;
  void Moved(int left, int top, int width, int height) override;
  void SetStyle(const std::string& style) override;
  void SetBackground(Background* background) override;
  Menu& MakePopup() override;
  void OpenPopup(int x, int y) override;
  void SetDropFiles(bool accept) override;
  void TakeFocus() override;
  void Retranslate() override;
  void SetPathAlias(const std::string& alias, const std::vector<std::string>& folders) override;
  std::vector<std::string> ResolvePath(const std::string& path) const override;
  void Realise(Toolkit& toolkit, Peer* parent = nullptr) override;
  void Unrealise() override;
  void Freeze() override;
  void Thaw() override;

  void childRemoving() override;
  void onChildAdded(Component* child, int index) override;

 protected:
  /// Tells the peer, if there is one.
  void Changed(unsigned changes);
  /// The peer is about to be taken away; called before each end of a realisation.
  virtual void PeerGoes() {}

 private:
  void WatchPopup();
  void AddToPeer(Component& child, int index);
  /// This one's and those of all below it, which forget them.
  void TakePeers(std::vector<std::unique_ptr<Peer>>& peers);

  std::map<std::string, std::vector<std::string>> m_aliases;
  int m_frozen = 0;
};

/// An element with its typed interface.
template <class Interface>
class Element : public StdComponent, public Interface {
 public:
  using StdComponent::StdComponent;
  Component& GetComponent() override { return *this; }
};

}  // namespace orv::gui
