// The curves of recorded inputs below the time line.
#pragma once

#include <QColor>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QTimer>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "adaptor/headless/HostObservers.h"
#include "app/session/anyhost/InputDrag.h"
#include "app/studio/timeline/CurveEdit.h"
#include "gui/component/qt/ViewHandler.h"
#include "util/MessageNode.h"

namespace orv::rws::adaptor::headless {
class HeadlessAdaptor;
}
namespace orv::rws::core {
class CoreImplementation;
class Instance;
}  // namespace orv::rws::core

namespace orv::app {

class Timeline;

/// Shows what has been recorded of a rig's inputs, on the time line's own scale, and has hands
/// change it, while the rigs follow: points are moved, curves drawn and smoothed. A drag is one
/// step of undo; Escape leaves all as it was.
class CurveStrip : public QObject,
                   public gui::component::qt::ViewHandler,
                   private rws::adaptor::headless::HostObserver,
                   private util::MessageNode {
 public:
  enum class Tool { kPoints, kDraw, kSmooth };
  /// An input that something has been recorded of.
  struct Input {
    int index = 0;
    std::string name;
    QColor colour;
    bool isShown = true;
  };

  /// All outlive it.
  CurveStrip(rws::core::CoreImplementation& core, rws::adaptor::headless::HeadlessAdaptor& host,
             Timeline& timeline);
  ~CurveStrip() override;

  /// The rig whose inputs are shown: the first that is selected, else the first of which something
  /// has been recorded. Null without one.
  rws::core::Instance* FindRig() const;
  /// Its inputs with samples, in their order.
  const std::vector<Input>& GetInputs();
  /// By name; for all rigs that have such an input.
  void ShowInput(const std::string& name, bool shown);
  const std::set<std::string>& GetHidden() const { return m_hidden; }
  void SetTool(Tool tool);
  Tool GetTool() const { return m_tool; }
  /// Half of the brush's width (s).
  void SetRadius(double radius);
  double GetRadius() const { return m_radius; }
  /// Whether the strip is to be seen at all; the window's page shows and hides it.
  void SetVisible(bool visible);
  bool IsVisible() const { return m_isVisible; }

  /// Pixel of a time (s) and a value.
  QPoint GetPlace(double time, double value) const;

  /// Its inputs, its tool or whether it is seen may have changed.
  std::function<void()> changed;
  /// Says why something can't be done.
  std::function<void(const std::string&)> told;

  // ViewHandler
  void Paint(QPainter& painter, QWidget& widget) override;
  QWidget* MakeContent(QWidget* parent) override;
  QSize GetSizeHint(const QWidget& widget) const override;
  QSize GetMinimumSize(const QWidget& widget) const override;
  bool TakesKeys() const override { return true; }
  void MousePressed(QMouseEvent& event) override;
  void MouseMoved(QMouseEvent& event) override;
  void MouseReleased(QMouseEvent& event) override;
  void MouseDoubleClicked(QMouseEvent& event) override { MousePressed(event); }
  void MouseLeft() override;
  void Wheel(QWheelEvent& event) override;
  void KeyPressed(QKeyEvent& event) override;
  QString GetTooltip(const QPoint& at) const override;
  QString GetAccessibleValue() const override;

 protected:
  /// Keys that mean something elsewhere have to wait for the end of a drag.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  enum class Drag { kNone, kPan, kBox, kPoints, kDraw, kSmooth, kEnding };
  using Track = CurveEdit::Track;
  using Place = CurveEdit::Place;

  // HostObserver, util::MessageNode
  void OnTree() override;
  void OnTime(double time) override;
  void OnUndo() override;
  void onMessage(util::Message& message, bool broadcast) override;

  void NoteChange();
  void Read();
  const Track* TrackOf(int input) const;
  bool IsLocked();
  double ToX(double time) const;
  /// Where the highest value and the lowest lie.
  std::pair<double, double> GetEnds() const;
  double ToY(double value) const;
  Place ToPlace(const QPoint& at) const;
  /// The shown input whose curve is next to `at`; -1 without one.
  int FindCurve(const QPoint& at) const;
  /// The nearest sample within reach: its input, or -1.
  int FindPoint(const QPoint& at, double& time) const;

  void Choose(int input, double time, bool adds);
  void PressPoints(QMouseEvent& event);
  void Begin(Drag drag);
  void Follow(const QPoint& at, bool oneWay);
  std::vector<InputDrag::Edited> Edit(const QPoint& at, bool oneWay);
  /// One step of undo at once, as keys make it.
  void EditAtOnce(const std::function<Track(const CurveEdit&, int input)>& edit);
  bool Put(const std::vector<InputDrag::Edited>& edited);
  void GoOn();
  void End();
  void Cancel();
  void ChooseIn(const QPoint& at);
  void StepPoint(bool later);

  void PaintGrid(QPainter& painter, const QWidget& widget) const;
  void PaintCurve(QPainter& painter, const QWidget& widget, const Input& input) const;
  static QColor ColourOf(const Input& input, const QWidget& widget);
  void PaintNames(QPainter& painter, const QWidget& widget) const;
  void PaintHand(QPainter& painter, const QWidget& widget) const;

  rws::core::CoreImplementation& m_core;
  rws::adaptor::headless::HeadlessAdaptor& m_host;
  Timeline& m_timeline;
  QPointer<QWidget> m_widget;
  InputDrag m_edit;
  QTimer m_pass;  ///< goes on with a pass that takes long
  const void* m_scene = nullptr;
  bool m_isOld = true;
  std::vector<Input> m_inputs;
  std::set<std::string> m_hidden;
  double m_low = -1.0, m_high = 1.0;  ///< values at the lower and upper end
  Tool m_tool = Tool::kPoints;
  double m_radius = 0.2;
  bool m_isVisible = false;
  Drag m_drag = Drag::kNone;
  bool m_isMoving = false;  ///< runs that begin and end are this one's
  QPoint m_pressed, m_at;
  bool m_isOver = false;                        ///< the pointer stands in the strip
  int m_rig = 0;                                ///< identity, of the drag
  int m_curve = -1;                             ///< input that is drawn or smoothed
  std::map<int, std::set<double>> m_selection;  ///< times of samples by input
  std::map<int, std::set<double>> m_grabbed;    ///< the same when the drag began
  std::map<int, Track> m_base;                  ///< by input, when the drag began
  std::vector<Place> m_stroke;
};

}  // namespace orv::app
