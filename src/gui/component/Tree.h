// `tree`: rows below rows.
#pragma once

#include <unordered_map>

#include "gui/StdComponent.h"
#include "gui/componentinterface/Tree.h"

namespace orv::gui::component {

class Tree : public Element<componentinterface::Tree> {
 public:
  explicit Tree(const util::xml::Element& tag);
  ~Tree() override;
  const char* GetElement() const override { return "tree"; }
  bool KnowsAttribute(std::string_view name) const override;
  bool OwnsTag(std::string_view name) const override;

  void SetColumns(std::vector<Column> columns) override;
  const std::vector<Column>& GetColumns() const override { return m_columns; }
  bool AddRow(int key, int parent, int index, Row row) override;
  bool RemoveRow(int key) override;
  bool MoveRow(int key, int parent, int index) override;
  void Clear() override;
  bool SetRow(int key, Row row) override;
  bool SetText(int key, int column, const std::string& text) override;
  bool SetCheck(int key, componentinterface::CheckState state) override;
  const Node* FindRow(int key) const override;
  int GetRowCount() const override { return static_cast<int>(m_rows.size()); }
  bool SetExpanded(int key, bool expanded) override;
  void SetMultiSelect(bool several) override;
  bool IsMultiSelect() const override { return m_several; }
  void Select(const std::vector<int>& keys) override;
  std::vector<int> GetSelected() const override;
  int GetCurrent() const override { return m_current; }
  void SetCurrent(int key) override;
  void ShowRow(int key) override;
  void EditRow(int key) override;
  bool CanDrag() const override { return m_drag; }
  void SetFilter(const std::string& text) override;
  const std::string& GetFilter() const override { return m_filter; }
  void SetEmptyText(const std::string& text) override;
  const std::string& GetEmptyText() const override { return m_emptyText; }

  const Node& GetTop() const { return m_top; }

  /// What its toolkit is told of rows; its peer is one. Begin comes before the change.
  class Observer {
   public:
    virtual ~Observer() = default;
    virtual void BeginReset() = 0;
    virtual void EndReset() = 0;
    virtual void BeginInsert(const Node& parent, int index) = 0;
    virtual void EndInsert(const Node& row) = 0;
    virtual void BeginRemove(const Node& row) = 0;
    virtual void EndRemove() = 0;
    /// `to` counts with the row still in its place.
    virtual void BeginMove(const Node& row, const Node& parent, int to) = 0;
    virtual void EndMove(const Node& row) = 0;
    virtual void RowChanged(const Node& row) = 0;
    virtual void ExpandedSet(const Node& row) = 0;
    virtual void SelectionSet() = 0;
    virtual void FilterSet() = 0;
    virtual void Reveal(const Node& row) = 0;
    virtual void Edit(const Node& row) = 0;
  };
  void SetObserver(Observer* observer) { m_observer = observer; }

  /// Whether exactly these are selected, in any order.
  bool IsSelection(std::vector<int> keys) const;

  /// The toolkit's words for what the user did.
  void SelectByUser(const std::vector<int>& keys, int current);
  void ExpandByUser(int key, bool expanded);
  void CheckByUser(int key, componentinterface::CheckState state);

 protected:
  void PeerGoes() override { m_observer = nullptr; }

 private:
  Node* Held(int key) const;
  void Forget(const Node& row);
  void MarkSelected(const std::vector<int>& keys);
  void SetHidden(Node& row, bool hidden);
  bool Holds(const Row& row) const;
  /// True when something of the row is left in sight.
  bool FilterRows(Node& row);

  Node m_top{kTop};
  std::unordered_map<int, Node*> m_rows;
  std::vector<Column> m_columns;
  Observer* m_observer = nullptr;
  int m_current = kTop;
  bool m_several = true, m_drag;
  std::string m_filter, m_emptyText;
};

}  // namespace orv::gui::component
