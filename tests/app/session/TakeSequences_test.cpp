// Whatever is performed, played, edited, undone and used again, a scene is what a model of it says,
// and its keys are what its takes come to. Short here; as many as one likes by TAKE_SEQUENCES, from
// one's own first seed on by TAKE_SEED.
#include <QCoreApplication>
#include <cstdlib>
#include <random>
#include <tuple>

#include "app/session/SceneSession.h"
#include "app/session/Verification.h"
#include "app/session/anyhost/TrackEdit.h"
#include "app/session/anyhost/UndoBlock.h"
#include "app/session/takes/KeptTakes.h"
#include "app/session/takes/RigSettings.h"
#include "app/session/takes/SceneTake.h"
#include "core/instances/InstanceReference.h"
#include "rigs/RigSuite.h"
#include "support/TempFolder.h"
#include "support/Templates.h"
#include "unidevice/software/SoftwareDevice.h"

namespace orv::tests {
namespace {

using rws::core::Instance;
using Track = util::AVar_Linear<double>;
using Tracks = std::map<std::string, Track>;  ///< by "RIG:INPUT"; none is empty
using Keys = std::map<std::string, std::vector<double>>;
constexpr int kFrames = 30;
constexpr double kTick = 1.0 / 25.0;

/// What a scene shows of takes.
struct Shown {
  Tracks tracks;
  std::map<std::string, std::vector<app::KeptParameter>> parameters;
  std::map<std::string, hl::NodeAnimation> keys;
  int current = 0;
  std::map<int, std::pair<bool, bool>> flags;  ///< retried, undone
};

/// A take as it was performed; `chain` are the frames at which it and those ahead of it began.
struct Performed {
  std::vector<int> chain;
  Shown scene;
  int last = 0;
  std::set<std::string> rigs;
};

/// Of an input or a node.
std::string RigOf(const std::string& name) {
  return name.rfind("Hand", 0) == 0 ? "Hand" : "Rig";
}

/// Of these rigs all is as in `from`, the others are as they were.
template <class Named>
void PutOver(Named& all, const Named& from, const std::set<std::string>& rigs) {
  for (auto it = all.begin(); it != all.end();)
    it = rigs.count(RigOf(it->first)) ? all.erase(it) : std::next(it);
  for (const auto& [name, value] : from)
    if (rigs.count(RigOf(name))) all[name] = value;
}

/// Times and values of a node's keys from one frame to another.
std::vector<double> KeysOf(const hl::NodeAnimation& animation, double from, double to) {
  std::vector<double> all;
  for (const auto& channel : animation.channels) {
    all.push_back(-1.0);
    if (!channel) continue;
    const auto perKey = static_cast<std::size_t>(channel->ValuesPerKey());
    for (std::size_t i = 0; i < channel->GetTimes().size(); ++i) {
      const double time = channel->GetTimes()[i];
      if (time < from - 1e-6 || time > to + 1e-6) continue;
      all.push_back(time);
      for (std::size_t k = 0; k < perKey; ++k) all.push_back(channel->GetValues()[i * perKey + k]);
    }
  }
  return all;
}

Keys KeysOf(const Shown& scene, double from, double to) {
  Keys keys;
  for (const auto& [node, animation] : scene.keys) {
    std::vector<double> all = KeysOf(animation, from, to);
    if (all.size() > 3) keys[node] = std::move(all);
  }
  return keys;
}

/// A device of sixteen bits.
double Noise(int seed, std::size_t input, int frame) {
  std::mt19937 random(static_cast<unsigned>(seed) * 7919u + static_cast<unsigned>(frame) * 31u +
                      static_cast<unsigned>(input));
  const int whole = static_cast<int>(random() % 65536) - 32768;
  return whole < 0 ? whole / 32768.0 : whole / 32767.0;
}

class TakeSequences : public testing::TestWithParam<std::string> {
 protected:
  TakeSequences() {
    rws::core::DataRoot::Set(folder.path);
    RigScene world(GetParam(), 25.0, AllKinds());
    if (GetParam() == "Spline Speed-Controller") world.LayRail();
    if (GetParam() == "Firepower") world.LoadGun();
    if (GetParam() == "CrawlerTracks") world.LayTrack();
    world.scene().SetRange(0.0, kFrames * kTick);
    folder.Write("base.glb", world.Saved());
  }
  ~TakeSequences() override { rws::core::DataRoot::Set(""); }

