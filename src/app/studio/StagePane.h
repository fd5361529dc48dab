// The scene's picture in the main window.
#pragma once

#include <QElapsedTimer>
#include <QLabel>
#include <QPointer>
#include <array>
#include <string>
#include <vector>

#include "adaptor/headless/HostObservers.h"
#include "app/studio/NodeManipulation.h"
#include "app/studio/PicturePace.h"
#include "app/studio/view/SceneFrames.h"
#include "app/studio/view/StageView.h"
#include "app/studio/view/overlay/OverlayView.h"
#include "core/windows/SceneBrowser.h"
#include "gui/component/qt/ViewHandler.h"

class QMenu;

namespace orv::rws::core {
class CoreImplementation;
}
namespace orv::rws::core::windows {
class WindowSettings;
}

namespace orv::app {

class HeadlessBrowser;
class StageManipulator;

/// Shows the scene at its time, in takes too, and shares the selection of the trees. Where there is
/// no OpenGL a text says so in the picture's place, and all else goes on.
class StagePane : public gui::component::qt::ViewHandler,
                  private rws::core::windows::SceneBrowser::Observer,
                  private rws::adaptor::headless::HostObserver {
 public:
  /// All outlive this one.
  StagePane(rws::core::CoreImplementation& core, rws::adaptor::headless::HeadlessAdaptor& host,
            HeadlessBrowser& browser, bool isFixedQuality);
  ~StagePane() override;

  /// Where the user's choices are kept; null for nowhere.
  void SetSettings(rws::core::windows::WindowSettings* settings);
  /// The camera that is looked through; null without one.
  const rws::adaptor::headless::SceneNode* GetCamera() const {
    return m_frames.GetLookThrough(m_view ? m_view->GetActive() : 0);
  }
  /// The active pane's own eye.
  view::OrbitEye GetEye() const { return m_view ? m_view->GetEye() : view::OrbitEye(); }

  /// What is shown over the pictures, which others may show over theirs.
  view::Overlay& UseOverlay() { return m_overlay; }

  /// Null while there is no picture; then the problem, if any, says why.
  view::StageView* GetView() const { return m_view; }
  const std::string& GetProblem() const { return m_problem; }
  /// The time of the scene that pictures show (s).
  double GetShownTime() const;
  using SceneNode = rws::adaptor::headless::SceneNode;
  /// See SceneFrames.
  const SceneNode* FindNode(std::uint32_t id) const { return m_frames.FindNode(id); }
  const SceneNode* GetLookThrough() const { return m_frames.GetLookThrough(m_view->GetActive()); }
  /// Through this camera, in the active pane, or no longer.
  void LookThrough(const SceneNode* camera);
  void SetShading(view::Shading shading);
  /// A choice of the user's, by its key in the settings; empty is the default.
  void Keep(const char* key, const std::string& value);
  /// Of the latest take.
  PictureFigures GetFigures() const { return m_pace.GetFigures(Now()); }

  // ViewHandler
  void Paint(QPainter& painter, QWidget& widget) override;
  QWidget* MakeContent(QWidget* parent) override;

 private:
  // SceneBrowser::Observer
  void OnNodeSelection() override;
  // HostObserver
  void OnTree() override;
  void OnTime(double) override;
  void OnRefresh() override { Update(); }

  bool IsInTake() const;
  /// Of the newest frame that a take has stepped.
  int GetNewestFrame() const;
  double Now() const { return static_cast<double>(m_since.nsecsElapsed()) * 1e-9; }  ///< s
  /// Draws anew, in a take when that has no frames to catch up on.
  void Update();
  void DrawWhenDue();
  /// What the picture shows is settled, but it can't be seen yet.
  void NotePainted();
  void NoteSwapped();
  void Select(const std::vector<std::uint32_t>& ids, view::PickMode mode);
  void OpenMenu(const QPoint& at);
  void AddPaneEntries(QMenu& menu);
  void AddCameraEntries(QMenu& menu);
  void AddFollowEntries(QMenu& menu);
  void AddShadingEntries(QMenu& menu);
  /// Of the view's own commands; true when there is one for it.
  bool PressKey(int key, bool shift);
  /// The node that was selected last; null without one.
  const SceneNode* GetSelected() const;
  /// Along with the selected node, or no longer with any.
  void Follow(bool turns);
  /// The inset shows the camera that was selected or looked through last, else the first.
  void ChooseInset();
  void ShowNotes();
  std::string NoteOf(std::size_t picture) const;
  void AddOverlayMenu(QMenu& menu);
  std::string GetKept(const char* key) const;
  void TakeChoices();
  void ConnectOverlay();
  void AgeMoves();

  rws::core::CoreImplementation& m_core;
  rws::adaptor::headless::HeadlessAdaptor& m_host;
  HeadlessBrowser& m_browser;
  rws::core::windows::WindowSettings* m_settings = nullptr;
  view::Quality m_quality;
  view::SceneFrames m_frames;
  NodeManipulation m_nodes;
  view::Overlay m_overlay;
  view::OverlayView m_overlayView;
  QPointer<view::StageView> m_view;
  StageManipulator* m_hands = nullptr;  ///< the view's own
  /// Of each picture: the grid's step, or which camera is looked through.
  std::array<QPointer<QLabel>, view::kPictures> m_notes;
  std::string m_problem;          ///< why there is no picture
  const void* m_scene = nullptr;  ///< that the eye was set for
  QElapsedTimer m_since;          ///< the program's begin
  PicturePace m_pace;
  bool m_wasInTake = false;
  bool m_isBetween = false;    ///< shows a take at its clock, between frames, not its newest frame
  bool m_isWanted = false;     ///< another picture, which could not be drawn yet
  bool m_isPainted = false;    ///< and not seen yet
  std::vector<double> m_ages;  ///< ms, of the moves that the picture is the first to show
  double m_agedAt = 0.0;       ///< when they were that old (s)
  double m_drawnFrom = -1.0;   ///< begin of the picture that is drawn (s); below 0 for none
  int m_asked = 0;             ///< newest frame that a picture has been asked for of
  int m_painted = 0;           ///< newest frame that the latest picture shows
};

}  // namespace orv::app
