#include "app/session/delivery/MayaUnits.h"

#include <cmath>

#include "app/session/delivery/SampledScene.h"

namespace orv::app {

namespace {

struct NamedRate {
  double rate;  ///< frames per second
  const char* name;
};

constexpr NamedRate kNamedRates[] = {{15.0, "game"},
                                     {24.0, "film"},
                                     {25.0, "pal"},
                                     {30.0, "ntsc"},
                                     {48.0, "show"},
                                     {50.0, "palf"},
                                     {60.0, "ntscf"},
                                     {24000.0 / 1001.0, "23.976fps"},
                                     {30000.0 / 1001.0, "29.97fps"},
                                     {48000.0 / 1001.0, "47.952fps"},
                                     {60000.0 / 1001.0, "59.94fps"}};
/// The other rates are named "<rate>fps".
constexpr int kPlainRates[] = {2,   3,   4,   5,   6,    8,    10,   12,   16,  20,  40,
                               75,  80,  100, 120, 125,  150,  200,  240,  250, 300, 375,
                               400, 500, 600, 750, 1200, 1500, 2000, 3000, 6000};

/// Part of a rate by which it may miss a named one: who writes 23.976 means 24000/1001.
constexpr double kSameRate = 1e-5;

bool IsSameRate(double a, double b) {
  return std::abs(a - b) <= kSameRate * b;
}

}  // namespace

MayaTime::MayaTime(const SampledScene& scene)
    : m_first(scene.firstFrame), m_duration(1.0 / scene.frameRate) {
  for (const NamedRate& named : kNamedRates)
    if (IsSameRate(scene.frameRate, named.rate)) m_name = named.name;
  for (const int rate : kPlainRates)
    if (IsSameRate(scene.frameRate, rate)) m_name = std::to_string(rate) + "fps";
  m_isFrames = m_name != "sec";
}

double MayaChannel::Of(const SampledPose& pose) const {
  if (kind == kLength) return pose.translation[axis];
  return kind == kAngle ? pose.degrees[axis] : pose.scale[axis];
}

const std::array<MayaChannel, 9>& MayaChannels() {
  static constexpr std::array<MayaChannel, 9> kChannels{
      {{"translate", "translateX", "tx", MayaChannel::kLength, 0},
       {"translate", "translateY", "ty", MayaChannel::kLength, 1},
       {"translate", "translateZ", "tz", MayaChannel::kLength, 2},
       {"rotate", "rotateX", "rx", MayaChannel::kAngle, 0},
       {"rotate", "rotateY", "ry", MayaChannel::kAngle, 1},
       {"rotate", "rotateZ", "rz", MayaChannel::kAngle, 2},
       {"scale", "scaleX", "sx", MayaChannel::kFactor, 0},
       {"scale", "scaleY", "sy", MayaChannel::kFactor, 1},
       {"scale", "scaleZ", "sz", MayaChannel::kFactor, 2}}};
  return kChannels;
}

std::vector<long> KeyedFrames(const SampledScene& scene, const SampledNode& node,
                              const MayaChannel& channel) {
  if (!node.isMoving) return {0};
  bool rests = true;
  for (const auto& pose : node.poses)
    rests = rests && channel.Of(pose) == channel.Of(node.poses.front());
  if (rests) return {0, scene.frames - 1};
  std::vector<long> all;
  for (long frame = 0; frame < scene.frames; ++frame) all.push_back(frame);
  return all;
}

std::set<std::string> MayaOwnNames() {
  std::set<std::string> names{"world",
                              "time1",
                              "sequenceManager1",
                              "hardwareRenderingGlobals",
                              "hardwareRenderGlobals",
                              "defaultHardwareRenderGlobals",
                              "renderPartition",
                              "characterPartition",
                              "renderGlobalsList1",
                              "defaultRenderGlobals",
                              "defaultRenderQuality",
                              "defaultResolution",
                              "defaultRenderingList1",
                              "defaultRenderUtilityList1",
                              "defaultLightList1",
                              "defaultShaderList1",
                              "defaultTextureList1",
                              "defaultLightSet",
                              "defaultObjectSet",
                              "defaultViewColorManager",
                              "defaultColorMgtGlobals",
                              "postProcessList1",
                              "lightList1",
                              "lambert1",
                              "standardSurface1",
                              "particleCloud1",
                              "shaderGlow1",
                              "dof1",
                              "initialShadingGroup",
                              "initialParticleSE",
                              "initialMaterialInfo",
                              "lightLinker1",
                              "layerManager",
                              "defaultLayer",
                              "renderLayerManager",
                              "defaultRenderLayer",
                              "shapeEditorManager",
                              "poseInterpolatorManager",
                              "ikSystem",
                              "hyperGraphInfo",
                              "hyperGraphLayout",
                              "globalCacheControl",
                              "strokeGlobals",
                              "dynController1",
                              "sceneConfigurationScriptNode",
                              "uiConfigurationScriptNode"};
  for (const char* camera : {"persp", "top", "front", "side", "back", "bottom", "left"})
    for (const char* part : {"", "Shape"}) names.insert(std::string(camera) + part);
  return names;
}

}  // namespace orv::app
