// The widget that shows a scene.
#pragma once

#include <QOpenGLWidget>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "app/studio/view/FrameSource.h"
#include "app/studio/view/Renderer.h"
#include "app/studio/view/StageInteractor.h"
#include "app/studio/view/packet/Navigation.h"
#include "app/studio/view/packet/ViewCamera.h"

class QPainter;
class QRubberBand;

namespace orv::app::view {

enum class Quality {
  kByMachine,  ///< smooth edges where there is a graphics processor
  kFixed       ///< the same picture on every machine, as far as drivers are alike
};

/// How a pick acts on what is selected.
enum class PickMode { kReplace, kAdd, kToggle };

/// One picture of a source at a time, whenever it is updated, and the user's hands in it. Main
/// thread only; the source outlives it. A context that goes, as when the widget comes to another
/// window, is followed by a new one.
class StageView : public QOpenGLWidget {
 public:
  StageView(FrameSource& source, Quality quality, QWidget* parent = nullptr);
  ~StageView() override;

  /// What a click or a rectangle hit: ids of the picture, each once, none for the background.
  std::function<void(const std::vector<std::uint32_t>& ids, PickMode mode)> picked;
  /// A menu is asked for, at a place of the screen.
  std::function<void(const QPoint& at)> menuWanted;
  /// The user has left the camera that was looked through: its source is to show none.
  std::function<void()> cameraLeft;
  /// There is no picture to be had, and why.
  std::function<void(const std::string& problem)> failed;
  /// The packet of the next picture stands but for its lines: who has some hangs them into it.
  std::function<void(FramePacket& packet)> linesWanted;
  /// Over each picture, in pixels of the desktop.
  std::function<void(QPainter& painter)> paintOver;
  /// After each picture; for what is shown beside it.
  std::function<void()> painted;

  void SetInteractor(std::unique_ptr<StageInteractor> interactor) {
    m_interactor = std::move(interactor);
  }
  void SetNavigation(NavigationPreset preset) { m_preset = preset; }
  NavigationPreset GetNavigation() const { return m_preset; }
  void SetShading(Shading shading);
  Shading GetShading() const { return m_packet.shading; }
  void SetGridVisible(bool visible);
  bool IsGridVisible() const { return m_packet.grid.visible; }

  /// All, or all that is selected, comes into the picture; nothing happens without any.
  void FrameAll();
  void FrameSelected();
  /// The next picture that shows something shows all of it.
  void FrameNext();
  void SetEye(const OrbitEye& eye);
  const OrbitEye& GetEye() const { return m_eye; }

  /// Ids that the next picture will show in a rectangle of the widget; see Renderer::ReadIds.
  std::vector<std::uint32_t> ReadIds(const QRect& part);
  /// The ray through a place of the widget, as of the latest picture (world, m).
  void GetRay(const QPointF& at, util::Vector3<double>& origin,
              util::Vector3<double>& direction) const;
  // As of the latest picture.
  const FramePacket& GetPacket() const { return m_packet; }
  /// Without scale.
  const util::Matrix<double>& GetEyePose() const { return m_pose; }
  const Optics& GetOptics() const { return m_optics; }
  Renderer::Counts GetCounts() const;

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
  void MakePacket();
  void TakeColours();
  void Frame(bool selection);
  /// The eye becomes the user's own, where the camera stood.
  void LeaveCamera();
  void Drag(const QPoint& by);
  void Pick(const QRect& part, PickMode mode);
  double Aspect() const;

  FrameSource& m_source;
  std::unique_ptr<StageInteractor> m_interactor;  ///< null for none
  std::unique_ptr<Renderer> m_renderer;           ///< null while there is no context that can draw
  FramePacket m_packet;
  OrbitEye m_eye;
  Optics m_optics;
  util::Matrix<double> m_pose;  ///< of the latest picture's eye
  bool m_isThrough = false;     ///< through a camera
  bool m_framesNext = true;
  NavigationPreset m_preset = NavigationPreset::kBlender;
  DragKind m_drag = DragKind::kSelect;
  Qt::MouseButton m_button = Qt::NoButton;  ///< that the drag began with
  QPoint m_pressed, m_last;
  bool m_isDragged = false;
  QRubberBand* m_band = nullptr;
};

}  // namespace orv::app::view
