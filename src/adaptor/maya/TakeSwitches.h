// What of the host is off while a take runs.
#pragma once

namespace orv::rws::adaptor::maya {

/// Auto Key would key what a take puts on transforms, and Cached Playback would show the scene as
/// it was. Both come back as they were.
class TakeSwitches {
 public:
  ~TakeSwitches() { Restore(); }
  void TurnOff();
  void Restore();

 private:
  bool m_off = false;
  bool m_autoKey = false;
  bool m_cachedPlayback = false;
};

}  // namespace orv::rws::adaptor::maya
