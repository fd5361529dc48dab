#include "app/session/takes/KeptTakes.h"

#include <algorithm>
#include <utility>

#include "adaptor/headless/Scene.h"
#include "app/session/SceneSession.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "util/xml/Base64.h"

namespace orv::app {

KeptTakes::KeptTakes(SceneSession& session) : m_session(session) {
  auto& core = session.GetCore();
  core.takeStarted = core.runStarted = [this] { BeginTake(); };
  core.takeStopped = [this] { StopTake(true); };
  core.runStopped = [this] { StopTake(false); };
  core.takeEnded = core.runEnded = [this] { EndTake(); };
}

KeptTakes::~KeptTakes() {
  auto& core = m_session.GetCore();
  for (auto* told : {&core.takeStarted, &core.takeStopped, &core.takeEnded, &core.runStarted,
                     &core.runStopped, &core.runEnded})
    *told = nullptr;
}

std::string KeptTakes::Load() {
  m_life = std::make_shared<int>(0);
  m_list = {};
  m_names.clear();
  FollowNames();
  m_changed = m_damaged = false;
  const std::string& text = m_session.GetScene().GetTakes();
  if (text.empty()) return {};
  std::vector<unsigned char> bytes;
  std::string problem = "they are damaged";
  if (util::xml::decodeBase64(text, bytes))
    problem = DecodeTakes(std::string(bytes.begin(), bytes.end()), m_list);
  m_damaged = !problem.empty();
  if (!m_damaged) return {};
  return "the kept takes can't be read: " + problem +
         " (they are written back as they are, and new takes are not kept)";
}

void KeptTakes::Store() {
  FollowNames();
  if (!m_changed || m_damaged) return;
  const TakeList stored = GetNeeded();
  const bool isEmpty = stored.lastNumber == 0 && stored.hidden.empty();
  const std::string bytes = isEmpty ? std::string() : EncodeTakes(stored);
  m_session.GetScene().GetTakes() = util::xml::encodeBase64(bytes.data(), bytes.size());
  m_changed = false;
}

/// Takes are those of a rig whatever its name is. Asked for whenever names count: undo gives old
/// ones back.
void KeptTakes::FollowNames() {
  std::map<std::string, std::string> renamed;
  for (const rws::core::Instance* rig : m_session.GetCore().List(false)) {
    std::string& name = m_names[rig->GetIdentity()];
    if (!name.empty() && name != rig->GetInstanceName()) renamed[name] = rig->GetInstanceName();
    name = rig->GetInstanceName();
  }
  if (renamed.empty()) return;
  const auto rename = [&renamed](KeptRig& rig) {
    const auto found = renamed.find(rig.name);
    if (found == renamed.end()) return;
    for (auto& node : rig.nodes)
      if (node.first.rfind(rig.name + '_', 0) == 0)
        node.first = found->second + node.first.substr(rig.name.size());
    rig.name = found->second;
  };
  for (auto* takes : {&m_list.takes, &m_list.hidden})
    for (KeptTake& take : *takes) {
      for (KeptRig& rig : take.rigs) rename(rig);
      std::map<std::string, std::uint64_t> marks;
      for (const auto& [rig, mark] : take.marks)
        marks[renamed.count(rig) ? renamed[rig] : rig] = mark;
      take.marks = std::move(marks);
    }
  m_changed = true;
}

const KeptTake* KeptTakes::Find(int number) const {
  const auto found = std::find_if(m_list.takes.begin(), m_list.takes.end(),
                                  [number](const KeptTake& take) { return take.number == number; });
  return found == m_list.takes.end() ? nullptr : &*found;
}

const KeptTake* KeptTakes::FindAny(int number) const {
  if (const KeptTake* take = Find(number)) return take;
  // The latest are asked for most.
  const auto found = std::find_if(m_list.hidden.rbegin(), m_list.hidden.rend(),
                                  [number](const KeptTake& take) { return take.number == number; });
  return found == m_list.hidden.rend() ? nullptr : &*found;
}

KeptTake* KeptTakes::Edit(int number) {
  auto* take = const_cast<KeptTake*>(std::as_const(*this).FindAny(number));
  m_changed = m_changed || take;
  return take;
}

KeptTake* KeptTakes::EditShown(int number) {
  return Find(number) ? Edit(number) : nullptr;
}

int KeptTakes::ShownOf(int number) const {
  const KeptTake* take = FindAny(number);
  const int shown = take && number < 0 ? take->shown : number;
  return Find(shown) ? shown : 0;
}

// --- what has to stay ---

std::set<int> KeptTakes::FindNeeded() const {
  std::set<int> needed;
  for (const int tip : GetTips())
    for (const KeptTake* take : ChainOf(tip)) needed.insert(take->number);
  for (const KeptTake& shown : m_list.takes)
    for (const KeptTake* take : ChainOf(shown.number)) needed.insert(take->number);
  return needed;
}

/// The list without what is there for undo alone. Simulations are counted anew, so that doing the
/// same once more gives the same file.
TakeList KeptTakes::GetNeeded() const {
  TakeList list = m_list;
  const std::set<int> needed = FindNeeded();
  const auto isUnneeded = [&needed](const auto& take) { return needed.count(take.number) == 0; };
  list.hidden.erase(std::remove_if(list.hidden.begin(), list.hidden.end(), isUnneeded),
                    list.hidden.end());
  list.lastHidden = 0;
  std::map<int, int> renumbered;
  for (const KeptTake& take : list.hidden)
    if (take.number < 0) renumbered[take.number] = --list.lastHidden;
  const auto renumber = [&renumbered](int& number) {
    const auto found = renumbered.find(number);
    if (found != renumbered.end()) number = found->second;
  };
  renumber(list.current);
  for (int& number : list.beside) renumber(number);
  for (auto* takes : {&list.takes, &list.hidden})
    for (KeptTake& take : *takes) {
      renumber(take.number);
      renumber(take.predecessor);
      for (int& number : take.beside) renumber(number);
    }
  return list;
}

/// No list shows it from here on; it stays as long as the scene or another take needs it.
void KeptTakes::Hide(int number) {
  const auto found = std::find_if(m_list.takes.begin(), m_list.takes.end(),
                                  [number](const KeptTake& take) { return take.number == number; });
  m_list.hidden.push_back(std::move(*found));
  m_list.takes.erase(found);
  m_changed = true;
}

/// Undo may ask for what nothing needs now, but not for all time.
void KeptTakes::ForgetUnneeded(std::size_t most) {
  if (m_list.hidden.size() <= most) return;
  const std::set<int> needed = FindNeeded();
  std::size_t spare = m_list.hidden.size() - most;
  const auto isSpare = [&](const KeptTake& take) {
    return spare > 0 && needed.count(take.number) == 0 && spare-- > 0;
  };
  m_list.hidden.erase(std::remove_if(m_list.hidden.begin(), m_list.hidden.end(), isSpare),
                      m_list.hidden.end());
}

/// The oldest go first, but for those with stars, that others go on from, or that the scene shows.
void KeptTakes::KeepToLimit() {
  const int most = m_session.GetCore().GetPreferences().mostTakes;
  while (most > 0 && m_list.takes.size() > static_cast<std::size_t>(most)) {
    std::set<int> needed{GetCurrent()};
    for (const KeptTake& shown : m_list.takes)
      for (const KeptTake* take : ChainOf(shown.number))
        if (take->number != shown.number) needed.insert(take->number);
    const auto spare = std::find_if(m_list.takes.begin(), m_list.takes.end(), [&](const auto& t) {
      return t.stars == 0 && needed.count(t.number) == 0;
    });
    if (spare == m_list.takes.end()) return;
    Hide(spare->number);
  }
}

// --- marks ---

KeptTakes::Marks KeptTakes::GetMarks() const {
  Marks marks{m_list.current, m_list.beside, {}};
  for (const KeptTake& take : m_list.takes) marks.flags[take.number] = {take.retried, take.undone};
  return marks;
}

void KeptTakes::PutMarks(const Marks& marks) {
  m_list.current = marks.current;
  m_list.beside = marks.beside;
  m_changed = true;
  for (const auto& [number, flags] : marks.flags) {
    if (KeptTake* take = Edit(number)) {
      take->retried = flags.first;
      take->undone = flags.second;
    }
  }
}

// --- what stands in the list ---

bool KeptTakes::SetName(int number, const std::string& name) {
  KeptTake* take = EditShown(number);
  if (take) take->name = name;
  return take;
}

bool KeptTakes::SetNote(int number, const std::string& note) {
  KeptTake* take = EditShown(number);
  if (take) take->note = note;
  return take;
}

bool KeptTakes::SetStars(int number, int stars) {
  KeptTake* take = EditShown(number);
  if (take) take->stars = std::clamp(stars, 0, 5);
  return take;
}

std::string KeptTakes::Delete(int number) {
  if (!Find(number)) return "there is no take " + std::to_string(number);
  for (const KeptTake& other : m_list.takes)
    for (const KeptTake* take : ChainOf(other.number))
      if (take->number == number && other.number != number)
        return "take " + std::to_string(other.number) + " went on from it";
  Hide(number);
  return {};
}

std::string KeptTakes::Export(int number) const {
  TakeList list;
  for (const KeptTake* take : ChainOf(Find(number) ? number : 0)) {
    (Find(take->number) ? list.takes : list.hidden).push_back(*take);
    list.lastNumber = std::max(list.lastNumber, take->number);
    list.lastHidden = std::min(list.lastHidden, take->number);
  }
  std::sort(list.takes.begin(), list.takes.end(),
            [](const KeptTake& a, const KeptTake& b) { return a.number < b.number; });
  return EncodeTakes(list);
}

std::string KeptTakes::Import(const std::string& bytes, std::vector<int>& numbers) {
  if (m_damaged) return "the kept takes of the scene can't be read";
  TakeList list;
  std::string problem = DecodeTakes(bytes, list);
  if (!problem.empty()) return "the takes of this file can't be read: " + problem;
  std::map<int, int> renumbered{{0, 0}};
  for (const KeptTake& take : list.takes) {
    numbers.push_back(m_list.lastNumber + static_cast<int>(numbers.size()) + 1);
    renumbered[take.number] = numbers.back();
  }
  int lastHidden = m_list.lastHidden;
  for (const KeptTake& take : list.hidden) renumbered[take.number] = --lastHidden;
  for (const auto* takes : {&list.takes, &list.hidden})
    for (const KeptTake& take : *takes) {
      std::vector<int> earlier = take.beside;
      earlier.push_back(take.predecessor);
      for (const int number : earlier)
        if (renumbered.count(number) == 0)
          return "take " + std::to_string(number) + " is missing in it";
    }
  for (auto* takes : {&list.takes, &list.hidden}) {
    for (KeptTake& take : *takes) {
      take.predecessor = renumbered[take.predecessor];
      for (int& number : take.beside) number = renumbered[number];
      take.number = renumbered[take.number];
      take.shown = renumbered.count(take.shown) > 0 ? renumbered[take.shown] : 0;
      take.retried = take.undone = false;
      (takes == &list.takes ? m_list.takes : m_list.hidden).push_back(std::move(take));
    }
  }
  m_list.lastNumber += static_cast<int>(numbers.size());
  m_list.lastHidden = lastHidden;
  m_changed = m_changed || !numbers.empty();
  return {};
}

}  // namespace orv::app
