// Hot keys behind an abstract hook.
#pragma once

#include <array>
#include <vector>

namespace orv::rws::core {

/// State of the modifier keys at a key event.
struct KeyModifiers {
  bool control = false;
  bool shift = false;
  bool alt = false;
};

/// Virtual-key codes that the core knows.
enum VirtualKey : int {
  kKeyEscape = 27,
  kKeySpace = 32,
  kKeyZ = 90,
  kKeyAdd = 107,       ///< of the number block
  kKeySubtract = 109,  ///< of the number block
  kKeyPlus = 187,
  kKeyMinus = 189,
};

/// A platform's keyboard hook. It delivers on the main thread.
class Hooks {
 public:
  /// Receiver of key events.
  class KeyEventCallback {
   public:
    virtual void OnKeyEvent(int key, bool down, const KeyModifiers& modifiers) = 0;
    virtual ~KeyEventCallback() = default;
  };

  virtual ~Hooks() = default;
  /// Starts to report keys to `callback`, which is not owned. False when the platform refuses.
  virtual bool Install(KeyEventCallback* callback) = 0;
  virtual void Uninstall() = 0;
  /// The keys that the hook watches, by virtual-key code.
  void SetWatched(const std::vector<int>& keys);
  bool IsWatched(int key) const;

 private:
  static constexpr int kKeyCount = 256;  ///< one per virtual-key code

  std::array<bool, kKeyCount> m_watched{};
};

}  // namespace orv::rws::core
