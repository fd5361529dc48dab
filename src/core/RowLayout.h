// The tree of rows without what its rows hold.
#pragma once

#include <string>
#include <vector>

namespace orv::rws::core {

/// One row and those below it, in order.
struct RowLayout {
  int id = 0;  ///< InstanceReference::GetId; 0 for the root
  bool isGroup = true;
  std::string label;  ///< of a group
  bool checked = true;
  std::vector<RowLayout> rows;

  friend bool operator==(const RowLayout& a, const RowLayout& b) {
    return a.id == b.id && a.label == b.label && a.checked == b.checked && a.rows == b.rows;
  }
};

}  // namespace orv::rws::core
