// The widget of a view.
#pragma once

#include <QPointer>
#include <QWidget>

namespace orv::gui::component::qt {

class ViewHandler;

/// Hands painting and events to its handler; empty without one.
class ViewArea : public QWidget {
 public:
  explicit ViewArea(QWidget* parent);

  void SetHandler(ViewHandler* handler);
  ViewHandler* GetHandler() const { return m_handler; }
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  bool event(QEvent* event) override;

 private:
  template <class Event>
  bool Hand(Event& event, void (ViewHandler::*call)(Event&));

  ViewHandler* m_handler = nullptr;
  QPointer<QWidget> m_content;  ///< the handler's, over all of this one
};

}  // namespace orv::gui::component::qt
