#include "unidevice/x11/X11Keys.h"

#include <X11/Xlib.h>
#include <X11/extensions/XInput2.h>

#include <utility>

namespace orv::unidevice {

namespace {

/// X numbers keys from 8 on, so that 8 is number 0 of the kernel's.
constexpr int kFirstKeyCode = 8;

}  // namespace

struct X11Keys::Server {
  ~Server() {
    if (display) XCloseDisplay(display);
  }
  Display* display = nullptr;
  int opcode = 0;  ///< of the extension
};

std::unique_ptr<X11Keys> X11Keys::open(const std::string& display, std::string& problem) {
  auto server = std::make_unique<Server>();
  server->display = XOpenDisplay(display.empty() ? nullptr : display.c_str());
  if (!server->display) {
    problem = "the display can't be opened";
    return nullptr;
  }
  int event = 0, error = 0, major = 2, minor = 1;
  const bool there =
      XQueryExtension(server->display, "XInputExtension", &server->opcode, &event, &error) &&
      XIQueryVersion(server->display, &major, &minor) == 0;
  // From 2.1 on raw events come also while a program has grabbed the keyboard, as an open menu
  // does.
  if (!there || major * 100 + minor < 201) {
    problem = "the display has no XInput 2.1";
    return nullptr;
  }
  return std::unique_ptr<X11Keys>(new X11Keys(std::move(server)));
}

X11Keys::X11Keys(std::unique_ptr<Server> server) : m_server(std::move(server)) {}

X11Keys::~X11Keys() = default;

void X11Keys::listen(bool on) {
  unsigned char bits[XIMaskLen(XI_LASTEVENT)] = {};
  if (on) {
    XISetMask(bits, XI_RawKeyPress);
    XISetMask(bits, XI_RawKeyRelease);
  }
  XIEventMask mask{XIAllMasterDevices, sizeof bits, bits};
  XISelectEvents(m_server->display, DefaultRootWindow(m_server->display), &mask, 1);
  XSync(m_server->display, on ? False : True);  // at the end what has not been read is dropped
  m_begun = on;
}

void X11Keys::poll(const Tell& tell) {
  // Keys that change after the events were asked for and before this are told twice, to the same
  // effect in the end.
  if (std::exchange(m_begun, false)) tellHeld(tell);
  while (XPending(m_server->display) > 0) {
    XEvent event;
    XNextEvent(m_server->display, &event);
    XGenericEventCookie& cookie = event.xcookie;
    if (cookie.type != GenericEvent || cookie.extension != m_server->opcode) continue;
    if (!XGetEventData(m_server->display, &cookie)) continue;
    const auto& raw = *static_cast<const XIRawEvent*>(cookie.data);
    tell(raw.detail - kFirstKeyCode, cookie.evtype == XI_RawKeyPress);
    XFreeEventData(m_server->display, &cookie);
  }
}

void X11Keys::tellHeld(const Tell& tell) {
  char keys[32] = {};
  XQueryKeymap(m_server->display, keys);
  for (int key = kFirstKeyCode; key < 256; ++key)
    if (keys[key / 8] & (1 << (key % 8))) tell(key - kFirstKeyCode, true);
}

}  // namespace orv::unidevice
