// Keys that are bound in the host.
#pragma once

#include <string>

namespace orv::rws::adaptor::maya {

/// The host's own hot keys. Takes need none of them, since KeyFilter hears their keys ahead of the
/// host: only the start key is bound, and only where the user's set of hot keys can be written. The
/// keys of a take may be bound too, for a host that keeps its keys from filters.
class TakeKeys {
 public:
  enum Action : int {
    kBindStart = 1,
    kBindTake = 2,
    kRestore = 8,  ///< what the bound keys had before
  };

  TakeKeys() = default;
  ~TakeKeys();
  TakeKeys(const TakeKeys&) = delete;
  TakeKeys& operator=(const TakeKeys&) = delete;

  /// `actions` is a sum of Action. False when the host refused a key, or has no set to write to.
  bool Do(int actions);
  /// The MEL that kRestore would run.
  const std::string& GetRestoringLine() const { return m_restore; }
  /// False for the set that comes with the host, which refuses changes.
  static bool CanBind();

 private:
  bool Bind(const std::string& command, const std::string& key, const std::string& modifiers);

  std::string m_restore;
};

}  // namespace orv::rws::adaptor::maya
