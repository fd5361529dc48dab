#include "core/instances/RowLayout.h"

#include <algorithm>
#include <map>
#include <utility>

namespace orv::rws::core {

namespace {

using Place = RowLayout::Place;

struct Parent {
  int id;
  std::size_t index;
};

/// Turns one tree into another, message by message.
class RowChanges {
 public:
  RowChanges(RowLayout before, const RowLayout& after) : m_tree(std::move(before)) {
    Note(after);
    Follow(after);
    DropOld(m_tree);
  }
  std::vector<CoreNews> TakeNews() { return std::move(m_news); }

 private:
  void Note(const RowLayout& parent) {
    for (std::size_t i = 0; i < parent.rows.size(); ++i) {
      m_wanted[parent.rows[i].id] = {parent.id, i};
      Note(parent.rows[i]);
    }
  }

  RowLayout& Group(int id) { return id == 0 ? m_tree : m_tree.PlaceOf(id).Row(); }

  void Follow(const RowLayout& wanted) {
    for (std::size_t i = 0; i < wanted.rows.size(); ++i) {
      const RowLayout& row = wanted.rows[i];
      const int index = static_cast<int>(i);
      ClearTheWay(wanted.id, i, row.id);
      auto& rows = Group(wanted.id).rows;
      if (i >= rows.size() || rows[i].id != row.id) {
        const Place old = m_tree.PlaceOf(row.id);
        if (old.rows) {
          Move(row.id, wanted.id, i);
        } else {
          m_news.push_back(
              RowCreated{row.id, wanted.id, index, row.isGroup, row.label, row.checked});
          Place{&rows, i}.Insert({row.id, row.isGroup, row.label, row.checked, {}});
        }
      }
      const RowLayout& now = m_tree.PlaceOf(row.id).Row();
      if (now.label != row.label) m_news.push_back(RowRenamed{row.id, row.label});
      if (now.checked != row.checked) m_news.push_back(RowChecked{row.id, row.checked});
      Follow(row);
    }
  }

  /// Where another row than `next` stands, that one may be what has moved or gone, not `next`.
  void ClearTheWay(int parent, std::size_t index, int next) {
    for (;;) {
      auto& rows = Group(parent).rows;
      if (index >= rows.size() || rows[index].id == next) return;
      const int other = rows[index].id;
      if (IsOld(rows[index])) {
        Drop({&rows, index});
        continue;
      }
      const auto goal = m_wanted.find(other);
      if (goal == m_wanted.end() || index + 1 >= rows.size() || rows[index + 1].id != next) return;
      const int target = goal->second.id;
      if (target == other || rows[index].PlaceOf(target).rows) return;
      if (target != 0 && !m_tree.PlaceOf(target).rows) return;
      const std::size_t free = Group(target).rows.size() - (target == parent ? 1 : 0);
      Move(other, target, std::min(goal->second.index, free));
    }
  }

  void Move(int row, int parent, std::size_t index) {
    RowLayout moved = m_tree.PlaceOf(row).TakeOut();
    Place{&Group(parent).rows, index}.Insert(std::move(moved));
    m_news.push_back(RowMoved{row, parent, static_cast<int>(index)});
  }

  /// Whether neither the row nor one below it stays.
  bool IsOld(const RowLayout& row) const {
    return m_wanted.count(row.id) == 0 &&
           std::all_of(row.rows.begin(), row.rows.end(),
                       [this](const RowLayout& below) { return IsOld(below); });
  }

  void Drop(const Place& place) {
    const RowLayout gone = place.TakeOut();
    Tell(gone);
  }

  void Tell(const RowLayout& gone) {
    for (auto row = gone.rows.rbegin(); row != gone.rows.rend(); ++row) Tell(*row);
    m_news.push_back(RowDeleted{gone.id});
  }

  void DropOld(RowLayout& parent) {
    for (std::size_t i = parent.rows.size(); i-- > 0;) {
      if (IsOld(parent.rows[i]))
        Drop({&parent.rows, i});
      else
        DropOld(parent.rows[i]);
    }
  }

  RowLayout m_tree;
  std::map<int, Parent> m_wanted;
  std::vector<CoreNews> m_news;
};

}  // namespace

void RowLayout::Place::Insert(RowLayout row) const {
  rows->insert(rows->begin() + static_cast<std::ptrdiff_t>(index), std::move(row));
}

RowLayout RowLayout::Place::TakeOut() const {
  RowLayout row = std::move(Row());
  rows->erase(rows->begin() + static_cast<std::ptrdiff_t>(index));
  return row;
}

RowLayout::Place RowLayout::PlaceOf(int row) {
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (rows[i].id == row) return {&rows, i};
    if (const Place below = rows[i].PlaceOf(row); below.rows) return below;
  }
  return {};
}

std::vector<CoreNews> ChangesOfRows(RowLayout before, const RowLayout& after) {
  return RowChanges(std::move(before), after).TakeNews();
}

}  // namespace orv::rws::core
