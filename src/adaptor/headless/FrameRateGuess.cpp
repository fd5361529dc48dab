#include "adaptor/headless/FrameRateGuess.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "adaptor/headless/FrameRate.h"
#include "adaptor/headless/Scene.h"

namespace orv::rws::adaptor::headless {

namespace {

/// Different key times that a guess needs.
constexpr std::size_t kFewest = 3;
/// Frames per second, the likeliest first, the whole ones before the others.
constexpr double kCommonRates[] = {25.0,
                                   24.0,
                                   30.0,
                                   48.0,
                                   50.0,
                                   60.0,
                                   90.0,
                                   100.0,
                                   120.0,
                                   240.0,
                                   24000.0 / 1001.0,
                                   30000.0 / 1001.0,
                                   48000.0 / 1001.0,
                                   60000.0 / 1001.0,
                                   120000.0 / 1001.0};
constexpr std::size_t kWholeRates = 10;

}  // namespace

std::vector<double> FrameRateGuess::Rivals() const {
  std::vector<double> result;
  for (const double rate : rates) {
    const double factor = rate / rates.front();
    if (std::abs(factor - std::round(factor)) > 1e-9) result.push_back(rate);
  }
  return result;
}

FrameRateGuess GuessFrameRate(const Scene& scene) {
  FrameRateGuess guess;
  guess.rates.assign(std::begin(kCommonRates), std::end(kCommonRates));
  std::set<const double*> seen;  // channels share their times
  std::vector<double> few;       // different times, no more than are asked for
  for (const SceneNode* node : scene.GetNodes()) {
    for (const ChannelPath path :
         {ChannelPath::kTranslation, ChannelPath::kRotation, ChannelPath::kScale}) {
      const Channel* channel = node->GetChannel(path);
      if (!channel || !seen.insert(channel->GetTimes().data()).second) continue;
      for (const double time : channel->GetTimes()) {
        if (few.size() < kFewest && std::find(few.begin(), few.end(), time) == few.end())
          few.push_back(time);
        guess.rates.erase(
            std::remove_if(guess.rates.begin(), guess.rates.end(),
                           [time](double rate) { return !StandsOnFrame(time, rate); }),
            guess.rates.end());
      }
    }
  }
  const bool fitsAllWhole =
      guess.rates.size() >= kWholeRates &&
      std::equal(kCommonRates, kCommonRates + kWholeRates, guess.rates.begin());
  guess.tells = few.size() >= kFewest && !fitsAllWhole;
  return guess;
}

}  // namespace orv::rws::adaptor::headless
