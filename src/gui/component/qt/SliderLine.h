// A line with a handle for a number.
#pragma once

#include <QTimer>
#include <QWidget>

namespace orv::gui::component {
class Slider;
}

namespace orv::gui::component::qt {

class SliderLine : public QWidget {
 public:
  SliderLine(Slider& slider, QWidget* parent);

  /// The component is gone.
  void Release();
  Slider* GetSlider() const { return m_slider; }
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  double PlaceAt(int x) const;
  int PlaceX(double place) const;
  void Change(double value);
  void End(bool cancelled);

  Slider* m_slider;
  QTimer m_pause;       ///< ends a turn of the wheel
  double m_grip = 0.0;  ///< where on the handle it was taken, in shares of the line
  bool m_dragging = false, m_editing = false;
};

}  // namespace orv::gui::component::qt
