// Pictures of packets by OpenGL 3.3 core.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "app/studio/view/Backdrop.h"
#include "app/studio/view/packet/FramePacket.h"
#include "app/studio/view/packet/LevelChoice.h"
#include "app/studio/view/packet/MeshLevels.h"
#include "app/studio/view/packet/QualityControl.h"

class QOpenGLFunctions_3_3_Core;

namespace orv::app::view {

class LinesPass;

/// A rectangle of a picture in device pixels, from the bottom left corner.
struct PixelRect {
  int x = 0, y = 0, width = 0, height = 0;
};

/// Belongs to one context, which must be current in every call but the constructor. What it keeps
/// on the graphics processor it makes of the packets' meshes and textures again at any time, so a
/// lost context is followed by another Renderer.
class Renderer {
 public:
  Renderer();
  /// Where the context is gone too, as when it was lost, all is gone with it.
  ~Renderer();
  Renderer(const Renderer&) = delete;
  Renderer& operator=(const Renderer&) = delete;

  /// False, with why, where the current context can't do it.
  bool Begin(std::string& problem);

  /// Where levels of meshes are looked up; null for none. The store outlives this, or is taken
  /// back.
  void SetLevels(const LevelStore* levels) { m_levels = levels; }
  /// All that the framebuffer that is bound shows, in one colour.
  void Clear(const LinearColour& colour);
  /// Into a part of the framebuffer that is bound; sizes in device pixels. `pixelRatio` is device
  /// pixels per pixel of the desktop, for lengths on the screen.
  void Draw(const FramePacket& packet, const PixelRect& area, double pixelRatio = 1.0,
            const PictureQuality& quality = {});
  /// The ids that a picture of this size shows in a part of it, which must lie in it: row by row
  /// from the bottom, 0 for none.
  void ReadIds(const FramePacket& packet, int width, int height, const PixelRect& part,
               std::vector<std::uint32_t>& ids);

  /// Draw calls of the latest picture: those of meshes, and all; and its triangles.
  struct Counts {
    int meshes = 0, all = 0;
    std::size_t triangles = 0;
  };
  Counts GetCounts() const { return m_counts; }

 private:
  struct Program;
  struct GpuMesh;
  struct Target;

  Program* FindMeshProgram(unsigned bits);
  bool Build(Program& program, const struct ShaderSource& source, std::string& problem);
  void Upload(const FramePacket& packet);
  GpuMesh& FindMesh(const MeshData& mesh);
  unsigned FindTexture(const Texture& texture);
  void DropUnused(const FramePacket& packet);
  void DropMesh(GpuMesh& mesh);
  void AddNormals(GpuMesh& held, const MeshData& mesh);
  void UseLevels(GpuMesh& mesh, const MeshLevels* levels);
  unsigned BitsFor(const MeshData& mesh, const Material& material) const;
  void DrawBatch(const FramePacket& packet, const Batch& batch, unsigned bits, std::uint32_t count);
  void DrawMeshes(const GpuMesh& mesh, std::uint32_t count);
  void DrawPicture(const FramePacket& packet, const PixelRect& area, double pixelRatio,
                   bool isRough);
  void DrawWire(const FramePacket& packet);
  void DrawThrough(const FramePacket& packet);
  void DrawGhosts(const FramePacket& packet);
  void DrawGrid(const FramePacket& packet, bool isRough);
  void DrawLines(const FramePacket& packet, double step, int skip, float strength);
  void DrawOutline(const FramePacket& packet, const PixelRect& area, double pixelRatio);
  void DrawRectangle(float left, float bottom, float width, float height);
  void DrawFrame(const FramePacket& packet, const PixelRect& area, double pixelRatio);
  bool FindSelected(const FramePacket& packet, int width, int height, int reach,
                    PixelRect& part) const;
  void DrawGate(const FramePacket& packet);
  void Prepare(Target& target, int width, int height, int format, int samples = 0);
  void Free(Target& target);

  QOpenGLFunctions_3_3_Core* m_gl = nullptr;
  std::unordered_map<unsigned, std::unique_ptr<Program>> m_programs;  ///< by ShaderBits
  std::unique_ptr<Program> m_grid, m_rectangle, m_outline;
  std::unique_ptr<LinesPass> m_lines;
  std::unordered_map<std::uint64_t, std::unique_ptr<GpuMesh>> m_meshes;
  struct GpuTexture {
    unsigned name = 0;
    std::uint64_t used = 0;  ///< see m_draws
  };
  std::unordered_map<std::uint64_t, GpuTexture> m_textures;
  unsigned m_instances = 0;  ///< buffer
  unsigned m_empty = 0;      ///< vertex array of draws without vertex data
  std::unique_ptr<Target> m_ids, m_mask, m_canvas;
  const LevelStore* m_levels = nullptr;
  BackdropPass m_backdrop;
  LevelChoice m_choice;
  bool m_isExact = false;                   ///< no levels in this picture
  std::vector<MeshLevels::Range> m_ranges;  ///< of the batch that is drawn
  std::vector<int> m_rangeCounts;
  std::vector<const void*> m_rangeOffsets;
  std::uint64_t m_structure = 0;
  /// Pictures so far, the one with the latest structure first, and the one that drops what none
  /// has shown for a while: several packets may take turns.
  std::uint64_t m_draws = 0, m_changedAt = 0, m_dropAt = 0;
  std::array<float, 16> m_viewProjection{};
  std::array<float, 4> m_plain{};  ///< colour of kShadePlain
  Counts m_counts;
};

}  // namespace orv::app::view
