// What undo does to a crawler beside its nodes, which come and go by steps of their own.
#pragma once

#include <utility>

#include "core/interface/CUndo.h"
#include "plugins/release/crawlertracks/CrawlerTrack.h"

namespace orv::rws::addon {

/// A track was made. To be pushed behind the steps of its nodes, so that a redo finds them. The rig
/// must outlive the step's use; the core drops steps whose rig is gone.
class BulletTrackCreationUndo : public CUndo {
 public:
  BulletTrackCreationUndo(CrawlerTracks& rig, CrawlerTracks::TrackPointer track)
      : m_rig(rig), m_track(std::move(track)) {}
  void Undo(bool) override { m_rig.SetTrack(nullptr); }
  void Redo() override { m_rig.SetTrack(m_track); }

 private:
  CrawlerTracks& m_rig;
  CrawlerTracks::TrackPointer m_track;
};

/// A track was removed. To be pushed ahead of the steps of its nodes, so that an undo finds them.
class BulletTrackRemovalUndo : public CUndo {
 public:
  explicit BulletTrackRemovalUndo(CrawlerTracks& rig) : m_rig(rig), m_track(rig.GetTrack()) {}
  void Undo(bool) override { m_rig.SetTrack(m_track); }
  void Redo() override { m_rig.SetTrack(nullptr); }

 private:
  CrawlerTracks& m_rig;
  CrawlerTracks::TrackPointer m_track;
};

/// The lists of wheels change; saves them at construction.
class WheelUndo : public CUndo {
 public:
  explicit WheelUndo(CrawlerTracks& rig) : m_rig(rig), m_saved(rig.GetWheelState()) {}
  void Undo(bool) override { Exchange(); }
  void Redo() override { Exchange(); }

 private:
  void Exchange() {
    const CrawlerTracks::WheelState now = m_rig.GetWheelState();
    m_rig.SetWheelState(m_saved);
    m_saved = now;
  }

  CrawlerTracks& m_rig;
  CrawlerTracks::WheelState m_saved;
};

/// A take begins: keeps the part of a step's memory that it cuts off, and what the take makes when
/// it is undone.
class BulletActorRecordingUndo : public CUndo {
 public:
  BulletActorRecordingUndo(CrawlerTracks::TrackPointer track, CrawlerTracks::Track::Step& step,
                           double time)
      : m_track(std::move(track)), m_step(step), m_time(time) {
    m_linear = Tail(step.linVelocity);
    m_angular = Tail(step.angVelocity);
  }
  void Undo(bool keep) override {
    Exchange(m_step.linVelocity, m_linear, keep);
    Exchange(m_step.angVelocity, m_angular, keep);
  }
  void Redo() override { Undo(true); }

 private:
  using History = util::AVar_Latest<CrawlerTracks::Vector>;
  using Samples = std::vector<History::Sample>;

  std::size_t First(const History& history) const {
    std::size_t first = history.samples.size();
    while (first > 0 && history.samples[first - 1].time > m_time) --first;
    return first;
  }
  Samples Tail(const History& history) const {
    return {history.samples.begin() + static_cast<std::ptrdiff_t>(First(history)),
            history.samples.end()};
  }
  void Exchange(History& history, Samples& saved, bool keep) const {
    Samples now = Tail(history);
    history.samples.resize(First(history));
    history.samples.insert(history.samples.end(), saved.begin(), saved.end());
    if (keep) saved = std::move(now);  // else the rollback can be applied again
  }

  CrawlerTracks::TrackPointer m_track;  ///< keeps the step alive
  CrawlerTracks::Track::Step& m_step;
  double m_time;  ///< s; the memory up to here stays
  Samples m_linear, m_angular;
};

}  // namespace orv::rws::addon
