// What the controls of devices have read in a take, and when.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace orv::unidevice {
class Control;
}

namespace orv::rws::core {

/// A frame may be stepped later than it fell due, such as behind a picture or with others at once.
/// So that it takes what its inputs were then, each poll is noted here with the time of the take's
/// clock (s), and controls are put back for the frame's step. Of hardware alone: what plays a file
/// follows the frames by itself, and what programs set in "dummydriver" has no time.
///
/// Control pointers are good from one note to the next, within which no device goes.
class InputHistory {
 public:
  /// Controls read what they did at a time for as long as this lives.
  class AsOf {
   public:
    AsOf(const InputHistory& history, double clock);
    ~AsOf();
    AsOf(const AsOf&) = delete;
    AsOf& operator=(const AsOf&) = delete;

   private:
    std::vector<std::pair<unidevice::Control*, double>> m_now;  ///< of those that read otherwise
  };

  void Clear();
  /// Notes what all controls read now. A time before that of the latest note counts as that one.
  void Note(double clock);
  /// Forgets what no frame that falls due at `clock` or later can ask for.
  void DropBefore(double clock);
  /// Hands over, and forgets, the times up to `clock` at which controls that something is mapped to
  /// were found moved; only the latest few thousand are kept.
  std::vector<double> TakeMoves(double clock);

 private:
  struct Moment {
    double clock = 0.0, value = 0.0;
  };
  struct Track {
    unidevice::Control* control = nullptr;
    std::vector<Moment> moments;  ///< never empty; only changes
  };

  static std::size_t MomentAt(const Track& track, double clock);
  bool NoteControl(std::size_t index, unidevice::Control& control, double clock);

  std::vector<Track> m_tracks;  ///< in the order of drivers, devices and controls
  std::vector<double> m_moves;
  double m_latest = 0.0;
  bool m_isEmpty = true;
  std::uint64_t m_generation = 0;  ///< of the list of devices that m_tracks are of
};

}  // namespace orv::rws::core
