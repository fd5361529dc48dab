// A gun that fires projectiles and keys their flight.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/interface/GroundReport.h"
#include "plugins/common/Rig.h"
#include "plugins/common/RigFactory.h"
#include "plugins/common/SaveChunk.h"
#include "plugins/release/firepower/CCollisionNode.h"
#include "plugins/release/firepower/FiringLogic.h"
#include "plugins/release/firepower/Flight.h"
#include "plugins/release/firepower/GunMemory.h"
#include "plugins/release/firepower/GunSettings.h"
#include "unidevice/Property.h"

namespace orv::rws {
struct RigMarks;
}

namespace orv::rws::addon {

/// The user places and animates the fire trigger; the barrel, the templateBullet at its muzzle and
/// the crosshairCam go with it. Each discharge makes nodes in the world that wear the template's
/// mesh, and each frame keys those that still fly. A take that begins within an earlier one goes on
/// from there: projectiles that were not yet fired then go, and their names are free again.
class Firepower : public Rig {
 public:
  using Matrix = util::Matrix<double>;
  using Vector = util::Vector3<double>;
  class Bullet;

  explicit Firepower(const CreationRecord& record);
  ~Firepower() override;

  void Start(double time) override;
  void Stop() override;
  void Step(double time) override;
  int Define() override;
  int Create() override;
  int Restore() override;
  int Store() override;
  void Destroy() override;
  void OnCallback(std::string name) override;
  std::intptr_t Extension(int code, void* a, void* b) override;
  void GetExtensions(std::vector<int>& out) override {
    out.insert(out.end(), {kTellGround, kTellMarks});
  }

 private:
  /// Where the gun stands in a frame.
  struct GunPose {
    Vector direction;  ///< unit, along which it fires
    Vector velocity;   ///< of the barrel (m/s)
    Matrix bullet;     ///< of the template
  };

  void SelectAllBullets();

  // Takes
  void RemoveBulletsAfter(double time);
  void ResumeBullets(double before, double first);
  void FindRest(double before);
  void MoveBarrel(double time, double dt);
  void AdvanceBullets(double time, double dt);
  FlightRules Rules() const { return {m_settings.gravity, m_settings.airResistance}; }
  GunPose ReadGun(double time, double dt) const;
  Matrix BarrelAtRest(double time) const;
  Matrix BarrelParent(double time) const;
  void Discharge(double time, double dt);
  void Fire(const GunPose& gun, double time, double dt);
  CNode* MakeBulletNode(const std::string& name);
  bool IsComplete() const;
  void TellError(const char* message);
  std::intptr_t TellMarks(RigMarks& marks) const;

  // Saving
  SaveState LoadBlob(std::vector<Bullet>& loaded, const char*& message);

  GunSettings m_settings;
  FiringLogic m_logic;
  GunMemory m_memory;
  GunState m_state;
  std::vector<Bullet> bullets;  ///< in the order of their birth
  std::vector<int> m_living;    ///< those that fly in the present take, as indices
  std::vector<int> m_overdue;   ///< those that an earlier take has flown for longer than they live
  double m_takeStart = 0.0;     ///< s
  bool m_inTake = false;
  std::vector<const char*> m_told;  ///< messages of the present take, each of which is told once
  unidevice::Property* m_fire = nullptr;  ///< the instance's
  unidevice::Property m_discharge;

  RigMeshNode m_trigger;
  RigMeshNode m_barrel;
  RigMeshNode m_template;
  RigCameraNode m_crosshairCam;
  CCollisionNode m_collision;
};

class CFirepowerPlugin : public RigFactory<1> {
 public:
  CCamera* CreateObject(const CreationRecord& record) override;
  std::string GetId() override { return "Firepower"; }
  std::string GetDataFolder() override { return "firepower"; }
  std::string GetName() override { return "Orvel Firepower"; }
  std::string GetCategory() override { return "Accessory;Weapon"; }
  std::string GetDescription() override;
  std::string GetLicenceFeature() override { return "firepower"; }
};

}  // namespace orv::rws::addon
