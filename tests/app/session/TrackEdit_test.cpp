// Edits of recorded inputs.
#include "app/session/anyhost/TrackEdit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace orv::tests {
namespace {

using app::TrackEdit;
using Track = TrackEdit::Track;

constexpr double kFrame = 0.04;

TEST(TrackEdit, LeavesWhatLiesOutsideAndDoesWhatItSays) {
  std::mt19937 random(7);
  const auto some = [&random](double from, double to) {
    return std::uniform_real_distribution<double>(from, to)(random);
  };
  for (int round = 0; round < 400; ++round) {
    // On the frames, between them, sparse, or nothing at all.
    Track track;
    const double step = round % 4 == 0 ? kFrame : some(0.01, 0.5);
    for (double t = 0.0; round % 10 && t < 8.0; t += step) track.set(t, some(-1.0, 1.0));
    Track other;
    other.set(0.0, 0.25);
    TrackEdit edit;
    edit.kind = static_cast<TrackEdit::Kind>(round % 6);
    edit.span.from = some(0.0, 5.0);
    edit.span.to = edit.span.from + some(0.0, 4.0);
    edit.amount = some(0.05, 1.0);
    edit.about = some(-1.0, 1.0);
    edit.fade = round % 3 ? 0.0 : some(0.0, 1.0);
    edit.other = &other;
    edit.points = {{edit.span.from, 0.5}, {edit.span.to, -0.5}};
    const Track edited = EditTrack(track, edit, kFrame);
    for (std::size_t i = 1; i < edited.samples.size(); ++i)
      ASSERT_LT(edited.samples[i - 1].time, edited.samples[i].time);
    for (long i = -5; i < 260; ++i) {
      const double t = static_cast<double>(i) * kFrame;
      const double old = track.value(t), now = edited.value(t);
      if (t < edit.span.from || t > edit.span.to) {
        ASSERT_EQ(now, old) << round << " at " << t;
        continue;
      }
      double wanted = now;
      switch (edit.kind) {
        case TrackEdit::Kind::kSmooth:
          EXPECT_LE(std::abs(now), 1.0 + 1e-12);
          break;
        case TrackEdit::Kind::kShift:
          wanted = track.value(std::max(t - edit.amount, edit.span.from));
          break;
        case TrackEdit::Kind::kScale:
          wanted = edit.about + edit.amount * (old - edit.about);
          break;
        case TrackEdit::Kind::kCut:
          wanted = 0.0;
          break;
        case TrackEdit::Kind::kBlend:
          wanted = 0.25;
          break;
        case TrackEdit::Kind::kDraw:
          wanted = 0.5 - (t - edit.span.from) / (edit.span.to - edit.span.from);
          break;
      }
      if (edit.fade > 0.0)
        EXPECT_TRUE((now - old) * (now - wanted) <= 1e-12) << "between both";
      else
        EXPECT_NEAR(now, wanted, 1e-9) << round << " at " << t;
    }
  }
}

TEST(TrackEdit, ABellTakesNoiseAndKeepsLines) {
  Track line, noise;
  for (int i = 0; i < 400; ++i) {
    line.set(i * kFrame, 0.05 * i * kFrame);
    noise.set(i * kFrame, i % 2 ? 0.5 : -0.5);
  }
  TrackEdit edit;
  edit.amount = 0.1;
  edit.span = {4.0, 10.0};
  for (int i = 110; i < 240; ++i) {
    EXPECT_NEAR(EditTrack(line, edit, kFrame).value(i * kFrame), 0.05 * i * kFrame, 1e-12);
    EXPECT_LT(std::abs(EditTrack(noise, edit, kFrame).value(i * kFrame)), 1e-5);
  }
}

}  // namespace
}  // namespace orv::tests
