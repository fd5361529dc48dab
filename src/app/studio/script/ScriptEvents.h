// What a user's hands do, as events of the window system.
#pragma once

#include <QPoint>
#include <QString>
#include <QStringList>

class QWidget;

namespace orv::app {

// Each goes the way of a real event, through the window that the widget lies in, so that popups,
// grabs, shortcuts and modal boxes have their say. A call may return late: a box or menu that it
// opens may run an event loop of its own inside.

void SendClick(QWidget& widget, const QPoint& point, Qt::MouseButton button,
               Qt::KeyboardModifiers modifiers, bool twice);
/// From one place to another in `steps` moves, both within `widget`; the mouse is let go over
/// whatever lies there.
void SendDrag(QWidget& widget, const QPoint& from, const QPoint& to, int steps,
              Qt::KeyboardModifiers modifiers);
/// Files dropped in the middle of it. False when it takes none.
bool SendFiles(QWidget& widget, const QStringList& paths);
/// The pointer comes to stand there, with no button held.
void SendHover(QWidget& widget, const QPoint& point, Qt::KeyboardModifiers modifiers);
/// Steps of the wheel, positive away from the user.
void SendWheel(QWidget& widget, const QPoint& point, int steps, Qt::KeyboardModifiers modifiers);
/// To whatever has the focus, a key a letter.
void SendText(const QString& text);
/// Such as "Ctrl+Shift+Z", "Space", "F2". False when there is no such key.
bool SendKeys(const QString& keys);
/// "Ctrl", "Shift" or "Alt", which stays down until it is let go. False for another.
bool SendModifier(const QString& name, bool isDown);

/// "ctrl+shift"; unknown words are passed over.
Qt::KeyboardModifiers ModifiersOf(const QString& text);

}  // namespace orv::app
