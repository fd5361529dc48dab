// A host of another unit, up axis and rotation order under the suite for all hosts.
#pragma once

#include "AdaptorFixture.h"
#include "support/StageHost.h"

namespace orv::tests {

class StageFixture final : public AdaptorFixture {
 public:
  StageFixture() {
    const auto at = [](double x, double y, double z) {
      rws::adaptor::Trs pose;
      pose.translation = {x, y, z};
      return pose;
    };
    stage::Object& mover = m_host.Add("Mover");
    m_host.Place(mover, at(0, 0, 0), 0.0);
    m_host.Place(mover, at(4, 0, 0), 4.0);
    m_host.Place(m_host.Add("Hook", &mover), at(0, 1, 0));
    // As a user of this host models a ground: in its unit and axes.
    util::CMesh mesh;
    mesh.vertices = {{-500, 500, 0}, {-500, -500, 0}, {500, -500, 0}, {500, 500, 0}};
    mesh.faces = {0, 1, 2, 0, 2, 3};
    stage::Object& ground = m_host.Add("Ground");
    ground.isMesh = true;
    ground.mesh = rws::adaptor::MakeSharedMesh(mesh);
    stage::Object& eye = m_host.Add("Eye");
    eye.isCamera = true;
    eye.values[stage::Object::kFieldOfViewRow] = 40.0;
    stage::Object& path = m_host.Add("Path");
    path.curve = std::make_shared<rws::adaptor::Curve>(
        rws::adaptor::Curve{{{0, 0, 0}, {3, 0, 0}, {3, 0, 4}}, false});
    m_host.Place(path, at(0, 0, 0));
    m_host.SaveAs("stage");
    m_host.Open("stage");
  }

  rws::AdaptorInterface& Adaptor() override { return m_host; }
  CoreNode* UserNode(const std::string& sceneName) override {
    stage::Object* const object = m_host.Find(sceneName);
    return object ? &m_host.HandOut(*object) : nullptr;
  }
  std::vector<double> Rates() override {
    return {30000.0 / 1001.0, 24000.0 / 1001.0, 24.0, 25.0, 60000.0 / 1001.0};
  }
  void SetFrameRate(double fps) override { m_host.frameRate = fps; }
  double Metre() override { return 100.0; }
  bool IsZUp() override { return true; }
  Matrix<double> HostWorld(CoreNode* node, double time) override {
    return static_cast<stage::Node*>(node)->GetObject()->World(time);
  }
  void Reopen() override {
    m_host.SaveAs("again");
    m_host.Open("again");
  }
  std::string ImportFile() override {
    stage::Host other;
    stage::Object& crate = other.Add("Crate");
    rws::adaptor::Trs pose;
    pose.translation = {0, 0, 2};
    other.Place(crate, pose);
    other.Add("Lid", &crate);
    other.SaveAs("import");
    m_host.TakeFile("import", other);
    return "import";
  }
  std::vector<std::pair<std::string, std::string>>& Messages() override { return m_host.messages; }
  std::vector<std::string> UndoEntries() override {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < m_host.inForce; ++i) names.push_back(m_host.queue[i].second);
    return names;
  }

 private:
  stage::Host m_host;
};

}  // namespace orv::tests
