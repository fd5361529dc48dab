// The messages that components post: one table of their ids.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "util/Message.h"

namespace orv::gui {

class Component;

// A component posts to its own listeners and to those of every node up to its root, each listener
// once: a window connects to its root and reads `id` and `param`; `SourceOf` tells the component.
// Only what a user does is posted (and what a window asks for by `Click`, `Close` and the like): a
// value that code sets tells nobody. A listener may change, remove and destroy components
// meanwhile, the posting one too; `Component::Retire` is the safe way for that.
enum GuiMessage : std::int32_t {
  // Any component.
  kMsgShown = 0x4002,
  kMsgHidden = 0x4003,
  kMsgMoved = 0x4004,  ///< moved or resized; `param` is PackSize of the new size
  kMsgFocusGained = 0x4005,
  kMsgFocusLost = 0x4006,
  kMsgFilesDropped = 0x4007,  ///< `data` is a FilesDropped; only where SetDropFiles asks for it
  kMsgPopupOpening = 0x4010,  ///< the popup, or the menu whose id is `param`, is about to open
  kMsgMenuItem = 0x4011,      ///< `param` is the item's id; of a popup or a menu bar

  // Dialog.
  kMsgCloseRequest = 0x4020,  ///< `data` is a CloseRequest; `param` 1: by Escape
  kMsgClosed = 0x4021,

  // Group and scroll.
  kMsgFolded = 0x4030,    ///< `param` is 1 when folded, 0 when open
  kMsgScrolled = 0x4031,  ///< `param` is the vertical offset in pixels at 96 dpi

  // Tree and list box; `param` is the key of a row or the id of an item.
  kMsgSelectionChanged = 0x4060,  ///< `param` is the current row's key, 0 without one
  kMsgActivated = 0x4061,         ///< double click or Enter
  kMsgRowChecked = 0x4062,        ///< the tree holds the new state
  kMsgRenamed = 0x4063,           ///< `data` is a Renamed; the row keeps its text until told
  kMsgMoveRequest = 0x4064,       ///< `data` is a MoveRequest; the window moves the rows, or not
  kMsgExpanded = 0x4065,
  kMsgCollapsed = 0x4066,
  kMsgColumnClicked = 0x4067,  ///< `param` is the column of the head
  kMsgHovered = 0x4069,        ///< the mouse has come over the row, or over none (0); of a tree
  kMsgCopied = 0x4068,         ///< Ctrl+C; the texts of the selected rows are in the clipboard

  // An edit in progress (spinner, slider, graph): the value changes between these two are one
  // drag, and so one undo step. A change outside them stands for itself.
  kMsgEditBegin = 0x4100,
  kMsgEditEnd = 0x4101,      ///< `param` is 1 when it was cancelled and the old value is back
  kMsgTyped = 0x4102,        ///< a text box or combo box holds another text, not yet confirmed
  kMsgEntered = 0x4103,      ///< Enter in a text box or an editable combo box
  kMsgHandleMoved = 0x4104,  ///< of a graph; `param` is the handle

  // Button, flmbutton, label.
  kMsgPressed = 0x4140,
  kMsgReleased = 0x4141,
  kMsgClicked = 0x4142,  ///< of a label with hyperlinks: `data` is a LinkClicked, else 0

  // Check box, together with kMsgValueChanged.
  kMsgChecked = 0x4240,  ///< `param` is a CheckState

  /// The component holds another value. `param`: check box, its CheckState; combo box, its item's
  /// id; toggle button, 1 when down; else 0, as the value is read by the component's interface.
  kMsgValueChanged = 0x6000,
};

/// The user asks to close a dialog; it stays when a listener refuses.
struct CloseRequest {
  static constexpr std::int32_t kId = kMsgCloseRequest;
  bool refused = false;
};

struct FilesDropped {
  static constexpr std::int32_t kId = kMsgFilesDropped;
  std::vector<std::string> paths;
};

/// A row of a tree or an item of a list box was given another text in place.
struct Renamed {
  static constexpr std::int32_t kId = kMsgRenamed;
  int key;
  std::string text;
};

/// Rows were dropped: they wish to stand below `parent` (0: at the top) at `index` among the rows
/// that it has now, the moved ones included.
struct MoveRequest {
  static constexpr std::int32_t kId = kMsgMoveRequest;
  std::vector<int> keys;
  int parent;
  int index;
};

struct LinkClicked {
  static constexpr std::int32_t kId = kMsgClicked;
  std::string link;
};

/// What a message carries besides `param`, good while it is delivered; null for another kind.
template <class Data>
Data* DataOf(const util::Message& message) {
  return message.id == Data::kId
             ? reinterpret_cast<Data*>(static_cast<std::uintptr_t>(message.data))
             : nullptr;
}

/// The component that posted, or null when the message is of another kind of node.
Component* SourceOf(const util::Message& message);
/// Its id, or kNoId.
int SourceIdOf(const util::Message& message);

/// Width in the lower half, height in the upper one, each cut to 0 to 65535.
std::int32_t PackSize(int width, int height);
inline int WidthOf(std::int32_t packed) {
  return packed & 0xffff;
}
inline int HeightOf(std::int32_t packed) {
  return static_cast<int>(static_cast<std::uint32_t>(packed) >> 16);
}

}  // namespace orv::gui
