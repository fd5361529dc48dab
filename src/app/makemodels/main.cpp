// Makes the pre-rigged models and examples that come with the program: make_models FOLDER.
#include <QCoreApplication>
#include <cstdio>
#include <filesystem>
#include <iterator>
#include <stdexcept>
#include <string>
#include <utility>

#include "Examples.h"
#include "Models.h"
#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/Scene.h"
#include "app/session/SceneSession.h"
#include "app/session/anyhost/CarFit.h"
#include "app/session/anyhost/NodePoses.h"
#include "app/session/anyhost/RigPlacing.h"
#include "app/session/models/RiggedModel.h"
#include "core/CoreImplementation.h"
#include "core/config/ConfigElement.h"
#include "core/instances/Instance.h"
#include "util/AtomicFile.h"
#include "util/CMesh.h"

namespace orv::app {

namespace {

using Matrix = util::Matrix<double>;
using Vector = util::Vector3<double>;
using rws::core::Instance;

void Require(bool good, const std::string& what) {
  if (!good) throw std::runtime_error(what);
}

/// A scene in which a model gets its rigs.
class Workshop {
 public:
  /// Opens the parts by way of a file, as any other scene.
  Workshop(Kit& kit, const std::string& folder) {
    const std::string path = folder + "/parts.glb";
    std::string error;
    Require(util::writeFile(path, kit.Finish(), &error), error);
    error = m_session.Open(path);
    std::filesystem::remove(path);
    Require(error.empty(), error);
  }

  rws::adaptor::headless::HeadlessNode& FindNode(const std::string& name) {
    auto* const found = m_session.GetAdaptor().FindSceneNode(name);
    Require(found != nullptr, "there is no node " + name);
    return *found;
  }
  Instance& AddRig(const std::string& kind, const std::string& name, const std::string& profile) {
    Instance* const rig = m_session.GetCore().CreateToolFromFactory(kind, name);
    Require(rig != nullptr, "there is no " + kind);
    const std::string problem = m_session.GetCore().LoadProfile(name, profile);
    Require(problem.empty(), problem);
    return *rig;
  }
  void Set(Instance& rig, const std::string& label, const std::string& value) {
    std::string problem;
    m_session.GetCore().EditParameter(rig, IdOf(rig, label), value, problem);
    Require(problem.empty(), problem);
  }
  void Press(Instance& rig, const std::string& label) {
    Require(m_session.GetCore().PressButton(rig, IdOf(rig, label)), label + " is no button");
  }
  void Parent(const std::string& child, const std::string& parent) {
    Require(FindNode(child).SetParent(&FindNode(parent)), child + " can't hang on " + parent);
  }
  /// Puts a node to a place, turned as it is, `scale` times a unit large.
  void Place(const std::string& name, const Vector& at, double scale) {
    Matrix pose = WorldPose(FindNode(name), Now());
    pose.setRowLengths({scale, scale, scale});
    pose.setTranslation(at);
    SetWorldPose(FindNode(name), Now(), pose);
  }
  void Fit(Instance& rig, const std::string& body, const std::string& wheels) {
    CarModel model;
    model.body = &FindNode(body);
    const char* const ends[] = {"FL", "FR", "BL", "BR"};
    for (std::size_t i = 0; i < 4; ++i) model.wheels[i] = &FindNode(wheels + ends[i]);
    const CarFit done = FitCar(rig, model);
    Require(!done.problem, done.problem.what + ": " + done.problem.why);
  }
  void TakeMeshAway(const std::string& name) {
    Require(m_session.GetAdaptor().TakeMeshAway(&FindNode(name)), name + " keeps its mesh");
  }
  /// The meshes of the nodes that are called `beginning` and something, as they stand in the world.
  void AddShapes(const std::string& beginning, int material, Shape& shape) {
    for (const auto* each : m_session.GetScene().GetNodes()) {
      if (each->GetName().rfind(beginning, 0) != 0 || !each->GetMesh()) continue;
      const Matrix world = each->WorldMatrix(Now());
      const util::CMesh& mesh = *each->GetMesh();
      const auto corner = [&](std::size_t i) {
        return world.transformPoint(mesh.vertices[static_cast<std::size_t>(mesh.faces[i])]);
      };
      for (std::size_t i = 0; i + 2 < mesh.faces.size(); i += 3)
        shape.Face(material, {corner(i), corner(i + 1), corner(i + 2)});
    }
  }
  void Make(const ModelSelection& selection, const ModelCard& card, const std::string& path) {
    std::vector<std::string> warnings;
    const Problem problem = MakeRiggedModel(m_session, selection, card, path, warnings);
    Require(!problem, problem.what + ": " + problem.why);
  }
  double Now() { return m_session.GetAdaptor().GetCurrentTime(); }

