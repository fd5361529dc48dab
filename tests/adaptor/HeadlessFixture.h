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
    headless::Scene& scene = m_document.GetScene();
    scene.SetRange(0.0, 4.0);
    headless::SceneNode& mover = scene.AddNode("Mover");
    headless::Channel channel(headless::ChannelPath::kTranslation);
    channel.SetKeys({0.0, 4.0}, {0, 0, 0, 4, 0, 0});
    mover.SetChannel(channel);
    rws::adaptor::Trs pose;
    pose.translation = {0, 1, 0};
    scene.AddNode("Hook", &mover).SetPose(pose);
    util::CMesh ground;
    ground.vertices = {{-5, 0, -5}, {-5, 0, 5}, {5, 0, 5}, {5, 0, -5}};
    ground.faces = {0, 1, 2, 0, 2, 3};
    scene.AddNode("Ground").SetMesh(ground);
    headless::Lens lens;
    lens.fieldOfView = 40.0;
    scene.AddNode("Eye").SetLens(lens);
    scene.AddNode("Path").SetCurve({{{0, 0, 0}, {3, 0, 0}, {3, 0, 4}}, false});
    m_document.GetAdaptor().SetMessageHandler(
        [this](const std::string& title, const std::string& text) {
          m_messages.emplace_back(title, text);
        });
  }
  ~HeadlessFixture() override { std::remove(m_path.c_str()); }

  rws::AdaptorInterface& Adaptor() override { return m_document.GetAdaptor(); }
  CoreNode* UserNode(const std::string& sceneName) override {
    return m_document.GetAdaptor().FindSceneNode(sceneName);
  }
  std::vector<double> Rates() override { return {25.0, 24.0, 30.0, 50.0, 59.94, 60.0}; }
  void SetFrameRate(double fps) override { m_document.GetScene().SetFrameRate(fps); }
  double Metre() override { return 1.0; }
  bool IsZUp() override { return false; }
  Matrix<double> HostWorld(CoreNode* node, double time) override {
    return static_cast<headless::HeadlessNode*>(node)->GetSceneNode()->WorldMatrix(time);
  }
  void Reopen() override {
    std::string error;
    EXPECT_TRUE(m_document.Save(m_path, error)) << error;
    EXPECT_TRUE(m_document.Open(m_path, error)) << error;
  }
  std::string ImportFile() override {
    headless::Scene scene;
    headless::SceneNode& crate = scene.AddNode("Crate");
    rws::adaptor::Trs pose;
    pose.translation = {0, 0, 2};
    crate.SetPose(pose);
    scene.AddNode("Lid", &crate);
    EXPECT_EQ(headless::GltfWriter::Write(scene, m_path).error, "");
    return m_path;
  }
  std::vector<std::pair<std::string, std::string>>& Messages() override { return m_messages; }
  std::vector<std::string> UndoEntries() override {
    return m_document.GetAdaptor().GetUndo().entryNames();
  }

 private:
  std::string m_path;
  headless::HeadlessDocument m_document;
  std::vector<std::pair<std::string, std::string>> m_messages;
};

}  // namespace orv::tests
