// The document of a program with windows: what is dirty, what survives, what is told.
#include "app/session/document/SceneDocument.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <random>
#include <set>
#include <sstream>
#include <thread>

#include "app/session/DocumentScene.h"
#include "app/session/PosesFile.h"
#include "app/session/TakeSize.h"
#include "app/session/anyhost/NodePoses.h"
#include "app/session/anyhost/RunRigs.h"
#include "app/session/document/RecentFiles.h"
#include "core/services/DataRoot.h"
#include "core/services/Translation.h"
#include "support/QtApplication.h"
#include "util/AtomicFile.h"

namespace orv::tests {
namespace {

namespace fs = std::filesystem;
using app::DocumentResult;
using rws::core::DataRoot;

/// No file grows beyond 1000 bytes while it lives, as if the disk were full.
class FullDisk {
 public:
  FullDisk() {
    signal(SIGXFSZ, SIG_IGN);
    getrlimit(RLIMIT_FSIZE, &m_before);
    const rlimit small{1000, m_before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
  }
  ~FullDisk() { setrlimit(RLIMIT_FSIZE, &m_before); }

 private:
  rlimit m_before;
};

class SceneDocument : public testing::Test {
 protected:
  SceneDocument() {
    DataRoot::Set(root());
    Restart();
  }
  ~SceneDocument() override {
    document.reset();
    DataRoot::Set("");
  }

  /// The program anew.
  void Restart() {
    document.reset();
    document = std::make_unique<app::SceneDocument>();
    document->seconds = [this] { return now; };
    document->SetTroubleHandler([this](const app::Problem& problem) {
      troubles.push_back(problem.what + ": " + problem.why);
    });
  }
  std::string root() const { return path("root"); }
  std::string path(const std::string& name) const { return folder.path + "/" + name; }
  void EditRange(double end) { SetRangeEnd(*document, end); }
  /// Steps a take that runs until its clock reads `until` (s).
  void Perform(double until) {
    for (; document->IsRunning() && tick * 0.02 <= until + 0.02; ++tick) {
      now += 0.02;
      document->GetCore().OnTimer(rws::core::RecordManager::kTakeTimer, tick * 20);
    }
  }
  void StartTake() {
    tick = 0;
    document->GetAdaptor().SetCurrentTime(0.0);
    ASSERT_EQ(document->GetCore().StartRecording(), 0);
  }
  /// The poses up to `end` (s), as a table.
  std::string Poses(double end) {
    app::WritePoses(document->GetScene(), {}, {0.0, end}, path("poses.csv"), app::Monitor());
    return folder.Read("poses.csv");
  }
  std::size_t Autosaves() const {
    std::size_t count = 0;
    std::error_code none;
    for (fs::recursive_directory_iterator at(root() + "/autosave", none), end; at != end; ++at)
      count += at->path().extension() == ".glb";
    return count;
  }

