// Wintab, the interface of drawing tablets: as much of it as the driver uses, by its public
// description.
#pragma once

#include <string>

#include "util/win32/Windows.h"

namespace orv::unidevice::wintab {

// Categories and indices of `info`.
inline constexpr UINT kInterface = 1, kDeviceCount = 4;
inline constexpr UINT kSystemContext = 4;
inline constexpr UINT kDevices = 100, kPressureAxis = 15, kOrientationAxes = 17;

// Options of a context: it moves the pointer too, and tells its packets by messages.
inline constexpr UINT kMovesPointer = 1, kTellsByMessages = 4;

// What a packet holds; it lies there in this order.
inline constexpr DWORD kButtons = 0x40, kX = 0x80, kY = 0x100, kPressure = 0x400,
                       kOrientation = 0x1000;
inline constexpr DWORD kPacketData = kButtons | kX | kY | kPressure | kOrientation;

// Messages, counted from the base that contexts have by themselves.
inline constexpr UINT kPacketMessage = 0x7FF0;     ///< serial number, context
inline constexpr UINT kProximityMessage = 0x7FF5;  ///< context, 0 in the low word: the pen has left

using Handle = HANDLE;  ///< of a context
using Fix32 = DWORD;    ///< 16 bits before and behind the point

struct Context {
  char name[40];
  UINT options, status, locks, messageBase, device, packetRate;
  DWORD packetData, packetMode, moveMask, buttonDownMask, buttonUpMask;
  LONG inOrigin[3], inExtent[3], outOrigin[3], outExtent[3];
  Fix32 sensitivity[3];
  BOOL systemMode;
  int systemOrigin[2], systemExtent[2];
  Fix32 systemSensitivity[2];
};

static_assert(sizeof(Context) == 172, "as the library has it");

struct Axis {
  LONG least, most;
  UINT units;
  Fix32 resolution;  ///< 0 where the tablet does not measure it
};

struct Packet {
  DWORD buttons;
  LONG x, y;
  UINT pressure;
  /// Tenths of degrees: clockwise from the far side, up from the tablet (negative for the pen's
  /// other end), clockwise.
  int azimuth, altitude, twist;
};

/// The functions of a tablet's library.
struct Api {
  UINT(WINAPI* info)(UINT category, UINT index, void* output) = nullptr;
  Handle(WINAPI* open)(HWND window, Context* context, BOOL enabled) = nullptr;
  BOOL(WINAPI* close)(Handle context) = nullptr;
  BOOL(WINAPI* packet)(Handle context, UINT serial, void* packet) = nullptr;
  BOOL(WINAPI* overlap)(Handle context, BOOL toTop) = nullptr;
};

/// Wintab32.dll, which comes with a tablet. False, with `problem` filled, where there is none.
bool load(Api& api, std::string& problem);

}  // namespace orv::unidevice::wintab
