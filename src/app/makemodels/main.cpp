// Makes the pre-rigged models that come with the program: make_models FOLDER.
#include <QCoreApplication>
#include <cstdio>
#include <filesystem>
#include <iterator>
#include <stdexcept>
#include <string>
#include <utility>

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

void require(bool good, const std::string& what) {
  if (!good) throw std::runtime_error(what);
}

/// A scene in which a model gets its rigs.
class Workshop {
 public:
  /// Opens the parts by way of a file, as any other scene.
  Workshop(Kit& kit, const std::string& folder, std::string picture)
      : m_picture(std::move(picture)) {
    const std::string path = folder + "/parts.glb";
    std::string error;
    require(util::writeFile(path, kit.Finish(), &error), error);
    error = m_session.open(path);
    std::filesystem::remove(path);
    require(error.empty(), error);
  }

  rws::adaptor::headless::HeadlessNode& FindNode(const std::string& name) {
    auto* const found = m_session.GetAdaptor().FindSceneNode(name);
    require(found != nullptr, "there is no node " + name);
    return *found;
  }
  Instance& addRig(const std::string& kind, const std::string& name, const std::string& profile) {
    Instance* const rig = m_session.GetCore().CreateToolFromFactory(kind, name);
    require(rig != nullptr, "there is no " + kind);
    const std::string problem = m_session.GetCore().LoadProfile(name, profile);
    require(problem.empty(), problem);
    return *rig;
  }
  void set(Instance& rig, const std::string& label, const std::string& value) {
    std::string problem;
    m_session.GetCore().EditParameter(rig, idOf(rig, label), value, problem);
    require(problem.empty(), problem);
  }
  void press(Instance& rig, const std::string& label) {
    require(m_session.GetCore().PressButton(rig, idOf(rig, label)), label + " is no button");
  }
  void parent(const std::string& child, const std::string& parent) {
    require(FindNode(child).SetParent(&FindNode(parent)), child + " can't hang on " + parent);
  }
  /// Puts a node to a place, turned as it is, `scale` times a unit large.
  void place(const std::string& name, const Vector& at, double scale) {
    Matrix pose = WorldPose(FindNode(name), now());
    pose.setRowLengths({scale, scale, scale});
    pose.setTranslation(at);
    SetWorldPose(FindNode(name), now(), pose);
  }
  void fit(Instance& rig, const std::string& body, const std::string& wheels) {
    CarModel model;
    model.body = &FindNode(body);
    const char* const ends[] = {"FL", "FR", "BL", "BR"};
    for (std::size_t i = 0; i < 4; ++i) model.wheels[i] = &FindNode(wheels + ends[i]);
    const CarFit done = FitCar(rig, model);
    require(!done.problem, done.problem.what + ": " + done.problem.why);
  }
  void takeMeshAway(const std::string& name) {
    require(m_session.GetAdaptor().TakeMeshAway(&FindNode(name)), name + " keeps its mesh");
  }
  void make(const ModelSelection& selection, ModelCard card, const std::string& path) {
    card.picture = m_picture;
    std::vector<std::string> warnings;
    const Problem problem = makeRiggedModel(m_session, selection, card, path, warnings);
    require(!problem, problem.what + ": " + problem.why);
  }
  double now() { return m_session.GetAdaptor().GetCurrentTime(); }

 private:
  static int idOf(Instance& rig, const std::string& label) {
    const auto found = rig.GetConfig().FindAll(label);
    require(found.size() == 1, rig.GetInstanceName() + " has no one " + label);
    return found.front()->GetId();
  }

  SceneSession m_session;
  std::string m_picture;
};

void makeCar(const std::string& folder) {
  Kit kit;
  modelCar(kit);
  Workshop shop(kit, folder, kit.picture());
  Instance& car = shop.addRig(kFittedKind, "Car", "Start Profile");
  shop.fit(car, "Body", "Wheel");
  shop.addRig("MotionFilterCam", "CarCam", "Loose FollowCam");
  for (const char* camera : {"CarCam_AttachedCam", "CarCam_FollowCam"})
    shop.place(camera, {0.0, 1.9, 6.0}, 1.0);
  shop.parent("CarCam_AttachedCam", "Body");
  shop.make(
      {{"Car", "CarCam"}, {}},
      {"Car",
       "A family car, 4.2 m long, with a camera that follows it. Hang Car_GravityDirectionMesh "
       "on your ground, map the inputs of Car, and drive; look through CarCam_FollowCam. Other "
       "profiles of the rig make it another car.",
       ""},
      folder + "/Car.prm");
}

