// The tree of rows without what its rows hold.
#pragma once

#include <string>
#include <vector>

#include "core/CoreMessages.h"

namespace orv::rws::core {

/// One row and those below it, in order.
struct RowLayout {
  /// The list in which a row stands, and where; no list when there is no such row.
  struct Place {
    std::vector<RowLayout>* rows = nullptr;
    std::size_t index = 0;

    RowLayout& Row() const { return (*rows)[index]; }
    Place Behind() const { return {rows, index + 1}; }
    void Insert(RowLayout row) const;
    RowLayout TakeOut() const;
  };

  int id = 0;  ///< InstanceReference::GetId; 0 for the root
  bool isGroup = true;
  std::string label;  ///< of a group
  bool checked = true;
  std::vector<RowLayout> rows;

  Place PlaceOf(int row);
  friend bool operator==(const RowLayout& a, const RowLayout& b) {
    return a.id == b.id && a.label == b.label && a.checked == b.checked && a.rows == b.rows;
  }
};

/// The messages that lead from one tree to the other, each good for the tree that those before it
/// have made. Few rows that have moved give few messages.
std::vector<CoreNews> ChangesOfRows(RowLayout before, const RowLayout& after);

}  // namespace orv::rws::core
