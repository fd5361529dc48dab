// list, border, group, scroll and splitter.
#include <QEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>
#include <QVBoxLayout>
#include <algorithm>

#include "gui/component/Border.h"
#include "gui/component/Group.h"
#include "gui/component/List.h"
#include "gui/component/Scroll.h"
#include "gui/component/Splitter.h"
#include "gui/component/qt/ContainerPeer.h"
#include "gui/component/qt/GroupBox.h"
#include "gui/component/qt/Peers.h"
#include "gui/component/qt/Scale.h"

namespace orv::gui::component::qt {

namespace {

class ListPeer : public ContainerPeer {
 public:
  ListPeer(Component& component, Panel* panel) : ContainerPeer(component, panel, panel) {}

 protected:
  BoxLook GetLook() const override {
    const auto& list = static_cast<const List&>(*GetComponent());
    return {list.IsHorizontal(), list.GetPadding(), list.GetSpacing()};
  }
  BorderStyle GetBorder() const override {
    return ReadBorderStyle(GetComponent()->GetAttributes().style, BorderStyle::kNone);
  }
};

class BorderPeer : public ContainerPeer {
 public:
  BorderPeer(Component& component, Panel* panel) : ContainerPeer(component, panel, panel) {}

 protected:
  BoxLook GetLook() const override {
    const auto& border = static_cast<const Border&>(*GetComponent());
    return {false, border.GetPadding(), border.GetSpacing()};
  }
  BorderStyle GetBorder() const override {
    return static_cast<const Border&>(*GetComponent()).GetBorderStyle();
  }
};

class GroupPeer : public ContainerPeer {
 public:
  GroupPeer(Component& component, GroupBox* box)
      : ContainerPeer(component, box, box->GetContent()) {
    box->onFold = [this](bool folded) {
      if (GetComponent()) static_cast<Group*>(GetComponent())->FoldByUser(folded);
    };
  }
  QWidget* GetFocusWidget() const override { return QtPeer::GetFocusWidget(); }

 protected:
  BoxLook GetLook() const override {
    const auto& group = static_cast<const Group&>(*GetComponent());
    return {false, group.GetPadding(), group.GetSpacing()};
  }
  void UpdateContent(unsigned changes) override {
    ContainerPeer::UpdateContent(changes);
    const auto& group = static_cast<const Group&>(*GetComponent());
    auto* box = static_cast<GroupBox*>(GetWidget());
    if (changes & (kLabelChange | kMarkChange))
      box->SetTitle(ToQt(group.GetShownLabel()), group.IsMarked());
    if (changes & kValueChange) box->SetFold(group.IsFoldable(), group.IsFolded());
    if (changes & kStyleChange) box->SetBrush(GetBrush());
  }
};

/// A pane whose content is as wide as it is, if it can be.
class ScrollPane : public QScrollArea {
 public:
  using QScrollArea::QScrollArea;
  QSize minimumSizeHint() const override {
    const int bar = verticalScrollBar()->sizeHint().width();
    return QSize((widget() ? widget()->minimumSizeHint().width() : 0) + bar, Scaled(48));
  }
  QSize sizeHint() const override {
    const QSize content = widget() ? widget()->sizeHint() : QSize();
    const int bar = verticalScrollBar()->sizeHint().width();
    return QSize(content.width() + bar, std::min(content.height(), Scaled(400)));
  }

 protected:
  bool eventFilter(QObject* object, QEvent* event) override {
    if (object == widget() && event->type() == QEvent::LayoutRequest) updateGeometry();
    return QScrollArea::eventFilter(object, event);
  }
};

class ScrollPeer : public ContainerPeer, public Scroll::Pane {
 public:
  ScrollPeer(Component& component, ScrollPane* pane, QWidget* content)
      : ContainerPeer(component, pane, content) {
    pane->setFrameShape(QFrame::NoFrame);
    pane->setWidgetResizable(true);
    pane->setFocusPolicy(Qt::NoFocus);
    pane->setWidget(content);
    // What lies behind the pane shows through.
    content->setAutoFillBackground(false);
    pane->viewport()->setAutoFillBackground(false);
    for (QScrollBar* bar : {pane->horizontalScrollBar(), pane->verticalScrollBar()}) {
      QObject::connect(bar, &QScrollBar::valueChanged, [this] { Scrolled(); });
      QObject::connect(bar, &QScrollBar::rangeChanged, [this] { Restore(); });
    }
  }

