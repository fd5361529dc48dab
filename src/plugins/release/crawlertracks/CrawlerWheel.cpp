#include "plugins/release/crawlertracks/CrawlerWheel.h"

#include "core/interface/CSnapshot_Helper.h"
#include "plugins/release/crawlertracks/TrackMeshes.h"

namespace orv::rws::addon {

namespace {

struct Colour {
  float r, g, b;
};

/// The driveWheel is a non-static inner wheel too.
Colour ColourOf(const WheelKind& kind) {
  if (kind.support)
    return kind.staticWheel ? Colour{0.31f, 0.05f, 0.46f} : Colour{0.36f, 0.03f, 0.1f};
  if (kind.innerWheel)
    return kind.staticWheel ? Colour{0.0f, 0.31f, 0.33f} : Colour{0.01f, 0.2f, 0.03f};
  return kind.staticWheel ? Colour{0.4f, 0.9f, 0.88f} : Colour{0.4f, 0.86f, 0.42f};
}

}  // namespace

CrawlerTracks::Wheel::Wheel(CCamera& rig, const std::string& name, const RigSceneNode& frame,
                            const WheelKind& wheelKind)
    : RigMeshNode(rig, name, &frame, CrawlerWheelMesh(kMeshRadius, kMeshHalfWidth)),
      kind(wheelKind) {
  if (!kind.staticWheel) SetWritten();
}

void CrawlerTracks::Wheel::ShowKind() const {
  CSnapshot_Helper* const helper = Core().GetSnapshotHelper(GetNode());
  if (!helper) return;
  const Colour colour = ColourOf(kind);
  helper->SetColor(colour.r, colour.g, colour.b);
  Core().ReleaseSnapshotHelper(helper);
}

void CrawlerTracks::Wheel::Measure(double time) {
  const Vector scale = ReadMatrix(time).rowLengths();
  radius = kMeshRadius * scale.y;
  halfWidth = kMeshHalfWidth * scale.x;
}

void CrawlerTracks::Wheel::OnCallback(std::string) {
  Measure(Core().GetTime());
}

}  // namespace orv::rws::addon
