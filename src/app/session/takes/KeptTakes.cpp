#include "app/session/takes/KeptTakes.h"

#include <QCryptographicHash>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <set>
#include <utility>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/Scene.h"
#include "app/session/NodePlacing.h"
#include "app/session/SceneRange.h"
#include "app/session/SceneSession.h"
#include "app/session/anyhost/RunRigs.h"
#include "app/session/anyhost/UndoBlock.h"
#include "app/session/takes/RigSettings.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "core/instances/InstanceReference.h"
#include "core/interface/CCamera.h"
#include "core/take/TakeUndo.h"
#include "core/tools/Tool.h"
#include "unidevice/Property.h"
#include "util/FrameGrid.h"
#include "util/NumberText.h"
#include "util/xml/Base64.h"

namespace orv::app {

namespace {

namespace headless = rws::adaptor::headless;
using rws::core::Instance;

/// Simulations that undo may ask for.
constexpr std::size_t kMostUnneeded = 200;

std::set<std::string> NamesOf(const KeptTake& take) {
  std::set<std::string> names;
  for (const KeptRig& rig : take.rigs) names.insert(rig.name);
  return names;
}

}  // namespace

/// Exchanges the marks of before and after a step. Finds nothing to do when the scene has gone.
class KeptTakes::MarksUndo : public rws::CUndo {
 public:
  MarksUndo(KeptTakes& takes, Marks before, Marks after)
      : m_takes(takes),
        m_life(takes.m_life),
        m_before(std::move(before)),
        m_after(std::move(after)) {}
  void Undo(bool) override {
    if (!m_life.expired()) m_takes.PutMarks(m_before);
  }
  void Redo() override {
    if (!m_life.expired()) m_takes.PutMarks(m_after);
  }

