#include "unidevice/win32/ScanCodes.h"

namespace orv::unidevice {

namespace {

struct Place {
  ScanCode scan;
  int keyCode;
};

/// Up to here both number alike, except as the table says.
constexpr int kLastAlike = 0x58;

/// For a code that stands twice, the first is the one that the key has by itself.
constexpr Place kOthers[] = {
    {{0x1C, true}, 96},   {{0x1D, true}, 97},   {{0x35, true}, 98},   {{0x36, true}, 54},
    {{0x37, true}, 99},   {{0x38, true}, 100},  {{0x45, true}, 69},   {{0x47, true}, 102},
    {{0x48, true}, 103},  {{0x49, true}, 104},  {{0x4B, true}, 105},  {{0x4D, true}, 106},
    {{0x4F, true}, 107},  {{0x50, true}, 108},  {{0x51, true}, 109},  {{0x52, true}, 110},
    {{0x53, true}, 111},  {{0x5B, true}, 125},  {{0x5C, true}, 126},  {{0x5D, true}, 127},
    {{0x45, false}, 119}, {{0x46, true}, 119},  {{0x54, false}, 99},  {{0x55, false}, -1},
    {{0x59, false}, 117}, {{0x7E, false}, 121}, {{0x64, false}, 183}, {{0x65, false}, 184},
    {{0x66, false}, 185}, {{0x67, false}, 186}, {{0x68, false}, 187}, {{0x69, false}, 188},
    {{0x6A, false}, 189}, {{0x6B, false}, 190}, {{0x6C, false}, 191}, {{0x6D, false}, 192},
    {{0x6E, false}, 193}, {{0x76, false}, 194}};

}  // namespace

int keyCodeOf(ScanCode scan) {
  for (const Place& place : kOthers)
    if (place.scan.code == scan.code && place.scan.extended == scan.extended) return place.keyCode;
  return !scan.extended && scan.code > 0 && scan.code <= kLastAlike ? scan.code : -1;
}

ScanCode scanCodeOf(int keyCode) {
  for (const Place& place : kOthers)
    if (place.keyCode == keyCode) return place.scan;
  return {keyCode > 0 && keyCode <= kLastAlike ? keyCode : 0, false};
}

}  // namespace orv::unidevice
