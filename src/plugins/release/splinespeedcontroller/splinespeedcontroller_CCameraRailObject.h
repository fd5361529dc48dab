// A carriage on a path, its speed exactly as told at each waypoint.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "plugins/common/Rig.h"
#include "plugins/common/RigFactory.h"
#include "plugins/common/SaveChunk.h"
#include "plugins/release/splinespeedcontroller/CCarriageNode.h"
#include "plugins/release/splinespeedcontroller/RailContext.h"

namespace orv::rws {
struct RigMarks;
}

namespace orv::rws::addon {

/// The user sets out waypoints; the CarriageNode runs through them along the host's curve that it
/// is parented to, or along a curve of the rig's own in the space of the ReferenceFrame. Structural
/// changes (waypoints, curve, snapping) are made outside of takes alone and are undoable.
class CCameraRailObject : public Rig {
 public:
  /// The waypoints and what goes with them, for undo.
  struct WaypointState {
    WaypointList waypoints;              ///< in the order of the path
    std::vector<WaypointValues> values;  ///< one per waypoint
    int selected = 0;                    ///< index of the one that the page shows
    int current = -1, next = -1;         ///< the carriage's
  };

  explicit CCameraRailObject(const CreationRecord& record);

  void Start(double time) override;
  void Stop() override;
  void Step(double time) override;
  int Define() override;
  int Create() override;
  int Restore() override;
  int Store() override;
  void OnCallback(std::string name) override;
  std::intptr_t Extension(int code, void* a, void* b) override;
  void GetExtensions(std::vector<int>& out) override { out.push_back(kTellMarks); }

  // What undo steps exchange.
  WaypointState GetWaypointState() const;
  void SetWaypointState(const WaypointState& state);
  CCurveInformation& GetCurveInformation() { return m_rail.curveInformation; }

 private:
  using Matrix = util::Matrix<double>;
  using Vector = util::Vector3<double>;
  using Path = CCarriageNode::Path;

  void DefineOwn(int which);
  std::intptr_t TellMarks(RigMarks& marks);

  // Actions.
  bool RunAction(const std::string& label);
  void CreateWaypoint();
  void RemoveWaypoint();
  void EqualiseWaypoints();
  void InitializeCarriage();
  void SnapCarriage();
  void SnapWaypoints();
  void CreateCurve();
  void RemoveCurve();

  void DeleteNode(RigSceneNode& node);

  // Edits.
  void Edit(const std::string& label);
  void EditSelection();
  void EditPosition();
  void EditField(const std::string& label);
  void EditCurveFlag();

  /// Builds the curve through the waypoints and shows it. False, with all as it was and the user
  /// told, when there can be none.
  bool BuildCurve();
  void SortWaypoints();
  void PlaceWaypoint(CWaypointNode& waypoint, Path path);
  std::string FreeWaypointName() const;
  CWaypointNode* Selected();
  /// The path at the host's time, bound; tells the user when it is not the one wanted.
  Path PresentPath(bool tell);
  /// Lets parameters, lists and hide boxes follow the waypoints.
  void ShowWaypoints();
  void ShowSelected();
  /// False while undo or redo replays an edit: its own steps then bring back what it changed in
  /// the scene, and the event must not.
  bool PushWaypointUndo();

  // Save data.
  SaveState LoadBlob();
  bool LoadWaypoints(const util::DataChunk& chunk, WaypointState& state);
  bool LoadCurve(const util::DataChunk& information, const util::DataChunk& data);
  util::DataChunk SaveCarriage();
  util::DataChunk SaveWaypoints() const;

  RailContext m_rail;
  CCarriageNode m_carriage;
  CInterface::ComboUpdater* m_waypointItems = nullptr;  ///< the instance's
  int m_selected = 0;                                   ///< index of the selected waypoint
  int m_choice = 0;                                     ///< what the combo box shows
  double waypointPositionPercentage = 0.0;              ///< of the selected waypoint
  double waypointTimeDelayD = 0.0;                      ///< its stop in seconds
  bool m_ready = false;                                 ///< created or restored: events count
  bool m_recording = false;
};

class CCameraRailPlugin : public RigFactory<1> {
 public:
  CCamera* CreateObject(const CreationRecord& record) override;
  std::string GetId() override { return "Spline Speed-Controller"; }
  std::string GetDataFolder() override { return "splinespeedcontroller"; }
  std::string GetName() override { return "Orvel Spline Speed-Controller"; }
  std::string GetCategory() override { return "Camera"; }
  std::string GetDescription() override;
  std::string GetLicenceFeature() override { return "rail"; }
};

}  // namespace orv::rws::addon
