// The files that animation is told in.
#pragma once

namespace orv::app {

class TextFile;
struct SampledScene;

/// The scene is in centimetres.
void WriteAnimFile(const SampledScene& scene, TextFile& file);
/// The scene is in centimetres.
void WriteMayaFile(const SampledScene& scene, TextFile& file);
void WriteUsdFile(const SampledScene& scene, TextFile& file);

}  // namespace orv::app
