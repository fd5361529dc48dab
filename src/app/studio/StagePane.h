// The scene's picture in the main window.
#pragma once

#include <QElapsedTimer>
#include <QLabel>
#include <QPointer>
#include <QTimer>
#include <array>
#include <string>
#include <vector>

#include "adaptor/headless/HostObservers.h"
#include "app/studio/NodeManipulation.h"
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
  /// For the line about pictures a second.
  void SetLatency(const view::PictureLatency& latency) { m_overlayView.SetLatency(latency); }

  /// The camera that is looked through; null without one.
  const rws::adaptor::headless::SceneNode* GetCamera() const {
    return m_frames.GetLookThrough(m_view ? m_view->GetActive() : 0);
  }
  /// The active pane's own eye.
  view::OrbitEye GetEye() const { return m_view ? m_view->GetEye() : view::OrbitEye(); }

  // ViewHandler
  void Paint(QPainter& painter, QWidget& widget) override;
  QWidget* MakeContent(QWidget* parent) override;

 private:
  // SceneBrowser::Observer
  void OnNodeSelection() override;
  // HostObserver
  void OnTree() override;
  void OnTime(double) override { Update(); }
  void OnRefresh() override { Update(); }

  /// Draws anew, in a run only when the picture before has left the run as much time as it took.
  void Update();
  void NotePicture();
  void Select(const std::vector<std::uint32_t>& ids, view::PickMode mode);
  void OpenMenu(const QPoint& at);
  void AddPaneEntries(QMenu& menu);
  void AddCameraEntries(QMenu& menu);
  void AddFollowEntries(QMenu& menu);
  void AddShadingEntries(QMenu& menu);
  /// Of the view's own commands; true when there is one for it.
  bool PressKey(int key, bool shift);
  using SceneNode = rws::adaptor::headless::SceneNode;
  /// The node that was selected last; null without one.
  const SceneNode* GetSelected() const;
  /// Through this camera, in the active pane, or no longer.
  void LookThrough(const SceneNode* camera);
  /// Along with the selected node, or no longer with any.
  void Follow(bool turns);
  void SetShading(view::Shading shading);
  /// The inset shows the camera that was selected or looked through last, else the first.
  void ChooseInset();
  void ShowNotes();
  std::string NoteOf(std::size_t picture) const;
  void AddOverlayMenu(QMenu& menu);
  void Keep(const char* key, const std::string& value);
  std::string GetKept(const char* key) const;
  void TakeChoices();
  void ConnectOverlay();

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
  QElapsedTimer m_since;          ///< the latest picture's begin
  qint64 m_cost = 0;              ///< of the latest picture (ms)
  qint64 m_end = 0;               ///< of it, by m_since (ms)
  bool m_isPainting = false;
  bool m_isWanted = false;  ///< another picture, which could not be drawn yet
  QTimer m_later;
};

}  // namespace orv::app
