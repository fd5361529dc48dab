// The widget that shows a scene.
#pragma once

#include <QElapsedTimer>
#include <QOpenGLWidget>
#include <QTimer>
#include <array>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "app/studio/view/FrameSource.h"
#include "app/studio/view/Renderer.h"
#include "app/studio/view/StageInteractor.h"
#include "app/studio/view/StagePicture.h"
#include "app/studio/view/WindowPictures.h"
#include "app/studio/view/packet/MeshLevels.h"
#include "app/studio/view/packet/Navigation.h"
#include "app/studio/view/packet/QualityControl.h"

class QPainter;
class QRubberBand;

namespace orv::app::view {

enum class Quality {
  kByMachine,  ///< as fine as it can be drawn fluently, with coarser meshes where that isn't seen
  kFixed       ///< the same picture on every machine, as far as drivers are alike
};

/// How a pick acts on what is selected.
enum class PickMode { kReplace, kAdd, kToggle };

/// How many panes there are, and how they lie.
enum class PaneLayout { kOne, kColumns, kRows };

/// The pictures of a source, whenever it is updated, and the user's hands in them: one pane or two,
/// and a camera's picture in a corner. Keys and what is asked for go to the active pane, which is
/// the one that was pressed last. Main thread only; the source outlives it. A context that goes, as
/// when the widget comes to another window, is followed by a new one.
class StageView : public QOpenGLWidget {
 public:
  StageView(FrameSource& source, Quality quality, QWidget* parent = nullptr);
  ~StageView() override;

  /// What a click or a rectangle hit: ids of the picture, each once, none for the background.
  std::function<void(const std::vector<std::uint32_t>& ids, PickMode mode)> picked;
  /// A menu is asked for, at a place of the screen.
  std::function<void(const QPoint& at)> menuWanted;
  /// The user has left the camera that the active pane looked through: its source is to show none.
  std::function<void()> cameraLeft;
  /// A key that is none of the view's own, with Shift or without. True when it was of use.
  std::function<bool(int key, bool shift)> keyPressed;
  /// There is no picture to be had, and why.
  std::function<void(const std::string& problem)> failed;
  /// An update begins, whose source has been read; not ahead of a pick.
  std::function<void()> begun;
  /// The packet of the next picture stands but for its lines: who has some hangs them into it.
  std::function<void(FramePacket& packet)> linesWanted;
  /// Over all pictures, in pixels of the desktop.
  std::function<void(QPainter& painter)> paintOver;
  /// Whether `paintOver` has something to write; without it never.
  std::function<bool()> hasTexts;
  /// After each update; for what is shown beside it. It is seen with `frameSwapped`.
  std::function<void()> painted;
  /// Whether a take needs all the time there is; none: never.
  std::function<bool()> isBusy;

  /// As update(), but sooner seen where that can be had, and the program goes on meanwhile. Nothing
  /// while the picture before is pending.
  void Hurry();
  bool IsPending() const { return m_isHurried || m_window.IsPending(); }

  void SetInteractor(std::unique_ptr<StageInteractor> interactor) {
    m_interactor = std::move(interactor);
  }
  void SetNavigation(NavigationPreset preset) { m_preset = preset; }
  NavigationPreset GetNavigation() const { return m_preset; }
  void SetShading(Shading shading, std::size_t picture);
  Shading GetShading() const { return GetPacket().shading; }
  void SetGridVisible(bool visible);
  bool IsGridVisible() const { return m_pictures[0].packet.grid.visible; }
  void SetLayout(PaneLayout layout);
  PaneLayout GetLayout() const { return m_layout; }
  /// The picture of the source's camera for insets, in a corner of the first pane.
  void SetInsetVisible(bool visible);
  bool IsInsetVisible() const { return m_hasInset; }
  /// Of the panes.
  std::size_t GetActive() const { return m_active; }
  void SetActive(std::size_t pane);
  bool IsShown(std::size_t picture) const;
  /// Where a picture lies in the widget.
  QRect GetPlace(std::size_t picture) const;

