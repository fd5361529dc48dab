// Handles at the selected nodes, and the drags on them.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "app/studio/view/manipulator/Drag.h"
#include "app/studio/view/manipulator/Handles.h"
#include "app/studio/view/manipulator/ManipulatedScene.h"
#include "app/studio/view/manipulator/NumberEntry.h"

namespace orv::app::view {

/// What the user's hands do to the selected nodes. Knows no toolkit: who has the events tells it of
/// them, and shows what it says. A drag shows its poses while it goes on, and ends as one step of
/// undo, or as none.
class Manipulator {
 public:
  struct Options {
    Tool tool = Tool::kNone;
    Space space = Space::kWorld;
    Pivot pivot = Pivot::kActive;
    bool toSteps = false, toNodes = false, toGround = false;
  };
  /// What comes with each event.
  struct Hand {
    Pixel at;
    bool otherSnap = false;  ///< snapping the other way: off where it is on
    bool fine = false;       ///< steps of a tenth
  };
  /// A number that a drag has come to.
  struct Amount {
    int axis = 0;            ///< of the frame: 0 X, 1 Y, 2 Z; -1: of none
    double value = 0.0;      ///< m, degrees or a factor, by the tool
    std::string typed;       ///< what has been typed for it
    bool isCurrent = false;  ///< the next digit goes there
  };

  explicit Manipulator(ManipulatedScene& scene) : m_scene(scene) {}

  const Options& GetOptions() const { return m_options; }
  /// A drag goes on as it was begun.
  void SetOptions(const Options& options) { m_options = options; }
  /// Of lengths that are typed, in a metre.
  void SetUnit(double perMetre) { m_unit = perMetre; }
  /// The picture that is shown; before each, and before hands are told of. `gridStep` is that of
  /// the grid that is shown (m), `scale` pixels of the desktop for one at 96 dpi. A drag that the
  /// scene has taken the ground from, as by a take, is cancelled.
  void SetView(const ViewFrame& view, double gridStep, double scale);
  const Selection& GetSelection() const { return m_selection; }
  void Draw(LineSet& lines) const;

  // Hands. What they return is whether anything has become of it.

  /// True when another handle is lit.
  bool Hover(const Hand& hand);
  bool IsLit() const { return m_hot.has_value(); }
  /// Takes the handle under the pointer.
  bool Press(const Hand& hand);
  /// Begins a drag without a handle.
  bool Begin(Tool tool, const Hand& hand);
  bool IsDragging() const { return m_isDragging; }
  void Move(const Hand& hand);
  /// The hand as it is, with other keys.
  void SetKeys(bool otherSnap, bool fine);
  /// The same again lets go of it after a round through the axes of the other space.
  void Lock(Constraint::Kind kind, int axis);
  bool Type(char letter);
  void Erase();
  void NextNumber();
  /// By steps to the right, up and nearer; of what is dragged, or else as a step of its own, whose
  /// answer is as Finish's.
  std::string Nudge(int right, int up, int nearer, bool fine);
  /// As ManipulatedScene::Commit; a drag that has come to nothing is none.
  std::string Finish();
  void Cancel();

  /// Of the drag that goes on.
  Tool GetDragTool() const { return m_drag.GetTool(); }
  Space GetDragSpace() const { return m_space; }
  const Constraint& GetConstraint() const { return m_drag.GetConstraint(); }
  std::vector<Amount> GetAmounts() const;
  /// A number that can't be had, such as a scale of 0.
  bool IsRefused() const { return m_isRefused; }

 private:
  using Vector = util::Vector3<double>;

  bool Start(Tool tool, Drag::Grip grip, const Constraint& constraint, const Hand& hand);
  Drag MakeDrag(Tool tool, const Constraint& constraint, Drag::Grip grip, const Frame& frame,
                const ViewFrame& view, const Pixel& start) const;
  void Restart(const Constraint& constraint, Space space);
  bool IsStillThere() const;
  Frame GetDragFrame() const;
  SnapSteps GetSteps(bool fine) const;
  void Snap(Change& change);
  bool SnapToScene(Change& change);
  void TakeTyped(Change& change);
  void Update();
  std::vector<int> GetAmountAxes() const;
  /// The frame's axis that runs most in a direction of the picture, and which way.
  int AxisTowards(const Vector& direction, const Frame& frame, int except, double& sign) const;
  void AddSteps(int right, int up, int nearer, bool fine);

  ManipulatedScene& m_scene;
  Options m_options;
  double m_unit = 1.0, m_gridStep = 1.0, m_scale = 1.0;
  ViewFrame m_view;
  Selection m_selection;  ///< as of the latest picture
  std::optional<Constraint> m_hot;

  // The drag.
  bool m_isDragging = false;
  Drag m_drag;
  Selection m_held;  ///< as the drag found it
  Space m_space = Space::kWorld;
  Hand m_hand;
  bool m_isMoved = false;  ///< the pointer has
  NumberEntry m_numbers;
  Vector m_steps;             ///< of arrow keys, along the frame's axes
  double m_angleSteps = 0.0;  ///< radians
  std::optional<double> m_depth;
  Change m_change;
  bool m_isRefused = false;
};

}  // namespace orv::app::view
