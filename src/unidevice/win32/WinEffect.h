// Force feedback through DirectInput. Internal to its driver.
#pragma once

#include <memory>
#include <vector>

#include "unidevice/ParameterEffect.h"
#include "unidevice/win32/DirectInput.h"

namespace orv::unidevice {

/// A device's DirectInput object. Device and effects share it; after `close` it is gone, so an
/// effect that outlives its device does no harm.
class WinForce {
 public:
  explicit WinForce(ComPointer<IDirectInputDevice8W> device);

  /// Null after `close`.
  IDirectInputDevice8W* device() const { return m_device.get(); }

  /// True if the device can push.
  bool canPlay() const { return m_device && !m_axes.empty(); }
  /// Object ids of the axes that can push, two at most.
  const std::vector<DWORD>& axes() const { return m_axes; }

  /// Begins to read the device, also while other programs are active. `window` is one of ours.
  bool acquire(HWND window);
  /// Takes the device for us alone, as forces need it. Done by the first effect.
  bool takeOver();
  void close();

 private:
  ComPointer<IDirectInputDevice8W> m_device;
  std::vector<DWORD> m_axes;
  HWND m_window = nullptr;
  bool m_alone = false;
};

/// An effect in DirectInput's terms. It points into itself.
struct EffectBlock {
  EffectBlock(FFKind kind, const EffectParameters& parameters, const std::vector<DWORD>& axes);
  EffectBlock(const EffectBlock&) = delete;
  EffectBlock& operator=(const EffectBlock&) = delete;

  DIEFFECT effect{};
  DWORD axes[2] = {};
  LONG direction[2] = {};
  DICONSTANTFORCE constant{};
  DIPERIODIC periodic{};
  DICONDITION conditions[2] = {};
};

/// Null if the device has no such effect.
std::unique_ptr<FFEffect> createWinEffect(const std::shared_ptr<WinForce>& force, FFKind kind,
                                          double direction);

}  // namespace orv::unidevice
