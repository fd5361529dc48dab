// The keyboard as an input device.
#pragma once

#include <functional>
#include <memory>
#include <set>

#include "unidevice/Driver.h"
#include "unidevice/keyboard/KeySource.h"

namespace orv::unidevice {

class KeyboardDevice;

/// Driver of the device "Keyboard". Keys count only while the devices are awake, one of the
/// program's windows is the active one and no text is being typed; otherwise all of them are up, so
/// that a key which is held while the focus goes elsewhere is let go. The program tells the last
/// two, and the keys themselves where there is no KeySource. Main thread only.
class KeyboardDriver : public Driver {
 public:
  static constexpr const char* kName = "keyboard";

  /// `source` may be null: then keys come by `setKey`.
  explicit KeyboardDriver(std::unique_ptr<KeySource> source = {});
  ~KeyboardDriver() override;

  /// A key of one of our windows went down or up. Without effect where there is a source.
  void setKey(int code, bool down);
  /// Whether one of our windows is the active one; at first none is.
  void setActive(bool active);
  /// Whether keys are text, or choose in a menu.
  void setTyping(bool typing);

  /// Whether keys count now.
  bool isListening() const { return m_awake && m_active && !m_typing; }
  /// Whether something is bound to the key of this code.
  bool isMapped(int code) const;

  bool activate() override;
  bool deactivate() override;

  /// Brings what the source tells to the controls; part of `update`.
  void poll();

  std::function<void()> onActivate;  ///< called by `activate`; may be empty

 private:
  void listen();
  void show(int code, bool down);

  std::unique_ptr<KeySource> m_source;
  KeyboardDevice* m_device;
  std::set<int> m_held;  ///< codes of keys that are down, as far as told
  bool m_awake = false, m_active = false, m_typing = false;
  bool m_listening = false;  ///< what `listen` has seen last
};

}  // namespace orv::unidevice
