// `listbox`: lines to choose from.
#pragma once

#include <unordered_map>
#include <vector>

#include "gui/StdComponent.h"
#include "gui/componentinterface/ListBox.h"

namespace orv::gui::component {

class ListBox : public Element<componentinterface::ListBox> {
 public:
  explicit ListBox(const util::xml::Element& tag);
  const char* GetElement() const override { return "listbox"; }
  bool KnowsAttribute(std::string_view name) const override;
  bool OwnsTag(std::string_view name) const override;

  void SetItems(std::vector<componentinterface::Item> items) override;
  const std::vector<componentinterface::Item>& GetItems() const override { return m_items; }
  void AddItem(const componentinterface::Item& item) override { AddItems({item}); }
  void AddItems(const std::vector<componentinterface::Item>& items) override;
  bool SetItem(const componentinterface::Item& item) override;
  bool RemoveItem(int id) override;
  void RemoveFirst(int count) override;
  void SetMultiSelect(bool several) override;
  bool IsMultiSelect() const override { return m_several; }
  void Select(const std::vector<int>& ids) override;
  std::vector<int> GetSelected() const override;
  bool IsEditable() const override { return m_editable; }
  void SetFilter(const std::string& text) override;
  void SetFollow(bool follow) override;
  bool IsFollowing() const override { return m_follow; }
  void ShowItem(int id) override;

  const std::string& GetFilter() const { return m_filter; }
  int IndexOf(int id) const;  ///< -1 without

  /// What its toolkit is told of items; its peer is one. Called before or after the change.
  class Observer {
   public:
    virtual ~Observer() = default;
    virtual void BeginReset() = 0;
    virtual void EndReset() = 0;
    virtual void BeginInsert(int first, int last) = 0;
    virtual void EndInsert() = 0;
    virtual void BeginRemove(int first, int last) = 0;
    virtual void EndRemove() = 0;
    virtual void ItemChanged(int index) = 0;
    virtual void SelectionSet() = 0;
    virtual void Reveal(int index) = 0;
  };
  void SetObserver(Observer* observer) { m_observer = observer; }

  /// The toolkit's words.
  void SelectByUser(std::vector<int> ids, int current);
  void FollowByUser(bool follow) { m_follow = follow; }

 protected:
  void PeerGoes() override { m_observer = nullptr; }

 private:
  void IndexFrom(std::size_t first);
  void DropLostSelection();

  std::vector<componentinterface::Item> m_items;
  std::unordered_map<int, std::size_t> m_places;  ///< by id: index, m_removed more
  std::size_t m_removed = 0;                      ///< items that RemoveFirst has taken away
  std::vector<int> m_selected;
  Observer* m_observer = nullptr;
  std::string m_filter;
  bool m_editable, m_several, m_follow = false;
};

}  // namespace orv::gui::component
