// The adaptor over Maya, on the host that stands in for it, under the suite for all hosts.
#pragma once

#include <gtest/gtest.h>
#include <maya/MAnimControl.h>
#include <maya/MArgList.h>
#include <maya/MDGContext.h>
#include <maya/MDGContextGuard.h>
#include <maya/MDagModifier.h>
#include <maya/MDistance.h>
#include <maya/MFileIO.h>
#include <maya/MFnCamera.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnMesh.h>
#include <maya/MFnNurbsCurve.h>
#include <maya/MGlobal.h>
#include <maya/MPxCommand.h>
#include <maya/MTime.h>

#include <cmath>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "adaptor/AdaptorFixture.h"
#include "adaptor/common/Trs.h"
#include "adaptor/maya/CMayaNode.h"
#include "adaptor/maya/HostTime.h"
#include "adaptor/maya/MayaAdaptorInterface.h"
#include "mayahost/Host.h"
#include "support/TempFolder.h"

namespace orv::tests {

namespace maya = rws::adaptor::maya;

/// What the plug-in's own command does for the entries of the host's queue.
class WrapperForTests final : public MPxCommand {
 public:
  static MPxCommand* Make() { return new WrapperForTests; }
  MStatus doIt(const MArgList& args) override {
    m_id = args.asInt(args.flagIndex("id") + 1);
    return MStatus::kSuccess;
  }
  MStatus undoIt() override { return Step(true); }
  MStatus redoIt() override { return Step(false); }
  bool isUndoable() const override { return true; }

 private:
  MStatus Step(bool back) {
    maya::MayaAdaptorInterface::instance()->StepHistory(m_id, back);
    return MStatus::kSuccess;
  }
  int m_id = 0;
};

struct MayaSettings {
  bool zUp = false;
  MDistance::Unit unit = MDistance::kCentimeters;
};

class MayaFixture final : public AdaptorFixture {
 public:
  explicit MayaFixture(MayaSettings settings = {}) {
    mayahost::Reset();
    mayahost::RegisterCommand("OrvelUndoWrapperII", WrapperForTests::Make);
    m_adaptor = std::make_unique<maya::MayaAdaptorInterface>();
    NewScene(settings);
    NewTransform("Lid", NewTransform("Crate", MObject::kNullObj));
    Place("Crate", {{0, 0, 2}, {}, {1, 1, 1}});
    auto* const lid = static_cast<maya::CMayaNode*>(m_adaptor->FindSceneNode("Lid"));
    util::CMesh plate;
    plate.vertices = {{0, 0, 0}, {1, 0, 0}, {0, 0, -1}};
    plate.faces = {0, 1, 2};
    lid->SetMesh(plate);
    lid->SetColour({0.25f, 0.5f, 0.75f});
    MFileIO::saveAs(ImportFile().c_str(), "mayaAscii", true);
    NewScene(settings);
    MTime::setUIUnit(MTime::k24FPS);
    m_adaptor->SetTimeRange(0.0, 4.0);
    m_adaptor->SetCurrentTime(0.0);
    BuildScene();
    MGlobal::executeCommand("flushUndo");
    m_adaptor->SceneGone();
  }

