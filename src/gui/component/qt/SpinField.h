// A number to be typed, stepped and dragged.
#pragma once

#include <QLineEdit>
#include <QPointer>
#include <QTimer>
#include <QWidget>

namespace orv::gui::component {
class Spinner;
}

namespace orv::gui::component::qt {

/// Paints the number; an editor for it is made when the user begins to type. So a window of a
/// hundred of them opens at once.
class SpinField : public QWidget {
 public:
  SpinField(Spinner& spinner, QWidget* parent);

  /// The component is gone.
  void Release();
  Spinner* GetSpinner() const { return m_spinner; }
  /// The value has changed, or how it is shown.
  void Refresh();
  /// The unit has changed.
  void RangeChanged();
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  enum class Part { kText, kUp, kDown };

  bool IsEditing() const { return m_editor && m_editor->isVisible(); }
  bool CanEdit() const;
  QSize Hint(int digits) const;
  QRect ArrowRect() const;
  QRect TextRect() const;
  Part PartAt(const QPoint& place) const;
  QString ShownText() const;
  void BeginTyping(const QString& first = {});
  /// Takes what was typed; back to what it was when that is no number.
  void EndTyping(bool take);
  void Typed();
  void MarkInvalid(bool invalid);
  /// The keys of an edit that both the field and its editor know.
  bool HandleKey(QKeyEvent& event);
  void LeaveEditor(bool next);
  /// Steps within one edit, which ends when the key or button is let go.
  void Step(double steps);
  void EndSteps(bool cancelled);
  void DragTo(const QMouseEvent& event);
  void PaintArrows(QPainter& painter) const;

  Spinner* m_spinner;
  mutable int m_digitWidth = 0;  ///< 0: this and the next are to be worked out
  mutable QSize m_around;        ///< margins, arrows and unit
  QPointer<QLineEdit> m_editor;
  QTimer m_repeat;  ///< a held arrow, or the end of a turn of the wheel
  bool m_stepping = false, m_wheeling = false, m_dragging = false;
  bool m_pressed = false, m_invalid = false, m_quiet = false;
  Part m_part = Part::kText, m_hover = Part::kText;
  bool m_hovered = false;
  QPoint m_pressedAt;
  double m_from = 0.0;  ///< value when the drag began
};

}  // namespace orv::gui::component::qt