 private:
  KeptTakes& m_takes;
  std::weak_ptr<int> m_life;
  Marks m_before, m_after;
};

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
  if (!m_changed || m_damaged) return;
  const TakeList stored = GetNeeded();
  const bool isEmpty = stored.lastNumber == 0 && stored.hidden.empty();
  const std::string bytes = isEmpty ? std::string() : EncodeTakes(stored);
  m_session.GetScene().GetTakes() = util::xml::encodeBase64(bytes.data(), bytes.size());
  m_changed = false;
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
  for (const KeptTake* take : ChainOf(m_list.current)) needed.insert(take->number);
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
  for (auto* takes : {&list.takes, &list.hidden})
    for (KeptTake& take : *takes) {
      renumber(take.number);
      renumber(take.predecessor);
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
  Marks marks{m_list.current, {}};
  for (const KeptTake& take : m_list.takes) marks.flags[take.number] = {take.retried, take.undone};
  return marks;
}

void KeptTakes::PutMarks(const Marks& marks) {
  m_list.current = marks.current;
  m_changed = true;
  for (const auto& [number, flags] : marks.flags) {
    if (KeptTake* take = Edit(number)) {
      take->retried = flags.first;
      take->undone = flags.second;
    }
  }
}

// --- a take ---

bool KeptTakes::IsTracking() const {
  return m_session.GetCore().GetPreferences().keepTakes || m_list.lastNumber > 0 ||
         m_list.current != 0;
}

/// What the scene's keys come from at `start`, when the poses stand as it left them.
int KeptTakes::PredecessorAt(double start, const std::vector<Instance*>& rigs) {
  const std::vector<const KeptTake*> chain = ChainOf(m_list.current);
  if (chain.empty() || chain.front()->predecessor != 0) return 0;
  const KeptTake& last = *chain.back();
  const KeptTake* found = nullptr;
  for (const KeptTake* take : chain)
    if (take->range.from < start - util::kFrameTolerance) found = take;
  if (!found || start > found->range.to + util::kFrameTolerance ||
      found->rate != m_session.GetScene().GetFrameRate())
    return 0;
  std::set<std::string> names;
  for (const Instance* rig : rigs) names.insert(rig->GetInstanceName());
  const std::set<std::string> ran = NamesOf(*found);
  // What others have come to behind its start would not be in the chain any more.
  const bool isPart = std::includes(ran.begin(), ran.end(), names.begin(), names.end());
  if (names != ran && (!isPart || found != &last)) return 0;
  const bool stands = last.mark != 0 ? MarkOf(last) == last.mark : HashOf(last) == last.hash;
  return stands ? found->number : 0;
}

void KeptTakes::BeginTake() {
  if (m_isPaused) return;
  auto& core = m_session.GetCore();
  m_isTracking = IsTracking();
  if (!m_isTracking) return;
  m_running = {};
  m_running.rate = m_session.GetScene().GetFrameRate();
  m_running.range = {core.GetStartTime(), core.GetStartTime()};
  m_running.predecessor = PredecessorAt(core.GetStartTime(), core.GetTakeInstances());
  for (Instance* rig : core.GetTakeInstances()) {
    KeptRig kept = SettingsOf(*rig, m_surroundings);
    int size = 0;
    if (m_running.predecessor == 0 && rig->GetRig()->Store() == 0) {
      const auto* data = static_cast<const unsigned char*>(rig->GetUserData(&size));
      if (data) kept.memory.assign(data, data + size);
    }
    for (rws::core::CoreNode* node : rig->GetNodes())
      if (m_running.predecessor == 0)
        kept.nodes.emplace_back(node->GetSceneName(), rws::adaptor::Trs());
    m_running.rigs.push_back(std::move(kept));
  }
}

void KeptTakes::ReadInputs(KeptTake& take) {
  for (KeptRig& kept : take.rigs)
    if (Instance* rig = m_session.GetCore().FindInstance(kept.name))
      kept.inputs = InputsOf(*rig, take.range.from);
}

/// The keys at the start are what a run that begins there finds.
void KeptTakes::NoteStart(KeptTake& take) {
  for (KeptRig& rig : take.rigs)
    for (auto& [name, pose] : rig.nodes)
      if (const headless::SceneNode* node = m_session.GetScene().Find(name))
        pose = node->LocalTrs(take.range.from);
}

void KeptTakes::NotePoses(KeptTake& take) {
  if (take.number > 0) take.hash = HashOf(take);
  take.mark = MarkOf(take);
}

void KeptTakes::StopTake(bool isTake) {
  if (!m_isTracking || m_isPaused) return;
  auto& core = m_session.GetCore();
  // A simulation's frame is the next one by now, a take's the last.
  const double rate = m_running.rate;
  const double last =
      isTake ? core.GetFrameTime() : (std::round(core.GetFrameTime() * rate) - 1.0) * (1.0 / rate);
  m_running.range.to = std::max(m_running.range.from, last);
  ReadInputs(m_running);
  Marks before = GetMarks();
  if (isTake && core.GetPreferences().keepTakes && !m_damaged) {
    m_running.number = ++m_list.lastNumber;
    m_running.version = version;
    if (KeptTake* old = EditShown(GetCurrent()))
      old->retried = ShownOf(m_running.predecessor) != old->number;
    m_list.takes.push_back(std::exchange(m_running, {}));
    m_list.current = m_list.lastNumber;
    before.flags[m_list.current] = {false, true};
  } else {
    m_running.number = --m_list.lastHidden;
    m_running.shown = isTake ? 0 : GetCurrent();
    m_list.hidden.push_back(std::exchange(m_running, {}));
    m_list.current = m_list.lastHidden;
  }
  m_changed = true;
  core.GetAdaptor()->PushUndo(new MarksUndo(*this, std::move(before), GetMarks()));
}

void KeptTakes::EndTake() {
  if (!m_isTracking || m_isPaused) return;
  KeptTake* take = Edit(m_list.current);
  if (!take) return;
  if (now && take->number > 0) take->when = now();
  NoteStart(*take);
  NotePoses(*take);
  KeepToLimit();
  ForgetUnneeded(kMostUnneeded);
}

void KeptTakes::TakeOverInputs(double end) {
  KeptTake* take = m_isTracking ? Edit(m_list.current) : nullptr;
  if (!take) return;
  take->range.to = std::max(take->range.to, end);
  ReadInputs(*take);
  NotePoses(*take);
}

namespace {

/// Takes the keys of rigs' nodes within a time, one after the other: which node, times and values.
template <class AddText, class AddNumbers>
void VisitKeys(rws::core::CoreImplementation& core, const std::vector<KeptRig>& rigs,
               const TimeSpan& span, const AddText& addNode, const AddNumbers& add) {
  for (const KeptRig& rig : rigs) {
    const Instance* instance = core.FindInstance(rig.name);
    if (!instance) continue;
    for (rws::core::CoreNode* each : instance->GetNodes()) {
      const auto* node = static_cast<headless::HeadlessNode*>(each)->GetSceneNode();
      addNode();
      for (int path = 0; node && path < 3; ++path) {
        const headless::Channel* keys = node->GetChannel(static_cast<headless::ChannelPath>(path));
        if (!keys) continue;
        const auto& times = keys->GetTimes();
        const auto perKey = static_cast<std::size_t>(keys->ValuesPerKey());
        const auto first = std::lower_bound(times.begin(), times.end(), span.from) - times.begin();
        for (auto i = static_cast<std::size_t>(first);
             i < times.size() && times[i] <= span.to + util::kFrameTolerance; ++i) {
          add(&times[i], 1);
          add(keys->GetValues().data() + i * perKey, perKey);
        }
      }
    }
  }
}

}  // namespace

/// Of all keys of the rigs' nodes within the take, to the bit. Nodes count in their order, so that
/// a new name changes nothing.
std::string KeptTakes::HashOf(const KeptTake& take) {
  QCryptographicHash hash(QCryptographicHash::Sha256);
  VisitKeys(
      m_session.GetCore(), take.rigs, take.range, [&hash] { hash.addData("node", 4); },
      [&hash](const double* from, std::size_t count) {
        hash.addData(reinterpret_cast<const char*>(from), static_cast<int>(count * sizeof(double)));
      });
  return hash.result().toHex().toStdString();
}

/// The same from where the chain begins, for all of its rigs: asked for whenever a run begins, so
/// it has to be quick.
std::uint64_t KeptTakes::MarkOf(const KeptTake& take) {
  const std::vector<const KeptTake*> chain = ChainOf(take.number);
  const KeptTake& root = chain.empty() ? take : *chain.front();
  std::uint64_t mark = 0x9e3779b97f4a7c15u;
  const auto mix = [&mark](std::uint64_t word) {
    mark = (mark ^ word) * 0xff51afd7ed558ccdu;
    mark ^= mark >> 32;
  };
  VisitKeys(
      m_session.GetCore(), root.rigs, {root.range.from, take.range.to}, [&mix] { mix(1); },
      [&mix](const double* from, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
          std::uint64_t word = 0;
          std::memcpy(&word, from + i, sizeof word);
          mix(word);
        }
      });
  return mark != 0 ? mark : 1;
}

