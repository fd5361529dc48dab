// The program's keys ahead of its widgets.
#pragma once

#include <QObject>

namespace orv::rws::core {
class CoreImplementation;
}

namespace orv::app {

/// Hands the keys of the core's hot keys to the core before any widget gets them. Lives as long as
/// the application's event loop may run.
class KeyFilter : public QObject {
 public:
  explicit KeyFilter(rws::core::CoreImplementation& core);

 protected:
  bool eventFilter(QObject* receiver, QEvent* event) override;

 private:
  rws::core::CoreImplementation& m_core;
  int m_taken = 0;  ///< Qt's number of the key that was taken, until it is let go
};

}  // namespace orv::app
