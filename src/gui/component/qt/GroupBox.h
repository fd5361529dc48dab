// A heading with what stands below it.
#pragma once

#include <QBrush>
#include <QString>
#include <QWidget>
#include <functional>

namespace orv::gui::component::qt {

/// The heading is drawn by the widget itself, which takes the focus when it can be folded: Space
/// and Enter turn it, Left folds and Right opens.
class GroupBox : public QWidget {
 public:
  explicit GroupBox(QWidget* parent);

  QWidget* GetContent() const { return m_content; }
  void SetTitle(const QString& title, bool marked);
  void SetFold(bool foldable, bool folded);
  void SetBrush(const QBrush& brush);
  bool IsFoldable() const { return m_foldable; }
  bool IsFolded() const { return m_folded; }
  const QString& GetTitle() const { return m_title; }

  QSize minimumSizeHint() const override;

  std::function<void(bool folded)> onFold;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool event(QEvent* event) override;

 private:
  QFont HeadingFont() const;
  int HeadingHeight() const;
  void UpdateMargins();
  void Toggle();

  QWidget* m_content;
  QString m_title;
  QBrush m_brush;
  bool m_marked = false, m_foldable = false, m_folded = false, m_hover = false;
  bool m_contentHidden = false;
};

}  // namespace orv::gui::component::qt
