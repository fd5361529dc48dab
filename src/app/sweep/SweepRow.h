// What one variant of a sweep came to.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orv::app {

/// What is measured of each row, in the order of the table's columns. A measure that the rig has
/// no answer to stays empty.
enum SweepMeasure : std::size_t {
  kSweepLength,   ///< m along the chief node's path
  kSweepSpeed,    ///< m/s, the highest
  kSweepAir,      ///< s during which no wheel or step carries anything
  kSweepLean,     ///< degrees, the largest between the chief node's up and that of its first frame
  kSweepNear,     ///< m, the least distance of the chief node to the plan's node
  kSweepSlip,     ///< m/s, the highest of what touches the ground
  kSweepSlipped,  ///< m that what touches the ground has slipped, the mean of all
  kSweepMeasures
};

/// Names by which a pick calls them, and headings of the table with their units.
struct SweepMeasureName {
  const char* name;
  const char* heading;
};
inline constexpr std::array<SweepMeasureName, kSweepMeasures> kSweepMeasureNames{
    {{"length", "length (m)"},
     {"speed", "top speed (m/s)"},
     {"air", "air time (s)"},
     {"lean", "largest lean (degrees)"},
     {"near", "least distance (m)"},
     {"slip", "highest slip (m/s)"},
     {"slipped", "slipped (m)"}}};

using SweepMeasureValues = std::array<std::optional<double>, kSweepMeasures>;

struct SweepRow {
  long number = 0;
  SweepMeasureValues measures;
  std::vector<std::pair<double, double>> path;  ///< across and along the ground (m), some points
  std::string error;                            ///< why there are no measures; else empty
  bool picked = true;

  std::string ToText() const;
  /// Empty for a text that is no row.
  static std::optional<SweepRow> FromText(const std::string& text);
};

}  // namespace orv::app
