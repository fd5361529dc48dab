// What a take goes on from.
#include <algorithm>

#include "app/session/takes/KeptTakes.h"

namespace orv::app {

KeptTakes::Names KeptTakes::NamesOf(const Chain& chain) {
  Names names;
  for (const KeptTake* take : chain)
    for (const KeptRig& rig : take->rigs) names.insert(rig.name);
  return names;
}

/// Rigs that nothing was keyed or recorded of ahead of these.
KeptTakes::Names KeptTakes::WholeIn(const Chain& chain) {
  Names names;
  for (const KeptTake* take : chain)
    for (const KeptRig& rig : take->rigs)
      if (rig.isFirst) names.insert(rig.name);
  return names;
}

/// Number of a run that one of these went on from and that is not there; 0: none.
int KeptTakes::MissingIn(const Chain& chain) {
  std::set<int> known{0};
  for (const KeptTake* take : chain) {
    if (known.count(take->predecessor) == 0) return take->predecessor;
    known.insert(take->number);
  }
  return 0;
}

/// The take and its predecessors.
KeptTakes::Chain KeptTakes::LineOf(int number) const {
  Chain line;
  // What was read has been looked through for circles, and new ones go on from older ones.
  for (const KeptTake* take = FindAny(number); take; take = FindAny(take->predecessor))
    line.push_back(take);
  std::reverse(line.begin(), line.end());
  return line;
}

/// All that a take goes on from.
KeptTakes::Chain KeptTakes::ChainAhead(const KeptTake& take) const {
  Chain chain;
  std::vector<int> tips = take.beside;
  tips.push_back(take.predecessor);
  for (const int tip : tips)
    for (const KeptTake* each : LineOf(tip)) chain.push_back(each);
  return chain;
}

KeptTakes::Chain KeptTakes::ChainOf(int number) const {
  const KeptTake* const last = FindAny(number);
  if (!last) return {};
  Chain chain = ChainAhead(*last);
  chain.push_back(last);
  return chain;
}

std::set<int> KeptTakes::GetPredecessors(const KeptTake& take) const {
  std::set<int> shown{GetPredecessor(take)};
  for (const int number : take.beside) shown.insert(ShownOf(number));
  shown.erase(0);
  return shown;
}

/// Last runs of all that the scene's keys come from, oldest first.
std::vector<int> KeptTakes::GetTips() const {
  std::vector<int> tips = m_list.beside;
  tips.push_back(m_list.current);
  return tips;
}

/// Those of `tips` with rigs that neither a later one nor `covered` holds whole.
std::vector<int> KeptTakes::Uncovered(const std::vector<int>& tips, Names covered) const {
  std::vector<int> result;
  for (auto tip = tips.rbegin(); tip != tips.rend(); ++tip) {
    const Chain chain = ChainOf(*tip);
    const Names names = NamesOf(chain);
    if (std::includes(covered.begin(), covered.end(), names.begin(), names.end())) continue;
    result.insert(result.begin(), *tip);
    covered.merge(WholeIn(chain));
  }
  return result;
}

/// What the keys of these rigs come from, and those of others that ran along, the newest first.
std::vector<KeptTakes::Chain> KeptTakes::LinesOf(const Names& rigs) const {
  std::vector<Chain> lines;
  Names held;
  const auto holdsAll = [&] {
    return std::includes(held.begin(), held.end(), rigs.begin(), rigs.end());
  };
  const std::vector<int> tips = GetTips();
  for (auto tip = tips.rbegin(); tip != tips.rend() && !holdsAll(); ++tip) {
    lines.push_back(ChainOf(*tip));
    if (lines.back().empty() || MissingIn(lines.back()) != 0) {
      lines.pop_back();
      break;
    }
    held.merge(NamesOf(lines.back()));
  }
  Names wanted = rigs;
  const auto isWanted = [&wanted](const Chain& line) {
    const Names names = NamesOf(line);
    return std::any_of(names.begin(), names.end(),
                       [&wanted](const std::string& name) { return wanted.count(name) > 0; });
  };
  for (std::size_t known = 0; known != wanted.size();) {
    known = wanted.size();
    for (const Chain& line : lines)
      if (isWanted(line)) wanted.merge(NamesOf(line));
  }
  lines.erase(std::remove_if(lines.begin(), lines.end(),
                             [&](const Chain& line) { return !isWanted(line); }),
              lines.end());
  return lines;
}

KeptTakes::Chain KeptTakes::GetChain() {
  FollowNames();
  Chain chain;
  for (const int tip : GetTips()) {
    const Chain more = ChainOf(tip);
    if (MissingIn(more) == 0) chain.insert(chain.end(), more.begin(), more.end());
  }
  return chain;
}

}  // namespace orv::app