  int Random(int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); }
  rws::core::CoreImplementation& core() { return session->GetCore(); }
  app::KeptTakes& kept() { return session->GetTakes(); }

  void Begin() {
    session.reset();  // one core at a time
    session = std::make_unique<app::SceneSession>();
    ASSERT_EQ(session->Open(folder.path + "/base.glb"), "");
    core().CreateToolFromFactory("DirectInputLink", "Hand");
    core().GetPreferences().countdownSeconds = 0;
    takes.clear();
    chain.clear();
    past = {Look()};
    chains = {{{}, last = 0}};
    at = 0;
  }

  /// What is there.
  Shown Look() {
    Shown scene;
    for (Instance* rig : core().List(false)) {
      const auto& name = rig->GetInstanceName();
      for (int i = 0; i < rig->GetProperties().count(); ++i)
        if (static_cast<std::size_t>(i) < rig->GetTracks().size() &&
            !rig->GetTracks()[static_cast<std::size_t>(i)].samples.empty())
          scene.tracks[name + ":" + rig->GetProperties().property(i)->name] =
              rig->GetTracks()[static_cast<std::size_t>(i)];
      scene.parameters[name] = app::SettingsOf(*rig, kept().GetSurroundings()).parameters;
      for (rws::core::CoreNode* node : rig->GetNodes())
        if (const auto* own = static_cast<hl::HeadlessNode*>(node)->GetSceneNode())
          scene.keys[own->GetName()] = own->GetAnimation();
    }
    scene.current = kept().GetCurrent();
    for (const app::KeptTake& take : kept().GetTakes())
      scene.flags[take.number] = {take.retried, take.undone};
    return scene;
  }

  void Expect(const Shown& now, const Shown& wanted, const std::string& what) {
    for (const Tracks* some : {&now.tracks, &wanted.tracks})
      for (const auto& [name, track] : *some) {
        const auto a = now.tracks.find(name), b = wanted.tracks.find(name);
        ASSERT_TRUE(a != now.tracks.end() && b != wanted.tracks.end()) << what << ": " << name;
        const auto times = [](const Track& of) {
          std::vector<double> frames;
          for (const auto& sample : of.samples) frames.push_back(sample.time / kTick);
          return testing::PrintToString(frames);
        };
        ASSERT_EQ(times(a->second), times(b->second)) << what << ": " << name;
        for (std::size_t i = 0; i < track.samples.size(); ++i) {
          ASSERT_EQ(a->second.samples[i].time, b->second.samples[i].time) << what << ": " << name;
          ASSERT_EQ(a->second.samples[i].value, b->second.samples[i].value)
              << what << ": " << name << " at " << track.samples[i].time;
        }
      }
    ASSERT_EQ(now.parameters.size(), wanted.parameters.size()) << what;
    for (const auto& [rig, values] : now.parameters)
      ASSERT_TRUE(values == wanted.parameters.at(rig)) << what << ": parameters of " << rig;
    const Keys is = KeysOf(now, -1e3, 1e3), should = KeysOf(wanted, -1e3, 1e3);
    for (const Keys* some : {&is, &should})
      for (const auto& [node, keys] : *some)
        for (int frame = 0; frame <= kFrames; ++frame)
          ASSERT_EQ(KeysOf(now.keys.count(node) ? now.keys.at(node) : hl::NodeAnimation(),
                           frame * kTick, frame * kTick),
                    KeysOf(wanted.keys.count(node) ? wanted.keys.at(node) : hl::NodeAnimation(),
                           frame * kTick, frame * kTick))
              << what << ": keys of " << node << " at frame " << frame << ", runs from "
              << testing::PrintToString(chain);
    ASSERT_EQ(now.current, wanted.current) << what;
    ASSERT_EQ(now.flags, wanted.flags) << what;
  }

  /// What has been done is one step of undo.
  void Push(Shown scene) {
    past.resize(++at);
    past.push_back(std::move(scene));
    chains.resize(at);
    chains.push_back({chain, last});
  }

  void Take();
  void Edit();
  void SetParameter();
  void Step(bool forward);
  void Use();
  void Reopen();
  void Check(const std::string& what);
  std::string Something();
  std::vector<int> ChainFrom(int start) const;

