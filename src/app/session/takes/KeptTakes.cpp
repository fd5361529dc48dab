#include "app/session/takes/KeptTakes.h"

#include <QCryptographicHash>
#include <algorithm>
#include <cmath>
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
#include "core/CoreImplementation.h"
#include "core/config/ConfigElement.h"
#include "core/config/InputUndo.h"
#include "core/config/ParameterUndo.h"
#include "core/instances/Instance.h"
#include "core/instances/InstanceReference.h"
#include "core/instances/RecordKeys.h"
#include "core/interface/CCamera.h"
#include "core/take/TakeUndo.h"
#include "core/tools/Tool.h"
#include "unidevice/Property.h"
#include "util/FrameGrid.h"
#include "util/NumberText.h"
#include "util/xml/Base64.h"
#include "util/xml/Tag.h"

namespace orv::app {

namespace {

namespace headless = rws::adaptor::headless;
namespace record = rws::core::record;
using rws::core::Instance;

std::vector<KeptParameter> ParametersOf(const Instance& rig) {
  std::vector<KeptParameter> parameters;
  for (const auto& value : rws::core::ParameterState(rig).values)
    if (!rig.GetConfig().Find(value.element)->IsReadOnly())
      parameters.push_back({value.element, value.number, value.text});
  return parameters;
}

std::string BindingsOf(Instance& rig) {
  util::xml::Tag profile(record::kProfile);
  for (int i = 0; i < rig.GetProperties().count(); ++i) {
    util::xml::Tag tag(record::kProperty);
    unidevice::Property& property = *rig.GetProperties().property(i);
    // What is bound for a while, such as a file that is played, is no mapping of the user's.
    unidevice::Control* const bound = std::exchange(property.control, nullptr);
    property.save(tag);
    property.control = bound;
    profile.emplaceChild(std::move(tag));
  }
  return profile.toText("", "");
}

void PutBindings(Instance& rig, const std::string& bindings) {
  util::xml::Tag profile("");
  if (BindingsOf(rig) == bindings || profile.loadText(bindings) != 0) return;
  std::vector<int> all;
  for (int i = 0; i < rig.GetProperties().count(); ++i) all.push_back(i);
  rig.GetHost().GetAdaptor()->PushUndo(new rws::core::InputUndo(rig, all));
  for (const util::xml::Element* tag : profile.children)
    if (auto* property = rig.GetProperties().find(tag->attribute(record::kName)))
      property->load(*tag);
  rig.RebindInputs();
}

void PutParameters(Instance& rig, const KeptRig& kept) {
  auto before = std::make_shared<rws::core::ParameterState>(rig);
  rws::core::ParameterState wanted;
  wanted.profile = kept.profile;
  for (const KeptParameter& parameter : kept.parameters) {
    const auto* element = rig.GetConfig().Find(parameter.element);
    if (!element || !element->HasValue()) continue;
    wanted.values.emplace_back(*element);
    wanted.values.back().number = parameter.number;
    wanted.values.back().text = parameter.text;
  }
  rig.GetHost().GetAdaptor()->PushUndo(new rws::core::ParameterUndo(rig, before));
  wanted.WriteTo(rig);
  before->KeepChanged(rig);
}

void PutInputs(Instance& rig, const KeptRig& kept, double start) {
  for (int i = 0; i < rig.GetProperties().count(); ++i) {
    const auto index = static_cast<std::size_t>(i);
    util::AVar_Linear<double> track;
    if (index < rig.GetTracks().size()) track = rig.GetTracks()[index];
    track.cutFrom(start);
    for (const KeptInput& input : kept.inputs)
      if (input.name == rig.GetProperties().property(i)->name)
        for (const auto& sample : input.track.samples) track.set(sample.time, sample.value);
    rig.SetTrack(i, std::move(track));
  }
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
  core.takeStarted = [this] { BeginTake(); };
  core.takeStopped = [this] { StopTake(); };
  core.takeEnded = [this] { EndTake(); };
}

KeptTakes::~KeptTakes() {
  auto& core = m_session.GetCore();
  core.takeStarted = nullptr;
  core.takeStopped = nullptr;
  core.takeEnded = nullptr;
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
  const std::string bytes = m_list.lastNumber > 0 ? EncodeTakes(m_list) : std::string();
  m_session.GetScene().GetTakes() = util::xml::encodeBase64(bytes.data(), bytes.size());
  m_changed = false;
}

const KeptTake* KeptTakes::Find(int number) const {
  const auto found = std::find_if(m_list.takes.begin(), m_list.takes.end(),
                                  [number](const KeptTake& take) { return take.number == number; });
  return found == m_list.takes.end() ? nullptr : &*found;
}

KeptTake* KeptTakes::Edit(int number) {
  auto* take = const_cast<KeptTake*>(std::as_const(*this).Find(number));
  m_changed = m_changed || take;
  return take;
}

// --- marks ---

KeptTakes::Marks KeptTakes::GetMarks() const {
  Marks marks{GetCurrent(), {}};
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

/// The take that the scene shows, when its poses stand as it left them and `start` lies within it.
int KeptTakes::PredecessorAt(double start, const std::vector<Instance*>& rigs) {
  const KeptTake* take = Find(m_list.current);
  if (!take || take->rate != m_session.GetScene().GetFrameRate() || start <= take->range.from ||
      start > take->range.to + util::kFrameTolerance || rigs.size() != take->rigs.size())
    return 0;
  for (std::size_t i = 0; i < rigs.size(); ++i)
    if (rigs[i]->GetInstanceName() != take->rigs[i].name) return 0;
  return HashOf(*take) == take->hash ? take->number : 0;
}

void KeptTakes::BeginTake() {
  auto& core = m_session.GetCore();
  m_isKeeping = core.GetPreferences().keepTakes && !m_damaged;
  if (!m_isKeeping) return;
  m_running = {};
  m_running.rate = m_session.GetScene().GetFrameRate();
  m_running.range = {core.GetStartTime(), core.GetStartTime()};
  m_running.predecessor = PredecessorAt(core.GetStartTime(), core.GetTakeInstances());
  for (Instance* rig : core.GetTakeInstances()) {
    KeptRig kept;
    kept.name = rig->GetInstanceName();
    kept.kind = rig->GetTool()->GetDisplayId();
    kept.profile = rig->GetCurrentProfile();
    kept.parameters = ParametersOf(*rig);
    kept.bindings = BindingsOf(*rig);
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
  for (KeptRig& kept : take.rigs) {
    Instance* rig = m_session.GetCore().FindInstance(kept.name);
    kept.inputs.clear();
    for (int i = 0; rig && i < rig->GetProperties().count(); ++i) {
      const auto index = static_cast<std::size_t>(i);
      if (index >= rig->GetTracks().size()) break;
      KeptInput input{rig->GetProperties().property(i)->name, {}};
      for (const auto& sample : rig->GetTracks()[index].samples)
        if (sample.time >= take.range.from) input.track.samples.push_back(sample);
      if (!input.track.samples.empty()) kept.inputs.push_back(std::move(input));
    }
  }
}

/// The keys at the start are what a run that begins there finds.
void KeptTakes::NoteStart(KeptTake& take) {
  for (KeptRig& rig : take.rigs)
    for (auto& [name, pose] : rig.nodes)
      if (const headless::SceneNode* node = m_session.GetScene().Find(name))
        pose = node->LocalTrs(take.range.from);
}

void KeptTakes::StopTake() {
  if (!m_isKeeping) return;
  auto& core = m_session.GetCore();
  m_running.range.to = std::max(m_running.range.from, core.GetFrameTime());
  ReadInputs(m_running);
  Marks before = GetMarks();
  m_running.number = ++m_list.lastNumber;
  m_running.version = version;
  if (KeptTake* old = Edit(GetCurrent())) old->retried = m_running.predecessor != old->number;
  m_list.takes.push_back(std::exchange(m_running, {}));
  m_list.current = m_list.takes.back().number;
  before.flags[m_list.current] = {false, true};
  m_changed = true;
  core.GetAdaptor()->PushUndo(new MarksUndo(*this, std::move(before), GetMarks()));
}

void KeptTakes::EndTake() {
  if (!m_isKeeping) return;
  KeptTake* take = Edit(m_list.current);
  if (!take) return;
  if (now) take->when = now();
  NoteStart(*take);
  take->hash = HashOf(*take);
}

void KeptTakes::TakeOverInputs(double end) {
  if (!m_isKeeping) return;
  KeptTake* take = Edit(m_list.current);
  if (!take) return;
  take->range.to = std::max(take->range.to, end);
  ReadInputs(*take);
  take->hash = HashOf(*take);
}

/// Of all keys of the rigs' nodes within the take: which node, times and values to the bit. Nodes
/// count in their order, so that a new name changes nothing.
std::string KeptTakes::HashOf(const KeptTake& take) {
  QCryptographicHash hash(QCryptographicHash::Sha256);
  const auto add = [&hash](const double* from, std::size_t count) {
    hash.addData(reinterpret_cast<const char*>(from), static_cast<int>(count * sizeof(double)));
  };
  for (const KeptRig& rig : take.rigs) {
    const Instance* instance = m_session.GetCore().FindInstance(rig.name);
    if (!instance) continue;
    for (rws::core::CoreNode* each : instance->GetNodes()) {
      const auto* node = static_cast<headless::HeadlessNode*>(each)->GetSceneNode();
      hash.addData("node", 4);
      for (int path = 0; node && path < 3; ++path) {
        const headless::Channel* keys = node->GetChannel(static_cast<headless::ChannelPath>(path));
        if (!keys) continue;
        const auto perKey = static_cast<std::size_t>(keys->ValuesPerKey());
        for (std::size_t i = 0; i < keys->GetTimes().size(); ++i) {
          const double time = keys->GetTimes()[i];
          if (time < take.range.from || time > take.range.to + util::kFrameTolerance) continue;
          add(&time, 1);
          add(keys->GetValues().data() + i * perKey, perKey);
        }
      }
    }
  }
  return hash.result().toHex().toStdString();
}

// --- using one ---

std::vector<const KeptTake*> KeptTakes::ChainOf(int number) const {
  std::vector<const KeptTake*> chain;
  // A predecessor has the lower number, so this ends.
  for (const KeptTake* take = Find(number); take; take = Find(take->predecessor))
    chain.insert(chain.begin(), take);
  return chain;
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

UseResult KeptTakes::Use(int number, const Monitor& monitor) {
  UseResult result;
  const std::vector<const KeptTake*> chain = ChainOf(number);
  result.problem = chain.empty() ? "there is no take " + std::to_string(number) : WhyNot(chain);
  if (!result.problem.empty()) return result;
  auto& adaptor = *m_session.GetCore().GetAdaptor();
  UndoBlock block(adaptor, "Use Take");
  Marks before = GetMarks();
  for (std::size_t i = 0; i < chain.size(); ++i) {
    result.problem = PutBack(*chain[i]);
    if (!result.problem.empty()) return result;
    const double end = i + 1 < chain.size() ? chain[i + 1]->range.from : chain[i]->range.to;
    if (Simulate(*chain[i], end, monitor)) continue;
    result.cancelled = monitor.IsCancelled();
    if (!result.cancelled) result.problem = "its rigs could not be simulated";
    return result;
  }
  StretchRange(m_session, chain.back()->range);
  m_list.current = number;
  Edit(number)->undone = Edit(number)->retried = false;
  adaptor.PushUndo(new MarksUndo(*this, std::move(before), GetMarks()));
  block.Keep();
  result.isSame = HashOf(*Find(number)) == Find(number)->hash;
  return result;
}

// --- what stands in the list ---

bool KeptTakes::SetName(int number, const std::string& name) {
  KeptTake* take = Edit(number);
  if (take) take->name = name;
  return take;
}

bool KeptTakes::SetNote(int number, const std::string& note) {
  KeptTake* take = Edit(number);
  if (take) take->note = note;
  return take;
}

bool KeptTakes::SetStars(int number, int stars) {
  KeptTake* take = Edit(number);
  if (take) take->stars = std::clamp(stars, 0, 5);
  return take;
}

std::string KeptTakes::Delete(int number) {
  if (!Find(number)) return "there is no take " + std::to_string(number);
  for (const KeptTake& take : m_list.takes)
    if (take.predecessor == number)
      return "take " + std::to_string(take.number) + " went on from it";
  m_list.takes.erase(std::find_if(m_list.takes.begin(), m_list.takes.end(),
                                  [number](const KeptTake& t) { return t.number == number; }));
  if (m_list.current == number) m_list.current = 0;
  m_changed = true;
  return {};
}

std::string KeptTakes::Export(int number) const {
  TakeList list;
  for (const KeptTake* take : ChainOf(number)) list.takes.push_back(*take);
  list.lastNumber = number;
  return EncodeTakes(list);
}

std::string KeptTakes::Import(const std::string& bytes, std::vector<int>& numbers) {
  if (m_damaged) return "the kept takes of the scene can't be read";
  TakeList list;
  std::string problem = DecodeTakes(bytes, list);
  if (!problem.empty()) return "the takes of this file can't be read: " + problem;
  std::map<int, int> renumbered{{0, 0}};
  for (KeptTake& take : list.takes) {
    if (renumbered.count(take.predecessor) == 0)
      return "take " + std::to_string(take.predecessor) + " is missing in it";
    renumbered[take.number] = m_list.lastNumber + static_cast<int>(renumbered.size());
  }
  for (KeptTake& take : list.takes) {
    take.predecessor = renumbered[take.predecessor];
    take.number = renumbered[take.number];
    take.retried = take.undone = false;
    numbers.push_back(take.number);
    m_list.takes.push_back(std::move(take));
  }
  m_list.lastNumber += static_cast<int>(numbers.size());
  m_changed = m_changed || !numbers.empty();
  return {};
}

}  // namespace orv::app
