// What is noted of takes and simulations.
#include <QCryptographicHash>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <set>
#include <utility>

#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/Scene.h"
#include "app/session/SceneSession.h"
#include "app/session/takes/KeptTakes.h"
#include "app/session/takes/MarksUndo.h"
#include "app/session/takes/RigSettings.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "core/interface/CCamera.h"
#include "util/FrameGrid.h"

namespace orv::app {

namespace headless = rws::adaptor::headless;
using rws::core::Instance;

namespace {

/// Simulations that undo may ask for.
constexpr std::size_t kMostUnneeded = 200;

using Tracks = std::map<std::string, util::AVar_Linear<double>>;  ///< by input; none is empty

/// What stands in the tracks ahead of `end`.
Tracks TracksAhead(const KeptRig& rig, double end) {
  Tracks tracks;
  for (KeptInput input : rig.inputs) {
    input.track.cutFrom(end);
    if (!input.track.samples.empty()) tracks[input.name] = std::move(input.track);
  }
  return tracks;
}

/// What takes that go on one from the other leave in a rig's tracks ahead of `end`.
Tracks TracksOf(const std::vector<const KeptTake*>& chain, const std::string& rig, double end) {
  KeptRig all;
  for (const KeptTake* take : chain) {
    const KeptRig* const kept = take->Find(rig);
    if (!kept) continue;
    Tracks tracks = TracksAhead(all, kept->InputsBegin(take->range.from));
    for (const KeptInput& input : kept->inputs)
      for (const auto& sample : input.track.samples)
        tracks[input.name].set(sample.time, sample.value);
    all.inputs.clear();
    for (auto& [name, track] : tracks) all.inputs.push_back({name, std::move(track)});
  }
  return TracksAhead(all, end);
}

bool HasAny(const KeptTake& take, const std::set<std::string>& rigs) {
  return std::any_of(take.rigs.begin(), take.rigs.end(),
                     [&rigs](const KeptRig& rig) { return rigs.count(rig.name) > 0; });
}

bool HasOthers(const KeptTake& take, const std::set<std::string>& rigs) {
  return std::any_of(take.rigs.begin(), take.rigs.end(),
                     [&rigs](const KeptRig& rig) { return rigs.count(rig.name) == 0; });
}

}  // namespace

// --- a take ---

bool KeptTakes::IsTracking() const {
  return m_session.GetCore().GetPreferences().keepTakes || m_list.lastNumber > 0 ||
         m_list.current != 0;
}

/// Whether the poses are those that a run has left, of all rigs `but` these.
bool KeptTakes::Stands(const KeptTake& last, const Names& but) {
  if (last.marks.empty()) return HashOf(last) == last.hash;
  auto marks = MarksOf(last);
  return std::all_of(last.marks.begin(), last.marks.end(), [&](const auto& mark) {
    return but.count(mark.first) > 0 || marks[mark.first] == mark.second;
  });
}

/// The runs that what stands of the rigs at `start` comes from, oldest first; none when that is not
/// known, or none was there by then.
KeptTakes::Chain KeptTakes::StandingAt(double start, const Names& rigs) {
  Chain chain;
  Names newer;
  for (const Chain& line : LinesOf(rigs)) {
    if (!Stands(*line.back(), newer)) break;
    chain.insert(chain.begin(), line.begin(), line.end());
    newer.merge(NamesOf(line));
  }
  const auto begins = [start](const KeptTake* take) {
    return take->range.from < start - util::kFrameTolerance;
  };
  const auto found = std::find_if(chain.rbegin(), chain.rend(), begins);
  if (found == chain.rend() || (*found)->rate != m_session.GetScene().GetFrameRate()) return {};
  const Chain later(found.base(), chain.end());
  // Behind an end and ahead of another start, poses and memories are between both; and what others
  // have come to would not be in the chain any more.
  double end = -kForever;
  bool isReplaced = true;
  for (auto take = found; take != chain.rend(); ++take)
    if (HasAny(**take, rigs)) end = std::max(end, (*take)->range.to);
  for (const KeptTake* take : later) isReplaced = isReplaced && !HasOthers(*take, rigs);
  if (isReplaced && start <= end + util::kFrameTolerance) chain.erase(found.base(), chain.end());
  return chain;
}

void KeptTakes::BeginTake() {
  if (m_isPaused) return;
  auto& core = m_session.GetCore();
  m_isTracking = IsTracking();
  if (!m_isTracking) return;
  FollowNames();
  m_running = {};
  m_running.rate = m_session.GetScene().GetFrameRate();
  m_running.range = {core.GetStartTime(), core.GetStartTime()};
  Names names;
  for (const Instance* rig : core.GetTakeInstances()) names.insert(rig->GetInstanceName());
  const Chain chain = StandingAt(core.GetStartTime(), names);
  if (!chain.empty()) GoOnFrom(chain);
  const Names held = NamesOf(ChainAhead(m_running));
  for (Instance* rig : core.GetTakeInstances()) {
    KeptRig kept = SettingsOf(*rig, m_surroundings);
    kept.hasStart = held.count(kept.name) == 0;
    if (kept.hasStart) NoteStart(*rig, kept);
    m_running.rigs.push_back(std::move(kept));
  }
}

/// The last of them; and those that others of its rigs come from, which that one does not tell.
void KeptTakes::GoOnFrom(const Chain& chain) {
  m_running.predecessor = chain.back()->number;
  std::vector<int> others;
  for (const int tip : GetTips()) {
    const KeptTake* const last = FindAny(tip);
    std::vector<int> lines = last ? last->beside : std::vector<int>();
    lines.push_back(tip);
    for (const int line : lines)
      if (line != m_running.predecessor &&
          std::find(chain.begin(), chain.end(), FindAny(line)) != chain.end())
        others.push_back(line);
  }
  for (const int line : Uncovered(others, NamesOf(ChainOf(m_running.predecessor)))) {
    const std::vector<int>& earlier = FindAny(line)->beside;
    m_running.beside.insert(m_running.beside.end(), earlier.begin(), earlier.end());
    m_running.beside.push_back(line);
  }
  const std::vector<int>& own = chain.back()->beside;
  m_running.beside.insert(m_running.beside.end(), own.begin(), own.end());
}

/// What a run finds that begins now.
void KeptTakes::NoteStart(Instance& rig, KeptRig& kept) {
  const double start = m_running.range.from;
  kept.isFirst = !(FirstOf(rig) < start - util::kFrameTolerance);
  int size = 0;
  const auto* data = rig.GetRig()->Store() == 0
                         ? static_cast<const unsigned char*>(rig.GetUserData(&size))
                         : nullptr;
  if (data) kept.memory.assign(data, data + size);
  for (rws::core::CoreNode* node : rig.GetNodes())
    if (const headless::SceneNode* own = m_session.GetScene().Find(node->GetSceneName()))
      kept.nodes.emplace_back(own->GetName(), own->LocalTrs(start));
}

/// What the chain has recorded ahead of the start is not told again, unless it was edited since
/// without a simulation from there on.
void KeptTakes::ReadInputs(KeptTake& take) {
  const Chain chain = ChainAhead(take);
  for (KeptRig& kept : take.rigs) {
    Instance* rig = m_session.GetCore().FindInstance(kept.name);
    if (!rig) continue;
    kept.inputs = InputsOf(*rig, -kForever);
    const bool isEdited = !chain.empty() && TracksAhead(kept, take.range.from) !=
                                                TracksOf(chain, kept.name, take.range.from);
    if (!isEdited) kept.inputs = InputsOf(*rig, take.range.from);
  }
}

void KeptTakes::NotePoses(KeptTake& take) {
  if (take.number > 0) take.hash = HashOf(take);
  take.marks = MarksOf(take);
}

/// Whether nothing of what was recorded in another take stays.
bool KeptTakes::IsInPlaceOf(const KeptTake& old) const {
  if (m_running.range.from > old.range.from + util::kFrameTolerance) return false;
  return std::all_of(old.rigs.begin(), old.rigs.end(), [this](const KeptRig& each) {
    Instance* rig = m_session.GetCore().FindInstance(each.name);
    if (!rig || !m_running.Find(each.name)) return false;
    for (int i = 0; i < static_cast<int>(rig->GetTracks().size()); ++i)
      if (rig->IsPlayed(i)) return false;
    return true;
  });
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
  const std::vector<int> tips = GetTips();
  if (isTake && core.GetPreferences().keepTakes && !m_damaged) {
    m_running.number = ++m_list.lastNumber;
    m_running.version = version;
    if (KeptTake* old = EditShown(GetCurrent())) old->retried = IsInPlaceOf(*old);
    m_list.takes.push_back(std::exchange(m_running, {}));
    m_list.current = m_list.lastNumber;
    before.flags[m_list.current] = {false, true};
  } else {
    m_running.number = --m_list.lastHidden;
    m_running.shown = isTake ? 0 : GetCurrent();
    m_list.hidden.push_back(std::exchange(m_running, {}));
    m_list.current = m_list.lastHidden;
  }
  m_list.beside = Uncovered(tips, WholeIn(ChainOf(m_list.current)));
  m_changed = true;
  core.GetAdaptor()->PushUndo(new MarksUndo(*this, std::move(before), GetMarks()));
}

void KeptTakes::EndTake() {
  if (!m_isTracking || m_isPaused) return;
  KeptTake* take = Edit(m_list.current);
  if (!take) return;
  if (now && take->number > 0) take->when = now();
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

/// Takes the keys of a rig's nodes within a time, one after the other: which node, times and
/// values; with `isOfStart` of those nodes alone that `rig` names.
template <class AddText, class AddNumbers>
void VisitKeys(rws::core::CoreImplementation& core, const KeptRig& rig, const TimeSpan& span,
               bool isOfStart, const AddText& addNode, const AddNumbers& add) {
  const Instance* instance = core.FindInstance(rig.name);
  if (!instance) return;
  std::vector<rws::core::CoreNode*> nodes = instance->GetNodes();
  // Their order in time is another one when undo has brought some back.
  std::sort(nodes.begin(), nodes.end(),
            [](const auto* a, const auto* b) { return a->GetName() < b->GetName(); });
  for (rws::core::CoreNode* each : nodes) {
    const auto isSame = [each](const auto& kept) { return kept.first == each->GetSceneName(); };
    if (isOfStart && std::none_of(rig.nodes.begin(), rig.nodes.end(), isSame)) continue;
    const auto* node = static_cast<headless::HeadlessNode*>(each)->GetSceneNode();
    bool isNew = true;  // one that undo has emptied does not count
    for (int path = 0; node && path < 3; ++path) {
      const headless::Channel* keys = node->GetChannel(static_cast<headless::ChannelPath>(path));
      if (!keys) continue;
      const auto& times = keys->GetTimes();
      const auto perKey = static_cast<std::size_t>(keys->ValuesPerKey());
      const auto first = std::lower_bound(times.begin(), times.end(), span.from) - times.begin();
      for (auto i = static_cast<std::size_t>(first);
           i < times.size() && times[i] <= span.to + util::kFrameTolerance; ++i) {
        if (std::exchange(isNew, false)) addNode(each->GetName());
        add(&times[i], 1);
        add(keys->GetValues().data() + i * perKey, perKey);
      }
    }
  }
}

}  // namespace

/// Of all keys of the rigs' nodes within the take, to the bit. Nodes count by their names within
/// the rig, so that a new name of that changes nothing.
std::string KeptTakes::HashOf(const KeptTake& take) {
  QCryptographicHash hash(QCryptographicHash::Sha256);
  const auto addNode = [&hash](const std::string&) { hash.addData("node", 4); };
  const auto add = [&hash](const double* from, std::size_t count) {
    hash.addData(reinterpret_cast<const char*>(from), static_cast<int>(count * sizeof(double)));
  };
  for (const KeptRig& rig : take.rigs)
    VisitKeys(m_session.GetCore(), rig, take.range, false, addNode, add);
  return hash.result().toHex().toStdString();
}

/// The same from where the chain begins on, for each of its rigs: asked for whenever a run begins,
/// so it has to be quick. Of the nodes that were there at a start alone: what a run has made, such
/// as rounds of a gun, is gone when the next one has begun.
std::map<std::string, std::uint64_t> KeptTakes::MarksOf(const KeptTake& take) {
  const Chain chain = ChainOf(take.number);
  double from = take.range.from;
  for (const KeptTake* each : chain) from = std::min(from, each->range.from);
  std::map<std::string, std::uint64_t> marks;
  std::uint64_t mark = 0;
  const auto mix = [&mark](std::uint64_t word) {
    mark = (mark ^ word) * 0xff51afd7ed558ccdu;
    mark ^= mark >> 32;
  };
  const auto addNode = [&](const std::string& name) {
    for (const char letter : name) mix(static_cast<unsigned char>(letter));
  };
  const auto add = [&mix](const double* numbers, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
      std::uint64_t word = 0;
      std::memcpy(&word, numbers + i, sizeof word);
      mix(word);
    }
  };
  for (const KeptTake* each : chain)
    for (const KeptRig& rig : each->rigs) {
      if (!rig.hasStart) continue;
      mark = marks[rig.name];
      VisitKeys(m_session.GetCore(), rig, {from, kForever}, true, addNode, add);
      marks[rig.name] = mark;
    }
  return marks;
}

}  // namespace orv::app
