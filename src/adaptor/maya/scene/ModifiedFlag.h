// Whether the scene counts as changed.
#pragma once

namespace orv::rws::adaptor::maya {

/// Keeps the host's flag as it found it: what we add to a scene around a save is no change of the
/// user's.
class ModifiedFlag {
 public:
  ModifiedFlag() : m_before(IsSet()) {}
  ~ModifiedFlag() { Set(m_before); }
  ModifiedFlag(const ModifiedFlag&) = delete;
  ModifiedFlag& operator=(const ModifiedFlag&) = delete;

  static bool IsSet();
  static void Set(bool modified);

 private:
  bool m_before;
};

}  // namespace orv::rws::adaptor::maya
