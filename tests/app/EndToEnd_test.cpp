// The program as an animator uses it, from file to file.
#include <algorithm>
#include <regex>
#include <set>

#include "adaptor/headless/FrameRate.h"
#include "adaptor/headless/GltfReader.h"
#include "app/ProgramTest.h"
#include "support/GltfValidator.h"

namespace orv::tests {
namespace {

class EndToEnd : public ProgramTest {
 protected:
  /// A file that drives all six inputs of the link "Hand" off the frames' times.
  std::string handInputs() const {
    const auto info = json("info hand.glb");
    std::string csv = "time";
    for (const auto& input : info["rigs"][0]["inputs"])
      csv += "," + std::string("Hand:") + input["name"].get<std::string>();
    for (int i = 0; i < 40; ++i) {
      csv += "\n" + std::to_string(0.033 * i);
      for (int k = 0; k < 6; ++k) csv += "," + std::to_string(std::sin(0.033 * i * (3 + k)));
    }
    return csv + "\n";
  }

  std::string exported(const std::string& scene) const {
    ok({"export", scene, "--range", "0:0.8", "-o", "x.csv"});
    return folder.Read("x.csv");
  }

  /// Mover carries the AttachedCam of "Cam", whose FollowCam begins there and carries "Crew".
  void makeFollowScene() const {
    ok("add shot.glb MotionFilterCam --name Cam -o cam.glb");
    ok("parent cam.glb Cam_AttachedCam Mover -o cam.glb");
    ok("place cam.glb Cam_AttachedCam --translate 0,0,0 --rotate=0,0,0 -o cam.glb");
    ok("place cam.glb Cam_FollowCam --at Mover -o cam.glb");
    ok("resim cam.glb -o cam.glb");
  }
};

double distance(const std::vector<double>& a, const std::vector<double>& b) {
  return std::hypot(a[1] - b[1], a[2] - b[2], a[3] - b[3]);
}

/// Sum over the frames of how much the velocity changes: how shaky a path is.
double shake(const std::vector<std::vector<double>>& path) {
  double sum = 0.0;
  for (std::size_t i = 2; i < path.size(); ++i)
    for (int k = 1; k <= 3; ++k)
      sum += std::abs(path[i][k] - 2.0 * path[i - 1][k] + path[i - 2][k]);
  return sum;
}

TEST_F(EndToEnd, APerformedTakeResimulatesBitForBit) {
  EXPECT_EQ(ok("add shot.glb DirectInputLink --name Hand --translate 1,2,3 --scale 2 -o hand.glb"),
            "Hand\n");
  const auto placed = poses("hand.glb").at("Hand_ActuatorMesh").front();
  EXPECT_EQ(std::vector<double>(placed.begin() + 1, placed.begin() + 4),
            (std::vector<double>{1, 2, 3}));
  EXPECT_NEAR(placed[8], 2.0, 1e-12);
  const std::string first = json("info hand.glb")["rigs"][0]["inputs"][0]["name"];
  ok({"map", "hand.glb", "Hand:" + first, "No such wheel", "Axis", "2", "--multiplier", "-0.5",
      "-o", "hand.glb"});
  folder.Write("in.csv", handInputs());

  const auto told = json("take hand.glb --seconds 0.8 --play in.csv --countdown 0 -o take.glb");
  EXPECT_EQ(told["frames"], 20);
  const auto info = json("info take.glb")["rigs"][0];
  for (const auto& input : info["inputs"]) EXPECT_EQ(input["samples"], 20) << input;
  const auto& mapping = info["inputs"][0]["mapping"];
  EXPECT_EQ(mapping["control"]["device"], "No such wheel") << "the user's mapping must stay";
  EXPECT_EQ(mapping["multiplier"], -0.5);

  const std::string expected = exported("take.glb");
  const auto path = parsePoses(expected).at("Hand_ActuatorMesh");
  EXPECT_EQ(path.size(), 21u);
  EXPECT_GT(distance(path[0], path[15]), 0.5) << "the take moved the actuator";
  ok("resim take.glb --range 0:0.8 -o again.glb");
  ok("resim again.glb --range 0:0.8 -o third.glb");
  ok("resim hand.glb --range 0:0.8 --inputs in.csv -o direct.glb");
  ok("inputs take.glb Hand -o recorded.csv");
  ok("resim hand.glb --range 0:0.8 --inputs recorded.csv -o back.glb");
  for (const char* scene : {"again.glb", "third.glb", "direct.glb", "back.glb"})
    EXPECT_TRUE(exported(scene) == expected) << scene << " differs from the take";
  EXPECT_TRUE(folder.Read("again.glb") == folder.Read("third.glb"));
  ok("inputs back.glb -o recorded2.csv");
  EXPECT_EQ(folder.Read("recorded.csv"), folder.Read("recorded2.csv"));
}

TEST_F(EndToEnd, ATakeWithinAnotherChangesNothingElse) {
  ok("add shot.glb DirectInputLink --name Hand -o hand.glb");
  ok("add hand.glb MotionFilterCam --name Cam -o hand.glb");
  ok("parent hand.glb Cam_AttachedCam Mover -o hand.glb");
  folder.Write("in.csv", handInputs());
  ok("take hand.glb --seconds 1.6 --play in.csv --countdown 0 -o take.glb");
  ok("inputs take.glb -o all.csv");
  const Poses whole = poses("take.glb");
  const std::string inputs = folder.Read("all.csv");

  // What was there once more, asked for between two frames; nothing armed; all the same to the bit.
  ok("take take.glb --from 0.417 --to 0.8 --go-on --play all.csv --countdown 0 -o same.glb");
  EXPECT_TRUE(poses("same.glb") == whole);
  ok("take take.glb --seconds 1.6 --arm none --countdown 0 -o none.glb");
  EXPECT_TRUE(poses("none.glb") == whole);
  ok("inputs none.glb -o none.csv");
  EXPECT_EQ(folder.Read("none.csv"), inputs);

  // One input alone, blended in and out: the others stay, and so do the keys ahead of it.
  const std::string name = json("info take.glb")["rigs"][0]["inputs"][0]["name"];
  folder.Write("one.csv", "time,Hand:" + name + "\n0,0.9\n2,0.9\n");
  ok({"take", "take.glb", "--from", "0.4", "--to", "0.8", "--go-on", "--blend", "0.12", "--arm",
      "Hand:" + name, "--play", "one.csv", "--countdown", "0", "-o", "one.glb"});
  ok("inputs one.glb -o one.csv");
  const auto cells = [](const std::string& text) {
    std::vector<std::vector<double>> rows;
    std::istringstream lines(text);
    std::string line;
    for (std::getline(lines, line); std::getline(lines, line);) {
      rows.emplace_back();
      std::istringstream fields(line);
      for (std::string field; std::getline(fields, field, ',');)
        rows.back().push_back(std::stod(field));
    }
    return rows;
  };
  const auto before = cells(inputs), after = cells(folder.Read("one.csv"));
  ASSERT_EQ(before.size(), after.size());
  for (std::size_t i = 0; i < before.size(); ++i) {
    const double t = before[i][0];
    for (std::size_t k = 0; k < before[i].size(); ++k) {
      if (k == 1 && t > 0.41 && t < 0.79) continue;
      EXPECT_EQ(after[i][k], before[i][k]) << t;
    }
    if (t > 0.53 && t < 0.67) {
      EXPECT_EQ(after[i][1], 0.9) << t;
    }
  }
  const Poses now = poses("one.glb");
  for (const auto& [node, rows] : whole) {
    ASSERT_EQ(now.at(node).size(), rows.size());
    for (std::size_t i = 0; i <= 10; ++i) EXPECT_EQ(now.at(node)[i], rows[i]) << node;
  }
  EXPECT_FALSE(now == whole);
  tells("take take.glb --from 1 --to 0.5 -o no.glb", 1, {"--to", "not behind"});
  tells("take take.glb -o no.glb", 2, {"--seconds or --to"});
  tells("take take.glb --to 1 --blend 1 -o no.glb", 2, {"--go-on"});
  tells("take take.glb --to 1 --arm Hand:Nose -o no.glb", 1, {"Nose", name});
}

TEST_F(EndToEnd, AFollowCameraSmoothsAndLeavesTheRestAlone) {
  makeFollowScene();
  const Poses before = poses("shot.glb");
  const Poses after = poses("cam.glb");
  EXPECT_EQ(after.at("Mover"), before.at("Mover"));
  EXPECT_EQ(after.at("Wall"), before.at("Wall"));
  EXPECT_EQ(after.at("Cam_AttachedCam").size(), 51u);
  EXPECT_NEAR(distance(after.at("Cam_AttachedCam")[20], after.at("Mover")[20]), 0.0, 1e-6);
  EXPECT_LT(shake(after.at("Cam_FollowCam")), 0.5 * shake(after.at("Mover")));
  EXPECT_LT(distance(after.at("Cam_FollowCam")[50], after.at("Mover")[50]), 1.5);

  // A stiffer spring keeps nearer; a rig that is not stepped keeps its keys.
  const std::string stiff = "Cam:Translation Response Factor=400";
  ok({"resim", "cam.glb", "--set", stiff, "-o", "stiff.glb"});
  ok("clone cam.glb Cam -o two.glb");
  const std::string clone = json("info two.glb")["rigs"][1]["name"];
  ok({"resim", "two.glb", "--set", stiff, "--only", clone, "-o", "two.glb"});
  const auto near = poses("stiff.glb").at("Cam_FollowCam");
  EXPECT_LT(distance(near[40], after.at("Mover")[40]),
            distance(after.at("Cam_FollowCam")[40], after.at("Mover")[40]));
  EXPECT_EQ(poses("two.glb").at("Cam_FollowCam"), after.at("Cam_FollowCam"));

  ok({"order", "two.glb", clone, "--before", "Cam", "-o", "two.glb"});
  ok("rename two.glb Cam Hero -o two.glb");
  const auto rigs = json("info two.glb")["rigs"];
  EXPECT_EQ(rigs[0]["name"], clone);
  EXPECT_EQ(rigs[1]["name"], "Hero");
  EXPECT_EQ(poses("two.glb").count("Hero_FollowCam"), 1u);
  ok("remove two.glb Hero -o two.glb");
  ok({"remove", "two.glb", clone, "-o", "two.glb"});
  EXPECT_EQ(poses("two.glb"), before);
}

TEST_F(EndToEnd, InfoTellsWhatSetHasDone) {
  ok("add shot.glb MotionFilterCam -o cam.glb");
  tells("set cam.glb MotionFilterCam_01:#1=-5 'MotionFilterCam_01:Fixate Rotations=on' -o cam.glb",
        0, {"Translation Response Factor"});
  const auto info = json("info cam.glb");
  EXPECT_EQ(info["frameRate"], 25.0);
  EXPECT_EQ(info["range"], nlohmann::json({0.0, 2.0}));
  EXPECT_EQ(info["warnings"].size(), 0u);
  std::map<std::string, nlohmann::json> nodes, parameters;
  for (const auto& node : info["nodes"]) nodes[node["name"]] = node;
  EXPECT_EQ(nodes["Lamp"]["parent"], "Mover");
  EXPECT_TRUE(nodes["Wall"]["parent"].is_null());
  EXPECT_EQ(nodes["MotionFilterCam_01_FollowCam"]["type"], "camera");
  for (const auto& parameter : info["rigs"][0]["parameters"])
    parameters[parameter["label"]] = parameter;
  EXPECT_EQ(parameters["Translation Response Factor"]["value"], 0.0);
  EXPECT_EQ(parameters["Translation Response Factor"]["id"], 1);
  EXPECT_EQ(parameters["Fixate Rotations"]["value"], true);
  expectTold(ok("info cam.glb"), {"Rig MotionFilterCam_01"});
  EXPECT_FALSE(folder.Has("root")) << "nothing but a user's saving writes to the data root";
}

TEST_F(EndToEnd, PlaceTurnsAboutXThenYThenZAndKeysWhatIsKeyed) {
  ok("place shot.glb Lamp --rotate 90,90,0 -o out.glb");
  ok("parent out.glb Lamp / -o out.glb");
  const Poses world = poses("out.glb");
  const Poses before = poses("shot.glb");
  EXPECT_LT(distance(world.at("Lamp")[0], before.at("Lamp")[0]), 1e-6);
  // About X first: +Z goes to -Y, which Y leaves alone; Ry * Rx = (0.5, 0.5, -0.5, 0.5).
  const auto& q = world.at("Lamp")[0];
  const double wanted[] = {0.5, 0.5, -0.5, 0.5};
  for (int i = 0; i < 4; ++i) EXPECT_NEAR(q[4 + i], wanted[i], 1e-6);

  tells("place shot.glb Mover --translate 7,7,7 --time 1 -o out.glb", 0,
        {"Mover has translation keys"});
  const auto path = poses("out.glb").at("Mover");
  EXPECT_NEAR(path[25][1], 7.0, 1e-6);
  EXPECT_NEAR(distance(path[24], before.at("Mover")[24]), 0.0, 1e-4);
  EXPECT_NEAR(distance(path[26], before.at("Mover")[26]), 0.0, 1e-4);
}

TEST_F(EndToEnd, ADeliveryHoldsTheUsersNodesBakedAndNothingOfOurs) {
  makeFollowScene();
  ok("parent cam.glb Wall Cam_FollowCam -o cam.glb");
  ok("parent cam.glb Lamp Wall -o cam.glb");
  const Poses expected = poses("cam.glb");
  for (const char* name : {"delivery.glb", "delivery.gltf"}) {
    ok({"export", "cam.glb", "--clean", "-o", name});
    const std::string bytes = folder.Read(name);
    for (const char* ours : {"rigwright", "RWT_tag", "Cam_"})
      EXPECT_EQ(bytes.find(ours), std::string::npos) << name << " holds " << ours;
    const Poses delivered = poses(name);
    ASSERT_EQ(delivered.size(), 3u);
    EXPECT_EQ(delivered.at("Mover"), expected.at("Mover"));
    for (const char* node : {"Wall", "Lamp"})
      for (std::size_t i = 0; i <= 50; ++i)
        for (std::size_t k = 1; k < 11; ++k)
          EXPECT_NEAR(delivered.at(node)[i][k], expected.at(node)[i][k], 2e-6) << node << i;
    if (GltfValidator::available()) {
      EXPECT_EQ(GltfValidator::errorsOf(path(name)), "");
    }
  }
  ok("export cam.glb --clean --keep Cam_FollowCam -o kept.glb");
  const Poses kept = poses("kept.glb");
  EXPECT_EQ(kept.size(), 4u);
  EXPECT_LT(distance(kept.at("Wall")[30], expected.at("Wall")[30]), 1e-5);
  EXPECT_EQ(json("info kept.glb")["rigs"].size(), 0u);
}

TEST_F(EndToEnd, AGunsShotsAreDeliveredByTheStartOfTheirNames) {
  ok("add shot.glb Firepower --name Gun --profile Shotgun -o gun.glb");
  const auto told = json("parent gun.glb Gun_collision Wall -o gun.glb");
  EXPECT_EQ(told["grounds"][0]["declaredBy"], "Gun_collision") << told;
  EXPECT_EQ(told["grounds"][0]["otherwise"], "none: projectiles meet nothing");
  expectTold(ok("info gun.glb"), {"Target: none"});
  folder.Write("fire.csv", "time,Gun:Fire\n0,0\n0.36,0\n0.4,1\n1,1\n");
  ok("set gun.glb 'Gun:Rate of fire (rounds/s)=5' -o gun.glb");
  ok("resim gun.glb --inputs fire.csv --range 0:2 -o gun.glb");
  ok("export gun.glb --clean --keep Gun_bullet_* -o kept.glb");
  EXPECT_EQ(poses("kept.glb").size(), 3u + 9 * 12u)
      << "five rounds a second from 0.4 to 2, twelve pellets each";
  tells("export gun.glb --clean --keep Bow_arrow* -o none.glb", 1,
        {"there is no node \"Bow_arrow*\""});
}

TEST_F(EndToEnd, PlotsAreTheSameEveryTimeAndNeedNoDisplay) {
  makeFollowScene();
  ok("plot cam.glb -o a.svg");
  ok("plot cam.glb --rig Cam -o b.svg");
  const std::string svg = folder.Read("a.svg");
  EXPECT_TRUE(svg == folder.Read("b.svg"));
  expectTold(svg, {"Cam_FollowCam", "Cam_AttachedCam", "Speed (m/s)", "start", "end", "x (m)"});
  ok("plot cam.glb -o a.png");
  EXPECT_EQ(folder.Read("a.png").substr(0, 8), "\x89PNG\r\n\x1a\n");
  EXPECT_TRUE(ok("plot cam.glb -o /dev/stdout") == svg);

  // Two scenes of which one moves three times as far: side by side, with the same speeds beside
  // both.
  ok("place cam.glb Cam_FollowCam --translate 0,0,9 -o far.glb");
  ok("resim far.glb --range 0:2 -o far.glb");
  const std::string both = ok("plot cam.glb far.glb -o /dev/stdout");
  const std::string profile = json("info cam.glb")["rigs"][0]["profile"];
  expectTold(both, {"cam.glb: " + profile, "far.glb: " + profile});
  const auto numbersOf = [](const std::string& picture, std::size_t from) {
    std::vector<std::string> numbers;  // beside the speeds: those that end at the next title
    const std::size_t title = picture.find("Speed (m/s)", from);
    const std::string part = picture.substr(title, picture.find("Turn speed", title) - title);
    const std::regex number(">(-?[0-9.]+)</text>");
    for (std::sregex_iterator at(part.begin(), part.end(), number), end; at != end; ++at)
      numbers.push_back((*at)[1]);
    return numbers;
  };
  const auto left = numbersOf(both, 0);
  EXPECT_GT(left.size(), 2u);
  EXPECT_EQ(left, numbersOf(both, both.find("Speed (m/s)") + 1));
  EXPECT_NE(left, numbersOf(svg, 0)) << "alone it has another scale";

  // Ten paths, and so ten pairs of colour and dashes among the legend's lines.
  for (int i = 0; i < 4; ++i) ok("clone cam.glb Cam -o cam.glb");
  for (int i = 1; i <= 4; ++i)
    ok({"parent", "cam.glb", "Cam_0" + std::to_string(i) + "_AttachedCam", "Mover", "-o",
        "cam.glb"});
  const std::string many = ok("plot cam.glb -o /dev/fd/1");
  std::set<std::string> looks;
  const std::regex line(
      "stroke=\"(#[0-9a-f]+)\" stroke-opacity=\"1\"( stroke-dasharray=\"[0-9,]+\")?"
      "[^>]*stroke-width=\"2.4\"");
  for (std::sregex_iterator at(many.begin(), many.end(), line), end; at != end; ++at)
    looks.insert((*at)[1].str() + (*at)[2].str());
  EXPECT_EQ(looks.size(), 10u);
}

TEST_F(EndToEnd, ProfilesAreSavedAppliedAndDeleted) {
  ok("add shot.glb MotionFilterCam --name Cam --profile Bouncy -o a.glb");
  EXPECT_EQ(json("info a.glb")["rigs"][0]["profile"], "Bouncy");
  ok("set a.glb 'Cam:Translation Response Factor=123' -o a.glb");
  ok("profile save a.glb Cam Mine");
  EXPECT_EQ(run("profile save a.glb Cam Mine").status, 1);
  const std::string file = "root/data/motionfiltercam/configprofiles/Mine.ocp";
  const std::string saved = folder.Read(file);
  folder.Write(file, std::regex_replace(saved, std::regex("version=\"[0-9.]+\" name"),
                                        "version=\"0.1\" name"));
  for (const char* line : {"add shot.glb MotionFilterCam --profile Mine -o b.glb",
                           "profile apply a.glb Cam Mine -o b.glb"})
    tells(line, 0, {"older version"});
  ok("profile save a.glb Cam Mine --yes");
  ok("profile export a.glb Cam Mine -o mine.ocp");
  ok("profile rename a.glb Cam Mine Yours");
  EXPECT_EQ(run("profile delete a.glb Cam Yours").status, 1);
  ok("profile delete a.glb Cam Yours --yes");
  EXPECT_EQ(run("profile apply a.glb Cam Yours -o b.glb").status, 1);
  ok("profile apply a.glb Cam Tight -o b.glb");
  ok("profile import b.glb Cam mine.ocp");
  ok("profile apply b.glb Cam Mine -o b.glb");
  EXPECT_EQ(json("info b.glb")["rigs"][0]["parameters"][1]["value"], 123.0);
  ok("add shot.glb DirectInputLink --name Hand -o c.glb");
  ok("profile apply c.glb Hand 'Example Axes' --inputs -o c.glb");
  const auto control = [this](const std::string& scene, int input) {
    return json({"info", scene})["rigs"][0]["inputs"][input]["mapping"]["control"];
  };
  EXPECT_EQ(control("c.glb", 0)["type"], "Axis");
  // Two keys that are mapped by hand are what the factory's profile has.
  ok("profile apply c.glb Hand 'Example Keyboard' --inputs -o c.glb");
  ok("map c.glb 'Hand:Forw/Backw Transl' --positive Keyboard Up_Arrow 0 --negative Keyboard "
     "Down_Arrow 0 -o d.glb");
  EXPECT_EQ(control("d.glb", 0), control("c.glb", 0));
}

TEST_F(EndToEnd, CtrlCLeavesEverythingAsItWas) {
  ok("add shot.glb DirectInputLink --name Hand -o hand.glb");
  const auto before = files();
  const Outcome take = run("take hand.glb --seconds 60 -o hand.glb", 0.4);
  EXPECT_EQ(take.status, 130) << take.err;
  const Outcome countdown = run("take hand.glb --seconds 1 --countdown 60 -o new.glb", 0.4);
  EXPECT_EQ(countdown.status, 130) << countdown.err;
  const Outcome resim = run("resim hand.glb --range 0:4000000 -o hand.glb", 0.4);
  EXPECT_EQ(resim.status, 130) << resim.err;
  EXPECT_TRUE(files() == before) << "no file may have changed or been left behind";

  // Wherever the signal comes, also in the middle of a save: all or nothing.
  int saved = 0;
  for (double after = 0.2; saved == 0 && after < 30.0; after *= 1.5) {
    const Outcome late = run("resim hand.glb --range 0:1000 -o new.glb", after);
    saved = folder.Has("new.glb");
    EXPECT_EQ(late.status, saved ? 0 : 130) << after << late.err;
    EXPECT_EQ(files().size(), before.size() + static_cast<std::size_t>(saved)) << after;
  }
  EXPECT_EQ(saved, 1);
}

TEST_F(EndToEnd, NothingPerformedIsLostWithoutAWord) {
  ok("add shot.glb DirectInputLink --name Hand -o hand.glb");
  const std::string input = "Hand:Yaw (Right/Left)";
  folder.Write("in.csv", "time," + input + "\n0,0\n1,0.5\n3,0.5\n");
  const auto run3 = json("resim hand.glb --inputs in.csv --range 0:3 -o hand.glb");
  EXPECT_EQ(run3["playbackRange"], nlohmann::json({0.0, 3.0})) << "it was 0 to 2 s";
  ok("resim hand.glb -o again.glb");
  EXPECT_TRUE(folder.Read("again.glb") == folder.Read("hand.glb"));

  const std::string asks = "no device drives " + input;
  const std::string keys = " keys of 1 node from ", samples = "2 recorded samples of 1 input from ";
  const std::string all = " samples of 1 input from 0 to 3 s";
  const auto before = files();
  const std::string take = "take hand.glb --seconds 0.1 -o out.glb ";
  for (const auto& [line, status, told] : std::vector<std::tuple<std::string, int, Texts>>{
           {"resim hand.glb -o out.glb --range :2.5", 0, {"dropped 13" + keys + "2.52 to 3 s"}},
           {take, 1, {asks + " (0 to 3 s)", "nothing was recorded or written", "--play"}},
           {take + "--from 2.9", 1, {asks + " (2.88 to 3 s)"}},
           {take + "--from 3.1", 0, {"from 3.08 to 3.2 s", "is now 0 to 3.2 s, it was 0 to 3"}},
           {take + "--yes", 0, {asks, "dropped 73" + keys + "0.12 to 3", samples + "1 to 3"}},
           {take + "--play in.csv", 0, {samples + "1 to 3 s (" + input + ")"}},
           {"remove hand.glb Hand -o out.glb",
            0,
            {"3 recorded" + all, "76" + keys + "0 to 3 s"}}}) {
    tells(line.c_str(), status, told);
    EXPECT_EQ(std::filesystem::remove(path("out.glb")), status == 0);
  }
  EXPECT_TRUE(files() == before);

  EXPECT_EQ(json("preferences countdown=1 updateviewport=off theme=dark")["preferences"],
            nlohmann::json({{"countdown", 1},
                            {"updateviewport", false},
                            {"autosave", 3},
                            {"language", "system"},
                            {"theme", "dark"},
                            {"units", "m"},
                            {"osc", 0},
                            {"oscopen", false},
                            {"midi", false},
                            {"pen", "window"}}));
  tells("take hand.glb --from 4 --seconds 0.1 -o x.glb", 0, {"starts in 1 s"});

  ok("range hand.glb --end 1.5 --fps 30000/1001 -o other.glb");
  EXPECT_EQ(ok("range other.glb"), "0 to 1.5 s at 29.97 (30000/1001) frames per second\n");
  EXPECT_EQ(json("info other.glb")["frameRate"], 30000.0 / 1001.0);
}

/// A file of another program whose node has `count` keys on each `step`th frame of `rate`.
std::string foreignScene(double rate, int count, int step = 1) {
  namespace headless = rws::adaptor::headless;
  headless::Scene scene;
  headless::Channel channel(headless::ChannelPath::kTranslation);
  std::vector<double> times, values;
  for (int i = 0; i < count; ++i) {
    times.push_back(static_cast<float>(i * step / rate));
    values.insert(values.end(), {1.0 * i, 0.0, 0.0});
  }
  EXPECT_TRUE(channel.SetKeys(times, values));
  if (count > 0) scene.AddNode("Box").SetChannel(channel);
  const TempFolder place;
  const std::string file = place.path + "/scene.gltf";
  EXPECT_TRUE(headless::GltfWriter::Write(scene, file));
  auto document = nlohmann::json::parse(place.Read("scene.gltf"));
  document["scenes"][0].erase("extras");
  return document.dump();
}

TEST_F(EndToEnd, AForeignScenesRateIsThatOfItsKeys) {
  namespace headless = rws::adaptor::headless;
  const auto expectRate = [](const std::string& text, double rate, const std::string& told) {
    const auto read = headless::GltfReader::ReadMemory(text, "in.gltf");
    ASSERT_TRUE(read) << read.error;
    EXPECT_EQ(read.scene->GetFrameRate(), rate) << told;
    ASSERT_EQ(read.warnings.size(), told.empty() ? 0u : 1u) << rate;
    EXPECT_TRUE(told.empty() || read.warnings[0].find(told) != std::string::npos) << told;
  };
  for (const double whole : {24.0, 25.0, 30.0, 48.0, 50.0, 60.0, 120.0}) {
    for (const int count : {3, 200, 5000})
      expectRate(foreignScene(whole, count), whole,
                 whole == 25.0 ? "" : headless::FrameRateText(whole) + " per second, which");
    const double broadcast = whole / 1.001;
    if (whole != 25.0 && whole != 50.0)
      expectRate(foreignScene(broadcast, 100), whole * 1000.0 / 1001.0, "/1001) per second, which");
  }
  for (const int count : {0, 1, 2}) expectRate(foreignScene(24.0, count), 25.0, "");
  expectRate(foreignScene(24.0, 9, 24), 25.0, "");  // whole seconds fit all
  expectRate(foreignScene(30.0, 9, 6), 25.0, "likeliest (they stand on those of 30, 60");
  expectRate(foreignScene(24.0, 9, 12), 24.0, "likeliest (they stand on those of 30, 50");
  expectRate(foreignScene(7.3, 9), 25.0, "no common one: 25 per second is taken");

  folder.Write("film.gltf", foreignScene(24.0, 50));
  ok("range film.gltf --fps 25 -o tv.glb");
  EXPECT_EQ(json("range tv.glb")["frameRate"], 25.0) << "what was chosen is kept";
}

TEST_F(EndToEnd, AGermanLocaleChangesNothing) {
  ok("add shot.glb MotionFilterCam --name Cam -o cam.glb");
  const Words resim =
      "resim cam.glb --fps 29.97 --set 'Cam:Translation Response Factor=12.5' -o out.glb";
  ok(resim);
  const std::string expected = folder.Read("out.glb");
  for (const char* locale : {"LC_ALL=de_DE.UTF-8", "LC_ALL=de_DE.utf8", "LC_NUMERIC=de_DE"}) {
    EXPECT_EQ(run(resim, 0.0, {locale}).status, 0);
    EXPECT_TRUE(folder.Read("out.glb") == expected) << locale;
  }
}

}  // namespace
}  // namespace orv::tests
