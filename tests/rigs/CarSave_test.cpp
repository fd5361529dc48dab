// The save data of a car, its own and that of older versions.
#include "rigs/CarScene.h"

namespace orv::tests {
namespace {

using util::DataChunk;

void Forget(DataChunk& chunk, const std::string& key) {
  auto& all = chunk.children;
  all.erase(std::remove_if(all.begin(), all.end(), [&](auto& c) { return c.name == key; }),
            all.end());
}

/// Saves, and opens the data as that of `version` after `age` has made it such. Answers whether it
/// was refused.
int ReopenAs(CarScene& car, int version, const std::function<void(DataChunk&)>& age) {
  DataChunk chunk = car.Stored();
  EXPECT_EQ(chunk.name, "CarCamDataChunk8148");
  EXPECT_EQ(chunk.getBytes("sDataChunkSaveStruct").size(), 368u);
  chunk.name = "CarCamDataChunk" + std::to_string(version);
  age(chunk);
  const auto bytes = chunk.flatten();
  car.rig->SetUserData(bytes.data(), static_cast<int>(bytes.size()));
  return car.rig->GetRig()->Restore();
}
int ReopenAs(CarScene& car, int version, const std::vector<std::string>& without) {
  return ReopenAs(car, version, [&](DataChunk& chunk) {
    for (const std::string& key : without) Forget(chunk, key);
  });
}

TEST(CarSave, PresentDataKeepsEveryValueAndOlderDataIsReadByItsVersion) {
  const std::map<std::string, double> edits{{"Tire Pressure", 0.7},
                                            {"Acceleration (scale relative)", 4.5},
                                            {"Gravity", 2.5},
                                            {"Suspension Length (Radius Relative)", 0.8},
                                            {"Skid Brake Stop Factor", 0.25},
                                            {"Autonomous mode follow strength", 0.75},
                                            {"Back Damping", 123.0},
                                            {"Ignore Sphere Radius (length relative)", 0.125},
                                            {"Booster Maximum", 7.0},
                                            {"Maximum Wheel Extension Velocity (Radius Rel)", 5.0},
                                            {"Use Fast Ray Cast", 1.0}};
  const char pressure[] = "Tire Pressure", ignored[] = "Ignore Sphere Radius (length relative)";
  const char turnBase[] = "Turn Base (Back Wheel Relative)";
  const char acceleration[] = "Acceleration (scale relative)";
  const std::vector<std::string> glued{"bGroundReleaseOn", "dMaximumSpringChangeVelocityRel"};
  // A version, the keys that its data lacks, and what becomes of a setting.
  const std::tuple<int, std::vector<std::string>, const char*, double> rows[] = {
      {8148, {}, pressure, 0.7},
      {8134, {}, pressure, 0.7},
      // Meant: data of these versions snaps to edges until its user edits the value.
      {8135, {}, pressure, 99.0},
      {8140, {}, pressure, 99.0},
      {8147, {}, pressure, 99.0},
      {8136, {}, acceleration, 4.5},
      {8135, {"dGasPedalMaxRateOfChange"}, acceleration, 99999.0},
      {121, {"dFollowAccelerationMult", "dIgnoreSphereRadius"}, ignored, 0.2},
      {122, {}, ignored, 0.125},
      // Counted from the body's middle then: the back wheels are half a scale behind it.
      {116, {}, turnBase, 0.0},
      {115, {}, turnBase, 1.0},
      {8101, {"dSkidBrakeStopFactor"}, "Skid Brake Stop Factor", 0.5},
      {8101, glued, "Enable Wheel Ground Release", 0.0},
      {8101, glued, "Suspension Length (Radius Relative)", 0.5},
      {8101, glued, "Maximum Wheel Extension Velocity (Radius Rel)", 3.0}};
  for (const auto& [version, lacking, changed, value] : rows) {
    CarScene car;
    for (const auto& [label, edit] : edits) car.Edit(label, edit);
    const auto age = [&car, &keys = lacking](DataChunk& chunk) {
      for (const std::string& key : keys) Forget(chunk, key);
      // What is not read from the data is that of a new car.
      EXPECT_EQ(car.core().LoadProfile("Car", "Factory Settings"), "");
    };
    EXPECT_EQ(ReopenAs(car, version, age), 0) << version;
    EXPECT_NEAR(car.Setting(changed), value, 1e-12) << version << changed;
    for (const auto& [label, edit] : edits)
      EXPECT_TRUE(version != 8148 || car.Setting(label) == edit) << label;
  }
}

TEST(CarSave, ACarThatWasNeverDrivenKeepsItsSizes) {
  CarScene car;
  car.Reopen();
  const double maximum = CarScene::kScale * 3.6 * 3.0;
  car.Edit("Multiplier", 3.6);
  EXPECT_NEAR(car.Setting("World Space Maximum Velocity Gauge"), maximum, 1e-9);
  car.Edit("Turn Base (Back Wheel Relative)", 1);
  EXPECT_LT((car.At("TurnBaseMesh", 0) - CarScene::Vector()).length(), 1e-9);
  EXPECT_NEAR(car.World("TurnBaseMesh", 0).rowLengths().x, CarScene::kScale, 1e-9);
}

TEST(CarSave, DataOfOldCarsNeverLeavesTheGround) {
  // A car that is glued to the ground follows it down any step.
  const auto cliff = [](double, double z) { return z < -10 ? -3.0 : 0.0; };
  for (const bool old : {false, true}) {
    CarScene car;
    car.AddGround(GridMesh(cliff, Rows(-20, 20, 2), {-90, -10.0005, -10, 20}));
    if (old) ReopenAs(car, 8130, {"bGroundReleaseOn", "cCarCambGravityOn"});
    car.Drive(6, {{kGas, PressedSoon(1)}});
    EXPECT_EQ(std::count(car.air.begin(), car.air.end(), 15) == 0, old);
    EXPECT_NEAR(car.At("WheelMesh_FL", 150).y, CarScene::kRadius - 3.0, 2e-3) << old;
  }
}

TEST(CarSave, AStoredGroundIsReadFromVersion8143On) {
  for (const auto& [version, key, kept] : {std::tuple{8148, "", 1.0},
                                           {8143, "", 1.0},
                                           {8142, "", 0.0},
                                           {8148, "cMesh_storedGroundMesh", 0.0}}) {
    CarScene car;
    auto& ground = car.AddGround(GridMesh(Flat, Rows(-20, 20, 2), Rows(-20, 20, 2)));
    ground.SetPose({{0, 2, 0}, {}, {1, 1, 1}});
    car.Edit("Store Ground Mesh Data", 1);
    EXPECT_TRUE(car.Stored().hasChunk("mBulletGroundMesh"));
    EXPECT_EQ(ReopenAs(car, version, {key}), 0);
    EXPECT_EQ(car.Setting("Store Ground Mesh Data"), kept) << version << key;
  }
}

TEST(CarSave, DamagedDataIsRefused) {
  const auto damage = [](const std::string& key, const std::vector<unsigned char>& bytes) {
    CarScene car;
    return ReopenAs(car, 8148, [&](DataChunk& chunk) {
      Forget(chunk, key);
      chunk.addBytes(key, bytes.data(), bytes.size());
    });
  };
  EXPECT_EQ(damage("sDataChunkSaveStruct", std::vector<unsigned char>(360)), 1);
  EXPECT_EQ(damage("sDataChunkSaveStruct", std::vector<unsigned char>(368, 0xff)), 1);
  EXPECT_EQ(damage("bGroundReleaseOn", {2}), 1);
  EXPECT_EQ(damage("dDegsPerRay", std::vector<unsigned char>(8, 0xff)), 1);
  EXPECT_EQ(damage("iRandomSeedAdder", {1, 2}), 1);
}

}  // namespace
}  // namespace orv::tests
