// What all peers of the Qt toolkit do alike.
#pragma once

#include <QBrush>
#include <QMenu>
#include <QPointer>
#include <QString>
#include <QWidget>
#include <memory>
#include <string>

#include "gui/Component.h"
#include "gui/component/qt/Column.h"
#include "gui/component/qt/MenuActions.h"

namespace orv::gui::component::qt {

inline QString ToQt(const std::string& text) {
  return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

/// A component with its widget. The widget is the peer's, unless its parent widget dies first.
class QtPeer : public Peer {
 public:
  QtPeer(Component& component, QWidget* widget);
  ~QtPeer() override;

  void Detach(bool top) override;
  void Update(unsigned changes) final;
  void AddChild(Component& child, int index) override;
  void RemoveChild(Component& child) override;
  void Freeze(bool frozen) override;
  void TakeFocus() override;
  void OpenPopup(int x, int y) override;
  /// The same at a place of the screen.
  void OpenPopupAt(const QPoint& place);

  /// Null once the component has gone.
  Component* GetComponent() const { return m_component; }
  QWidget* GetWidget() const { return m_widget; }
  /// Where the children's widgets live.
  virtual QWidget* GetContent() const { return m_widget; }
  /// What takes the keyboard's focus for the component; null when nothing does.
  virtual QWidget* GetFocusWidget() const;
  /// The widget's behaviour in a list: an alignment fills no more than the wished size.
  virtual Qt::Alignment GetAlignment() const;
  /// What it is called when it is read out: its own name, its label, tooltip or what stands before.
  QString GetSpokenName() const;
  /// Works out anew what depends on the palette and font around the widget.
  void Restyle();
  /// A child wishes another size, or is called differently.
  virtual void ChildChanged(Component&) {}
  /// Whether the widget opens its popup by itself.
  virtual bool HandlesMenu() const { return false; }
  /// The label of a component may change how the next one is called.
  void UpdateName();

  /// Columns of the root that the component stands under.
  Columns& GetColumns();

  static QtPeer* Of(const Component& component);
  /// The peer whose widget this is; null for one within.
  static QtPeer* At(const QObject* widget);
  /// The widget has been destroyed by its parent.
  static void Forget(const QObject* widget);

 protected:
  /// What is special to the element; bits of `Change`.
  virtual void UpdateContent(unsigned changes) = 0;
  /// Whether what stands before names it rather than its tooltip: true of what holds a value.
  virtual bool HoldsValue() const { return true; }
  /// Whether `maxwidth` is a limit; else it is what the element makes of it.
  virtual bool LimitsWidth() const { return true; }
  /// The least size that the document asks for.
  virtual void SetLeast(const QSize& size);
  /// Whether the widget draws GetBrush itself.
  virtual bool DrawsBackground() const { return false; }
  /// What is to be drawn behind it now; no brush when nothing is.
  QBrush GetBrush() const;
  /// In the active state `abackground` is drawn, if there is one.
  void SetActive(bool active);
  /// The component is gone; what the peer keeps of it must not be used any more.
  virtual void Detached() {}

 private:
  void UpdateSize();
  void UpdatePopup();
  void UpdateBackground();

  Component* m_component;
  QPointer<QWidget> m_widget;
  std::unique_ptr<Columns> m_columns;  ///< of a root
  std::unique_ptr<MenuActions> m_popupActions;
  QPointer<QMenu> m_popupMenu;
  bool m_active = false;
  bool m_updating = false;  ///< whose own changes of palette and font are no news
};

/// The same with the types of both.
template <class ComponentClass, class Widget>
class PeerOf : public QtPeer {
 public:
  PeerOf(Component& component, Widget* widget) : QtPeer(component, widget) {}

 protected:
  /// Null once the component has gone.
  ComponentClass* Held() const { return static_cast<ComponentClass*>(GetComponent()); }
  Widget* View() const { return static_cast<Widget*>(GetWidget()); }
};

/// Brush of a background for a widget; pixels are scaled.
QBrush BrushOf(const Background& background);

/// The component's font for its style, and the colour of its text.
void ApplyTextStyle(QWidget& widget, const std::string& style, bool marked);

}  // namespace orv::gui::component::qt
