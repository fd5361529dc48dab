#include "core/windows/KeyFilter.h"

#include <QApplication>
#include <QKeyEvent>
#include <QTimer>

#include "core/CoreImplementation.h"
#include "core/HotKeys.h"

namespace orv::rws::core::windows {

KeyFilter::KeyFilter(CoreImplementation& core, Scope scope) : m_core(core), m_scope(scope) {
  QApplication::instance()->installEventFilter(this);
}

bool KeyFilter::eventFilter(QObject*, QEvent* event) {
  const QEvent::Type type = event->type();
  if (type != QEvent::KeyPress && type != QEvent::KeyRelease && type != QEvent::ShortcutOverride)
    return false;
  auto* key = static_cast<QKeyEvent*>(event);
  if (type == QEvent::KeyRelease) {
    if (key->key() != m_taken) return false;
    if (!key->isAutoRepeat()) m_taken = 0;
    return true;
  }
  // A press of its own: letting go has passed by, as when another program took the keyboard.
  if (type == QEvent::ShortcutOverride && !key->isAutoRepeat()) m_taken = 0;
  // One press comes as an override and then as a press, to the window and then to its widget.
  if (key->key() == m_taken) return true;
  const KeyModifiers modifiers{bool(key->modifiers() & Qt::ControlModifier),
                               bool(key->modifiers() & Qt::ShiftModifier),
                               bool(key->modifiers() & Qt::AltModifier)};
  const int code = VirtualKeyOf(key->key(), key->modifiers() & Qt::KeypadModifier);
  if (m_scope == Scope::kInTakes && !m_core.IsRecording()) return false;
  // No take begins behind a question that waits.
  if (QApplication::activeModalWidget() && !m_core.IsRecording()) return false;
  const HotKeyTime now = m_core.IsRecording() ? HotKeyTime::kInTake : HotKeyTime::kIdle;
  if (code == 0 || m_core.IsResimulating() || !FindHotKey(code, modifiers, now)) return false;
  m_taken = key->key();
  // Later: the toolkit goes on with the window that the key came to, which a take may close.
  QTimer::singleShot(0, this, [this, code, modifiers] { m_core.HandleKey(code, modifiers); });
  event->accept();
  return true;
}

}  // namespace orv::rws::core::windows
