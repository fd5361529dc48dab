// Files of template tools, what a rig makes of them, and the ones that come with the program.
#include "rigs/RigSuite.h"
#include "support/TempFolder.h"
#include "support/Templates.h"
#include "util/CMesh_Cylinder.h"

namespace orv::tests {
namespace {

using rws::CCameraPlugin;
using rws::addon::MakeTemplatePlugin;
using Matrix = HostScene::Matrix;

/// A rig of this kind, in the place of the one that comes with the program.
struct World : HostScene {
  explicit World(CCameraPlugin& kind, double fps = 25.0)
      : HostScene(kind.GetId(), "Rig", fps, {&kind}) {
    scene().SetRange(0.0, 100.0);
    if (auto* const input = rig->FindInput("In")) input->deadzone = 0.0;
  }
  Matrix Local(const std::string& node, int frame) { return Find(node).LocalMatrix(Frame(frame)); }
};

struct EndPlugin {
  void operator()(CCameraPlugin* plugin) const { plugin->Destroy(); }
};
using PluginPtr = std::unique_ptr<CCameraPlugin, EndPlugin>;

PluginPtr Make(const std::string& document) {
  std::string element, reason;
  PluginPtr plugin(MakeTemplatePlugin(document, element, reason));
  EXPECT_TRUE(plugin) << element << ": " << reason;
  return plugin;
}

/// A template with one moved node, Cam, and these outputs.
PluginPtr WithOutputs(const std::string& outputs) {
  return Make(R"(<template version="1" id="Small" name="Small">
      <parameters><spinner name="a" label="A" value="2" min="-9" max="9"/>
        <integer name="n" label="N" value="3" min="0" max="9"/>
        <checkbox name="on" label="On" value="yes"/></parameters>
      <inputs><input name="in" label="In"/>
        <motion name="way" node="Base" channel="translate z"/></inputs>
      <nodes><box name="Base"/><cylinder name="Rod"/><camera name="Cam" parent="Base"/></nodes>
      <outputs>)" +
              outputs + "</outputs></template>");
}

std::string Output(const std::string& channel, const std::string& expression) {
  return "<output node=\"Cam\" channel=\"" + channel + "\">" + expression + "</output>";
}

constexpr char kIntegrator[] =
    "<add><before/><mul><parameter>a</parameter><parameter>frame duration</parameter></mul></add>";

TEST(TemplateTool, ADamagedFileIsToldByElementAndReason) {
  const std::string good = R"(<template version="1" id="T" name="Tool" category="Camera">
<parameters><group label="G"><spinner name="a" label="A" value="1" min="0" max="2"/></group>
<integer name="n" label="N" value="1" min="0" max="2"/></parameters>
<inputs><input name="in" label="In" kinds="axis"/><motion name="m" node="Base" channel="rotate y"/></inputs>
<nodes><box name="Base" size="1 1 1"/><cylinder name="Rod" radius="1"/><camera name="Cam" parent="Base"/></nodes>
<outputs><output name="x"><add><parameter>a</parameter><constant>2</constant></add></output>
<output node="Cam" channel="translate x"><start><parameter>a</parameter></start><parameter>x</parameter></output>
</outputs></template>)";
  Make(good);
  struct Row {
    const char *from, *to, *element, *reason;
  };
  const std::string atAdd = "template \"Tool\"/outputs/output \"x\"/add";
  const Row rows[] = {
      {"</template>", "", "document", "line 1, column 1: the tag is not closed"},
      {"<template", "<tool", "document", "line 8, column 11: a closing tag does not match"},
      {"version=\"1\"", "version=\"2\"", "template", "version \"2\" is not known"},
      {"id=\"T\"", "", "template", "\"id\" is missing"},
      {"id=\"T\"", "id=\"1 T\"", "template", "the id \"1 T\" may hold"},
      {"category", "kategory", "template", "no attribute \"kategory\""},
      {"<nodes>", "<sounds/><nodes>", "template", "no element <sounds>"},
      {"<nodes>", "<nodes/><nodes>", "template", "<nodes> stands twice"},
      {"<nodes>", "hello<nodes>", "template", "the text \"hello\""},
      {"<spinner", "<slider", "group \"G\"", "no element <slider>"},
      {"value=\"1\" min", "min", "spinner \"a\"", "\"value\" is missing"},
      {"value=\"1\" min", "value=\"x\" min", "spinner \"a\"", "value is \"x\""},
      {"value=\"1\" min", "value=\"1e99\" min", "spinner \"a\"", "at most"},
      {"value=\"1\" min", "value=\"3\" min", "spinner \"a\"", "from min to max"},
      {"min=\"0\"", "min=\"2\"", "spinner \"a\"", "min is not below max"},
      {"name=\"n\"", "name=\"a\"", "integer \"a\"", "the name \"a\" is taken"},
      {"name=\"n\"", "name=\"time\"", "integer \"time\"", "reserved"},
      {"name=\"n\"", "name=\"n-1\"", "integer \"n-1\"", "letters, digits"},
      {"label=\"N\"", "label=\"A\"", "integer \"n\"", "the label \"A\" is taken"},
      {"label=\"N\" value=\"1\"", "label=\"N\" value=\"1.5\"", "integer \"n\"", "no whole number"},
      {"kinds=\"axis\"", "kinds=\"axis pedal\"", "input \"in\"", "\"pedal\" is no kind"},
      {"node=\"Base\"", "node=\"Absent\"", "motion \"m\"", "no node \"Absent\""},
      {"node=\"Base\"", "node=\"Cam\"", "motion \"m\"", "moved by the outputs"},
      {"rotate y", "focus distance", "motion \"m\"", "no channel of a pose"},
      {"name=\"Rod\"", "name=\"Base\"", "cylinder \"Base\"", "\"Base\" is taken"},
      {"name=\"Rod\"", "name=\"Rod 1\"", "cylinder \"Rod 1\"", "the name of a node"},
      {"parent=\"Base\"", "parent=\"Roof\"", "camera \"Cam\"", "no node \"Roof\""},
      {"size=\"1 1 1\"", "size=\"1 0 1\"", "box \"Base\"", "size is not above 0"},
      {"size=\"1 1 1\"", "size=\"1 1\"", "box \"Base\"", "three numbers"},
      {"radius=\"1\"", "radius=\"-1\"", "cylinder \"Rod\"", "not above 0"},
      {"radius=\"1\"", "segments=\"2\"", "cylinder \"Rod\"", "segments"},
      {"radius=\"1\"", "axis=\"w\"", "cylinder \"Rod\"", "axis"},
      {"radius=\"1\"", "colour=\"1 2 0\"", "cylinder \"Rod\"", "colour"},
      {"parent=\"Base\"", "fieldofview=\"180\"", "camera \"Cam\"", "fieldofview"},
      {"node=\"Cam\" channel", "node=\"Can\" channel", "output \"Can\"", "no node \"Can\""},
      {"translate x", "translate w", "output \"Cam\"", "no channel \"translate w\""},
      {"node=\"Cam\" channel=\"translate x\"", "node=\"Rod\" channel=\"focus distance\"",
       "output \"Rod\" \"focus distance\"", "no lens"},
      {"<output name=\"x\">", "<output>", "output", "neither a name nor"},
      {"<output name=\"x\">",
       "<output name=\"y\" node=\"Cam\" channel=\"translate x\"><zero/></output><output "
       "name=\"x\">",
       "output \"Cam\" \"translate x\"", "another output writes"},
      {"name=\"x\"", "name=\"a\"", "output \"a\"", "the name \"a\" is taken"},
      {"<add>", "<plus><add/></plus><add>", "output \"x\"/plus", "no function <plus>"},
      {"<add>", "<zero/><add>", "output \"x\"", "more than one expression: <add> behind <zero>"},
      {"<constant>2</constant>", "<zero/><inv/>", atAdd.c_str(), "at most 2 expressions: <inv>"},
      {"<constant>2</constant>", "<parameter>2</parameter>", "add/parameter", "number 2 of the 2"},
      {"<constant>2</constant>", "<constant>2,5</constant>", "constant", "\"2,5\" is no number"},
      {"<constant>2</constant>", "2", atAdd.c_str(), "the text \"2\""},
      {"<constant>2</constant>", "<parameter>b</parameter>", "add/parameter", "\"b\""},
      {"<constant>2</constant>", "<before>a</before>", "add/before", "no output \"a\""},
      {"<constant>2</constant>", "<parameter>x</parameter>", "template \"Tool\"/outputs",
       "\"x\" reads \"x\" in the same frame"},
      {"<constant>2</constant>", "<parameter>Cam translate x</parameter>", "/outputs",
       "\"x\" reads \"Cam translate x\" reads \"x\""},
      {"<start><parameter>a", "<start><parameter>in", "start/parameter", "can't read the input"},
      {"<start><parameter>a", "<start><parameter>x", "start/parameter", "has a <start> itself"},
      {"<start><parameter>a</parameter>", "<start><before/>", "start/before", "no frame before"},
      {"<start><parameter>a</parameter>", "<start>", "start", "no expression"},
  };
  for (const Row& row : rows) {
    std::string bad = good;
    const std::size_t at = bad.find(row.from);
    ASSERT_NE(at, std::string::npos) << row.from;
    bad.replace(at, std::string(row.from).size(), row.to);
    std::string element, reason;
    EXPECT_FALSE(PluginPtr(MakeTemplatePlugin(bad, element, reason))) << row.to;
    EXPECT_NE(element.find(row.element), std::string::npos) << row.to << " gave " << element;
    EXPECT_NE(reason.find(row.reason), std::string::npos) << row.to << " gave " << reason;
  }
  std::string element, reason;
  EXPECT_FALSE(MakeTemplatePlugin("<profile/>", element, reason));
  EXPECT_NE(reason.find("<profile>"), std::string::npos);
  // No cut of a file is taken for a whole one, or crashes.
  for (std::size_t size = 0; size + 1 < good.size(); ++size)
    EXPECT_FALSE(PluginPtr(MakeTemplatePlugin(good.substr(0, size), element, reason))) << size;
}