  std::mt19937 random;
  TempFolder folder;
  std::unique_ptr<app::SceneSession> session;
  std::map<int, Performed> takes;
  // The model: what each step of undo has left, and the frames at which the runs began.
  std::vector<Shown> past;
  std::vector<std::pair<std::vector<int>, int>> chains;
  std::vector<int> chain;
  int last = 0;  ///< frame of the last key
  std::size_t at = 0;
};

std::vector<int> TakeSequences::ChainFrom(int start) const {
  std::vector<int> begun;
  for (const int each : chain)
    if (each < start) begun.push_back(each);
  begun.push_back(start);
  return begun;
}

void TakeSequences::Take() {
  Shown wanted = past[at];
  const int start = Random(3) ? Random(kFrames - 8) : 0;
  const int end = std::min(start + 3 + Random(12), kFrames);
  const double from = start * kTick, to = end * kTick;
  const int seed = Random(1 << 20);
  const bool arms = Random(3) == 0, goOn = Random(3) == 0;
  const double blend = Random(2) ? 0.0 : 3.0 * kTick;
  std::vector<Instance*> rigs = core().List(false);
  if (seed % 3 == 0) rigs = {rigs[static_cast<std::size_t>(seed / 3 % 2)]};
  std::set<std::string> names, played;
  app::RowsToStep rows;
  for (Instance* rig : rigs) names.insert(rig->GetInstanceName());
  for (const auto& name : names) rows.push_back(core().Find(name));

  unidevice::RecordedInput input;
  std::vector<std::pair<unidevice::Property*, std::string>> bound;
  std::vector<std::string> armed;
  for (Instance* rig : rigs)
    for (const auto& [name, property] : rig->GetProperties().entries) {
      const std::string key = rig->GetInstanceName() + ":" + name;
      const std::size_t index = bound.size();
      const bool records = !arms || Random(2);
      const Track old = wanted.tracks[key];
      Track column, joined = old;
      for (int frame = 0; frame <= end; ++frame)
        column.set(frame * kTick, Noise(seed, index, frame));
      if (records) {
        joined.cutFrom(from);
        const bool joins = (goOn || blend > 0.0) && !old.samples.empty();
        for (int frame = start + 1; frame <= end; ++frame) {
          double share = 1.0;
          const double time = frame * kTick;
          const double near = goOn ? std::min(time - from, to - time) : time - from;
          if (joins && blend > 0.0) share = std::clamp(near / blend, 0.0, 1.0);
          const double was = old.value(time);
          const double is = Noise(seed, index, frame);
          joined.set(frame * kTick, share < 1.0 ? was + (is - was) * share : is);
        }
        for (const auto& sample : old.samples)
          if (joins && goOn && (sample.time > to || sample.time == from))
            joined.set(sample.time, sample.value);
      }
      if (joined.samples.empty())
        wanted.tracks.erase(key);
      else
        wanted.tracks[key] = joined;
      if (records && arms) armed.push_back(key);
      if (!records) played.insert(rig->GetInstanceName());
      input.columns.push_back({key, key, std::move(column)});
      bound.emplace_back(property, key);
    }
  ASSERT_EQ(app::ArmInputs(core(), armed), "");
  if (arms && armed.empty())
    for (Instance* rig : core().List(false)) rig->SetArmed(std::vector<bool>());
  auto* device = new unidevice::SoftwareDevice(input, [this] { return core().GetFrameTime(); });
  for (const auto& [property, key] : bound) property->bind(device->controlFor(key));

  app::SceneTake take(*session);
  bool ended = false;
  const app::Monitor monitor;
  ASSERT_TRUE(
      take.Begin({from, to - from, 0.0, goOn, blend, rows}, monitor, [&] { ended = true; }));
  for (unsigned ms = 0; core().IsRecording(); ms += 40) {
    ASSERT_LT(ms, 10000u);
    core().OnTimer(rws::core::RecordManager::kTakeTimer, ms);
  }
  while (!ended) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  for (const auto& [property, key] : bound) property->bind(nullptr);
  device->destroy();
  for (const auto& [property, key] : bound) property->rebind();
  for (Instance* rig : core().List(false)) rig->SetArmed(std::nullopt);

  const Shown now = Look();
  // Keys follow from the rest, as `verify` tells; those ahead stay. A car's first frame is recorded
  // too where it begins by its inputs.
  ASSERT_EQ(KeysOf(now, -1e3, from - kTick) == KeysOf(wanted, -1e3, from - kTick), true);
  for (const auto& [name, track] : now.tracks)
    if (GetParam() == "4WheelerExt" && name.rfind("Rig:", 0) == 0 && track.find(from) >= 0 &&
        track.samples[static_cast<std::size_t>(track.find(from))].time == from)
      wanted.tracks[name].set(from, track.value(from));
  PutOver(wanted.keys, now.keys, names);
  PutOver(wanted.parameters, now.parameters, names);
  const int number = static_cast<int>(takes.size()) + 1;
  const std::vector<int> begun = ChainFrom(start);
  if (wanted.current) {
    const Performed& old = takes.at(wanted.current);
    bool stays = start > old.chain.back();
    for (const auto& rig : old.rigs)
      stays = stays || names.count(rig) == 0 || played.count(rig) > 0;
    wanted.flags[wanted.current].first = !stays;
  }
  wanted.current = number;
  wanted.flags[number] = {false, false};
  Expect(now, wanted, "take");
  chain = begun;
  last = std::lround(kept().Find(number)->range.to / kTick);
  ASSERT_GE(last, end);
  takes[number] = {begun, now, last, names};
  Push(now);
}

void TakeSequences::Edit() {
  Shown wanted = past[at];
  if (wanted.tracks.empty()) return;
  auto edited = wanted.tracks.begin();
  std::advance(edited, Random(static_cast<int>(wanted.tracks.size())));
  app::TrackEdit edit;
  edit.kind = static_cast<app::TrackEdit::Kind>(Random(4));
  const int first = Random(kFrames);
  edit.span = {first * kTick, (first + Random(10)) * kTick};
  edit.amount = 2.0 * kTick;
  const Track before = std::exchange(edited->second, app::EditTrack(edited->second, edit, kTick));
  const auto same = [](const auto& a, const auto& b) {
    return a.time == b.time && a.value == b.value;
  };
  const auto& now = edited->second.samples;
  const auto change =
      std::mismatch(now.begin(), now.end(), before.samples.begin(), before.samples.end(), same);
  const double at = change.first == now.end() ? first * kTick : change.first->time;
  const int changed = std::min(static_cast<int>(std::lround(at / kTick)), first);
  const int from = Random(2) ? 0 : std::max(changed - 1, 0);
  last = std::max(last, from);
  app::UndoBlock block(session->GetAdaptor(), "Edit");
  app::ReplaceTrack(app::FindInput(core(), edited->first), edited->second);
  ASSERT_TRUE(app::Resimulate(core(), {from * kTick, last * kTick}, app::Monitor()).began);
  block.Keep();
  const Shown scene = Look();
  ASSERT_EQ(KeysOf(scene, -1e3, (from - 1) * kTick) == KeysOf(wanted, -1e3, (from - 1) * kTick),
            true);
  wanted.keys = scene.keys;
  wanted.parameters = scene.parameters;  // what spinners turn
  Expect(scene, wanted, "edit of " + edited->first);
  chain = ChainFrom(from);
  Push(scene);
}

void TakeSequences::SetParameter() {
  Instance* rig = core().List(false)[static_cast<std::size_t>(Random(2))];
  Shown wanted = past[at];
  auto& values = wanted.parameters[rig->GetInstanceName()];
  app::KeptParameter& value =
      values[static_cast<std::size_t>(Random(static_cast<int>(values.size())))];
  if (value.number == std::floor(value.number)) return;  // what is counted may make nodes
  app::KeptRig settings;
  settings.profile = rig->GetCurrentProfile();
  value.number *= 1.0 + 0.01 * Random(10);
  settings.parameters = {value};
  {
    app::UndoBlock block(session->GetAdaptor(), "Set");
    app::PutParameters(*rig, settings);
    ASSERT_TRUE(app::Resimulate(core(), {0.0, last * kTick}, app::Monitor()).began);
    block.Keep();
  }
  const Shown now = Look();
  wanted.keys = now.keys;
  wanted.parameters = now.parameters;  // others may go with it
  Expect(now, wanted, "parameter");
  chain = ChainFrom(0);
  Push(now);
}

void TakeSequences::Step(bool forward) {
  if (forward ? at + 1 >= past.size() : at == 0) return;
  const Shown before = past[at];
  ASSERT_TRUE(forward ? session->GetAdaptor().HostRedo() : session->GetAdaptor().HostUndo());
  Shown wanted = past[forward ? at + 1 : at - 1];
  const auto flags = Look().flags;
  for (const auto& [number, flag] : flags)
    if (wanted.flags.count(number) == 0) wanted.flags[number] = {flag.first, true};
  at = forward ? at + 1 : at - 1;
  std::tie(chain, last) = chains[at];
  Expect(Look(), wanted, forward ? "redo" : "undo");
  past[at] = wanted;
}

void TakeSequences::Use() {
  if (takes.empty()) return;
  const int number = 1 + Random(static_cast<int>(takes.size()));
  const Performed& take = takes.at(number);
  const app::UseResult result = kept().Use(number, app::Monitor());
  ASSERT_EQ(result.problem, "");
  EXPECT_TRUE(result.isSame) << "take " << number;
  const Shown now = Look();
  Shown wanted = past[at];
  for (const auto& rig : take.rigs) ASSERT_EQ(result.rigs.count(rig), 1u);
  PutOver(wanted.tracks, take.scene.tracks, result.rigs);
  PutOver(wanted.parameters, take.scene.parameters, result.rigs);
  PutOver(wanted.keys, take.scene.keys, result.rigs);
  wanted.current = number;
  wanted.flags[number] = {false, false};
  Expect(now, wanted, "use");
  chain = take.chain;
  last = take.last;
  Push(now);
}

void TakeSequences::Reopen() {
  const std::string path = folder.path + "/now.glb";
  ASSERT_EQ(session->Save(path), "");
  Shown wanted = past[at];
  session.reset();
  session = std::make_unique<app::SceneSession>();
  ASSERT_EQ(session->Open(path), "");
  Expect(Look(), wanted, "save and open");
  past = {wanted};
  chains = {{chain, last}};
  at = 0;
}

void TakeSequences::Check(const std::string& what) {
  const Shown before = past[at];
  const app::VerifyReport report = app::Verify(*session, {}, app::Monitor());
  if (!before.tracks.empty()) {
    ASSERT_EQ(report.problem, "") << what;
    ASSERT_TRUE(report.IsSame()) << what << ": " << report.differing << " of " << report.keys
                                 << " from " << (report.first ? report.first->time / kTick : -1.0)
                                 << " "
                                 << (report.first ? report.first->node : report.missing.front())
                                 << " "
                                 << (report.largest ? report.largest->channel + " by " +
                                                          std::to_string(report.largest->amount)
                                                    : "")
                                 << "; runs from " << testing::PrintToString(chain) << " to "
                                 << last << ", " << testing::PrintToString(report.reasons);
  }
  Expect(Look(), before, "verify after " + what);
}

std::string TakeSequences::Something() {
  switch (Random(12)) {
    case 0:
      return Edit(), "edit";
    case 1:
      return SetParameter(), "set";
    case 2:
    case 3:
      return Step(false), "undo";
    case 4:
      return Step(true), "redo";
    case 5:  // a retry
      Step(false);
      return Take(), "retry";
    case 6:
    case 7:
      return Use(), "use";
    case 8:
      return Reopen(), "reopen";
    default:
      return Take(), "take";
  }
}

TEST_P(TakeSequences, AreWhatAModelSays) {
  const char* const asked = std::getenv("TAKE_SEQUENCES");
  const char* const first = std::getenv("TAKE_SEED");
  const int sequences = asked ? std::atoi(asked) : 200;
  const int kinds = static_cast<int>(AllKinds().size());
  for (int seed = first ? std::atoi(first) : 0, i = 0; i * kinds < sequences; ++seed, ++i) {
    random.seed(static_cast<unsigned>(seed));
    Begin();
    std::string done;
    for (int step = 0; step < 6; ++step) {
      const std::string deed = Something();
      done += deed + " ";
      if (!HasFailure()) Check(deed);
      ASSERT_FALSE(HasFailure()) << "seed " << seed << ": " << done;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Kinds, TakeSequences, testing::ValuesIn([] {
                           std::vector<std::string> kinds;
                           for (auto* kind : AllKinds()) kinds.push_back(kind->GetId());
                           return kinds;
                         }()));

}  // namespace
}  // namespace orv::tests
