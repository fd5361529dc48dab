#include "plugins/release/crawlertracks/CrawlerTrack.h"

#include "core/interface/CNode.h"

namespace orv::rws::addon {

namespace {

std::string StepName(int number) {
  std::string digits = std::to_string(number);
  if (digits.size() < 3) digits.insert(0, 3 - digits.size(), '0');
  return "step" + digits;
}

}  // namespace

CrawlerTracks::Track::Step& CrawlerTracks::Track::Add() {
  steps.push_back(std::make_unique<Step>(*this, static_cast<int>(steps.size()) + 1));
  return *steps.back();
}

CrawlerTracks::Track::Step::Step(Track& track, int number)
    : RigSceneNode(track.rig, StepName(number), &track.rig.m_caterpillar), m_track(track) {
  SetWritten();
}

CNode* CrawlerTracks::Track::Step::MakeNode(CInterface& core, CNode* parent) {
  CNode* const node = core.CreateMeshNode(m_name, parent, &m_track.mesh, 0);
  // Where the host can, all steps are one mesh.
  if (node) node->Extension(kShareMesh, m_track.rig.m_templateStep.GetNode(), nullptr);
  return node;
}

void CrawlerTracks::Track::Step::OnCallback(std::string) {
  if (GetNode() && GetNode()->IsValid()) GetNode()->Select();
}

}  // namespace orv::rws::addon
