// What all windows have in common.
#pragma once

#include <string>

#include "gui/Component.h"
#include "util/MessageNode.h"

class QWidget;

namespace orv::gui::componentinterface {
class Dialog;
}
namespace orv::rws::core {
class CoreImplementation;
}

namespace orv::rws::core::windows {

class Windows;

/// A document and what answers it. A window finds components by number, holds none of them that a
/// user's own document may lack (see `With`), and hears of everything by messages: of its
/// components, and of the core.
///
/// It stands by itself, as a window of its own, or docked: below a container of another window. A
/// document whose root is no dialog can do both; by itself it is put into a frame.
class Window : public util::MessageNode {
 public:
  /// `name` is that of its object and of what is kept of it (place, folds), `document` the path of
  /// its layout.
  Window(Windows& windows, const std::string& name, std::string document);
  ~Window() override;

  /// Loads the document and makes its widgets, hidden, unless that is done already. False when
  /// neither the user's nor the carried document can be used; the log tells.
  bool Build();
  /// The same below a container of a window that is built.
  bool BuildIn(gui::Component& container);
  /// Builds it where needed and shows it in front of the others. One that is docked is shown by the
  /// window around it.
  bool Show();
  void Hide();
  bool IsShown() const;

  /// Null before it is built, and once the window that it was docked in has gone.
  gui::Component* GetRoot() const { return m_root; }
  /// The window's widget, or the one that the docked root is; null before it is built.
  QWidget* GetWidget() const;
  /// Of a window of its own: what stands in its title bar, shown as it is.
  void SetTitle(const std::string& title);
  bool IsDocked() const { return m_docked; }

  /// Called some 15 times a second while it is shown: for what is told by no message because it
  /// changes with every frame.
  virtual void OnLive() {}
  /// The user's language, theme or units have changed; components show their texts anew by
  /// themselves.
  virtual void OnSettingsChanged() {}
  /// Title, file or changes of the scene, or the list of undo, are others.
  virtual void OnSceneChanged() {}
  /// The program has something to say that is worth no box; see Windows::ShowNotice.
  virtual void OnNotice(const std::string& /*text*/) {}

 protected:
  /// The components are there and their widgets not yet: fill in what is shown first.
  virtual void OnBuilt() {}
  virtual void OnShown() {}
  virtual void OnHidden() {}
  /// A component of this window has posted `message`; see gui/GuiMessages.h.
  virtual void OnComponent(gui::Component& /*source*/, util::Message& /*message*/) {}
  /// See core/CoreMessages.h.
  virtual void OnCore(const util::Message& /*message*/) {}

  /// Does it with the component of that number, when there is one of that type.
  template <class Interface, class Use>
  void With(int id, Use&& use) {
    if (Interface* component = Get<Interface>(id)) use(*component);
  }
  template <class Interface>
  Interface* Get(int id) const {
    return m_root ? m_root->Get<Interface>(id) : nullptr;
  }
  gui::Component* Find(int id) const { return m_root ? m_root->Find(id) : nullptr; }
  void SetEnabled(int id, bool enabled, const std::string& why = {});
  void SetText(int id, const std::string& text);  ///< of a label; shown as it is

  Windows& GetWindows() const { return m_windows; }
  CoreImplementation& GetCore() const;

 private:
  void Adopt(gui::Component* root);
  gui::ComponentPtr Frame(gui::ComponentPtr root);
  gui::componentinterface::Dialog* GetDialog() const;
  void onMessage(util::Message& message, bool broadcast) override;

  Windows& m_windows;
  std::string m_document;
  gui::ComponentPtr m_frame;         ///< the dialog, of a window of its own; may be the root
  gui::Component* m_root = nullptr;  ///< the document's; of a docked window its container owns it
  bool m_docked = false;
};

}  // namespace orv::rws::core::windows
