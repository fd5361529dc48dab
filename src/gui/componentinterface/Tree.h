// Rows below rows.
#pragma once

#include <string>
#include <vector>

#include "gui/componentinterface/CheckBox.h"
#include "gui/componentinterface/Interface.h"
#include "util/Composite_Dynamic.h"

namespace orv::gui::componentinterface {

/// Rows are told by a key of the window's: any number but 0, which stands for the top. Fit for tens
/// of thousands of rows. All texts are shown as they are.
///
/// Posts kMsgSelectionChanged, kMsgActivated, kMsgRowChecked, kMsgRenamed, kMsgMoveRequest,
/// kMsgExpanded, kMsgCollapsed, kMsgColumnClicked, kMsgHovered, and kMsgPopupOpening before its
/// popup opens, with the row under the mouse selected.
class Tree : public Interface {
 public:
  static constexpr int kTop = 0;

  struct Column {
    std::string title;     ///< no heads are shown when all are empty
    int width = 0;         ///< px at 96 dpi; 0: by its content
    bool stretch = false;  ///< takes the spare width
    bool right = false;    ///< numbers
    bool english = false;  ///< title to be translated when shown
  };

  /// One field of a row.
  struct Cell {
    std::string text;
    std::string icon;
    std::string tooltip;
    bool dim = false;  ///< in the palette's weaker text colour
  };

  /// All that is shown of a row.
  struct Row {
    std::vector<Cell> cells;  ///< fewer than columns: the others are empty
    bool hasCheck = false;
    CheckState check = CheckState::kOff;
    bool enabled = true;     ///< selectable and draggable
    bool editable = false;   ///< its first cell can be renamed in place (F2, slow second click)
    bool takesRows = false;  ///< others may be dropped on it
    bool strong = false;     ///< bold
    bool marked = false;     ///< in the accent colour
  };

  /// A row in the tree.
  class Node : public util::Composite_Dynamic<Node> {
   public:
    explicit Node(int rowKey) : key(rowKey) {}
    void destroyNode() override { delete this; }
    /// Position among its parent's rows, at a constant cost while these stay as they are.
    int GetIndex() const;

    const int key;
    Row row;
    bool expanded = false;
    bool selected = false;
    bool hidden = false;  ///< by the filter

   private:
    mutable int m_index = 0;
  };

  virtual void SetColumns(std::vector<Column> columns) = 0;
  virtual const std::vector<Column>& GetColumns() const = 0;

  /// False when the key is 0 or taken, or there is no such parent. An index out of range is the
  /// end.
  virtual bool AddRow(int key, int parent, int index, Row row) = 0;
  /// With all below it.
  virtual bool RemoveRow(int key) = 0;
  /// With all below it; `index` counts once the row has left its place. False when `parent` lies
  /// within it. Selected and expanded rows stay so.
  virtual bool MoveRow(int key, int parent, int index) = 0;
  virtual void Clear() = 0;
  virtual bool SetRow(int key, Row row) = 0;
  virtual bool SetText(int key, int column, const std::string& text) = 0;
  virtual bool SetCheck(int key, CheckState state) = 0;
  /// Null when there is none; kTop gives the invisible top. Good until rows come or go.
  virtual const Node* FindRow(int key) const = 0;
  virtual int GetRowCount() const = 0;

  virtual bool SetExpanded(int key, bool expanded) = 0;
  /// Several may be selected; on at first.
  virtual void SetMultiSelect(bool several) = 0;
  virtual bool IsMultiSelect() const = 0;
  virtual void Select(const std::vector<int>& keys) = 0;
  virtual std::vector<int> GetSelected() const = 0;  ///< from top to bottom
  virtual int GetCurrent() const = 0;                ///< 0 without
  virtual void SetCurrent(int key) = 0;
  /// Opens what it stands in and scrolls to it.
  virtual void ShowRow(int key) = 0;
  /// Begins renaming in place; the tree must be realised.
  virtual void EditRow(int key) = 0;
  virtual bool CanDrag() const = 0;  ///< the attribute `dragdrop`
  /// Rows none of whose cells holds the text, in any case of letters, and which have no such row
  /// below them, are hidden; the others are expanded while there is a filter.
  virtual void SetFilter(const std::string& text) = 0;
  virtual const std::string& GetFilter() const = 0;
  /// Shown in the middle while there is no row; as it is.
  virtual void SetEmptyText(const std::string& text) = 0;
  virtual const std::string& GetEmptyText() const = 0;
};

}  // namespace orv::gui::componentinterface
