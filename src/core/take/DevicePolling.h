// How the input devices are kept awake.
#pragma once

#include <cstdint>

namespace orv::rws::core {

class CoreImplementation;

/// Devices are awake in a take, and outside of one while somebody keeps them awake, such as an
/// input dialog. Then they are polled by the core's timer, which finds those that are plugged in
/// too.
class DevicePolling {
 public:
  static constexpr int kTimer = 124;
  static constexpr double kPeriod = 1.0 / 60.0;  ///< s

  /// Keeps the devices awake while it lives, within the life of the core.
  class Wake {
   public:
    explicit Wake(CoreImplementation& core);
    ~Wake();
    Wake(const Wake&) = delete;
    Wake& operator=(const Wake&) = delete;

   private:
    CoreImplementation& m_core;
  };

  /// Says while it lives that the user moves controls to have them found: then a key is a control,
  /// and no command of a window.
  class Search {
   public:
    explicit Search(CoreImplementation& core);
    ~Search();
    Search(const Search&) = delete;
    Search& operator=(const Search&) = delete;

   private:
    CoreImplementation& m_core;
  };

  DevicePolling();
  bool IsSearched() const { return m_searches > 0; }
  void BeginTake(CoreImplementation& core);
  void EndTake();
  /// Reads all devices, and binds inputs whose control has come. Called at each frame of a take and
  /// in each tick between two.
  void Poll(CoreImplementation& core);
  /// Reads all devices; who has come or gone is told by the next Poll.
  static void Read();

 private:
  static void Activate(CoreImplementation& core);

  int m_users = 0;
  int m_searches = 0;
  std::uint64_t m_generation;  ///< of the list of devices that inputs were bound by
};

}  // namespace orv::rws::core