// --- using one ---

std::vector<const KeptTake*> KeptTakes::ChainOf(int number) const {
  std::vector<const KeptTake*> chain;
  // What was read has been looked through for circles, and new ones go on from older ones.
  for (const KeptTake* take = FindAny(number); take; take = FindAny(take->predecessor))
    chain.push_back(take);
  std::reverse(chain.begin(), chain.end());
  return chain;
}

std::vector<const KeptTake*> KeptTakes::GetChain() const {
  const std::vector<const KeptTake*> chain = ChainOf(m_list.current);
  const bool isWhole = !chain.empty() && chain.front()->predecessor == 0;
  return isWhole ? chain : std::vector<const KeptTake*>();
}

std::string KeptTakes::WhyNot(const std::vector<const KeptTake*>& chain) {
  auto& core = m_session.GetCore();
  if (core.IsRecording()) return "a take is running";
  if (chain.front()->predecessor != 0)
    return "take " + std::to_string(chain.front()->predecessor) +
           ", which it went on from, is not there";
  for (const KeptTake* take : chain) {
    if (take->rate != m_session.GetScene().GetFrameRate())
      return "it was performed at " + util::shortText(take->rate) +
             " frames per second, which is not the scene's rate";
    for (const KeptRig& rig : take->rigs) {
      const Instance* instance = core.FindInstance(rig.name);
      if (!instance) return "the rig " + rig.name + " is not in the scene";
      if (instance->GetTool()->GetDisplayId() != rig.kind)
        return rig.name + " is no " + rig.kind + " any more";
    }
  }
  return {};
}