TEST(TemplateTool, ExpressionsReadParametersInputsMotionsTimeAndOtherOutputs) {
  const PluginPtr kind = WithOutputs(
      Output("translate x", "<sum><parameter>later</parameter><parameter>n</parameter></sum>") +
      Output("translate y", "<add><parameter>time</parameter><parameter>in</parameter></add>") +
      Output("translate z",
             "<sum><parameter>1</parameter><constant>AAAAAAAANEA=</constant>"
             "<atan><constant>inf</constant></atan></sum>") +
      Output("rotate z", "<parameter>way</parameter>") +
      Output("scale y", "<parameter>a</parameter>") +
      "<output "
      "name=\"later\"><mul><parameter>a</parameter><parameter>on</parameter></mul></output>");
  World world(*kind);
  world.Set("On=1");
  world.Find("Base").SetPose({{0, 0, 0.5}, {}, {1, 1, 1}});
  world.Find("Cam").SetPose(rws::adaptor::Decompose(Matrix::rotationAxisAngle(90.0, 0, 1, 0)));
  world.Feed("In", 2, [](double t) { return t * 25.0 * 0.125; });
  world.Resimulate(0, 2);
  // The rest of the pose stays: Y still points up, then it is turned by the motion, 0.5 rad.
  const Matrix pose = world.Local("Cam", 2);
  const double expected[] = {5.0, 0.08 + 0.25, 3.0 + 20.0 + std::asin(1.0)};
  for (int i = 0; i < 3; ++i) EXPECT_NEAR(pose.translation()[i], expected[i], 1e-12) << i;
  EXPECT_NEAR(pose.axisRow(1).x, -2.0 * std::sin(0.5), 1e-12);
  EXPECT_NEAR(pose.axisRow(2).x, std::cos(0.5), 1e-12);
  EXPECT_TRUE(*world.Find("Base").GetMesh() == util::CMesh_Box(1, 1, 1));
  EXPECT_TRUE(*world.Find("Rod").GetMesh() == util::CMesh_Cylinder(0.5, 1, 24));
  // At the start the input is at rest.
  EXPECT_NEAR(world.Local("Cam", 0).translation().y, 0.0, 1e-12);
}

