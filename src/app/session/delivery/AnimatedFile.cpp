#include "app/session/delivery/AnimatedFile.h"

#include "app/session/anyhost/Monitor.h"
#include "app/session/anyhost/Names.h"
#include "app/session/delivery/FileKinds.h"
#include "app/session/delivery/MayaUnits.h"
#include "app/session/delivery/SampledScene.h"
#include "app/session/delivery/TextFile.h"

namespace orv::app {

namespace {

struct FileKind {
  const char* ending;
  double metre;  ///< in its unit of length
  bool isMaya;
  bool hasGeometry;
  void (*write)(const SampledScene& scene, TextFile& file);
};

constexpr FileKind kKinds[] = {{".anim", kCentimetres, true, false, WriteAnimFile},
                               {".ma", kCentimetres, true, true, WriteMayaFile},
                               {".usda", 1.0, false, true, WriteUsdFile}};

const FileKind* KindOf(const std::string& path) {
  for (const FileKind& kind : kKinds)
    if (EndingOf(path) == kind.ending) return &kind;
  return nullptr;
}

}  // namespace

bool IsAnimatedFile(const std::string& path) {
  return KindOf(path) != nullptr;
}

AnimatedResult WriteAnimated(const rws::adaptor::headless::Scene& scene,
                             const std::vector<const rws::adaptor::headless::SceneNode*>& only,
                             const TimeSpan& span, rws::adaptor::UpAxis up, const std::string& path,
                             const Monitor& monitor) {
  AnimatedResult result;
  const FileKind* const kind = KindOf(path);
  if (!kind) {
    result.error = path + ": does not end in .anim, .ma or .usda";
    return result;
  }
  SampleRequest request{only, span, up, kind->metre, {}, kind->hasGeometry};
  if (kind->isMaya) request.taken = MayaOwnNames();
  SampledScene sampled = SampleScene(scene, request, monitor);
  result.frames = sampled.frames;
  result.nodes = static_cast<long>(sampled.nodes.size());
  result.isCancelled = sampled.isCancelled;
  result.error = std::move(sampled.error);
  result.warnings = std::move(sampled.warnings);
  if (result.isCancelled || !result.error.empty()) return result;
  TextFile file(path);
  kind->write(sampled, file);
  result.error = file.Commit();
  return result;
}

}  // namespace orv::app
