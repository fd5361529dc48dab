// DirectInput 8 as the driver uses it.
#pragma once

#define DIRECTINPUT_VERSION 0x0800
#include "util/win32/Windows.h"
// After Windows' own header.
#include <dinput.h>

#include <memory>
#include <string>

namespace orv::unidevice {

struct ComRelease {
  void operator()(IUnknown* object) const { object->Release(); }
};

/// Holder of one reference to a COM object.
template <typename T>
using ComPointer = std::unique_ptr<T, ComRelease>;

/// Null, with `problem` filled, when the system gives none.
ComPointer<IDirectInput8W> openDirectInput(std::string& problem);

}  // namespace orv::unidevice
