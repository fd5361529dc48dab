// A node of a window's tree.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "gui/Attributes.h"
#include "gui/Background.h"
#include "gui/Menu.h"
#include "gui/Toolkit.h"
#include "util/AbstractFactory.h"
#include "util/Composite_Dynamic.h"
#include "util/DynamicObject.h"
#include "util/MessageNode.h"
#include "util/xml/Element.h"

namespace orv::gui {

/// A window is a tree of these, built of a document. Its code finds components by number, holds
/// their `componentinterface` type and listens to the root for the messages of GuiMessages.h.
///
/// A component holds its whole state by itself. It can be read and set before, while and after it
/// is realised; a change of a realised one reaches its widget at once. Main thread only.
///
/// Whoever is given a root owns it (`destroy`, or ComponentPtr); a parent owns its children.
class Component : public util::DynamicObject,
                  public util::Composite_Dynamic<Component>,
                  public util::MessageNode {
 public:
  class Factory : public util::DynamicObject {
   public:
    /// The element's name.
    virtual std::string name() const = 0;
    virtual bool matches(const util::xml::Element& tag) const { return tag.name == name(); }
    /// Never with its children: Layout adds these.
    virtual Component* create(const util::xml::Element& tag) const = 0;
  };

  /// Reads the common attributes and the children that are no components: background, abackground,
  /// popup, tooltip, flag.
  explicit Component(const util::xml::Element& tag);

  /// The element's name, by which a toolkit knows what to make.
  virtual const char* GetElement() const = 0;
  /// Whether an element of this kind has the attribute.
  virtual bool KnowsAttribute(std::string_view name) const;
  /// Whether a child tag of this name is no component but part of this one.
  virtual bool OwnsTag(std::string_view name) const;

  int GetId() const { return m_attributes.id; }
  const Attributes& GetAttributes() const { return m_attributes; }
  /// First with this id in this subtree, depth first, this one before its children; or null.
  Component* Find(int id);
  /// The same as the type that the caller works with, such as componentinterface::Spinner; null
  /// also when it is of another type.
  template <class Interface>
  Interface* Get(int id) {
    return dynamic_cast<Interface*>(Find(id));
  }
  Component& GetRoot();

  // A window's own number for the root of a row that it has instantiated, so that it knows of which
  // row a message comes. 0 without.
  void SetRow(int row) { m_row = row; }
  /// That of this one or of the nearest above it that has one.
  int GetRow() const;
  /// The component that carries it, or null.
  Component* GetRowRoot();

  // Texts that code sets are shown as they are; those of a document are translated.
  virtual void SetLabel(const std::string& label) = 0;
  const std::string& GetLabel() const { return m_attributes.label; }
  /// As it is shown.
  virtual std::string GetShownLabel() const = 0;
  /// Whether it is still the document's, English and with a mnemonic.
  bool IsDocumentLabel() const { return m_labelIsEnglish; }
  virtual void SetTooltip(const std::string& tooltip) = 0;
  /// As it is shown: why the component is disabled, if that was told, else its tooltip.
  virtual std::string GetShownTooltip() const = 0;
  /// For who hears or drives the window; else it is the label, the tooltip, or the label before.
  virtual void SetAccessibleName(const std::string& name) = 0;
  /// What SetAccessibleName or the document tells, as it is read out.
  virtual std::string GetShownName() const = 0;

  /// `why`, which is shown as tooltip while the component is disabled, tells what to do.
  virtual void SetEnabled(bool enabled, const std::string& why = {}) = 0;
  bool IsEnabled() const { return m_attributes.enabled; }
  virtual void SetVisible(bool visible) = 0;
  bool IsVisible() const { return m_attributes.visible; }
  /// Drawn as differing from its default, in the accent colour (a value's label, a field).
  virtual void SetMarked(bool marked) = 0;
  bool IsMarked() const { return m_marked; }

  /// Pixels at 96 dpi, as in the document. kUnset and kNoLimit free what they stand for.
  virtual void SetMinSize(int width, int height) = 0;
  virtual void SetMaxSize(int width, int height) = 0;
  virtual void SetDesiredSize(int width, int height) = 0;
  /// Position and size as they are on the screen; what the document says until then.
  int GetLeft() const { return m_attributes.left; }
  int GetTop() const { return m_attributes.top; }
  int GetWidth() const { return m_attributes.width; }
  int GetHeight() const { return m_attributes.height; }
  /// Stores what the toolkit reports and posts kMsgMoved.
  virtual void Moved(int left, int top, int width, int height) = 0;

  virtual void SetStyle(const std::string& style) = 0;
  /// Takes ownership; null for none.
  virtual void SetBackground(Background* background) = 0;
  const Background* GetBackground() const { return m_background.get(); }
  /// Of the active state: a button is pressed or down, a box ticked, a dialog the active window.
  const Background* GetActiveBackground() const { return m_activeBackground.get(); }
  bool HasFlag(int bit) const { return bit >= 0 && bit < 64 && (m_flags >> bit & 1u) != 0; }

  /// The menu on a right click or the menu key; null when the component has none.
  Menu* GetPopup() { return m_popup.get(); }
  /// Makes one if there is none yet.
  virtual Menu& MakePopup() = 0;
  /// Opens it at a place in the component, or below it.
  virtual void OpenPopup(int x = kUnset, int y = kUnset) = 0;
  /// Posts kMsgFilesDropped for files dropped on it.
  virtual void SetDropFiles(bool accept) = 0;
  bool TakesFiles() const { return m_dropFiles; }

  virtual void TakeFocus() = 0;
  /// Shows all texts of the subtree anew after a change of language.
  virtual void Retranslate() = 0;

  /// Stands for `alias`, such as "[images]", at the beginning of paths in this root: folders, the
  /// first of which that has the file wins.
  virtual void SetPathAlias(const std::string& alias, const std::vector<std::string>& folders) = 0;
  /// Paths that `path` may mean, in order of preference; itself when it has no alias.
  virtual std::vector<std::string> ResolvePath(const std::string& path) const = 0;

  /// Makes the toolkit's objects of this subtree. Children that are added later are realised then.
  virtual void Realise(Toolkit& toolkit, Peer* parent = nullptr) = 0;
  /// Takes them away again; the state stays.
  virtual void Unrealise() = 0;
  Peer* GetPeer() const { return m_peer.get(); }
  Toolkit* GetToolkit() const { return m_toolkit; }
  /// Between these two a realised subtree is neither laid out nor painted; they nest. See Frozen.
  virtual void Freeze() = 0;
  virtual void Thaw() = 0;

  /// Posts to the listeners of this one and of all above it, each once. False when that destroyed
  /// this component.
  bool Post(std::int32_t id, std::int32_t param = 0, void* data = nullptr);
  /// Leaves its parent at once and is destroyed when nothing is being delivered any more: how a
  /// window ends a component in answer to a message of it.
  void Retire();

  ~Component() override;
  void destroyNode() override { destroy(); }

 protected:
  /// Has it destroyed later, when nothing is being delivered.
  static void RetirePeer(std::unique_ptr<Peer> peer, Toolkit& toolkit);

  Attributes m_attributes;
  std::string m_tooltip;
  std::string m_whyDisabled;
  bool m_labelIsEnglish = true;  ///< from the document, translated when shown
  bool m_tooltipIsEnglish = true;
  bool m_nameIsEnglish = true;
  bool m_marked = false;
  bool m_dropFiles = false;
  std::uint64_t m_flags = 0;
  int m_row = 0;
  std::unique_ptr<Background> m_background, m_activeBackground;
  std::unique_ptr<Menu> m_popup;
  std::unique_ptr<Peer> m_peer;
  Toolkit* m_toolkit = nullptr;
};

/// Bits of `flag` children that mean something to the toolkit; the others are the window's.
enum Flag : int {
  kInitialFocus = 0,  ///< has the focus when its window opens
};

struct ComponentDestroyer {
  void operator()(Component* component) const { util::destroy(component); }
};
/// Owns a root.
using ComponentPtr = std::unique_ptr<Component, ComponentDestroyer>;

/// Freezes a subtree while it lives.
class Frozen {
 public:
  explicit Frozen(Component& component) : m_component(component) { m_component.Freeze(); }
  Frozen(const Frozen&) = delete;
  Frozen& operator=(const Frozen&) = delete;
  ~Frozen() { m_component.Thaw(); }

 private:
  Component& m_component;
};

/// Destroys what has been retired; does nothing while a message is being delivered.
void DestroyRetired();
bool HasRetired();
/// Whether a message is being delivered, or what has been retired is held: what handles an event
/// may be further out.
bool IsDelivering();

/// Nothing that has been retired is destroyed while one of these lives: for a toolkit's event that
/// runs an event loop of its own.
class HoldRetired {
 public:
  HoldRetired();
  HoldRetired(const HoldRetired&) = delete;
  HoldRetired& operator=(const HoldRetired&) = delete;
  ~HoldRetired();
};

/// A factory of elements whose class is made of its tag alone.
template <class Class>
class ElementFactory : public Component::Factory {
 public:
  explicit ElementFactory(const char* name) : m_name(name) {}
  std::string name() const override { return m_name; }
  Component* create(const util::xml::Element& tag) const override { return new Class(tag); }

 private:
  const char* m_name;
};

/// Adds the elements of the language to AbstractFactory<Component>; any number of calls. Further
/// ones are added by `AbstractFactory<Component>::instance().add(new ElementFactory<X>("x"))`.
void RegisterElements();

}  // namespace orv::gui
