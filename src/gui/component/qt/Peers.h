// Makers of the peers, one an element.
#pragma once

#include <memory>

#include "gui/component/qt/QtPeer.h"

namespace orv::gui::component::qt {

/// So long without a turn (ms), and a turn of the wheel has ended: one change of a number.
inline constexpr int kWheelPause = 400;

std::unique_ptr<Peer> MakeDialog(Component& component, QWidget* parent);
std::unique_ptr<Peer> MakeList(Component& component, QWidget* parent);
std::unique_ptr<Peer> MakeBorder(Component& component, QWidget* parent);
std::unique_ptr<Peer> MakeGroup(Component& component, QWidget* parent);
std::unique_ptr<Peer> MakeScroll(Component& component, QWidget* parent);
std::unique_ptr<Peer> MakeSplitter(Component& component, QWidget* parent);
std::unique_ptr<Peer> MakeLabel(Component& component, QWidget* parent);
std::unique_ptr<Peer> MakeButton(Component& component, QWidget* parent);
std::unique_ptr<Peer> MakeFlmButton(Component& component, QWidget* parent);
std::unique_ptr<Peer> MakeCheckBox(Component& component, QWidget* parent);
std::unique_ptr<Peer> MakeSpinner(Component& component, QWidget* parent);
std::unique_ptr<Peer> MakeSlider(Component& component, QWidget* parent);
std::unique_ptr<Peer> MakeComboBox(Component& component, QWidget* parent);
std::unique_ptr<Peer> MakeTextBox(Component& component, QWidget* parent);
std::unique_ptr<Peer> MakeListBox(Component& component, QWidget* parent);
std::unique_ptr<Peer> MakeTree(Component& component, QWidget* parent);
std::unique_ptr<Peer> MakeGraph(Component& component, QWidget* parent);
std::unique_ptr<Peer> MakeMenubar(Component& component, QWidget* parent);
std::unique_ptr<Peer> MakeProgressbar(Component& component, QWidget* parent);
std::unique_ptr<Peer> MakeView(Component& component, QWidget* parent);

}  // namespace orv::gui::component::qt
