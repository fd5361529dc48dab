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
    Tracks tracks = TracksAhead(all, take->InputsBegin(*kept));
    for (const KeptInput& input : kept->inputs)
      for (const auto& sample : input.track.samples)
        tracks[input.name].set(sample.time, sample.value);
    all.inputs.clear();
    for (auto& [name, track] : tracks) all.inputs.push_back({name, std::move(track)});
  }
  return TracksAhead(all, end);
}

std::set<std::string> NamesOf(const KeptTake& take) {
  std::set<std::string> names;
  for (const KeptRig& rig : take.rigs) names.insert(rig.name);
  return names;
}

}  // namespace

// --- a take ---

bool KeptTakes::IsTracking() const {
  return m_session.GetCore().GetPreferences().keepTakes || m_list.lastNumber > 0 ||
         m_list.current != 0;
}

/// The run that what stands at `start` comes from, when the poses stand as the chain left them: the
/// last one that was there. Behind its end and ahead of others poses and memories are between both,
/// so all that has been simulated since counts.
int KeptTakes::PredecessorAt(double start, const std::vector<Instance*>& rigs) {
  const std::vector<const KeptTake*> chain = ChainOf(m_list.current);
  if (chain.empty() || chain.front()->predecessor != 0) return 0;
  const KeptTake& last = *chain.back();
  const KeptTake* found = nullptr;
  for (const KeptTake* take : chain)
    if (take->range.from < start - util::kFrameTolerance) found = take;
  if (!found || found->rate != m_session.GetScene().GetFrameRate()) return 0;
  if (start > found->range.to + util::kFrameTolerance) found = &last;
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
  m_running.isFirst = m_running.predecessor == 0;
  for (Instance* rig : core.GetTakeInstances()) {
    m_running.isFirst =
        m_running.isFirst && !(FirstOf(*rig) < m_running.range.from - util::kFrameTolerance);
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
  NoteStart(m_running);
}

/// What the chain has recorded ahead of the start is not told again, unless it was edited since
/// without a simulation from there on.
void KeptTakes::ReadInputs(KeptTake& take) {
  const std::vector<const KeptTake*> chain = ChainOf(take.predecessor);
  for (KeptRig& kept : take.rigs) {
    Instance* rig = m_session.GetCore().FindInstance(kept.name);
    if (!rig) continue;
    kept.inputs = InputsOf(*rig, -kForever);
    const bool isEdited = !chain.empty() && TracksAhead(kept, take.range.from) !=
                                                TracksOf(chain, kept.name, take.range.from);
    if (!isEdited) kept.inputs = InputsOf(*rig, take.range.from);
  }
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
      old->retried =
          ShownOf(m_running.predecessor) != old->number || m_running.range.from < old->range.from;
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

/// Takes the keys of rigs' nodes within a time, one after the other: which node, times and values;
/// with `isOfStart` of those nodes alone that `rigs` name.
template <class AddText, class AddNumbers>
void VisitKeys(rws::core::CoreImplementation& core, const std::vector<KeptRig>& rigs,
               const TimeSpan& span, bool isOfStart, const AddText& addNode,
               const AddNumbers& add) {
  for (const KeptRig& rig : rigs) {
    const Instance* instance = core.FindInstance(rig.name);
    if (!instance) continue;
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
}

}  // namespace

/// Of all keys of the rigs' nodes within the take, to the bit. Nodes count by their names within
/// the rig, so that a new name of that changes nothing.
std::string KeptTakes::HashOf(const KeptTake& take) {
  QCryptographicHash hash(QCryptographicHash::Sha256);
  VisitKeys(
      m_session.GetCore(), take.rigs, take.range, false,
      [&hash](const std::string&) { hash.addData("node", 4); },
      [&hash](const double* from, std::size_t count) {
        hash.addData(reinterpret_cast<const char*>(from), static_cast<int>(count * sizeof(double)));
      });
  return hash.result().toHex().toStdString();
}

/// The same from where the chain begins on, for all of its rigs: asked for whenever a run begins,
/// so it has to be quick. Of the nodes that were there at its start alone: what a run has made,
/// such as rounds of a gun, is gone when the next one has begun.
std::uint64_t KeptTakes::MarkOf(const KeptTake& take) {
  const std::vector<const KeptTake*> chain = ChainOf(take.number);
  const KeptTake& root = chain.empty() ? take : *chain.front();
  std::uint64_t all = 0, mark = 0;  // the nodes' own are summed up: their order does not matter
  const auto mix = [&mark](std::uint64_t word) {
    mark = (mark ^ word) * 0xff51afd7ed558ccdu;
    mark ^= mark >> 32;
  };
  VisitKeys(
      m_session.GetCore(), root.rigs, {root.range.from, kForever}, true,
      [&](const std::string& name) {
        all += mark;
        mark = 0x9e3779b97f4a7c15u;
        for (const char letter : name) mix(static_cast<unsigned char>(letter));
      },
      [&mix](const double* from, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
          std::uint64_t word = 0;
          std::memcpy(&word, from + i, sizeof word);
          mix(word);
        }
      });
  all += mark;
  return all != 0 ? all : 1;
}

}  // namespace orv::app
