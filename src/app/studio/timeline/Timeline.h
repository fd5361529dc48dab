// The time line of the main window.
#pragma once

#include <QPoint>
#include <QPointer>
#include <QTimer>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "adaptor/headless/HostObservers.h"
#include "app/studio/sound/Sound.h"
#include "app/studio/timeline/model/Bars.h"
#include "app/studio/timeline/model/TimeScale.h"
#include "core/windows/SceneBrowser.h"
#include "gui/component/qt/ViewHandler.h"
#include "util/MessageNode.h"

namespace orv::rws::adaptor::headless {
class HeadlessAdaptor;
}
namespace orv::rws::core {
class CoreImplementation;
}

namespace orv::app {

class HeadlessBrowser;

/// A ruler in frames with the present one, the keys of the selected nodes, what rigs have recorded
/// as bars, the sound, and the playback range, whose ends are dragged. Pressing or dragging
/// elsewhere goes to a frame. In a take it shows the take's frame and goes nowhere.
class Timeline : public gui::component::qt::ViewHandler,
                 private rws::core::windows::SceneBrowser::Observer,
                 private rws::adaptor::headless::HostObserver,
                 private util::MessageNode {
 public:
  /// All outlive it.
  Timeline(rws::core::CoreImplementation& core, rws::adaptor::headless::HeadlessAdaptor& host,
           HeadlessBrowser& browser);
  ~Timeline() override;

  /// What the scene refers to; null, with `problem`, where that could not be read.
  void SetSound(std::shared_ptr<sound::Sound> sound, const std::string& problem);
  /// Says why something can't be done.
  std::function<void(const std::string&)> told;

  // What keys and buttons do; in a take they tell why not.
  void StepFrames(int frames);
  /// To the next key of the selected nodes.
  void GoToKey(bool later);
  void GoToRangeEnd(bool end);
  /// All of the range is seen.
  void ShowRange();
  /// Marks of a take in the place of a part, on frames (s); none where the second is not behind the
  /// first. They belong to no scene's file.
  void SetMarks(double from, double to);
  std::pair<double, double> GetMarks() const { return {m_markFrom, m_markTo}; }
  bool HasMarks() const { return m_markTo > m_markFrom; }
  /// What is seen, for who lies below on the same scale.
  const timeline::TimeScale& GetScale() const { return m_scale; }
  /// It may have become another one, or moved.
  std::function<void()> scaleChanged;
  /// What is seen moves so many pixels to the right, or as far as `time` (s) needs to be seen.
  void Pan(double pixels);
  void Reveal(double time);

  // ViewHandler
  void Paint(QPainter& painter, QWidget& widget) override;
  QWidget* MakeContent(QWidget* parent) override;
  QSize GetSizeHint(const QWidget& widget) const override;
  QSize GetMinimumSize(const QWidget& widget) const override { return GetSizeHint(widget); }
  bool TakesKeys() const override { return true; }
  void MousePressed(QMouseEvent& event) override;
  void MouseMoved(QMouseEvent& event) override;
  void MouseReleased(QMouseEvent& event) override;
  void MouseDoubleClicked(QMouseEvent& event) override { MousePressed(event); }
  void Wheel(QWheelEvent& event) override;
  void KeyPressed(QKeyEvent& event) override;
  void Resized(const QWidget& widget) override;
  QString GetTooltip(const QPoint& at) const override;
  QString GetAccessibleValue() const override;

 private:
  using Part = timeline::Rows::Part;
  enum class Drag { kNone, kTime, kPan, kRangeBegin, kRangeEnd, kRange, kSound, kMarks };

  // SceneBrowser::Observer, HostObserver, util::MessageNode
  void OnNodeSelection() override { NoteChange(); }
  void OnTree() override;
  void OnTime(double time) override;
  void OnUndo() override { NoteChange(); }
  void OnRefresh() override { NoteChange(); }
  void onMessage(util::Message& message, bool broadcast) override;

  void NoteChange();
  void Read();
  void ReadKeys();
  void ReadTakes();
  /// Range and sound, unless they are dragged.
  void ReadRange();
  void LookAtSound();
  void PlaceRows();
  /// Why time can't be set now; empty when it can.
  std::string WhyLocked() const;
  bool IsLocked();
  void GoTo(int frame);
  int GetFrame() const;
  double ToX(double time) const;
  Part FindPart(const QPoint& at) const;
  void ShowCursor(const QPoint& at);
  void DragTo(const QPoint& at);
  void EndDrag(bool cancelled);
  QRect CursorRect(double time) const;
  QString TimeText(int frame) const;

  void PaintRuler(QPainter& painter, const QWidget& widget) const;
  void PaintKeys(QPainter& painter, const QWidget& widget) const;
  void PaintTakes(QPainter& painter, const QWidget& widget) const;
  void PaintSound(QPainter& painter, const QWidget& widget) const;
  void PaintRange(QPainter& painter, const QWidget& widget) const;
  void PaintMarks(QPainter& painter, const QWidget& widget) const;
  void PaintCursor(QPainter& painter, const QWidget& widget) const;

  rws::core::CoreImplementation& m_core;
  rws::adaptor::headless::HeadlessAdaptor& m_host;
  HeadlessBrowser& m_browser;
  QPointer<QWidget> m_widget;
  const void* m_scene = nullptr;
  timeline::TimeScale m_scale;
  timeline::Rows m_rows;
  bool m_isOld = true;  ///< what follows is to be read anew
  std::vector<double> m_keys;
  std::vector<timeline::Bar> m_takes;
  int m_lanes = 1;
  std::shared_ptr<sound::Sound> m_sound;
  std::string m_soundProblem;
  Drag m_drag = Drag::kNone;
  QPoint m_pressed;
  double m_grabbed = 0.0;                    ///< frame under the pointer when the drag began
  double m_begin = 0.0, m_end = 0.0;         ///< the range as it is dragged (s)
  double m_soundStart = 0.0;                 ///< the sound's begin, as it is dragged (s)
  double m_markFrom = 0.0, m_markTo = 0.0;   ///< see SetMarks
  double m_shown = 0.0;                      ///< the time whose cursor is painted (s)
  std::pair<double, double> m_paintedScale;  ///< first frame and pixels a frame
  bool m_fitsNext = true;
  QTimer m_later;
  QTimer m_look;  ///< at the sound, as long as some of it has not been seen
};

}  // namespace orv::app