  TempFolder folder;
  double now = 100.0;
  unsigned tick = 0;
  std::vector<std::string> troubles;
  std::unique_ptr<app::SceneDocument> document;
};

TEST_F(SceneDocument, IsDirtyByItsUndoListAlone) {
  ASSERT_TRUE(document->NewScene());
  EXPECT_TRUE(document->GetTitle() == "Untitled" && !document->IsDirty());
  EXPECT_TRUE(document->Save().problem) << "it has no file";
  AddRigs(*document);
  ASSERT_TRUE(document->SaveAs(path("a.glb")));
  EXPECT_TRUE(document->GetTitle() == "a.glb" && !document->IsDirty());
  int told = 0;
  document->SetChangeHandler([&told] { ++told; });
  EditRange(11);
  EditRange(12);
  EXPECT_FALSE(document->SetFrameRate(30.0));
  EXPECT_TRUE(document->SetFrameRate(-1.0));
  EXPECT_TRUE(document->IsDirty());
  EXPECT_EQ(told, 3);
  const std::size_t saved = document->GetUndoList().position - 3;
  EXPECT_EQ(document->GetUndoList().names[saved], "Range");
  ASSERT_TRUE(document->GoTo(saved));
  EXPECT_FALSE(document->IsDirty());
  EXPECT_TRUE(document->GetScene().GetFrameRate() == 25.0 &&
              document->GetScene().GetRangeEnd() == 10.0);
  ASSERT_TRUE(document->GoTo(saved + 3));
  EXPECT_EQ(document->GetScene().GetFrameRate(), 30.0);
  EXPECT_FALSE(document->GoTo(99));
  ASSERT_TRUE(document->GoTo(saved));
  document->GetAdaptor().FindSceneNode("ground")->Select();
  EXPECT_FALSE(document->IsDirty()) << "a selection is no change";
  EditRange(13);
  EXPECT_TRUE(document->IsDirty());
  ASSERT_TRUE(document->GoTo(saved));
  document->NoteEdit();
  EXPECT_TRUE(document->IsDirty());
  EXPECT_TRUE(document->Save() && !document->IsDirty());
}

TEST_F(SceneDocument, FailedSavesLoseNothing) {
  ASSERT_TRUE(document->NewScene());
  ASSERT_TRUE(document->SaveAs(path("a.glb")));
  EditRange(11);
  folder.Write("a.glb", "another's");
  EXPECT_EQ(document->GetDiskState(), app::SceneDocument::DiskState::kChanged);
  DocumentResult result = document->Save();
  EXPECT_TRUE(result.problem && result.isAsked) << result.problem.why;
  EXPECT_EQ(folder.Read("a.glb"), "another's");
  EXPECT_TRUE(document->IsDirty());
  result = document->Save(app::Overwrite::kOverwrite);
  EXPECT_TRUE(result && !result.isAsked);
  fs::remove(path("a.glb"));
  EXPECT_EQ(document->GetDiskState(), app::SceneDocument::DiskState::kGone);
  EXPECT_TRUE(document->Save());

  EditRange(12);
  const std::string before = folder.Read("a.glb");
  app::Problem autosave;
  {
    const FullDisk full;
    result = document->Save();
    autosave = document->Autosave();
  }
  EXPECT_NE(result.problem.why.find("a.glb"), std::string::npos) << result.problem.why;
  EXPECT_NE(autosave.why.find("autosave"), std::string::npos) << autosave.why;
  EXPECT_EQ(folder.Read("a.glb"), before);
  EXPECT_TRUE(document->IsDirty());
  EXPECT_TRUE(document->SaveAs("/proc/a.glb").problem);
  EXPECT_EQ(document->GetTitle(), "a.glb");

  DataRoot::Set(path("a.glb"));  // a file
  Restart();
  document->NewScene();
  AddRigs(*document);
  for (int i = 0; i < 2; ++i) {
    now += 1000.0;
    document->LookAtAutosave();
  }
  StartTake();
  Perform(0.4);
  document->EndRun();
  EXPECT_EQ(document->GetUndoList().names.back(), "Record") << "the program goes on";
  ASSERT_TRUE(document->SaveAs(path("b.glb")));
  EXPECT_EQ(troubles.size(), 2u) << "the autosave's and the list's, once each";
}

TEST_F(SceneDocument, WindowsFollowFromSceneToScene) {
  struct Window : util::MessageNode {
    Window() : MessageNode("Window") {}
    void onMessage(util::Message& message, bool) override {
      if (const auto* row = rws::core::NewsIn<rws::core::RowCreated>(message))
        rows.insert(row->row);
      if (const auto* row = rws::core::NewsIn<rws::core::RowDeleted>(message)) rows.erase(row->row);
      if (const auto* run = rws::core::NewsIn<rws::core::RunStateChanged>(message))
        last = run->state;
    }
    std::set<int> rows;
    rws::core::RunState last = rws::core::RunState::kIdle;
  } window;
  window.connect(&document->GetCore());
  document->NewScene();
  AddRigs(*document);
  ASSERT_TRUE(document->SaveAs(path("two.glb")));
  const auto expectSame = [&] {
    std::set<int> rows;
    for (const auto* row : document->GetCore().GetRows()) rows.insert(row->GetId());
    EXPECT_EQ(window.rows, rows);
    EXPECT_EQ(window.last, rws::core::RunState::kIdle);
  };
  for (int run = 0; run < 4; ++run) {
    if (run % 2) {
      StartTake();
      Perform(0.3);
      EXPECT_TRUE(document->Save().problem) << "a take runs";
    } else {
      ASSERT_EQ(document->GetCore().Resimulate(0.0, 1.0), 0);
    }
    const std::size_t steps = document->GetUndoList().position;
    EXPECT_TRUE(document->IsDirty() && document->IsRunning());
    EXPECT_FALSE(document->GoTo(0)) << "nothing is undone within";
    EXPECT_TRUE(document->Open(path("gone.glb")).problem);
    EXPECT_EQ(document->GetUndoList().position, steps + 1) << "what had been done stays";
    ASSERT_TRUE(run < 2 ? document->Open(path("two.glb")) : document->NewScene());
    EXPECT_FALSE(document->IsDirty());
    expectSame();
    if (run >= 2) {
      ASSERT_TRUE(document->Open(path("two.glb")));
    }
  }
  expectSame();
  EXPECT_EQ(window.rows.size(), 2u);
}

TEST_F(SceneDocument, RecentFilesAreSharedByPrograms) {
  using app::RecentFiles;
  std::vector<pid_t> children;
  for (int i = 0; i < 4; ++i) {
    children.push_back(fork());
    if (children.back() != 0) continue;
    for (int k = 0; k < 3; ++k)
      RecentFiles::Add(path(std::to_string(i) + "\n%\xFF" + std::to_string(k)));
    _exit(0);
  }
  for (const pid_t child : children) waitpid(child, nullptr, 0);
  const std::vector<app::RecentFile> before = RecentFiles::List();
  EXPECT_EQ(before.size(), RecentFiles::kMost);
  const std::string made = folder.Write("made.glb", "");
  EXPECT_FALSE(RecentFiles::Add(folder.path + "/x/../made.glb"));
  const std::vector<app::RecentFile> files = RecentFiles::List();
  ASSERT_EQ(files.size(), RecentFiles::kMost);
  EXPECT_TRUE(files[0].path == made && files[0].isThere && !files[1].isThere);
  for (std::size_t i = 1; i < files.size(); ++i) EXPECT_EQ(files[i].path, before[i - 1].path);
  EXPECT_FALSE(RecentFiles::Remove(made));
  EXPECT_EQ(RecentFiles::List().size(), RecentFiles::kMost - 1);
}

TEST_F(SceneDocument, AutosavesComeAndGo) {
  document->NewScene();
  now += 1000.0;
  document->LookAtAutosave();
  EXPECT_EQ(Autosaves(), 0u) << "nothing has changed";
  EditRange(11);
  document->LookAtAutosave();
  EXPECT_EQ(Autosaves(), 1u);
  EditRange(12);
  now += 179.0;
  document->LookAtAutosave();
  EXPECT_TRUE(app::FindLeftovers().empty()) << "its program lives";
  Restart();  // unsaved changes, and nobody said that they may go
  std::vector<app::Leftover> left = app::FindLeftovers();
  ASSERT_EQ(left.size(), 1u);
  EXPECT_TRUE(app::FindLeftovers().empty()) << "it is offered once at a time";
  EXPECT_EQ(left[0].title, "Untitled");
  EXPECT_FALSE(left[0].hasTake);
  ASSERT_TRUE(document->Restore(std::move(left[0])));
  EXPECT_EQ(document->GetScene().GetRangeEnd(), 11.0) << "as it was three minutes ago";
  EXPECT_TRUE(document->IsDirty() && document->GetPath().empty());
  EXPECT_EQ(Autosaves(), 1u);
  ASSERT_TRUE(document->SaveAs(path("a.glb")));
  EXPECT_EQ(Autosaves(), 0u);
  EditRange(13);
  now += 180.0;
  document->LookAtAutosave();
  EXPECT_EQ(Autosaves(), 1u);
  document->Close();
  Restart();
  EXPECT_TRUE(app::FindLeftovers().empty());

  document->GetCore().GetPreferences().autosaveMinutes = 0;
  EditRange(14);
  now += 1e6;
  document->LookAtAutosave();
  StartTake();
  document->EndRun();
  EXPECT_EQ(Autosaves(), 0u);
  EXPECT_TRUE(troubles.empty());
}

TEST_F(SceneDocument, TellsOfATakeThatNoFileCanHold) {
  ASSERT_TRUE(document->NewScene());
  AddRigs(*document);
  auto& host = document->GetAdaptor();
  double second = 0.0;  // of a take (bytes)
  for (auto* node : document->GetScene().GetNodes())
    second += host.NodeFor(*node).GetOwner() ? 25.0 * app::kBytesPerKeyedFrame : 0.0;
  const double most = 4294967295.0 / second;
  const auto why = [&](double held, double seconds) {
    return app::WhyTakeTooLong(document->GetCore(), held, {10.0, 10.0 + seconds}).filled();
  };
  const auto after = [](double seconds) {
    return "after about " + std::to_string(std::lround(seconds)) + " s of it";
  };
  EXPECT_EQ(why(0.0, 0.999 * most), "");
  EXPECT_EQ(why(0.0, 1.001 * most).rfind(after(most), 0), 0u) << why(0.0, 1.001 * most);
  EXPECT_EQ(why(4294967295.0 - 100.0 * second, 99.0), "");
  EXPECT_EQ(why(4294967295.0 - 100.0 * second, 101.0).rfind(after(100.0), 0), 0u);

  ASSERT_TRUE(rws::core::LoadLanguage("de"));
  const std::string german = "Der Take: nach etwa " + std::to_string(std::lround(most)) +
                             " s davon wäre die Szene größer als die 4 GB, die eine .glb fasst";
  const auto take = [&](double end, double from, double length) {
    EditRange(end);
    tick = 0;
    host.SetCurrentTime(from);
    EXPECT_EQ(document->GetCore().StartRecording(), 0);
    Perform(length);
    document->EndRun();
    return std::exchange(troubles, {});
  };
  using Told = std::vector<std::string>;
  EXPECT_EQ(take(0.9 * most, 0.0, 0.1), Told());
  EXPECT_EQ(take(1.1 * most, 0.0, 0.1), Told{german});
  EXPECT_EQ(take(1.1 * most, 0.0, 0.1), Told()) << "it is known";
  EXPECT_EQ(take(1.2 * most, 0.0, 0.1), Told{german}) << "it has grown";
  // One that draws the range out tells it when it does.
  EXPECT_EQ(take(1.5 * most, 1.5 * most - 0.2, 0.1), Told());
  EXPECT_EQ(take(1.5 * most, 1.5 * most - 0.2, 0.5), Told{german});
  EXPECT_TRUE(rws::core::LoadLanguage("en"));
}

TEST_F(SceneDocument, ATakeIsTheSameWhereverItIsRunAgain) {
  document->NewScene();
  AddRigs(*document);
  ASSERT_TRUE(document->SaveAs(path("a.glb")));
  auto played = PlayInputs(*document, folder);
  StartTake();
  Perform(0.8);
  document->EndRun();
  ASSERT_TRUE(document->GetCore().Undo());
  StartTake();  // a retry goes on from the same autosave
  EXPECT_EQ(Autosaves(), 1u);
  Perform(3.1);
  // What a crash would leave, and a moment before it a record that is not whole.
  fs::copy(root(), path("crashed"), fs::copy_options::recursive);
  Perform(3.5);
  document->GetCore().StopRecording();
  const double end = document->GetCore().GetFrameTime();
  const std::string take = Poses(end);
  const std::string part = Poses(2.5);
  played.reset();
  rws::core::CoreNode& car = *document->GetCore().FindInstance("Car")->GetNodes().front();
  const auto way = app::WorldPose(car, end).translation() - app::WorldPose(car, 0.0).translation();
  EXPECT_GT(std::hypot(way.x, way.z), 1.0) << "it drives";
  EXPECT_LT(std::abs(way.y), 1.0) << "on the ground";
  ASSERT_TRUE(document->Save());
  app::Resimulate(document->GetCore(), {0.0, end}, app::Monitor());
  EXPECT_EQ(Poses(end), take);
  const std::string command =
      "cd '" + folder.path +
      "' && '" RIGWRIGHT_PROGRAM "' resim a.glb --range 0:" + std::to_string(end) +
      " -o b.glb >/dev/null && '" RIGWRIGHT_PROGRAM "' export b.glb --range 0:" +
      std::to_string(end) + " -o b.csv >/dev/null";
  ASSERT_EQ(std::system(command.c_str()), 0);
  EXPECT_EQ(folder.Read("b.csv"), take);

  DataRoot::Set(path("crashed"));
  Restart();
  std::vector<app::Leftover> left = app::FindLeftovers();
  ASSERT_EQ(left.size(), 1u);
  EXPECT_TRUE(left[0].hasTake && left[0].fileIsNewer);
  EXPECT_GT(left[0].GetTakeSeconds(), 2.5);
  ASSERT_TRUE(document->Restore(std::move(left[0])));
  EXPECT_EQ(document->GetUndoList().names, std::vector<std::string>{"Restore take"});
  EXPECT_EQ(Poses(2.5), part);
  EXPECT_EQ(document->GetPath(), path("a.glb"));
  EXPECT_TRUE(document->Save().isAsked) << "it was saved since";
  EXPECT_TRUE(document->GetCore().Undo());
  EXPECT_TRUE(GasSamples(*document).empty());
}

TEST_F(SceneDocument, ADamagedJournalGivesWhatIsWhole) {
  document->NewScene();
  AddRigs(*document);
  const auto played = PlayInputs(*document, folder);
  StartTake();
  Perform(1.4);
  std::string file;
  for (const auto& entry : fs::recursive_directory_iterator(root()))
    if (entry.path().filename() == app::AutosaveFolder::kJournal) file = entry.path();
  std::string bytes;
  ASSERT_TRUE(util::readFile(file, bytes));
  app::JournalledTake whole, cut;
  app::Problem problem;
  ASSERT_TRUE(app::ReadJournal(file, whole, problem));
  EXPECT_FALSE(whole.dropped || whole.ended);
  EXPECT_NEAR(whole.end, 1.04, 0.1);
  double last = 0.0;
  for (std::size_t size = 0; size < bytes.size(); size += size < 100 ? 1 : 7) {
    const std::string part = folder.Write("cut", bytes.substr(0, size));
    if (!app::ReadJournal(part, cut, problem)) continue;
    EXPECT_GE(cut.end, last);
    last = cut.end;
    std::string flipped = bytes;
    flipped[size] = static_cast<char>(flipped[size] ^ 0x40);
    const bool isRead = app::ReadJournal(folder.Write("cut", flipped), cut, problem);
    EXPECT_TRUE(!isRead || cut.dropped);
  }
  EXPECT_NEAR(last, 0.52, 0.1) << "but for the last record";
  document->EndRun();
  ASSERT_TRUE(app::ReadJournal(file, whole, problem));
  EXPECT_TRUE(whole.ended);
  EXPECT_EQ(whole.end, document->GetCore().GetFrameTime());

  StartTake();
  Perform(1.0);
  {
    const FullDisk full;
    Perform(3.0);
  }
  EXPECT_TRUE(document->IsRunning()) << "the take goes on";
  ASSERT_EQ(troubles.size(), 1u);
  EXPECT_NE(troubles[0].find(app::AutosaveFolder::kJournal), std::string::npos) << troubles[0];
  document->EndRun();
  EXPECT_NEAR(GasSamples(*document).back().time, 3.0, 0.1);
}

// --- killed ---

/// What the log of a killed program tells.
struct Life {
  double saved = 0.0, saving = 0.0;  ///< ends of the range
  bool autosaved = false, inTake = false, taken = false;
  double frame = 0.0;  ///< the last one of the take (s)
};

Life LifeOf(const std::string& log) {
  Life life;
  std::istringstream in(log);
  for (std::string word; in >> word;) {
    if (word == "saving") in >> life.saving;
    if (word == "saved") {
      in >> life.saved;
      life.autosaved = life.inTake = life.taken = false;
    }
    if (word == "autosaved") life.autosaved = true;
    if (word == "take") life.inTake = true, life.frame = 0.0;
    if (word == "frame") in >> life.frame;
    if (word == "taken") life.inTake = false, life.taken = true;
  }
  return life;
}

TEST_F(SceneDocument, AKilledProgramLosesASecondAtMost) {
  const char* const wish = std::getenv("ORV_KILLS");
  const int kills = wish ? std::atoi(wish) : 5;
  std::mt19937 random(wish ? static_cast<unsigned>(kills) : 7u);
  int takes = 0;
  for (int kill = 0; kill < kills; ++kill) {
    const std::string place = path("kill" + std::to_string(kill));
    fs::create_directories(place);
    DataRoot::Set(place + "/root");
    const std::string scene = place + "/a.glb", log = place + "/log";
    const pid_t child = fork();
    if (child == 0) {
      setenv("RIGWRIGHT_DATA_ROOT", DataRoot::Get().c_str(), 1);
      execl(CRASH_PROGRAM, CRASH_PROGRAM, scene.c_str(), log.c_str(), nullptr);
      _exit(127);
    }
    std::string text;
    while (text.find("saved 11\n") == std::string::npos) util::readFile(log, text);
    std::this_thread::sleep_for(std::chrono::microseconds(random() % 2600000));
    ::kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    util::readFile(log, text);
    const Life life = LifeOf(text);
    SCOPED_TRACE("kill " + std::to_string(kill) + " at the end of\n" + text);
    Restart();
    const DocumentResult opened = document->Open(scene);
    ASSERT_TRUE(opened) << opened.problem.why;
    const double end = document->GetScene().GetRangeEnd();
    EXPECT_TRUE(end == life.saved || end == life.saving) << end;
    std::vector<app::Leftover> left = app::FindLeftovers();
    if (life.saving != life.saved || !life.autosaved) continue;  // then it may be gone already
    ASSERT_EQ(left.size(), 1u);
    EXPECT_EQ(left[0].note.scene, scene);
    const DocumentResult restored = document->Restore(std::move(left[0]));
    ASSERT_TRUE(restored) << restored.problem.why;
    EXPECT_EQ(document->GetScene().GetRangeEnd(), life.saved + 0.5);
    EXPECT_TRUE(document->IsDirty());
    const auto& samples = GasSamples(*document);
    for (std::size_t i = 1; i < samples.size(); ++i)  // the first is of before the device was read
      EXPECT_NEAR(samples[i].value, PerformedGas(samples[i].time), 1e-6);
    if (life.frame > 1.0) {
      ASSERT_FALSE(samples.empty());
      EXPECT_GE(samples.back().time, life.taken ? life.frame : life.frame - 1.0);
      ++takes;
    }
  }
  EXPECT_GT(takes, 0) << "none was in a take: choose other moments";
}

}  // namespace
}  // namespace orv::tests
