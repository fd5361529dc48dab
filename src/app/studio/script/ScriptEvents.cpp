#include "app/studio/script/ScriptEvents.h"

#include <QApplication>
#include <QCursor>
#include <QDropEvent>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QKeySequence>
#include <QMimeData>
#include <QPointer>
#include <QUrl>
#include <QWheelEvent>
#include <QWidget>
#include <QWindow>

// How the toolkit's own test library hands events to the window system's end of it.
Q_GUI_EXPORT extern void qt_handleMouseEvent(QWindow* window, const QPointF& local,
                                             const QPointF& global, Qt::MouseButtons state,
                                             Qt::MouseButton button, QEvent::Type type,
                                             Qt::KeyboardModifiers modifiers, int timestamp);
Q_GUI_EXPORT extern void qt_handleKeyEvent(QWindow* window, QEvent::Type type, int key,
                                           Qt::KeyboardModifiers modifiers, const QString& text,
                                           bool repeat, ushort count);
Q_GUI_EXPORT extern bool qt_sendShortcutOverrideEvent(QObject* object, ulong timestamp, int key,
                                                      Qt::KeyboardModifiers modifiers,
                                                      const QString& text, bool repeat,
                                                      ushort count);

namespace orv::app {

namespace {

/// Events of one click lie closer together than a double click takes, those of two further apart.
int Now(int apart) {
  static int time = 1000;
  return time += apart;
}

void SendMouse(QWidget& widget, const QPoint& point, Qt::MouseButtons state, Qt::MouseButton button,
               QEvent::Type type, Qt::KeyboardModifiers modifiers, int apart) {
  QWidget* top = widget.window();
  QWindow* window = top->windowHandle();
  if (!window) return;
  const QPoint global = widget.mapToGlobal(point);
  qt_handleMouseEvent(window, top->mapFromGlobal(global), global, state, button, type, modifiers,
                      Now(apart));
}

void Press(QWidget& widget, const QPoint& point, Qt::MouseButton button,
           Qt::KeyboardModifiers modifiers, int apart) {
  const QPointer<QWidget> alive(&widget);
  SendMouse(widget, point, Qt::NoButton, Qt::NoButton, QEvent::MouseMove, modifiers, apart);
  if (!alive) return;
  // As a window manager does, where there is one.
  if (QWidget* top = widget.window(); !top->isActiveWindow() && top->windowType() != Qt::Popup)
    top->activateWindow();
  SendMouse(widget, point, button, button, QEvent::MouseButtonPress, modifiers, 1);
}

QWindow* KeyWindow() {
  if (QWidget* popup = QApplication::activePopupWidget()) return popup->windowHandle();
  if (QWindow* focus = QGuiApplication::focusWindow()) return focus;
  QWidget* widget = QApplication::activeModalWidget();
  if (!widget) widget = QApplication::activeWindow();
  return widget ? widget->windowHandle() : nullptr;
}

void SendKey(int key, Qt::KeyboardModifiers modifiers, const QString& text) {
  const QPointer<QWindow> window(KeyWindow());
  if (!window) return;
  qt_handleKeyEvent(window, QEvent::KeyPress, key, modifiers, text, false, 1);
  if (window) qt_handleKeyEvent(window, QEvent::KeyRelease, key, modifiers, text, false, 1);
}

}  // namespace

void SendClick(QWidget& widget, const QPoint& point, Qt::MouseButton button,
               Qt::KeyboardModifiers modifiers, bool twice) {
  const QPointer<QWidget> alive(&widget);
  const int apart = 2 * QApplication::doubleClickInterval();
  for (int i = 0; i < (twice ? 2 : 1) && alive; ++i) {
    Press(*alive, point, button, modifiers, i == 0 ? apart : 1);
    if (alive)
      SendMouse(*alive, point, Qt::NoButton, button, QEvent::MouseButtonRelease, modifiers, 1);
  }
}

void SendHover(QWidget& widget, const QPoint& point, Qt::KeyboardModifiers modifiers) {
  SendMouse(widget, point, Qt::NoButton, Qt::NoButton, QEvent::MouseMove, modifiers, 10);
}

void SendDrag(QWidget& widget, const QPoint& from, const QPoint& to, int steps,
              Qt::KeyboardModifiers modifiers) {
  const QPointer<QWidget> alive(&widget);
  Press(widget, from, Qt::LeftButton, modifiers, 2 * QApplication::doubleClickInterval());
  for (int i = 1; i <= steps && alive; ++i)
    SendMouse(*alive, from + (to - from) * i / steps, Qt::LeftButton, Qt::NoButton,
              QEvent::MouseMove, modifiers, 10);
  if (alive)
    SendMouse(*alive, to, Qt::NoButton, Qt::LeftButton, QEvent::MouseButtonRelease, modifiers, 10);
}

bool SendFiles(QWidget& widget, const QStringList& paths) {
  QMimeData data;
  QList<QUrl> urls;
  for (const QString& path : paths)
    urls.append(QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath()));
  data.setUrls(urls);
  const QPoint place = widget.rect().center();
  QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&widget, &enter);
  if (!enter.isAccepted()) return false;
  QDropEvent drop(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&widget, &drop);
  return true;
}

