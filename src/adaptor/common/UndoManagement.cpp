#include "adaptor/common/UndoManagement.h"

#include <utility>

namespace orv::rws::adaptor {

UndoManagement::~UndoManagement() {
  clearHistory();
}

void UndoManagement::begin(const std::string& name) {
  if (busy || open) return;
  ++currentId;
  blockName = name;
  blockEmpty = true;
  if (lastCommandId != currentId) lastCommandId = -1;
  open = true;
}

bool UndoManagement::push(UndoUnitPtr unit) {
  if (!unit || busy || !open) return false;
  unit->id = currentId;
  unit->name = blockName;
  busy = true;
  if (blockEmpty) cutByBlock = units.size() - static_cast<std::size_t>(position);
  discardTail();
  busy = false;
  units.push_back(std::move(unit));
  ++position;
  blockEmpty = false;
  return true;
}

void UndoManagement::discardTail() {
  while (static_cast<int>(units.size()) > position) {
    discarded.push_back(std::move(units.back()));
    units.pop_back();
  }
}

int UndoManagement::commit(const std::string& name) {
  if (!open || busy) return -1;
  open = false;
  if (blockEmpty) return -1;
  lastCommandId = currentId;
  for (int i = position; i > 0 && units[i - 1]->id == currentId; --i) units[i - 1]->name = name;
  return currentId;
}

void UndoManagement::cancel() {
  if (busy || !open) return;
  open = false;
  if (blockEmpty) return;
  busy = true;
  for (; position > 0 && units[position - 1]->id == currentId; --position)
    units[position - 1]->undo(true);
  // No entry of the host's queue names these steps, so none may bring them back.
  const auto cutEnd = static_cast<std::ptrdiff_t>(discarded.size());
  discardTail();
  const auto cut = discarded.begin() + cutEnd - static_cast<std::ptrdiff_t>(cutByBlock);
  for (std::size_t i = cutByBlock; i > 0; --i)
    units.push_back(std::move(cut[static_cast<std::ptrdiff_t>(i - 1)]));
  discarded.erase(cut, cut + static_cast<std::ptrdiff_t>(cutByBlock));
  busy = false;
}

bool UndoManagement::stepBack() {
  if (open || busy || position == 0) return false;
  busy = true;
  const int id = units[position - 1]->id;
  for (; position > 0 && units[position - 1]->id == id; --position) units[position - 1]->undo(true);
  busy = false;
  return true;
}

bool UndoManagement::stepForward() {
  const int count = static_cast<int>(units.size());
  if (open || busy || position == count) return false;
  busy = true;
  const int id = units[position]->id;
  for (; position < count && units[position]->id == id; ++position) units[position]->redo();
  busy = false;
  return true;
}

void UndoManagement::clearHistory() {
  // A unit's end may ask for the state of the list.
  std::vector<UndoUnitPtr> old = std::move(units);
  std::vector<UndoUnitPtr> oldDiscarded = std::move(discarded);
  units.clear();
  discarded.clear();
  const int inForce = std::exchange(position, 0);
  for (int i = 0; i < inForce; ++i) old[static_cast<std::size_t>(i)].reset();
  // What stands undone may hold what the units before it have made.
  while (static_cast<int>(old.size()) > inForce) old.pop_back();
  for (UndoUnitPtr& unit : oldDiscarded) unit.reset();
  open = false;
  busy = false;
  lastCommandId = -1;
  currentId = 0;
  blockEmpty = true;
}

int UndoManagement::redoId() const {
  return position < static_cast<int>(units.size()) ? units[position]->id : -1;
}

UndoUnit* UndoManagement::lastInBlock() const {
  return open && !blockEmpty && position > 0 ? units[position - 1].get() : nullptr;
}

std::vector<std::string> UndoManagement::entryNames() const {
  std::vector<std::string> names;
  for (int i = 0; i < position; ++i) {
    const bool inOpenBlock = open && !blockEmpty && units[i]->id == currentId;
    const bool firstOfBlock = i == 0 || units[i - 1]->id != units[i]->id;
    if (firstOfBlock && !inOpenBlock) names.push_back(units[i]->name);
  }
  return names;
}

int UndoManagement::latestId(const std::function<bool(const UndoUnit&)>& counts) const {
  for (int i = position; i > 0; --i)
    if (counts(*units[i - 1])) return units[i - 1]->id;
  return -1;
}

std::vector<std::string> UndoManagement::redoNames() const {
  std::vector<std::string> names;
  for (std::size_t i = position; i < units.size(); ++i)
    if (i == static_cast<std::size_t>(position) || units[i - 1]->id != units[i]->id)
      names.push_back(units[i]->name);
  return names;
}

std::string UndoManagement::redoName() const {
  return position < static_cast<int>(units.size()) ? units[position]->name : std::string();
}

}  // namespace orv::rws::adaptor
