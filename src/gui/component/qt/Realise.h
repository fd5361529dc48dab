// A component tree as widgets.
#pragma once

#include <functional>
#include <memory>

#include "gui/Component.h"
#include "gui/component/qt/Scale.h"

class QWidget;

namespace orv::gui::component::qt {

/// Makes the widgets of a tree and gives its root's. A dialog becomes a window above `parent`, any
/// other root a child of it. The tree owns the widgets: `Unrealise`, or the tree's end, takes them
/// away; a parent that dies first takes them with it, and the tree stays as it is.
QWidget* Realise(Component& root, QWidget* parent = nullptr);

/// Null when the component is not realised. Its object name is the component's id.
QWidget* WidgetOf(const Component& component);
/// The component whose widget this is or lies in; null for a widget of someone else.
Component* ComponentOf(const QWidget* widget);

/// Makes the peers (of class QtPeer) of further elements; an element without one gets a view's.
using PeerMaker = std::function<std::unique_ptr<Peer>(Component& component, QWidget* parent)>;
void RegisterPeer(const char* element, PeerMaker maker);

}  // namespace orv::gui::component::qt
