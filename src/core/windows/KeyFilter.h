// The program's keys ahead of its widgets.
#pragma once

#include <QObject>

namespace orv::rws::core {
class CoreImplementation;
}

namespace orv::rws::core::windows {

/// Hands the keys of the core's hot keys to the core before any widget gets them. Lives as long as
/// the application's event loop may run, or, in a host's, as long as our windows.
class KeyFilter : public QObject {
 public:
  /// In a take alone the host's own keys are left to it at all other times.
  enum class Scope { kAlways, kInTakes };

  explicit KeyFilter(CoreImplementation& core, Scope scope = Scope::kAlways);

 protected:
  bool eventFilter(QObject* receiver, QEvent* event) override;

 private:
  CoreImplementation& m_core;
  Scope m_scope;
  int m_taken = 0;  ///< Qt's number of the key that was taken, until it is let go
};

}  // namespace orv::rws::core::windows