 private:
  static int IdOf(Instance& rig, const std::string& label) {
    const auto found = rig.GetConfig().FindAll(label);
    Require(found.size() == 1, rig.GetInstanceName() + " has no one " + label);
    return found.front()->GetId();
  }

  SceneSession m_session;
};

void MakeCar(const std::string& folder) {
  Kit kit;
  ModelCar(kit);
  Workshop shop(kit, folder);
  Instance& car = shop.AddRig(kFittedKind, "Car", "Start Profile");
  shop.Fit(car, "Body", "Wheel");
  shop.AddRig("MotionFilterCam", "CarCam", "Loose FollowCam");
  for (const char* camera : {"CarCam_AttachedCam", "CarCam_FollowCam"})
    shop.Place(camera, {0.0, 1.9, 6.0}, 1.0);
  shop.Parent("CarCam_AttachedCam", "Body");
  shop.Make(
      {{"Car", "CarCam"}, {}},
      {"Car",
       "A family car, 4.2 m long, with a camera that follows it. Hang Car_GravityDirectionMesh "
       "on your ground, map the inputs of Car, and drive; look through CarCam_FollowCam. Other "
       "profiles of the rig make it another car.",
       kit.MakePicture()},
      folder + "/Car.prm");
}

/// A link of a belt, as large as the rig's own: its +Y is the outside.
util::CMesh LinkMesh() {
  Shape shape;
  shape.Box(0, {-0.20, -0.03, -0.085}, {0.20, 0.008, 0.085}, 0.008);
  shape.Box(0, {-0.19, 0.0, -0.02}, {0.19, 0.03, 0.02}, 0.006);
  shape.Box(0, {-0.05, -0.028, -0.09}, {0.05, 0.0, 0.09}, 0.006);
  util::CMesh mesh;
  for (const Vector& corner : shape.GetCorners()) {
    mesh.faces.push_back(static_cast<std::int32_t>(mesh.vertices.size()));
    mesh.vertices.push_back(corner);
  }
  return mesh;
}

void AddBelt(Workshop& shop, const std::string& side, double x) {
  const std::string rigName = side + "Belt";
  Instance& belt = shop.AddRig("CrawlerTracks", rigName, "Tank");
  constexpr int kWheels = static_cast<int>(std::size(kBeltWheels));
  for (int i = 1; i < kWheels; ++i) shop.Press(belt, "Add Wheel");
  shop.Place(rigName + "_Frame", {x, 0.0, 0.0}, 1.0);
  for (int i = 0; i < kWheels; ++i) {
    const BeltWheel& wheel = kBeltWheels[i];
    const std::string name = rigName + (i == 0 ? "_driveWheel" : "_bogie0" + std::to_string(i));
    shop.Place(name, {x, wheel.y, wheel.z}, 2.0 * wheel.radius);
    shop.Parent(side + std::to_string(i), name);
    shop.TakeMeshAway(name);
  }
  shop.FindNode(rigName + "_TemplateStep").SetMesh(LinkMesh());
  shop.FindNode(rigName + "_TemplateStep").SetColour({0.07f, 0.07f, 0.075f});
  shop.Parent(rigName + "_Frame", "Hull");
  shop.Parent(rigName + "_GravityDirection", "Floor");
  // At which a link has the speed of the hull, 6.72 m/s at full gas.
  shop.Set(belt, "Maximum (Input Driven) Rotation Speed", "22.4");
  shop.Press(belt, "Calculate Number of Steps");
  shop.Press(belt, "Create Track");
}

void MakeTank(const std::string& folder) {
  Kit kit;
  ModelTank(kit);
  // The hull rides as a car does, on wheels that are not seen; they hold the belts clear of the
  // ground by a finger's breadth.
  const int unseen = kit.AddMaterial("Unseen", 0.02, 0.02, 0.02, 0.0, 1.0);
  Shape guide;
  guide.Turned(unseen, {{0.0, -0.06}, {0.30, -0.06}, {0.30, 0.06}, {0.0, 0.06}}, {}, false, 32);
  for (const char* end : {"FL", "FR", "BL", "BR"})
    kit.AddPart(std::string("Guide") + end,
                {end[1] == 'L' ? -0.80 : 0.80, 0.285, end[0] == 'F' ? -1.35 : 1.45}, guide);
  Shape floor;
  floor.Box(unseen, {-20.0, -1.0, -20.0}, {20.0, 0.0, 20.0}, 0.1);
  kit.AddPart("Floor", {}, floor);
  Workshop shop(kit, folder);
  Instance& tank = shop.AddRig(kFittedKind, "Tank", "Truck");
  shop.Fit(tank, "Hull", "Guide");
  // Belts answer at once: their vehicle does not take long either.
  shop.Set(tank, "Gas Pedal (Forw/Backw) Response Factor", "0.06");
  shop.Set(tank, "Acceleration (scale relative)", "1.5");
  for (const char* end : {"FL", "FR", "BL", "BR"}) shop.FindNode(std::string("Guide") + end).Hide();
  shop.Parent("Tank_GravityDirectionMesh", "Floor");
  AddBelt(shop, "Left", -kBeltSide);
  AddBelt(shop, "Right", kBeltSide);
  Instance& gun = shop.AddRig("Firepower", "Cannon", "Cannon");
  PlaceRig(gun, Vector(0.0, kGunHeight, -0.95), 0.4);
  shop.Place("Cannon_templateBullet", {0.0, kGunHeight, kMuzzle - 0.1}, 0.1);
  shop.Parent("Cannon_fire trigger", "Turret");
  shop.Parent("Gun", "Cannon_barrel");
  for (const char* name : {"Cannon_fire trigger", "Cannon_barrel"}) shop.TakeMeshAway(name);
  Kit shown;
  ModelTank(shown);
  Shape belts;
  const int steel = shown.AddMaterial("Belt", 0.07, 0.07, 0.075, 0.0, 0.7);
  for (const char* side : {"Left", "Right"})
    shop.AddShapes(side + std::string("Belt_step"), steel, belts);
  shown.AddPart("Belts", {}, belts);
  shop.Make({{"Tank", "LeftBelt", "RightBelt", "Cannon"}, {}},
            {"Tank",
             "A tracked vehicle with a gun. Hang Tank_GravityDirectionMesh, "
             "LeftBelt_GravityDirection and RightBelt_GravityDirection on your ground, and "
             "Cannon_collision on what shots hit. Tank drives; map the belts' Forward/Backward to "
             "its gas pedal too. The node Turret turns the gun.",
             shown.MakePicture()},
            folder + "/Tank.prm");
}

}  // namespace

}  // namespace orv::app

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  if (argc != 2) {
    std::fprintf(stderr, "usage: make_models FOLDER\n");
    return 2;
  }
  try {
    orv::app::MakeCar(argv[1]);
    orv::app::MakeTank(argv[1]);
    orv::app::MakeExamples(argv[1]);
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "make_models: %s\n", error.what());
    return 1;
  }
}
