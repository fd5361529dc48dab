// What the program says to wrong command lines and damaged files.
#include "app/ProgramTest.h"

namespace orv::tests {
namespace {

struct Case {
  Words words;
  int status;
  Texts told;  ///< pieces that stderr must hold
};

constexpr const char* kYaw = "Hand:Yaw (Right/Left)";

class BadInput : public ProgramTest {
 protected:
  void SetUp() override {
    ok("add shot.glb MotionFilterCam --name Cam -o cam.glb");
    ok("add cam.glb DirectInputLink --name Hand -o cam.glb");
    folder.Write("root/data/templates/axis.xml", R"(<template version="1" id="Turn" name="Turn">
      <inputs><input name="speed" label="Speed" kinds="axis"/></inputs>
      <nodes><box name="Plate"/></nodes></template>)");
    ok("add cam.glb Turn --name Turn -o cam.glb");
    const std::string glb = folder.Read("cam.glb");
    folder.Write("cut.glb", glb.substr(0, glb.size() / 2));
    folder.Write("nobuffer.gltf", R"({"asset":{"version":"2.0"},
      "buffers":[{"byteLength":8,"uri":"gone.bin"}],
      "bufferViews":[{"buffer":0,"byteLength":8}]})");
    rws::adaptor::headless::Scene late;
    late.setRange(1e12, 2e12);
    EXPECT_TRUE(rws::adaptor::headless::GltfWriter::write(late, path("late.glb")));
    ok("add late.glb SteadyCam -o late.glb");
    folder.Write("unknown.csv", "time,Hand:Yaw (Right/Lift)\n0,1\n");
    folder.Write("nan.csv", "time,Yaw (Right/Left)\n0,1\n0.1,nan\n");
    folder.Write("falls.csv", "time,Yaw (Right/Left)\n0,1\n0.2,1\n0.1,1\n");
  }

