// The headless host under the suite for all hosts.
#pragma once

#include <unistd.h>

#include <cstdio>

#include <gtest/gtest.h>

#include "AdaptorFixture.h"
#include "adaptor/headless/GltfWriter.h"
#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessDocument.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/Scene.h"

namespace orv::tests {

namespace headless = rws::adaptor::headless;

class HeadlessFixture final : public AdaptorFixture {
 public:
  HeadlessFixture()
      : m_path(testing::TempDir() + "contract_" + std::to_string(::getpid()) + ".glb") {
    headless::Scene& scene = m_document.scene();
    scene.setRange(0.0, 4.0);
    headless::SceneNode& mover = scene.addNode("Mover");
    headless::Channel channel(headless::ChannelPath::kTranslation);
    channel.setKeys({0.0, 4.0}, {0, 0, 0, 4, 0, 0});
    mover.setChannel(channel);
    rws::adaptor::Trs pose;
    pose.translation = {0, 1, 0};
    scene.addNode("Hook", &mover).setPose(pose);
    util::CMesh ground;
    ground.vertices = {{-5, 0, -5}, {-5, 0, 5}, {5, 0, 5}, {5, 0, -5}};
    ground.faces = {0, 1, 2, 0, 2, 3};
    scene.addNode("Ground").setMesh(ground);
    headless::Lens lens;
    lens.fieldOfView = 40.0;
    scene.addNode("Eye").setLens(lens);
    scene.addNode("Path").setCurve({{{0, 0, 0}, {3, 0, 0}, {3, 0, 4}}, false});
    m_document.adaptor().SetMessageHandler(
        [this](const std::string& title, const std::string& text) {
          m_messages.emplace_back(title, text);
        });
  }
  ~HeadlessFixture() override { std::remove(m_path.c_str()); }

  rws::AdaptorInterface& Adaptor() override { return m_document.adaptor(); }
  CoreNode* UserNode(const std::string& sceneName) override {
    return m_document.adaptor().FindSceneNode(sceneName);
  }
  std::vector<double> Rates() override { return {25.0, 24.0, 30.0, 50.0, 59.94, 60.0}; }
  void SetFrameRate(double fps) override { m_document.scene().setFrameRate(fps); }
  double Metre() override { return 1.0; }
  bool IsZUp() override { return false; }
  Matrix<double> HostWorld(CoreNode* node, double time) override {
    return static_cast<headless::HeadlessNode*>(node)->GetSceneNode()->worldMatrix(time);
  }
  void Reopen() override {
    std::string error;
    EXPECT_TRUE(m_document.save(m_path, error)) << error;
    EXPECT_TRUE(m_document.open(m_path, error)) << error;
  }
  std::string ImportFile() override {
    headless::Scene scene;
    headless::SceneNode& crate = scene.addNode("Crate");
    rws::adaptor::Trs pose;
    pose.translation = {0, 0, 2};
    crate.setPose(pose);
    scene.addNode("Lid", &crate);
    EXPECT_EQ(headless::GltfWriter::write(scene, m_path).error, "");
    return m_path;
  }
  std::vector<std::pair<std::string, std::string>>& Messages() override { return m_messages; }
  std::vector<std::string> UndoEntries() override {
    return m_document.adaptor().GetUndo().entryNames();
  }

 private:
  std::string m_path;
  headless::HeadlessDocument m_document;
  std::vector<std::pair<std::string, std::string>> m_messages;
};

}  // namespace orv::tests
