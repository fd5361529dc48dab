// Curves that a host's animation clipboard takes (.anim).
#include "adaptor/headless/Scene.h"
#include "app/session/delivery/FileKinds.h"
#include "app/session/delivery/MayaUnits.h"
#include "app/session/delivery/SampledScene.h"
#include "app/session/delivery/TextFile.h"

namespace orv::app {

namespace {

/// The curves of one node, a row on the clipboard: addressed by its depth, the number of its
/// children and the number of the curve.
class ClipboardRow {
 public:
  ClipboardRow(TextFile& file, const MayaTime& time, const SampledNode& node)
      : m_file(file), m_time(time), m_node(node) {}

  /// Begins a curve; `output` says what its values are. Keys follow, and `End`.
  void Begin(std::string_view fullName, std::string_view name, std::string_view output) {
    m_file << "anim " << fullName << " " << name << " " << m_node.name << " " << m_node.depth << " "
           << m_node.children << " " << m_curve++ << ";\nanimData {\n  input time;\n  output "
           << output
           << ";\n  weighted 0;\n  preInfinity constant;\n  postInfinity constant;\n  keys {\n";
  }
  void Key(long frame, double value) {
    m_file << "    " << m_time.At(frame) << " " << value << " linear linear 1 1 0;\n";
  }
  void End() { m_file << "  }\n}\n"; }

  void Still(std::string_view name, std::string_view output, double value) {
    Begin(name, name, output);
    Key(0, value);
    End();
  }

 private:
  TextFile& m_file;
  const MayaTime& m_time;
  const SampledNode& m_node;
  int m_curve = 0;
};

void WriteRow(TextFile& file, const SampledScene& scene, const MayaTime& time,
              const SampledNode& node) {
  constexpr const char* kOutputs[] = {"linear", "angular", "unitless"};
  ClipboardRow row(file, time, node);
  for (const MayaChannel& channel : MayaChannels()) {
    row.Begin(std::string(channel.group) + "." + channel.name, channel.name,
              kOutputs[channel.kind]);
    for (const long frame : KeyedFrames(scene, node, channel))
      row.Key(frame, channel.Of(node.Pose(frame)));
    row.End();
  }
  row.Still("visibility", "unitless", node.isVisible ? 1.0 : 0.0);
  const auto* const lens = node.node->GetLens();
  if (!lens) return;
  row.Still("focalLength", "unitless", FilmOf(*lens).focalLength);
  row.Still("focusDistance", "linear", lens->focusDistance * scene.metre);
}

}  // namespace

void WriteAnimFile(const SampledScene& scene, TextFile& file) {
  const MayaTime time(scene);
  file << "animVersion 1.1;\nmayaVersion 2019;\ntimeUnit " << time.GetName()
       << ";\nlinearUnit cm;\nangularUnit deg;\nstartTime " << time.At(0) << ";\nendTime "
       << time.At(scene.frames - 1) << ";\n";
  for (const SampledNode& node : scene.nodes) WriteRow(file, scene, time, node);
}

}  // namespace orv::app
