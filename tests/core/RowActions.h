// What a user may do with the rows of rigs, drawn by lot.
#pragma once

#include <string>
#include <vector>

#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"

namespace orv::tests {

inline constexpr unsigned kRowActions = 8;

/// One of them, whether it makes sense or not.
inline void DoWithRows(rws::core::CoreImplementation& core, unsigned kind, unsigned dice) {
  using rws::core::InstanceReference;
  const std::vector<InstanceReference*> rows = core.GetRows();
  if (rows.empty()) return;
  InstanceReference* const row = rows[dice % rows.size()];
  const std::size_t next = dice / 64 % (rows.size() + 1);
  InstanceReference* const other = next < rows.size() ? rows[next] : nullptr;
  std::string problem;
  if (kind == 0) core.CreateGroup("Group_" + std::to_string(dice % 5), problem);
  if (kind == 1) core.DeleteGroup(row);
  if (kind == 2) core.SetChecked(row, dice / 8 % 2 == 0);
  if (kind == 3) core.MoveBefore(row, other);
  if (kind == 4 && (!other || other->IsGroup())) core.MoveInto(row, other);
  if (kind == 5) core.Rename(row, "Other" + std::to_string(dice % 7));
  if (kind == 6 && row->GetInstance() && core.List(false).size() > 2) core.Delete(row, true);
  if (kind == 7 && row->GetInstance()) core.Clone(row, problem);
}

}  // namespace orv::tests