TEST(TemplateTool, ATakeGoesOnWhereOneStoodAndElseBeginsAtTheStartOrTheNode) {
  const PluginPtr kind =
      WithOutputs(Output("translate x", kIntegrator) +
                  "<output name=\"speed\"><start><constant>5</constant></start><before/></output>" +
                  Output("translate y", "<before>speed</before>"));
  World world(*kind);
  world.Find("Cam").SetPose({{10.0, 0.0, 0.0}, {}, {1, 1, 1}});
  const auto xAt = [&](int frame) { return world.At("Cam", frame).x; };
  world.Resimulate(5, 30);
  EXPECT_NEAR(xAt(30), 10.0 + 25 * 0.08, 1e-9);
  EXPECT_EQ(world.At("Cam", 6).y, 5.0);
  world.Resimulate(20, 40);
  EXPECT_NEAR(xAt(40), 10.0 + 35 * 0.08, 1e-9) << "it goes on";
  const auto put = [&](int frame, double x) {
    Matrix pose;
    pose.setTranslation({x, 0.0, 0.0});
    auto* const cam = world.session.GetAdaptor().FindSceneNode("Rig_Cam");
    EXPECT_TRUE(cam->SetWorldPose(world.Frame(frame), pose, true));
  };
  put(40, -3.0);
  world.Resimulate(40, 50);
  EXPECT_NEAR(xAt(50), -3.0 + 10 * 0.08, 1e-9) << "from where the user has put it";
  put(90, 0.0);
  world.Resimulate(90, 92);
  EXPECT_NEAR(xAt(92), 2 * 0.08, 1e-9) << "no take leads there";
  world.Edit("A", 9.0);
  world.Press("Re-Initialize");
  world.Resimulate(91, 92);
  world.Resimulate(91, 92);
  EXPECT_NEAR(xAt(92), 0.08 + 9 * 0.04, 1e-9);
}

