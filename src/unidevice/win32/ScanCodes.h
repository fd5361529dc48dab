// Keys as Windows numbers them.
#pragma once

namespace orv::unidevice {

/// The number of a place on the keyboard.
struct ScanCode {
  int code = 0;           ///< of set 1, without the byte ahead of it
  bool extended = false;  ///< that byte is E0
};

/// As Key::code; -1 for what is no key of ours. Windows' own numbers for what it makes of others,
/// such as the control key that comes with AltGr, lie above all codes.
int keyCodeOf(ScanCode scan);

/// The other way; `code` 0 if there is none.
ScanCode scanCodeOf(int keyCode);

}  // namespace orv::unidevice