  maya::MayaAdaptorInterface& Maya() { return *m_adaptor; }
  rws::AdaptorInterface& Adaptor() override { return *m_adaptor; }
  CoreNode* UserNode(const std::string& sceneName) override {
    return m_adaptor->FindSceneNode(sceneName);
  }
  std::vector<double> Rates() override {
    return {24.0, 24000.0 / 1001.0, 25.0, 30.0, 30000.0 / 1001.0, 60000.0 / 1001.0};
  }
  void SetFrameRate(double fps) override {
    for (int unit = MTime::kHours; unit < MTime::kLast; ++unit)
      if (maya::FrameRateOf(static_cast<MTime::Unit>(unit)) == fps) {
        MTime::setUIUnit(static_cast<MTime::Unit>(unit));
        return;
      }
    ADD_FAILURE() << "no unit for " << fps;
  }
  double Metre() override { return 100.0; }
  bool IsZUp() override { return MGlobal::isZAxisUp(); }
  Matrix<double> HostWorld(CoreNode* node, double time) override {
    const MDagPath path = static_cast<maya::CMayaNode*>(node)->GetPath();
    const MMatrix world = maya::ReadAt(time, [&path] { return path.inclusiveMatrix(); });
    Matrix<double> matrix;
    std::copy(&world.matrix[0][0], &world.matrix[0][0] + 16, matrix.data());
    return matrix;
  }
  void Reopen() override {
    const std::string path = m_folder.path + "/again.ma";
    EXPECT_TRUE(MFileIO::saveAs(path.c_str(), "mayaAscii", true));
    EXPECT_TRUE(MFileIO::open(path.c_str(), "mayaAscii", true));
    m_adaptor->SceneGone();
  }
  std::string ImportFile() override { return m_folder.path + "/import.ma"; }
  std::vector<std::pair<std::string, std::string>>& Messages() override {
    const std::string box = "box: ";
    for (std::string& said : mayahost::Said()) {
      if (said.rfind(box, 0) != 0) continue;
      const std::size_t bar = said.find('|');
      m_messages.emplace_back(said.substr(box.size(), bar - box.size()), said.substr(bar + 1));
      said = "seen " + said;
    }
    return m_messages;
  }
  std::vector<std::string> UndoEntries() override { return m_adaptor->GetUndo().entryNames(); }

  /// A pose of rig space, as a user's hand would put it.
  void Place(const std::string& name, const rws::adaptor::Trs& world, double keyAt = NAN) {
    const bool key = !std::isnan(keyAt);
    m_adaptor->FindSceneNode(name)->SetWorldPose(key ? keyAt : 0.0, Compose(world), key);
  }
  static MObject NewTransform(const char* name, const MObject& parent) {
    MDagModifier modifier;
    const MObject made = modifier.createNode("transform", parent);
    modifier.renameNode(made, name);
    modifier.doIt();
    return made;
  }

 private:
  void NewScene(const MayaSettings& settings) {
    m_adaptor->SceneGone();
    MFileIO::newFile(true);
    if (settings.zUp)
      MGlobal::setZAxisUp();
    else
      MGlobal::setYAxisUp();
    MDistance::setUIUnit(settings.unit);
  }
  void BuildScene() {
    const MObject mover = NewTransform("Mover", MObject::kNullObj);
    NewTransform("Hook", mover);
    Place("Mover", {{0, 0, 0}, {}, {1, 1, 1}}, 0.0);
    Place("Mover", {{4, 0, 0}, {}, {1, 1, 1}}, 4.0);
    Place("Hook", {{0, 1, 0}, {}, {1, 1, 1}});
    // As a user of this host models a ground: in its unit and axes.
    MPointArray corners;
    for (const auto& [x, z] : {std::pair(-500, -500), {-500, 500}, {500, 500}, {500, -500}})
      corners.append(IsZUp() ? MPoint(x, -z, 0) : MPoint(x, 0, z));
    const MIntArray counts = {3, 3}, faces = {0, 1, 2, 0, 2, 3};
    MFnMesh().create(4, 2, corners, counts, faces, NewTransform("Ground", MObject::kNullObj));
    MObject eye = NewTransform("Eye", MObject::kNullObj);
    MFnCamera camera;
    camera.create(eye);
    camera.setFocalLength(25.4 * camera.verticalFilmAperture() / 2.0 / std::tan(M_PI / 9.0));
    MPointArray way;
    for (const auto& [x, z] : {std::pair(0, 0), {3, 0}, {3, 4}}) way.append(MPoint(x, 0, z));
    const MDoubleArray knots = {0, 1, 2};
    MFnNurbsCurve().create(way, knots, 1, MFnNurbsCurve::kOpen, false, false,
                           NewTransform("Path", MObject::kNullObj));
    Place("Path", {});
  }

  TempFolder m_folder;
  std::vector<std::pair<std::string, std::string>> m_messages;
  std::unique_ptr<maya::MayaAdaptorInterface> m_adaptor;
};

}  // namespace orv::tests
