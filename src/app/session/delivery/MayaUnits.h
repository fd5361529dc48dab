// Times and names as Maya's files have them.
#pragma once

#include <array>
#include <set>
#include <string>
#include <vector>

namespace orv::app {

struct SampledNode;
struct SampledPose;
struct SampledScene;

/// The unit of a file's times: frames of a rate that has a name, else seconds.
class MayaTime {
 public:
  explicit MayaTime(const SampledScene& scene);

  const std::string& GetName() const { return m_name; }
  /// Time of a frame, counted from the first.
  double At(long frame) const {
    return m_isFrames ? static_cast<double>(m_first + frame)
                      : static_cast<double>(m_first + frame) * m_duration;
  }

 private:
  std::string m_name = "sec";
  bool m_isFrames = false;
  long m_first;
  double m_duration;  ///< s
};

/// One of the nine animated channels of a transform.
struct MayaChannel {
  const char* group;    ///< "translate"
  const char* name;     ///< "translateX"
  const char* letters;  ///< "tx"
  enum Kind { kLength, kAngle, kFactor } kind;
  int axis;  ///< 0 to 2

  double Of(const SampledPose& pose) const;
};
const std::array<MayaChannel, 9>& MayaChannels();

/// The frames, counted from the first, that tell a channel: all, the two ends of one that rests
/// while its node moves, or the first of a node that stands still.
std::vector<long> KeyedFrames(const SampledScene& scene, const SampledNode& node,
                              const MayaChannel& channel);

/// What an empty scene holds; a node of such a name would be taken for that.
std::set<std::string> MayaOwnNames();

inline constexpr double kCentimetres = 100.0;  ///< in a metre
inline constexpr double kMillimetresPerInch = 25.4;

}  // namespace orv::app