std::string KeptTakes::PutBackRig(const KeptTake& take, const KeptRig& kept) {
  auto& core = m_session.GetCore();
  Instance* rig = core.FindInstance(kept.name);
  core.GetAdaptor()->PushUndo(new rws::core::TakeUndo(*rig, rws::core::TakeUndo::Of::kTake));
  PutBindings(*rig, kept.bindings);
  PutParameters(*rig, kept);
  if (take.predecessor == 0 && !kept.memory.empty()) {
    core.RebuildWithData(*rig, kept.memory);
    rig = core.FindInstance(kept.name);
    if (!rig) return "the rig " + kept.name + " could not be put back to its start";
    PutParameters(*rig, kept);  // what the rig stored has some of its own
  }
  PutInputs(*rig, kept, take.range.from);
  return {};
}

std::string KeptTakes::PutBack(const KeptTake& take) {
  for (const KeptRig& kept : take.rigs) {
    const std::string problem = PutBackRig(take, kept);
    if (!problem.empty()) return problem;
    for (const auto& [name, pose] : kept.nodes) {
      headless::HeadlessNode* node = m_session.GetAdaptor().FindSceneNode(name);
      if (!node || !node->GetSceneNode()) continue;  // a round of a gun, which the run makes anew
      const PlacingResult placed =
          PlaceNode(*node, {pose.translation, pose.rotation, pose.scale}, take.range.from);
      if (!placed.error.empty()) return name + ": " + placed.error;
    }
  }
  return {};
}

bool KeptTakes::Simulate(const KeptTake& take, double end, const Monitor& monitor) {
  RowsToStep rows;
  for (const KeptRig& rig : take.rigs) rows.push_back(m_session.GetCore().Find(rig.name));
  const RunResult run = Resimulate(m_session.GetCore(), {take.range.from, end}, monitor, rows);
  return run.began && !run.cancelled;
}

/// What is wrong, if anything.
std::string KeptTakes::Replay(const std::vector<const KeptTake*>& chain, const Monitor& monitor) {
  for (std::size_t i = 0; i < chain.size(); ++i) {
    std::string problem = PutBack(*chain[i]);
    if (!problem.empty()) return problem;
    double end = chain[i]->range.to;
    // Where another one takes over with all rigs, nothing is left of what lies behind.
    if (i + 1 < chain.size() && NamesOf(*chain[i + 1]) == NamesOf(*chain[i]))
      end = chain[i + 1]->range.from;
    if (!Simulate(*chain[i], end, monitor)) return "its rigs could not be simulated";
  }
  return {};
}

UseResult KeptTakes::Use(int number, const Monitor& monitor) {
  UseResult result;
  const std::vector<const KeptTake*> chain = ChainOf(Find(number) ? number : 0);
  result.problem = chain.empty() ? "there is no take " + std::to_string(number) : WhyNot(chain);
  if (!result.problem.empty()) return result;
  auto& adaptor = *m_session.GetCore().GetAdaptor();
  UndoBlock block(adaptor, "Use Take");
  Marks before = GetMarks();
  {
    const Pause pause(*this);
    result.problem = Replay(chain, monitor);
  }
  result.cancelled = monitor.IsCancelled();
  if (result.cancelled) result.problem.clear();
  if (result.cancelled || !result.problem.empty()) return result;
  StretchRange(m_session, {chain.front()->range.from, chain.back()->range.to});
  m_list.current = number;
  Edit(number)->undone = Edit(number)->retried = false;
  adaptor.PushUndo(new MarksUndo(*this, std::move(before), GetMarks()));
  block.Keep();
  result.isSame = HashOf(*FindAny(number)) == FindAny(number)->hash;
  return result;
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
    for (const KeptTake& take : *takes)
      if (renumbered.count(take.predecessor) == 0)
        return "take " + std::to_string(take.predecessor) + " is missing in it";
  for (auto* takes : {&list.takes, &list.hidden}) {
    for (KeptTake& take : *takes) {
      take.predecessor = renumbered[take.predecessor];
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
