// The pictures behind cameras, as files.
#pragma once

#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "adaptor/headless/SceneMedia.h"
#include "app/studio/view/packet/FramePacket.h"
#include "util/Sentence.h"

namespace orv::app::view {

/// Why a file can't stand behind a camera, empty when it can.
util::Sentence CheckPicture(const std::string& file);

/// Decodes pictures when they are asked for, and ahead of that when told; keeps the latest, as many
/// as its memory holds. A file whose name has a number, and beside which others of the same name
/// with other numbers lie, is one of a sequence: before its first and behind its last these two
/// show, and where one is missing the one before it. Folders are looked through once.
class BackdropPictures {
 public:
  using Backdrop = rws::adaptor::headless::Backdrop;

  static constexpr std::size_t kMostBytes = std::size_t{192} << 20;
  static constexpr int kLongestSide = 2048;  ///< pixels; what is larger is made smaller
  static constexpr int kAhead = 3;           ///< pictures

  /// Null where there is none to show.
  std::shared_ptr<const Texture> Find(const Backdrop& backdrop, int frame);
  /// Decodes one of those that come next, as frames were asked for last; false when all are there.
  bool LoadAhead();
  /// Hands over, and forgets, what could not be read; each is told once.
  std::vector<std::string> TakeOdd() { return std::exchange(m_odd, {}); }
  std::size_t GetHeldCount() const { return m_held.size(); }

 private:
  struct Sequence {
    std::map<int, std::string> files;  ///< by number; one with any number when it is no sequence
    int chosen = 0;                    ///< number of the file that was chosen
  };
  struct Held {
    std::string file;
    std::shared_ptr<const Texture> picture;  ///< null when it can't be read
  };

  const Sequence& FindSequence(const std::string& file);
  static const std::string& FileAt(const Sequence& sequence, long number);
  std::shared_ptr<const Texture> Load(const std::string& file);
  bool IsHeld(const std::string& file) const;

  std::map<std::string, Sequence> m_sequences;  ///< by the file that was chosen
  std::list<Held> m_held;                       ///< the one that was used last is first
  std::size_t m_bytes = 0;
  Backdrop m_latest;
  int m_latestFrame = 0, m_stride = 1;
  std::vector<std::string> m_odd;
};

}  // namespace orv::app::view