TEST(TemplateTool, AChangedFileFindsTheMemoriesOfAnOldSceneByTheirNames) {
  const std::string way = Output("translate x", kIntegrator);
  const PluginPtr old = WithOutputs(way);
  const PluginPtr changed = WithOutputs(Output("translate y", "<before>new</before>") +
                                        "<output name=\"new\"><before/></output>" + way);
  TempFolder folder;
  {
    World before(*old);
    before.Resimulate(0, 10);
    folder.Write("old.glb", before.Saved());
  }
  World after(*changed);
  std::string error;
  ASSERT_TRUE(after.session.Open(folder.path + "/old.glb", error)) << error;
  after.MeetAgain();
  after.Resimulate(10, 12);
  EXPECT_NEAR(after.At("Cam", 12).x, 12 * 0.08, 1e-9);
}

TEST(TemplateTool, WhatIsNoNumberIsPassedOnAndLeavesTheMemoryWhole) {
  const PluginPtr kind = WithOutputs(
      Output("translate x", "<add><before/><inv><parameter>in</parameter></inv></add>") +
      Output("translate y", "<neg><parameter>Cam translate x</parameter></neg>"));
  World world(*kind);
  const double inputs[] = {0.0, 0.0, 0.5, 0.0, 0.5};
  world.Feed("In", 4, [&](double t) { return inputs[world.FrameOf(t)]; });
  world.Resimulate(0, 4);
  EXPECT_EQ(world.session.TakeWarnings().at(0).find("2 poses were not written"), 0u);
  EXPECT_EQ(world.At("Cam", 2).y, -2.0);
  EXPECT_EQ(world.At("Cam", 4).y, -4.0);
  world.Reopen();
}