  /// Each must fail as told, print nothing on stdout, and leave every file as it was.
  void expectAll(const std::vector<Case>& cases) {
    const auto before = files();
    for (const Case& c : cases) {
      std::string line;
      for (const std::string& word : c.words) line += word + " ";
      const Outcome result = run(c.words);
      EXPECT_EQ(result.status, c.status) << line << "\n" << result.err;
      EXPECT_EQ(result.out, "") << line;
      EXPECT_EQ(result.err.rfind("rigwright: ", 0), 0u) << line << "\n" << result.err;
      expectTold(result.err, c.told);
    }
    EXPECT_TRUE(files() == before) << "no file may have changed or been left behind";
  }
};

TEST_F(BadInput, WhatTheCommandLineAloneShowsEndsWithTwo) {
  expectAll({
      {{}, 2, {"no verb", "--help"}},
      {"inof cam.glb", 2, {"unknown verb inof", "info"}},
      {"profile lst cam.glb Cam", 2, {"unknown verb lst", "list", "profile --help"}},
      {"info", 2, {"SCENE", "info --help"}},
      {"info cam.glb --nonsense", 2, {"--nonsense"}},
      {"add cam.glb MotionFilterCam", 2, {"--output"}},
      {"add cam.glb MotionFilterCam -o x.obj", 2, {"x.obj", ".glb"}},
      {"add cam.glb MotionFilterCam --translate 1,2 -o x.glb", 2, {"1,2"}},
      {"add cam.glb MotionFilterCam --scale -1 -o x.glb", 2, {"--scale"}},
      {"add cam.glb MotionFilterCam --scale 2e6 -o x.glb", 2, {"1e+06"}},
      {"add cam.glb MotionFilterCam -o ''", 2, {"--output", "empty"}},
      {"export cam.glb -o ''", 2, {"--output", "empty"}},
      {"place cam.glb Wall --translate 0,0,-2e12 -o x.glb", 2, {"-2e12"}},
      {"place cam.glb Wall -o x.glb", 2, {"--translate"}},
      {"order cam.glb Cam -o x.glb", 2, {"--before"}},
      {"set cam.glb Cam -o x.glb", 2, {"RIG:LABEL=VALUE"}},
      {"resim cam.glb --range 5:1 -o x.glb", 2, {"5:1"}},
      {"resim cam.glb --range 0:1e999 -o x.glb", 2, {"1e999"}},
      {"resim cam.glb --fps 1e9 -o x.glb", 2, {"--fps"}},
      {"take cam.glb --seconds 1 --from=-1e12 -o x.glb", 2, {"--from"}},
      {"take cam.glb --seconds 1e300 -o x.glb", 2, {"--seconds"}},
      {"take cam.glb -o x.glb", 2, {"--seconds"}},
      {"take cam.glb --seconds 1,5 -o x.glb", 2, {"1,5"}},
      {"take cam.glb --seconds 1 --slow 11 -o x.glb", 2, {"1 to 10"}},
      {"map cam.glb Hand:X any Axis -1 -o x.glb", 2, {"INDEX"}},
      {"map cam.glb Hand:X --positive any Axis 0 -o x.glb", 2, {"--negative"}},
      {"range cam.glb --end 5", 2, {"--output"}},
      {"range cam.glb -o x.glb", 2, {"--start, --end or --fps"}},
      {"range cam.glb --fps 30/0 -o x.glb", 2, {"30/0", "30000/1001"}},
      {"preferences countdown", 2, {"KEY=VALUE"}},
      {"export cam.glb -o x.glb", 2, {"--clean"}},
      {"export cam.glb --clean -o x.csv", 2, {".glb"}},
      {"plot cam.glb -o x.pdf", 2, {".svg"}},
      {"plot a b c d e f g h i -o x.svg", 2, {"8 scenes"}},
  });
}

TEST_F(BadInput, TheRestEndsWithOneAndNamesTheThingAndItsNeighbours) {
  expectAll({
      {"info gone.glb", 1, {"gone.glb"}},
      {"info cut.glb", 1, {"cut.glb"}},
      {"export cut.glb --clean -o x.glb", 1, {"cut.glb"}},
      {"info nobuffer.gltf", 1, {"nobuffer.gltf", "gone.bin"}},
      {"info falls.csv", 1, {"falls.csv"}},
      {"add cam.glb MotionFilterCan -o x.glb", 1, {"MotionFilterCam"}},
      {"add cam.glb SteadyCam --name Cam -o x.glb", 1, {"Cam", "another"}},
      {"add cam.glb SteadyCam --name a:b -o x.glb", 1, {"a:b"}},
      {"add cam.glb MotionFilterCam --profile Bounzy -o x.glb", 1, {"Bouncy"}},
      {"remove cam.glb Hnad -o x.glb", 1, {"cam.glb", "Hnad", "mean Hand"}},
      {"set cam.glb 'Cam:Fixate Rotation=1' -o x.glb", 1, {"Fixate Rotations"}},
      {"set cam.glb Cam:#99=1 -o x.glb", 1, {"#99"}},
      {"set cam.glb Cam:#1=1,5 -o x.glb", 1, {"1,5"}},
      {"set cam.glb Cam:Re-Initialize=1 -o x.glb", 1, {"Re-Initialize"}},
      {"press cam.glb Cam:Reinitialize -o x.glb", 1, {"Re-Initialize"}},
      {"parent cam.glb Mover Lamp -o x.glb", 1, {"Lamp is below Mover"}},
      {"profile apply cam.glb Cam Nope -o x.glb", 1, {"Nope", "Bouncy"}},
      {"profile save cam.glb Cam a/b", 1, {"a/b", "not allowed"}},
      {"profile import cam.glb Cam nan.csv", 1, {"nan.csv"}},
      {"profile import cam.glb Cam gone.ocp",
       1,
       {"could not be imported. gone.ocp: cannot be read"}},
      {{"map", "cam.glb", kYaw, "any", "Axsi", "0", "-o", "x.glb"}, 1, {"mean Axis?"}},
      {{"map", "cam.glb", kYaw, "Keyboard", "Up", "0", "-o", "x.glb"}, 1, {"mean Up_Arrow or"}},
      {{"map", "cam.glb", kYaw, "keyboard", "W", "0", "-o", "x.glb"}, 1, {"mean Keyboard?"}},
      {"map cam.glb Turn:Speed any Button 0 -o x.glb",
       1,
       {"takes an axis, and not a button", "--positive and --negative"}},
      {"range cam.glb --start 3 -o x.glb", 1, {"from 3 to 2 s", "--end"}},
      {"preferences count=1", 1, {"mean countdown?"}},
      {"preferences countdown=-1", 1, {"\"-1\"", "0 to 3600"}},
      {"preferences theme=2", 1, {"\"2\"", "one of system light dark"}},
      {"--data-root cut.glb preferences countdown=1", 1, {"preferences.xml"}},
      {"resim shot.glb -o x.glb", 1, {"shot.glb", "no rig"}},
      {"resim cam.glb --only Kam -o x.glb", 1, {"mean Cam"}},
      {"resim cam.glb --range 9: -o x.glb", 1, {"--range"}},
      {"resim cam.glb --range 0:1e5 --fps 1e5 -o x.glb", 1, {"--fps"}},
      {"resim late.glb -o x.glb", 1, {"the playback range"}},
      {"take late.glb --seconds 1 -o x.glb", 1, {"the playback range"}},
      {"take cam.glb --seconds 1e8 -o x.glb", 1, {"--seconds"}},
      {"resim cam.glb --inputs unknown.csv -o x.glb",
       1,
       {"unknown.csv", "line 1, column 2", "Hand:Yaw (Right/Left)"}},
      {"resim cam.glb --inputs nan.csv -o x.glb", 1, {"nan.csv", "line 3, column 2"}},
      {"take cam.glb --seconds 1 --play falls.csv -o x.glb", 1, {"falls.csv", "line 4, column 1"}},
      {"inputs cam.glb -o x.csv", 1, {"no recorded inputs"}},
      {"resim cam.glb -o no/such/x.glb", 1, {"no/such/x.glb"}},
      {"export cam.glb -o /dev/full", 1, {"/dev/full", "space"}},
      {"export cam.glb --clean -o no/x.glb", 1, {"no/x.glb"}},
      {"plot cam.glb -o no/x.svg", 1, {"no/x.svg"}},
      {"plot shot.glb -o x.svg", 1, {"no rig"}},
      {"plot cam.glb shot.glb -o x.svg", 1, {"shot.glb", "no rig"}},
  });
}

TEST_F(BadInput, ADamagedTemplateIsToldAndLeavesTheOthersAlone) {
  const std::string head = "<template version=\"1\" id=\"";
  const std::string nodes = "\" name=\"N\"><nodes><box name=\"B\"/></nodes>";
  folder.Write("mine/data/templates/good.xml", head + "Mine" + nodes + "</template>");
  folder.Write(
      "mine/data/templates/bad.xml",
      head + "Bad" + nodes +
          "<outputs><output name=\"x\"><parameter>y</parameter></output></outputs></template>");
  const auto tools = json("--data-root mine tools");
  expectTold(tools["tools"].dump(), {"\"Mine\"", "\"Pendulum\""});
  ASSERT_EQ(tools["leftOut"].size(), 1u);
  EXPECT_EQ(tools["leftOut"][0]["element"], "template \"N\"/outputs/output \"x\"/parameter");
  EXPECT_EQ(tools["leftOut"][0]["reason"], "there is no parameter, input or output \"y\"");
  expectTold(ok("--data-root mine tools"), {"bad.xml"});
  EXPECT_EQ(run("--data-root mine add shot.glb Mine -o x.glb").status, 0);
  EXPECT_NE(run("add shot.glb Mine -o y.glb").status, 0);
  // A scene of a kind that is not there keeps its rig.
  tells("place x.glb Mover --translate 0,0,0 -o z.glb", 0, {"no rig kind \"Mine\""});
  EXPECT_EQ(json("--data-root mine info z.glb")["rigs"].size(), 1u);
}

TEST_F(BadInput, ADamagedRigRecordIsToldAndKept) {
  ok("set cam.glb 'Cam:Fixate Rotations=0' -o cam.gltf");
  auto document = nlohmann::json::parse(folder.Read("cam.gltf"));
  auto& rigs = document["scenes"][0]["extras"]["rigwright"]["rigs"];
  ASSERT_EQ(rigs.size(), 3u);
  rigs[0]["record"] = "<RWT_Plugin damaged";
  const auto damaged = rigs[0];
  folder.Write("cam.gltf", document.dump());

  const auto info = json("info cam.gltf");
  ASSERT_EQ(info["rigs"].size(), 2u);
  EXPECT_EQ(info["rigs"][0]["name"], "Hand");
  expectTold(info["warnings"].dump(), {"Cam"});
  tells("set cam.gltf 'Hand:Hide Camera=1' -o out.gltf", 0, {"Cam"});
  document = nlohmann::json::parse(folder.Read("out.gltf"));
  EXPECT_EQ(document["scenes"][0]["extras"]["rigwright"]["rigs"][0], damaged);
  EXPECT_EQ(run("set cam.gltf Cam:#0=1 -o out.gltf").status, 1);
}

}  // namespace
}  // namespace orv::tests
