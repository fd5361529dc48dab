// Components that hold others.
#pragma once

#include <QWidget>

#include "gui/Style.h"
#include "gui/component/qt/BoxLayout.h"
#include "gui/component/qt/QtPeer.h"

namespace orv::gui::component::qt {

/// A plain widget that draws its component's background and border.
class Panel : public QWidget {
 public:
  using QWidget::QWidget;
  void SetLook(const QBrush& brush, BorderStyle border);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QBrush m_brush;
  BorderStyle m_border = BorderStyle::kNone;
};

/// Padding, spacing and direction of a container.
struct BoxLook {
  bool horizontal = false;
  Padding padding;
  int spacing = kUnset;
};

/// Children in a BoxLayout of some content widget.
class ContainerPeer : public QtPeer {
 public:
  /// The layout is made in `content`, which is `widget` or lies in it.
  ContainerPeer(Component& component, QWidget* widget, QWidget* content);

  QWidget* GetContent() const override { return m_content; }
  void AddChild(Component& child, int index) override;
  void RemoveChild(Component& child) override;
  void Freeze(bool frozen) override;
  QWidget* GetFocusWidget() const override { return nullptr; }
  void ChildChanged(Component& child) override;

 protected:
  void UpdateContent(unsigned changes) override;
  void SetLeast(const QSize& size) override;
  virtual BoxLook GetLook() const = 0;
  virtual BorderStyle GetBorder() const { return BorderStyle::kNone; }
  bool DrawsBackground() const override { return true; }
  BoxLayout* GetLayout() const;

 private:
  void BecomeBuddy(QtPeer& peer, int index);

  QPointer<QWidget> m_content;
};

}  // namespace orv::gui::component::qt