constexpr char kZoom[] = R"(<template version="1" id="Zoom" name="Zoom" category="Camera">
  <parameters><spinner name="rate" label="Rate" value="10" min="-90" max="90"/></parameters>
  <nodes><camera name="Cam" fieldofview="30"/></nodes>
  <outputs>
    <output node="Cam" channel="field of view"><add><before/>
      <mul><parameter>rate</parameter><parameter>frame duration</parameter></mul></add></output>
    <output node="Cam" channel="focus distance"><constant>-3</constant></output>
    <output node="Cam" channel="translate x">
      <inv><greater><parameter>time</parameter><constant>0.39</constant></greater></inv></output>
  </outputs></template>)";

TEST(TemplateTool, LensesAreRecordedRepeatedAndUndoneAndRefusedPosesTold) {
  const PluginPtr kind = Make(kZoom);
  RigScene world("Zoom", 25.0, {kind.get()});
  const auto lens = [&] {
    std::vector<double> values;
    auto& node = world.session.GetAdaptor().NodeFor(world.Find("Cam"));
    for (int i = 0; i <= 20; ++i) {
      auto* snapshot = node.GetSnapshotLens(world.Frame(i));
      values.push_back(snapshot->GetFieldOfView());
      values.push_back(snapshot->GetFocusDistance());
      node.ReleaseSnapshot(snapshot);
    }
    return values;
  };
  const auto fresh = lens();
  world.Take(0, 20);
  const auto taken = lens();
  EXPECT_EQ(taken[0], 30.0);
  EXPECT_NEAR(taken[40], 30.0 + 20 * 0.4, 1e-9);
  EXPECT_EQ(taken[41], 0.0) << "kept within what a lens can be";
  EXPECT_NE(world.session.TakeWarnings().at(0).find("node Rig_Cam at 0 s"), std::string::npos);
  EXPECT_EQ(world.PosesOf(20, 20)["Cam"].at(0).translation().x, 1.0);
  world.Resimulate(0, 20);
  EXPECT_EQ(lens(), taken);
  world.Resimulate(12, 20);
  EXPECT_EQ(lens(), taken);
  for (int run = 0; run < 3; ++run) ASSERT_TRUE(world.session.GetAdaptor().HostUndo());
  EXPECT_EQ(lens(), fresh);
}

/// Angle of a plane pendulum on a pivot that moves by 0.3 sin(2t) m, from 40 degrees, at rest
/// against its pivot; by the classical Runge-Kutta method.
double SwingAngle(double seconds, double length) {
  const auto slope = [&](double t, double angle) {
    const double pivot = -1.2 * std::sin(2.0 * t);
    return -(9.81 * std::sin(angle) + pivot * std::cos(angle)) / length;
  };
  double angle = 40.0 * 3.14159265358979323846 / 180.0, rate = 0.0;
  constexpr double h = 1e-4;
  const auto steps = static_cast<int>(std::lround(seconds / h));
  for (int i = 0; i < steps; ++i) {
    const double t = i * h;
    const double k1 = slope(t, angle), r2 = rate + h / 2 * k1;
    const double k2 = slope(t + h / 2, angle + h / 2 * rate), r3 = rate + h / 2 * k2;
    const double k3 = slope(t + h / 2, angle + h / 2 * r2), r4 = rate + h * k3;
    const double k4 = slope(t + h, angle + h * r3);
    angle += h / 6 * (rate + 2 * r2 + 2 * r3 + r4);
    rate += h / 6 * (k1 + 2 * k2 + 2 * k3 + k4);
  }
  return angle;
}

