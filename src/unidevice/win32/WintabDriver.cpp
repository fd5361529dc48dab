#include "unidevice/win32/WintabDriver.h"

#include <algorithm>
#include <cmath>

#include "util/Angles.h"

namespace orv::unidevice {

namespace {

constexpr double kTenthOfDegree = util::kQuarterTurn / 900.0;
constexpr double kFullTilt = 600 * kTenthOfDegree;
constexpr int kHalfTurn = 1800;  ///< tenths of degrees

/// Where `value` lies between both ends, -1 to 1.
double along(LONG value, LONG origin, LONG extent) {
  return extent == 0 ? 0.0 : 2.0 * (static_cast<double>(value) - origin) / extent - 1.0;
}

template <typename Function>
bool find(HMODULE library, const char* name, Function& function) {
  function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
  return function != nullptr;
}

}  // namespace

bool wintab::load(Api& api, std::string& problem) {
  // Never given back: tablets' libraries leave threads behind.
  const HMODULE library = LoadLibraryW(L"Wintab32.dll");
  if (!library) {
    problem = "there is no Wintab32.dll, which a tablet's own driver brings";
    return false;
  }
  if (find(library, "WTInfoA", api.info) && find(library, "WTOpenA", api.open) &&
      find(library, "WTClose", api.close) && find(library, "WTPacket", api.packet) &&
      find(library, "WTOverlap", api.overlap))
    return true;
  problem = "Wintab32.dll lacks functions (install the tablet's driver anew)";
  return false;
}

WintabDriver::WintabDriver(const wintab::Api& api)
    : m_api(api),
      m_hidden([this](UINT message, WPARAM wide, LPARAM param) { take(message, wide, param); }) {}

WintabDriver::~WintabDriver() {
  close();
}

bool WintabDriver::activate() {
  if (m_handle) return TabletDriver::activate();
  UINT count = 0;
  if (!m_api.info(wintab::kInterface, wintab::kDeviceCount, &count) || count == 0) return false;
  if (!m_api.info(wintab::kSystemContext, 0, &m_context)) return false;
  m_context.options |= wintab::kMovesPointer | wintab::kTellsByMessages;
  m_context.messageBase = wintab::kPacketMessage;
  m_context.packetData = wintab::kPacketData;
  m_context.packetMode = 0;
  m_context.buttonUpMask = m_context.buttonDownMask;
  for (int i = 0; i < 3; ++i) {
    m_context.outOrigin[i] = m_context.inOrigin[i];
    m_context.outExtent[i] = m_context.inExtent[i];
  }
  const UINT device = wintab::kDevices + m_context.device;
  if (!m_api.info(device, wintab::kPressureAxis, &m_pressure)) m_pressure = {};
  if (!m_api.info(device, wintab::kOrientationAxes, m_orientation))
    std::fill(std::begin(m_orientation), std::end(m_orientation), wintab::Axis{});
  m_handle = m_api.open(m_hidden.handle(), &m_context, TRUE);
  m_active = isOurWindowActive();
  return m_handle && TabletDriver::activate();
}

bool WintabDriver::deactivate() {
  close();
  return TabletDriver::deactivate();
}

bool WintabDriver::update() {
  const bool active = isOurWindowActive();
  // The program that was active in between has put its own context on top.
  if (m_handle && active && !m_active) m_api.overlap(m_handle, TRUE);
  if (!active && m_active) leave();
  m_active = active;
  return TabletDriver::update();
}

void WintabDriver::close() {
  if (!m_handle) return;
  m_api.close(m_handle);
  m_handle = nullptr;
  leave();
}

void WintabDriver::take(UINT message, WPARAM wide, LPARAM param) {
  if (!m_handle) return;
  if (message == wintab::kProximityMessage && LOWORD(param) == 0) leave();
  if (message != wintab::kPacketMessage || !isOurWindowActive()) return;
  wintab::Packet packet{};
  if (m_api.packet(m_handle, static_cast<UINT>(wide), &packet)) setPen(penOf(packet));
}

PenState WintabDriver::penOf(const wintab::Packet& packet) const {
  PenState pen;
  pen.x = along(packet.x, m_context.outOrigin[0], m_context.outExtent[0]);
  pen.y = along(packet.y, m_context.outOrigin[1], m_context.outExtent[1]);
  const double range = static_cast<double>(m_pressure.most) - m_pressure.least;
  if (range > 0.0) pen.pressure = (static_cast<double>(packet.pressure) - m_pressure.least) / range;
  if (m_orientation[0].resolution && m_orientation[1].resolution) {
    const double azimuth = packet.azimuth * kTenthOfDegree;
    const double altitude = std::abs(packet.altitude) * kTenthOfDegree;
    const double aside = std::cos(altitude);
    pen.tiltX = std::atan2(std::sin(azimuth) * aside, std::sin(altitude)) / kFullTilt;
    pen.tiltY = std::atan2(std::cos(azimuth) * aside, std::sin(altitude)) / kFullTilt;
  }
  if (m_orientation[2].resolution) {
    const int twist = packet.twist % (2 * kHalfTurn);
    pen.twist = static_cast<double>(twist > kHalfTurn ? twist - 2 * kHalfTurn : twist) / kHalfTurn;
  }
  pen.tip = (packet.buttons & 1) != 0;
  pen.firstButton = (packet.buttons & 2) != 0;
  pen.secondButton = (packet.buttons & 4) != 0;
  pen.isNear = true;
  return pen;
}

}  // namespace orv::unidevice
