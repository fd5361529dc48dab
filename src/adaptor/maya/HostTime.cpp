#include "adaptor/maya/HostTime.h"

#include <cmath>

namespace orv::rws::adaptor::maya {

double FrameRateOf(MTime::Unit unit) {
  // By the units' numbers, from hours up.
  static constexpr double kRates[] = {0.0,
                                      0.0002777777777777778,
                                      0.016666666666666666,
                                      1,
                                      1000,
                                      15,
                                      24,
                                      25,
                                      30,
                                      48,
                                      50,
                                      60,
                                      2,
                                      3,
                                      4,
                                      5,
                                      6,
                                      8,
                                      10,
                                      12,
                                      16,
                                      20,
                                      40,
                                      75,
                                      80,
                                      100,
                                      120,
                                      125,
                                      150,
                                      200,
                                      240,
                                      250,
                                      300,
                                      375,
                                      400,
                                      500,
                                      600,
                                      750,
                                      1200,
                                      1500,
                                      2000,
                                      3000,
                                      6000};
  switch (unit) {
    case MTime::k23_976FPS:
      return 24000.0 / 1001.0;
    case MTime::k29_97FPS:
    case MTime::k29_97DF:
      return 30000.0 / 1001.0;
    case MTime::k47_952FPS:
      return 48000.0 / 1001.0;
    case MTime::k59_94FPS:
      return 60000.0 / 1001.0;
    case MTime::k44100FPS:
      return 44100.0;
    case MTime::k48000FPS:
      return 48000.0;
    default:
      break;
  }
  const auto index = static_cast<std::size_t>(unit);
  return index < sizeof(kRates) / sizeof(kRates[0]) ? kRates[index] : 0.0;
}

MTime ToHostTime(double seconds) {
  const MTime::Unit unit = MTime::uiUnit();
  const double rate = FrameRateOf(unit);
  const double frame = std::round(seconds * rate);
  const double halfTick = 0.5 / MTime::ticksPerSecond();
  if (rate > 0.0 && std::abs(seconds - frame / rate) < halfTick) return MTime(frame, unit);
  return MTime(seconds, MTime::kSeconds);
}

double ToSeconds(const MTime& time) {
  const double rate = FrameRateOf(MTime::uiUnit());
  const double seconds = time.as(MTime::kSeconds);
  if (!(rate > 0.0)) return seconds;
  const double frame = std::round(seconds * rate);
  const double halfTick = 0.5 / MTime::ticksPerSecond();
  return std::abs(seconds - frame / rate) < halfTick ? frame * (1.0 / rate) : seconds;
}

}  // namespace orv::rws::adaptor::maya