/// A link of a belt, as large as the rig's own: its +Y is the outside.
util::CMesh linkMesh() {
  Shape shape;
  shape.box(0, {-0.20, -0.03, -0.085}, {0.20, 0.008, 0.085}, 0.008);
  shape.box(0, {-0.19, 0.0, -0.02}, {0.19, 0.03, 0.02}, 0.006);
  shape.box(0, {-0.05, -0.028, -0.09}, {0.05, 0.0, 0.09}, 0.006);
  util::CMesh mesh;
  for (const Vector& corner : shape.corners()) {
    mesh.faces.push_back(static_cast<std::int32_t>(mesh.vertices.size()));
    mesh.vertices.push_back(corner);
  }
  return mesh;
}

void addBelt(Workshop& shop, const std::string& side, double x) {
  const std::string rigName = side + "Belt";
  Instance& belt = shop.addRig("CrawlerTracks", rigName, "Tank");
  constexpr int kWheels = static_cast<int>(std::size(kBeltWheels));
  for (int i = 1; i < kWheels; ++i) shop.press(belt, "Add Wheel");
  shop.place(rigName + "_Frame", {x, 0.0, 0.0}, 1.0);
  for (int i = 0; i < kWheels; ++i) {
    const BeltWheel& wheel = kBeltWheels[i];
    const std::string name = rigName + (i == 0 ? "_driveWheel" : "_bogie0" + std::to_string(i));
    shop.place(name, {x, wheel.y, wheel.z}, 2.0 * wheel.radius);
    shop.parent(side + std::to_string(i), name);
    shop.takeMeshAway(name);
  }
  shop.FindNode(rigName + "_TemplateStep").SetMesh(linkMesh());
  shop.FindNode(rigName + "_TemplateStep").SetColour({0.07f, 0.07f, 0.075f});
  shop.parent(rigName + "_Frame", "Hull");
  shop.parent(rigName + "_GravityDirection", "Floor");
  shop.set(belt, "Maximum (Input Driven) Rotation Speed", "20");
  shop.press(belt, "Calculate Number of Steps");
  shop.press(belt, "Create Track");
}

void makeTank(const std::string& folder) {
  Kit kit;
  modelTank(kit);
  const std::string picture = kit.picture();
  // The hull rides as a car does, on wheels that are not seen; they hold the belts clear of the
  // ground by a finger's breadth.
  const int unseen = kit.material("Unseen", 0.02, 0.02, 0.02, 0.0, 1.0);
  Shape guide;
  guide.turned(unseen, {{0.0, -0.06}, {0.30, -0.06}, {0.30, 0.06}, {0.0, 0.06}}, {}, false, 32);
  for (const char* end : {"FL", "FR", "BL", "BR"})
    kit.part(std::string("Guide") + end,
             {end[1] == 'L' ? -0.80 : 0.80, 0.285, end[0] == 'F' ? -1.35 : 1.45}, guide);
  Shape floor;
  floor.box(unseen, {-20.0, -1.0, -20.0}, {20.0, 0.0, 20.0}, 0.1);
  kit.part("Floor", {}, floor);
  Workshop shop(kit, folder, picture);
  Instance& tank = shop.addRig(kFittedKind, "Tank", "Truck");
  shop.fit(tank, "Hull", "Guide");
  for (const char* end : {"FL", "FR", "BL", "BR"}) shop.FindNode(std::string("Guide") + end).Hide();
  shop.parent("Tank_GravityDirectionMesh", "Floor");
  addBelt(shop, "Left", -kBeltSide);
  addBelt(shop, "Right", kBeltSide);
  Instance& gun = shop.addRig("Firepower", "Cannon", "Cannon");
  PlaceRig(gun, Vector(0.0, kGunHeight, -0.95), 0.4);
  shop.place("Cannon_templateBullet", {0.0, kGunHeight, kMuzzle - 0.1}, 0.1);
  shop.parent("Cannon_fire trigger", "Turret");
  shop.parent("Gun", "Cannon_barrel");
  for (const char* name : {"Cannon_fire trigger", "Cannon_barrel"}) shop.takeMeshAway(name);
  shop.make({{"Tank", "LeftBelt", "RightBelt", "Cannon"}, {}},
            {"Tank",
             "A tracked vehicle with a gun. Hang Tank_GravityDirectionMesh, "
             "LeftBelt_GravityDirection and RightBelt_GravityDirection on your ground, and "
             "Cannon_collision on what shots hit. Tank drives; map the belts' Forward/Backward to "
             "its gas pedal too. The node Turret turns the gun.",
             ""},
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
    orv::app::makeCar(argv[1]);
    orv::app::makeTank(argv[1]);
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "make_models: %s\n", error.what());
    return 1;
  }
}
