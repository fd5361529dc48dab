// What a scene shows over its pictures.
#pragma once

#include <QString>
#include <string>
#include <utility>
#include <vector>

#include "adaptor/headless/HostObservers.h"
#include "app/studio/view/overlay/Ghost.h"
#include "app/studio/view/overlay/NodePaths.h"
#include "app/studio/view/overlay/OverlayKinds.h"
#include "core/interface/RigMarks.h"

namespace orv::rws::adaptor::headless {
class SceneNode;
}
namespace orv::rws::core {
class Instance;
}
namespace orv::unidevice {
class Property;
}

namespace orv::app::view {

/// Reads once a picture, for all views of the scene: the ways of nodes, what rigs tell of their
/// work, inputs and the run's film. Of the selection and the rigs that it belongs to; without one,
/// of the first rigs. Core and host outlive it. Main thread only.
class Overlay : private rws::adaptor::headless::HostObserver {
 public:
  using HeadlessNode = rws::adaptor::headless::HeadlessNode;
  using SceneNode = rws::adaptor::headless::SceneNode;
  /// Rigs of which marks are shown while nothing is selected, and in any case.
  static constexpr std::size_t kUsualRigs = 8, kMostRigs = 32;

  struct Name {
    HeadlessNode* node;
    QString text;
    bool isSelected;
  };
  struct Input {
    const unidevice::Property* property;
    QString name;
  };
  /// A rig that performs.
  struct Performer {
    QString name;
    std::vector<Input> inputs;
  };

  Overlay(rws::core::CoreImplementation& core, rws::adaptor::headless::HeadlessAdaptor& host);
  ~Overlay() override;
  Overlay(const Overlay&) = delete;
  Overlay& operator=(const Overlay&) = delete;

  void Show(OverlayKind kind, bool isShown) { m_choice.set(kind, isShown); }
  bool IsShown(OverlayKind kind) const { return m_choice[kind]; }
  void Select(const std::vector<const SceneNode*>& nodes);

  /// Ahead of each picture.
  void Read();
  /// The frame of a run, or the host's time (s).
  double GetTime() const { return m_time; }
  const OverlayChoice& GetChoice() const { return m_choice; }
  const NodePaths& GetPaths() const { return m_paths; }
  /// One a rig.
  const std::vector<rws::RigMarks>& GetMarks() const { return m_marks; }
  const TakeFilm* GetGhost() const { return m_film; }
  int GetGhostSerial() const { return m_ghost.GetSerial(); }
  /// Empty unless names are shown.
  const std::vector<Name>& GetNames() const { return m_names; }
  /// Empty unless a run goes on.
  const std::vector<Performer>& GetPerformers() const { return m_performers; }

 private:
  // HostObserver
  void OnTree() override {
    m_isOld = true;
    m_ghost.NoteTree();
  }
  void OnUndo() override { m_ghost.Follow(); }

  void FindRigs();
  void FindNames();
  void FindPerformers();
  void ReadMarks();
  bool IsAnyMarkShown() const;

  rws::core::CoreImplementation& m_core;
  rws::adaptor::headless::HeadlessAdaptor& m_host;
  OverlayChoice m_choice;
  Ghost m_ghost;
  NodePaths m_paths;
  const void* m_scene = nullptr;  ///< whose nodes these are
  std::vector<HeadlessNode*> m_selection;
  std::vector<int> m_rows;  ///< selected ones of the tree of rigs, when the rigs were looked up
  std::vector<int> m_rigs;  ///< identities: a rig that goes is not found
  std::vector<HeadlessNode*> m_ways;  ///< nodes with a path
  std::vector<rws::RigMarks> m_marks;
  std::vector<Name> m_names;
  std::vector<Performer> m_performers;
  const TakeFilm* m_film = nullptr;
  double m_time = 0.0;
  std::size_t m_performing = 0;  ///< rigs that took part when the performers were looked up
  bool m_isOld = true, m_isRunning = false;
};

}  // namespace orv::app::view
