// The menu of time: playback, sound, pictures behind cameras.
#include <QTimer>
#include <cmath>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/Scene.h"
#include "app/session/anyhost/UndoBlock.h"
#include "app/studio/StagePane.h"
#include "app/studio/Studio.h"
#include "app/studio/timeline/CurveStrip.h"
#include "app/studio/timeline/Player.h"
#include "app/studio/timeline/Timeline.h"
#include "app/studio/view/BackdropPictures.h"
#include "app/studio/windows/MediaWindow.h"
#include "core/CoreImplementation.h"
#include "core/windows/MainWindowFrame.h"
#include "core/windows/MenuIds.h"
#include "gui/Texts.h"
#include "gui/componentinterface/Button.h"

namespace orv::app {

using namespace rws::core::windows;
using gui::Translate;
using rws::adaptor::headless::Backdrop;
using rws::adaptor::headless::SceneNode;
using rws::adaptor::headless::SceneSound;

namespace {

constexpr char kTimeSettings[] = "Time";

}  // namespace

void Studio::BeginPlayback() {
  const WindowSettings& kept = m_windows.GetSettings();
  m_player->SetLoop(kept.Get(kTimeSettings, "loop") == "yes");
  m_player->SetEveryFrame(kept.Get(kTimeSettings, "every") == "yes");
  m_player->changed = [this] { ShowPlayback(); };
  m_player->soundFailed = [this](const std::string& problem) {
    Tell(Translate("The sound can't be played: %1", {problem}));
  };
  m_timeline->told = [this](const std::string& text) { Tell(text); };
  m_curves->told = [this](const std::string& text) { Tell(text); };
}

void Studio::ShowPlayback() {
  auto* main = dynamic_cast<MainWindowFrame*>(m_windows.Find(WindowKind::kMain));
  if (!main || !main->GetRoot()) return;
  using gui::componentinterface::Button;
  const bool plays = m_player->IsPlaying(), back = plays && m_player->IsBackwards();
  const auto show = [main](int id, bool stops, const char* image) {
    main->With<Button>(id, [&](Button& button) {
      button.SetImage(gui::componentinterface::ButtonImage::kDefault,
                      std::string("[coreimages]/icons/") + (stops ? "stop" : image) + ".png");
    });
  };
  show(kCommandPlay, plays && !back, "play");
  show(kCommandPlayBackwards, back, "play-back");
  main->With<Button>(kCommandLoop, [this](Button& button) { button.SetDown(m_player->IsLoop()); });
  const std::string locked = m_document.IsRunning() ? WhyLocked() : std::string();
  for (int id = kCommandPlay; id <= kCommandRangeEnd; ++id) {
    main->SetEnabled(id, locked.empty(), locked);
    // A menu that was opened in a take has disabled their keys.
    main->ShowCommand(id, locked.empty(), locked);
  }
}

void Studio::PlayOrStop(bool backwards) {
  if (m_player->IsPlaying() && m_player->IsBackwards() == backwards)
    m_player->Stop();
  else
    m_player->Play(backwards);
}

void Studio::FrameBack() {
  m_timeline->StepFrames(-1);
}

void Studio::FrameOn() {
  m_timeline->StepFrames(1);
}

void Studio::KeyBack() {
  m_timeline->GoToKey(false);
}

void Studio::KeyOn() {
  m_timeline->GoToKey(true);
}

void Studio::RangeBegin() {
  m_timeline->GoToRangeEnd(false);
}

void Studio::RangeEnd() {
  m_timeline->GoToRangeEnd(true);
}

void Studio::SwitchLoop() {
  m_player->SetLoop(!m_player->IsLoop());
  m_windows.GetSettings().Set(kTimeSettings, "loop", m_player->IsLoop() ? "yes" : "");
  ShowPlayback();
}

void Studio::SwitchEveryFrame() {
  m_player->SetEveryFrame(!m_player->IsEveryFrame());
  m_windows.GetSettings().Set(kTimeSettings, "every", m_player->IsEveryFrame() ? "yes" : "");
}

void Studio::SwitchCurves() {
  m_curves->SetVisible(!m_curves->IsVisible());
}

// --- sound ---

void Studio::FollowSound() {
  const auto& sound = m_document.GetScene().GetSound();
  const std::string file = sound ? sound->file : std::string();
  const void* const scene = &m_document.GetScene();
  if (file == m_soundFile && scene == m_soundScene)
    return m_player->SetSoundStart(sound ? sound->start : 0.0);
  m_soundFile = file;
  m_soundScene = scene;
  util::Sentence unread;
  std::string problem;
  const auto read = file.empty() ? nullptr : sound::Sound::Open(file, unread);
  if (unread) {
    problem = Translate("The sound %1 is not heard: %2. Choose another, or put it back there.",
                        {file, Translate(unread.text)});
    // Behind what is told of the scene that has come.
    QTimer::singleShot(0, this, [this, problem] { Tell(problem); });
  }
  m_player->SetSound(read, sound ? sound->start : 0.0);
  m_timeline->SetSound(read, problem);
}

void Studio::ChooseSound() {
  auto& host = m_document.GetAdaptor();
  const auto& kept = m_document.GetScene().GetSound();
  const double duration = host.GetFrameDuration();
  MediaWindow::Choice choice;
  double begin = 0.0, end = 0.0;
  host.GetTimeRange(begin, end);
  const double start = kept ? kept->start : begin;
  if (kept) choice.file = kept->file;
  choice.frame = static_cast<int>(std::lround(start / duration));
  const int shown = choice.frame;
  MediaWindow window(m_windows, MediaWindow::Kind::kSound, [](const std::string& file) {
    util::Sentence problem;
    sound::Sound::Open(file, problem);
    return problem;
  });
  if (!window.Run(choice)) return;
  UndoBlock block(host, "Sound");
  // One that stands between two frames stays there unless another frame is entered.
  if (choice.file.empty())
    host.SetSound(std::nullopt);
  else
    host.SetSound(SceneSound{choice.file, choice.frame == shown ? start : choice.frame * duration});
  block.Keep();
}

// --- pictures behind cameras ---

void Studio::ChooseBackdrop() {
  const std::string title = Translate("Picture behind the camera");
  // The selected one, or the one that is looked through.
  const SceneNode* camera = nullptr;
  for (const int key : m_browser.GetSelection())
    if (const SceneNode* node = m_browser.GetNode(key); !camera && node && node->GetLens())
      camera = node;
  if (!camera) camera = m_stage->GetCamera();
  if (!camera)
    return Show(title, Problem{"",
                               Translate("No camera is selected or looked through"),
                               Translate("select a camera in the scene first"),
                               {}});
  SceneNode* node = m_document.GetScene().Find(camera->GetName());
  MediaWindow::Choice choice;
  if (const auto& kept = node->GetBackdrop())
    choice = {kept->file, kept->frame, kept->opacity};
  else
    choice.frame = m_document.GetCore().FrameIndex(m_document.GetScene().GetRangeStart());
  MediaWindow window(m_windows, MediaWindow::Kind::kBackdrop, &view::CheckPicture);
  if (!window.Run(choice)) return;
  auto& host = m_document.GetAdaptor();
  UndoBlock block(host, "Picture behind #" + node->GetName());
  host.SetBackdrop(*node, choice.file.empty() ? nullptr
                                              : std::make_shared<const Backdrop>(Backdrop{
                                                    choice.file, choice.frame, choice.opacity}));
  block.Keep();
  host.RefreshViews();
}

}  // namespace orv::app