  void RevealChild(Component& child) override {
    QWidget* widget = QtPeer::Of(child) ? QtPeer::Of(child)->GetWidget() : nullptr;
    auto* pane = static_cast<QScrollArea*>(GetWidget());
    if (!pane || !widget || !pane->isAncestorOf(widget)) return;
    if (pane->widget()->layout()) pane->widget()->layout()->activate();
    pane->ensureWidgetVisible(widget, 0, Scaled(8));
  }

 protected:
  BoxLook GetLook() const override {
    const auto& scroll = static_cast<const Scroll&>(*GetComponent());
    return {false, scroll.GetPadding(), scroll.GetSpacing()};
  }
  void UpdateContent(unsigned changes) override {
    ContainerPeer::UpdateContent(changes);
    if (changes & kStyleChange)
      static_cast<Panel*>(GetContent())->SetLook(GetBrush(), BorderStyle::kNone);
    if (changes & kValueChange) Restore();
  }

 private:
  static void SetBar(QScrollBar& bar, int offset) { bar.setValue(Scaled(offset)); }

  void Restore() {
    auto* pane = static_cast<QScrollArea*>(GetWidget());
    const auto* scroll = static_cast<const Scroll*>(GetComponent());
    if (!pane || !scroll || m_restoring) return;
    m_restoring = true;
    SetBar(*pane->horizontalScrollBar(), scroll->GetOffsetX());
    SetBar(*pane->verticalScrollBar(), scroll->GetOffsetY());
    m_restoring = false;
  }

  /// What the bar says, unless it only stands at an end that has come nearer for the time being.
  static int Offset(const QScrollBar& bar, int held) {
    const bool cut = bar.value() == bar.maximum() && Scaled(held) > bar.maximum();
    return cut && !bar.isSliderDown() ? held : Unscaled(bar.value());
  }

  void Scrolled() {
    auto* pane = static_cast<QScrollArea*>(GetWidget());
    auto* scroll = static_cast<Scroll*>(GetComponent());
    if (!pane || !scroll || m_restoring) return;
    scroll->ScrollByUser(Offset(*pane->horizontalScrollBar(), scroll->GetOffsetX()),
                         Offset(*pane->verticalScrollBar(), scroll->GetOffsetY()));
  }

  bool m_restoring = false;
};

class SplitterPeer : public QtPeer {
 public:
  SplitterPeer(Component& component, QSplitter* splitter) : QtPeer(component, splitter) {
    splitter->setChildrenCollapsible(false);
    QObject::connect(splitter, &QSplitter::splitterMoved, [this, splitter] {
      std::vector<int> sizes;
      for (const int size : splitter->sizes()) sizes.push_back(Unscaled(size));
      if (GetComponent()) static_cast<Splitter*>(GetComponent())->MoveByUser(sizes);
    });
  }

  void AddChild(Component& child, int index) override {
    QtPeer* peer = QtPeer::Of(child);
    auto* splitter = static_cast<QSplitter*>(GetWidget());
    if (!peer || !peer->GetWidget() || !splitter) return;
    splitter->insertWidget(index, peer->GetWidget());
    const int stretch = child.GetAttributes().stretch;
    if (stretch != kUnset) splitter->setStretchFactor(index, stretch);
    peer->UpdateName();
  }

 protected:
  QWidget* GetFocusWidget() const override { return nullptr; }
  void UpdateContent(unsigned changes) override {
    auto* splitter = static_cast<QSplitter*>(GetWidget());
    auto* component = static_cast<Splitter*>(GetComponent());
    if (!(changes & kValueChange)) return;
    QList<int> sizes;
    for (const int size : component->GetSizes()) sizes.append(Scaled(size));
    if (!sizes.isEmpty()) splitter->setSizes(sizes);
  }
};

}  // namespace

std::unique_ptr<Peer> MakeList(Component& component, QWidget* parent) {
  return std::make_unique<ListPeer>(component, new Panel(parent));
}

std::unique_ptr<Peer> MakeBorder(Component& component, QWidget* parent) {
  return std::make_unique<BorderPeer>(component, new Panel(parent));
}

std::unique_ptr<Peer> MakeGroup(Component& component, QWidget* parent) {
  return std::make_unique<GroupPeer>(component, new GroupBox(parent));
}

std::unique_ptr<Peer> MakeScroll(Component& component, QWidget* parent) {
  auto* pane = new ScrollPane(parent);
  return std::make_unique<ScrollPeer>(component, pane, new Panel);
}

std::unique_ptr<Peer> MakeSplitter(Component& component, QWidget* parent) {
  const bool across = static_cast<const Splitter&>(component).IsHorizontal();
  return std::make_unique<SplitterPeer>(
      component, new QSplitter(across ? Qt::Horizontal : Qt::Vertical, parent));
}

}  // namespace orv::gui::component::qt
