#include "gui/component/qt/InputWatch.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScreen>
#include <QTabletEvent>
#include <QTextEdit>
#include <QTimer>
#include <QWidget>
#include <QWindow>
#include <cstring>

#include "gui/InputSink.h"

namespace orv::gui::component::qt {

namespace {

bool TakesText(const QWidget* widget) {
  if (auto* line = qobject_cast<const QLineEdit*>(widget)) return !line->isReadOnly();
  if (auto* spinner = qobject_cast<const QAbstractSpinBox*>(widget)) return !spinner->isReadOnly();
  if (auto* text = qobject_cast<const QTextEdit*>(widget)) return !text->isReadOnly();
  if (auto* text = qobject_cast<const QPlainTextEdit*>(widget)) return !text->isReadOnly();
  if (auto* box = qobject_cast<const QComboBox*>(widget)) return box->isEditable();
  return false;
}

struct PlacedKey {
  int key;
  int code;
};

constexpr PlacedKey kPlaced[] = {
    {Qt::Key_Up, 103},          {Qt::Key_Down, 108},      {Qt::Key_Left, 105},
    {Qt::Key_Right, 106},       {Qt::Key_PageUp, 104},    {Qt::Key_PageDown, 109},
    {Qt::Key_Home, 102},        {Qt::Key_End, 107},       {Qt::Key_Insert, 110},
    {Qt::Key_Delete, 111},      {Qt::Key_Space, 57},      {Qt::Key_Return, 28},
    {Qt::Key_Enter, 28},        {Qt::Key_Tab, 15},        {Qt::Key_Backtab, 15},
    {Qt::Key_Escape, 1},        {Qt::Key_Backspace, 14},  {Qt::Key_CapsLock, 58},
    {Qt::Key_NumLock, 69},      {Qt::Key_ScrollLock, 70}, {Qt::Key_Shift, 42},
    {Qt::Key_Control, 29},      {Qt::Key_Alt, 56},        {Qt::Key_AltGr, 100},
    {Qt::Key_Comma, 51},        {Qt::Key_Period, 52},     {Qt::Key_Slash, 53},
    {Qt::Key_Backslash, 43},    {Qt::Key_Semicolon, 39},  {Qt::Key_Apostrophe, 40},
    {Qt::Key_Minus, 12},        {Qt::Key_Equal, 13},      {Qt::Key_BracketLeft, 26},
    {Qt::Key_BracketRight, 27}, {Qt::Key_QuoteLeft, 41},  {Qt::Key_Pause, 119},
    {Qt::Key_Print, 99},        {Qt::Key_Meta, 125},      {Qt::Key_Menu, 127}};

constexpr PlacedKey kPlacedOnPad[] = {
    {Qt::Key_Plus, 78},   {Qt::Key_Minus, 74}, {Qt::Key_Asterisk, 55}, {Qt::Key_Slash, 98},
    {Qt::Key_Period, 83}, {Qt::Key_Comma, 83}, {Qt::Key_Enter, 96},    {Qt::Key_Equal, 117}};

template <std::size_t N>
int FindPlaced(const PlacedKey (&table)[N], int key) {
  for (const PlacedKey& placed : table)
    if (placed.key == key) return placed.code;
  return -1;
}

int CodeOnUsKeyboard(int key, bool pad) {
  // By rows, as they stand.
  static constexpr struct {
    const char* keys;
    int first;
  } kRows[] = {{"1234567890", 2}, {"QWERTYUIOP", 16}, {"ASDFGHJKL", 30}, {"ZXCVBNM", 44}};
  static constexpr int kPadDigits[] = {82, 79, 80, 81, 75, 76, 77, 71, 72, 73};
  if (pad && key >= Qt::Key_0 && key <= Qt::Key_9) return kPadDigits[key - Qt::Key_0];
  if (pad && FindPlaced(kPlacedOnPad, key) >= 0) return FindPlaced(kPlacedOnPad, key);
  if (key >= Qt::Key_F1 && key <= Qt::Key_F24) {
    const int number = key - Qt::Key_F1 + 1;
    return number <= 10 ? 58 + number : number <= 12 ? 76 + number : 170 + number;
  }
  if (key > 0 && key < 128)
    for (const auto& row : kRows)
      if (const char* at = std::strchr(row.keys, key))
        return row.first + static_cast<int>(at - row.keys);
  return FindPlaced(kPlaced, key);
}

}  // namespace

int KeyCodeOf(const QKeyEvent& event) {
#if defined(Q_OS_LINUX)
  // X and Wayland number keys from 8 on.
  if (event.nativeScanCode() >= 8) return static_cast<int>(event.nativeScanCode()) - 8;
#endif
  return CodeOnUsKeyboard(event.key(), event.modifiers() & Qt::KeypadModifier);
}

InputWatch::InputWatch(InputSink& sink) : m_sink(sink) {
  QApplication::instance()->installEventFilter(this);
  connect(qApp, &QGuiApplication::focusWindowChanged, this, [this] { TellState(); });
  connect(qApp, &QApplication::focusChanged, this, [this] { TellState(); });
}

void InputWatch::TellState() {
  m_sink.OnTyping(QApplication::activePopupWidget() || TakesText(QApplication::focusWidget()));
  m_sink.OnActive(QGuiApplication::focusWindow() != nullptr);
}

void InputWatch::LeaveTextField() {
  QWidget* const focus = QApplication::focusWidget();
  if (TakesText(focus)) focus->clearFocus();
}

bool InputWatch::eventFilter(QObject* receiver, QEvent* event) {
  switch (event->type()) {
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
      return OnKey(*static_cast<QKeyEvent*>(event));
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
      // It comes to the window first, and then to the widgets in it.
      if (const auto* window = qobject_cast<QWindow*>(receiver))
        OnPen(*window, *static_cast<QTabletEvent*>(event));
      return false;
    case QEvent::TabletLeaveProximity:
      m_sink.OnPenGone();
      return false;
    case QEvent::Show:
    case QEvent::Hide: {
      // A menu, or the list of a box; it is the open one when this is done.
      const auto* widget = qobject_cast<QWidget*>(receiver);
      if (widget && widget->windowType() == Qt::Popup)
        QTimer::singleShot(0, this, [this] { TellState(); });
      return false;
    }
    default:
      return false;
  }
}

void InputWatch::OnPen(const QWindow& window, const QTabletEvent& event) {
  PenEvent pen;
  const auto part = [](double at, double length) { return length > 0.0 ? at / length : 0.0; };
  pen.left = part(event.posF().x(), window.width());
  pen.top = part(event.posF().y(), window.height());
  if (const QScreen* screen = window.screen()) {
    const QRect all = screen->virtualGeometry();
    pen.screenLeft = part(event.globalPosF().x() - all.x(), all.width());
    pen.screenTop = part(event.globalPosF().y() - all.y(), all.height());
  }
  pen.tiltRight = event.xTilt();
  pen.tiltNear = event.yTilt();
  pen.twist = event.rotation();
  pen.tip = event.buttons() & Qt::LeftButton;
  // Some tablets keep telling the last pressure of a pen that is lifted.
  pen.pressure = pen.tip ? event.pressure() : 0.0;
  pen.firstButton = event.buttons() & Qt::RightButton;
  pen.secondButton = event.buttons() & Qt::MiddleButton;
  m_sink.OnPen(pen);
}

bool InputWatch::OnKey(QKeyEvent& event) {
  const int code = KeyCodeOf(event);
  if (code < 0) return false;
  const bool down = event.type() != QEvent::KeyRelease;
  if (event.isAutoRepeat()) return m_taken.count(code) != 0;
  // One press comes as an override and then as a press, to the window and then to its widget.
  const bool taken = m_sink.OnKey(code, down);
  if (!down) return m_taken.erase(code) != 0;
  if (!taken) return m_taken.erase(code), false;
  m_taken.insert(code);
  event.accept();
  return true;
}

}  // namespace orv::gui::component::qt