void SendWheel(QWidget& widget, const QPoint& point, int steps, Qt::KeyboardModifiers modifiers) {
  const QPointer<QWidget> alive(&widget);
  for (int i = 0; i < qAbs(steps) && alive; ++i) {
    QWidget* under = alive->childAt(point);
    if (!under) under = alive;
    const QPoint global = alive->mapToGlobal(point);
    QWheelEvent event(under->mapFromGlobal(global), global, {}, {0, steps > 0 ? 120 : -120},
                      Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
    QApplication::sendEvent(under, &event);
  }
}

void SendText(const QString& text) {
  for (const QChar letter : text) {
    int key = letter.toUpper().unicode();
    if (letter == '\n') key = Qt::Key_Return;
    if (letter == '\t') key = Qt::Key_Tab;
    SendKey(key, letter.isUpper() ? Qt::ShiftModifier : Qt::NoModifier, letter);
  }
}

bool SendKeys(const QString& keys) {
  const QKeySequence sequence = QKeySequence::fromString(keys, QKeySequence::PortableText);
  if (sequence.isEmpty() || sequence[0] == Qt::Key_unknown) return false;
  for (int i = 0; i < sequence.count(); ++i) {
    const int key = sequence[static_cast<uint>(i)] & ~static_cast<int>(Qt::KeyboardModifierMask);
    const Qt::KeyboardModifiers modifiers(sequence[static_cast<uint>(i)] &
                                          static_cast<int>(Qt::KeyboardModifierMask));
    const bool letter = key >= Qt::Key_Space && key <= Qt::Key_ydiaeresis &&
                        !(modifiers & (Qt::ControlModifier | Qt::AltModifier));
    QString text = letter ? QString(QChar(key)).toLower() : QString();
    if (modifiers & Qt::ShiftModifier) text = text.toUpper();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) text = "\r";
    SendKey(key, modifiers, text);
  }
  return true;
}

bool SendModifier(const QString& name, bool isDown) {
  const Qt::KeyboardModifiers modifier = ModifiersOf(name);
  const int key = modifier == Qt::ControlModifier ? Qt::Key_Control
                  : modifier == Qt::ShiftModifier ? Qt::Key_Shift
                                                  : Qt::Key_Alt;
  QWindow* window = KeyWindow();
  if (modifier == Qt::NoModifier || !window) return false;
  // An event's modifiers are those of before it.
  qt_handleKeyEvent(window, isDown ? QEvent::KeyPress : QEvent::KeyRelease, key,
                    isDown ? Qt::NoModifier : modifier, {}, false, 1);
  return true;
}

Qt::KeyboardModifiers ModifiersOf(const QString& text) {
  Qt::KeyboardModifiers modifiers = Qt::NoModifier;
  for (const QString& word : text.toLower().split('+')) {
    if (word == "ctrl") modifiers |= Qt::ControlModifier;
    if (word == "shift") modifiers |= Qt::ShiftModifier;
    if (word == "alt") modifiers |= Qt::AltModifier;
  }
  return modifiers;
}

}  // namespace orv::app