  /// All, or all that is selected, comes into the active pane; nothing happens without any.
  void FrameAll();
  void FrameSelected();
  /// The next pictures that show something show what matters of it.
  void FrameNext();
  void SetEye(const OrbitEye& eye);
  const OrbitEye& GetEye() const { return m_pictures[m_active].GetEye(); }

  /// Ids that the next picture will show in a rectangle of the widget, which counts as far as it
  /// lies in the picture; see Renderer::ReadIds.
  std::vector<std::uint32_t> ReadIds(const QRect& part, std::size_t picture);
  std::vector<std::uint32_t> ReadIds(const QRect& part) { return ReadIds(part, m_active); }
  /// The ray through a place of the widget, as of the active pane's latest picture (world, m).
  void GetRay(const QPointF& at, util::Vector3<double>& origin,
              util::Vector3<double>& direction) const;
  /// As of the latest picture.
  const FramePacket& GetPacket() const { return m_pictures[m_active].packet; }
  /// Without scale.
  const util::Matrix<double>& GetEyePose() const { return m_pictures[m_active].GetPose(); }
  const Optics& GetOptics() const { return m_pictures[m_active].GetOptics(); }
  const StagePicture& GetPicture(std::size_t number) const { return m_pictures[number]; }
  /// Which picture's packet that is.
  std::size_t NumberOf(const FramePacket& packet) const;
  /// Of the latest update, all pictures together.
  Renderer::Counts GetCounts() const { return m_counts; }
  PictureQuality GetPictureQuality() const { return m_control.Get(); }
  /// Whether coarser forms of meshes are still to be made.
  bool IsMakingLevels() const { return m_idle.isActive(); }

 protected:
  void initializeGL() override;
  void paintGL() override;
  bool event(QEvent* event) override;
  void changeEvent(QEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  void Draw();
  void DrawToWindow();
  void LookForPicture();
  void MakePacket(std::size_t picture);
  void AddLines(std::size_t picture);
  void TakeColours();
  void Frame(BoxOf what);
  void LeaveCamera();
  void Drag(const QPoint& by);
  void Pick(const QRect& part, PickMode mode);
  /// The topmost picture at a place of the widget.
  std::size_t PictureAt(const QPoint& at) const;
  PixelRect AreaOf(std::size_t picture) const;
  double AspectOf(std::size_t picture) const;
  PictureQuality ChooseQuality();
  void NoteCost();
  void MakeLevels();

  FrameSource& m_source;
  Quality m_quality;
  std::unique_ptr<StageInteractor> m_interactor;  ///< null for none
  std::unique_ptr<Renderer> m_renderer;           ///< null while there is no context that can draw
  std::array<StagePicture, kPictures> m_pictures{StagePicture(0), StagePicture(1),
                                                 StagePicture(kInset)};
  std::size_t m_active = 0;   ///< of the panes
  std::size_t m_pointed = 0;  ///< of the pictures, the one that the drag began in
  PaneLayout m_layout = PaneLayout::kOne;
  bool m_hasInset = false, m_isInsetThere = false;  ///< wanted; has a camera
  double m_insetAspect = 16.0 / 9.0;
  LinearColour m_gap{};  ///< colour between the panes
  Renderer::Counts m_counts;
  LevelStore m_levels;
  std::uint64_t m_structure = 0;  ///< of the packet that the levels follow
  QTimer m_idle;                  ///< for the levels
  QualityControl m_control;
  WindowPictures m_window;
  bool m_isHurried = false;   ///< and not drawn yet
  bool m_isHurrying = false;  ///< it is drawn now
  QTimer m_pending;           ///< for the picture that the driver draws
  QElapsedTimer m_sincePaint;
  bool m_isTimed = false;   ///< the latest update's cost is to be noted
  QTimer m_rest;            ///< to a finer picture, when nothing moves
  bool m_isAtRest = false;  ///< the next update is that picture
  NavigationPreset m_preset = NavigationPreset::kBlender;
  DragKind m_drag = DragKind::kSelect;
  Qt::MouseButton m_button = Qt::NoButton;  ///< that the drag began with
  QPoint m_pressed, m_last;
  bool m_isDragged = false;
  QRubberBand* m_band = nullptr;
};

}  // namespace orv::app::view