TEST(TemplateTool, ThePendulumSwingsAsOnePhysicsBookSaysAndStaysOnItsRod) {
  constexpr double kFps = 200.0;
  World world(Kind("Pendulum"), kFps);
  for (const auto& [label, value] : std::map<std::string, double>{
           {"Length", 2.0}, {"Air Drag", 0.0}, {"Start Angle", 40.0}, {"Start Heading", 90.0}})
    world.Edit(label, value);
  const int frames = static_cast<int>(6 * kFps);
  World::Animate(world.Find("Pivot"), world.Frame(1), frames, [](double t) {
    return rws::adaptor::Trs{{0.3 * std::sin(2 * t), 1.0, 0.0}, {}, {1, 1, 1}};
  });
  world.Resimulate(0, frames);
  for (int i = 0; i <= frames; i += 100) {
    const auto down = world.At("Bob", i) - world.At("Pivot", i);
    EXPECT_NEAR(down.length(), 2.0, 1e-12) << i;
    EXPECT_NEAR(std::atan2(down.x, -down.y), SwingAngle(i / kFps, 2.0), 0.01) << i;
  }
}

TEST(TemplateTool, HoweverItsPivotJumpsThePendulumStaysWhole) {
  World wild(Kind("Pendulum"));
  World::Animate(wild.Find("Pivot"), wild.Frame(1), 50, [&](double t) {
    const int i = wild.FrameOf(t);
    return rws::adaptor::Trs{{i % 7 * 30.0, i % 3 * -40.0, i % 5 * 9.0}, {}, {1, 1, 1}};
  });
  wild.Resimulate(0, 50);
  for (int i = 0; i <= 50; ++i)
    EXPECT_NEAR((wild.At("Bob", i) - wild.At("Pivot", i)).length(), 1.5, 1e-9) << i;
}

TEST(TemplateTool, TheTurntableStartsSoftlyHoldsItsSpeedAndStopsAfterItsTurns) {
  for (const double fps : {24.0, 60.0}) {
    World world(Kind("Turntable"), fps);
    world.Edit("Seconds Per Turn", 4.0);
    world.Edit("Soft Start", 1.0);
    world.Edit("Turns", 2.25);
    const int frames = static_cast<int>(20 * fps);
    world.Resimulate(0, frames);
    constexpr double kTurn = 2 * 3.14159265358979323846;
    double turned = 0.0, fastest = 0.0, at1 = 0.0;
    for (int i = 1; i <= frames; ++i) {
      const auto x0 = world.Local("Plate", i - 1).axisRow(0);
      const auto x1 = world.Local("Plate", i).axisRow(0);
      const double step = std::atan2(x0.z * x1.x - x0.x * x1.z, x0.dot(x1));
      EXPECT_GE(step, -1e-12) << i;
      turned += step;
      fastest = std::max(fastest, step * fps);
      if (i == std::lround(fps * 0.2)) at1 = step * fps;
    }
    EXPECT_NEAR(turned, 2.25 * kTurn, 1e-6) << fps;
    EXPECT_NEAR(fastest, kTurn / 4.0, 1e-3) << fps;
    EXPECT_LT(at1, 0.2 * fastest) << fps;
  }
}

TEST(TemplateTool, TheHandsShakeTheSameAtEveryFrameRateAndNotAtAllWithoutAmount) {
  const auto places = [](const std::string& edit, double fps) {
    World world(Kind("HandheldCam"), fps);
    world.Set(edit);
    const int frames = static_cast<int>(2 * fps);
    world.Resimulate(0, frames);
    return world.PosesOf(0, frames).at("Camera");
  };
  const auto world = places("Amount=1", 25.0), fine = places("Amount=1", 50.0);
  const auto other = places("Seed=7", 25.0), still = places("Amount=0", 25.0);
  double widest = 0.0;
  for (std::size_t i = 0; i <= 50; ++i) {
    const auto place = world[i].translation();
    widest = std::max(widest, place.length());
    EXPECT_LT((place - fine[2 * i].translation()).length(), 1e-9) << i;
    EXPECT_GT((place - other[i].translation()).length(), 1e-6) << i;
    EXPECT_EQ(still[i].translation().length(), 0.0) << i;
  }
  EXPECT_TRUE(widest > 0.005 && widest < 0.06) << widest;
}

}  // namespace
}  // namespace orv::tests
