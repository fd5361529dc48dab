// The buttons of a device as lamps.
#pragma once

#include <QRect>
#include <string>
#include <vector>

#include "gui/component/qt/ViewHandler.h"

namespace orv::rws::core::windows {

class ControlLamps : public gui::component::qt::ViewHandler {
 public:
  /// `names` as users know them; all are out.
  explicit ControlLamps(const std::vector<std::string>& names);

  /// True when one has gone on or out, and they are to be painted anew.
  bool Set(const std::vector<bool>& lit);

  void Paint(QPainter& painter, QWidget& widget) override;
  QSize GetSizeHint(const QWidget&) const override { return GetSize(); }
  QSize GetMinimumSize(const QWidget&) const override { return GetSize(); }
  QString GetTooltip(const QPoint& place) const override;
  QString GetAccessibleValue() const override;

 private:
  QSize GetSize() const;
  QRect PlaceOf(int lamp) const;

  std::vector<QString> m_names;
  std::vector<bool> m_lit;
};

}  // namespace orv::rws::core::windows
