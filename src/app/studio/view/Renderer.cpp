#include "app/studio/view/Renderer.h"

#include <QOpenGLContext>
#include <QOpenGLFunctions_3_3_Core>
#include <algorithm>
#include <cmath>
#include <unordered_set>

#include "app/studio/view/LinesPass.h"
#include "app/studio/view/Shaders.h"

namespace orv::app::view {

namespace {

constexpr int kGridLines = 201;
constexpr int kGridPieces = 25;  ///< of a line
constexpr GLuint kFirstInstanceAttribute = 4, kTint = 7, kId = 8;

const void* PointerAt(std::size_t bytes) {
  return reinterpret_cast<const void*>(bytes);
}

std::array<float, 16> Multiply(const std::array<float, 16>& a, const std::array<float, 16>& b) {
  std::array<float, 16> out{};
  for (std::size_t column = 0; column < 4; ++column)
    for (std::size_t row = 0; row < 4; ++row)
      for (std::size_t k = 0; k < 4; ++k)
        out[4 * column + row] += a[4 * k + row] * b[4 * column + k];
  return out;
}

GLint WrapMode(Texture::Wrap wrap) {
  return wrap == Texture::Wrap::kRepeat   ? GL_REPEAT
         : wrap == Texture::Wrap::kMirror ? GL_MIRRORED_REPEAT
                                          : GL_CLAMP_TO_EDGE;
}

}  // namespace

struct Renderer::Program {
  GLuint name = 0;
  std::unordered_map<std::string, GLint> places;
  // Of meshes' programs, as each batch sets them.
  GLint baseColour = -1, cutoff = -1, plain = -1;
  std::uint64_t picture = 0;  ///< that has set the rest, by m_draws
};

struct Renderer::GpuMesh {
  GLuint array = 0, vertices = 0, indices = 0;
  GLuint levelIndices = 0;             ///< 0 without levels
  GLuint normals = 0;                  ///< of a mesh that has none of its own; 0 without
  const MeshLevels* levels = nullptr;  ///< those that are uploaded
  GLenum mode = GL_TRIANGLES;
  std::uint64_t used = 0;  ///< see m_draws
};

struct Renderer::Target {
  GLuint framebuffer = 0, texture = 0, colour = 0, depth = 0;
  int width = 0, height = 0, samples = 0;
};

Renderer::Renderer() = default;

Renderer::~Renderer() {
  if (!m_gl || !QOpenGLContext::currentContext()) return;
  for (const auto& [bits, program] : m_programs) m_gl->glDeleteProgram(program->name);
  for (const auto* program : {m_grid.get(), m_rectangle.get(), m_outline.get()})
    if (program) m_gl->glDeleteProgram(program->name);
  for (const auto& [id, mesh] : m_meshes) DropMesh(*mesh);
  for (const auto& [id, texture] : m_textures) m_gl->glDeleteTextures(1, &texture.name);
  m_gl->glDeleteBuffers(1, &m_instances);
  m_gl->glDeleteVertexArrays(1, &m_empty);
  for (Target* target : {m_ids.get(), m_mask.get(), m_canvas.get()})
    if (target) Free(*target);
}

// --- programs ---

bool Renderer::Begin(std::string& problem) {
  QOpenGLContext* context = QOpenGLContext::currentContext();
  m_gl = context ? context->versionFunctions<QOpenGLFunctions_3_3_Core>() : nullptr;
  if (!m_gl || !m_gl->initializeOpenGLFunctions()) {
    m_gl = nullptr;
    problem = "OpenGL 3.3 is not to be had";
    return false;
  }
  m_gl->glGenBuffers(1, &m_instances);
  m_gl->glGenVertexArrays(1, &m_empty);
  m_ids = std::make_unique<Target>();
  m_mask = std::make_unique<Target>();
  m_canvas = std::make_unique<Target>();
  m_grid = std::make_unique<Program>();
  m_rectangle = std::make_unique<Program>();
  m_outline = std::make_unique<Program>();
  if (!Build(*m_grid, GridShader(), problem) || !Build(*m_rectangle, RectangleShader(), problem) ||
      !Build(*m_outline, OutlineShader(), problem))
    return false;
  auto program = std::make_unique<Program>();
  if (!Build(*program, MeshShader(0), problem)) return false;
  m_programs[0] = std::move(program);
  Program strokes, corners;
  if (!Build(strokes, LinesPass::StrokeShader(), problem) ||
      !Build(corners, LinesPass::CornerShader(), problem))
    return false;
  m_lines = std::make_unique<LinesPass>(*m_gl, strokes.name, corners.name);
  return true;
}

bool Renderer::Build(Program& program, const ShaderSource& source, std::string& problem) {
  program.name = m_gl->glCreateProgram();
  const std::pair<GLenum, const std::string*> parts[] = {{GL_VERTEX_SHADER, &source.vertex},
                                                         {GL_FRAGMENT_SHADER, &source.fragment}};
  char told[1024] = "";
  for (const auto& [kind, text] : parts) {
    const GLuint shader = m_gl->glCreateShader(kind);
    const char* begin = text->c_str();
    m_gl->glShaderSource(shader, 1, &begin, nullptr);
    m_gl->glCompileShader(shader);
    GLint done = 0;
    m_gl->glGetShaderiv(shader, GL_COMPILE_STATUS, &done);
    if (!done) m_gl->glGetShaderInfoLog(shader, sizeof(told), nullptr, told);
    m_gl->glAttachShader(program.name, shader);
    m_gl->glDeleteShader(shader);
    if (!done) {
      problem = std::string("the driver refuses a shader: ") + told;
      return false;
    }
  }
  m_gl->glLinkProgram(program.name);
  GLint done = 0;
  m_gl->glGetProgramiv(program.name, GL_LINK_STATUS, &done);
  if (!done) {
    m_gl->glGetProgramInfoLog(program.name, sizeof(told), nullptr, told);
    problem = std::string("the driver refuses a program: ") + told;
    return false;
  }
  for (const char* name : {"viewProjection", "baseColour", "picture", "cutoff", "light", "plain",
                           "corner", "first", "gap", "lines", "pieces", "skip", "ink", "strength",
                           "place", "reach", "ahead", "from", "focus"})
    program.places[name] = m_gl->glGetUniformLocation(program.name, name);
  program.baseColour = program.places["baseColour"];
  program.cutoff = program.places["cutoff"];
  program.plain = program.places["plain"];
  return true;
}

/// Null where the driver refuses it, which Begin's would have told of any driver that works.
Renderer::Program* Renderer::FindMeshProgram(unsigned bits) {
  auto& program = m_programs[bits];
  if (!program) {
    program = std::make_unique<Program>();
    std::string problem;
    if (!Build(*program, MeshShader(bits), problem)) {
      qWarning("View: %s", problem.c_str());
      program->name = 0;
    }
  }
  return program->name ? program.get() : nullptr;
}

// --- what lies on the graphics processor ---

Renderer::GpuMesh& Renderer::FindMesh(const MeshData& mesh) {
  std::unique_ptr<GpuMesh>& held = m_meshes[mesh.id];
  if (held) return *held;
  held = std::make_unique<GpuMesh>();
  held->used = m_draws;
  held->mode = mesh.lines ? GL_LINES : GL_TRIANGLES;
  m_gl->glGenVertexArrays(1, &held->array);
  m_gl->glGenBuffers(1, &held->vertices);
  m_gl->glGenBuffers(1, &held->indices);
  m_gl->glBindVertexArray(held->array);
  m_gl->glBindBuffer(GL_ARRAY_BUFFER, held->vertices);
  struct Part {
    const void* data;
    std::size_t bytes;
    GLint size;
    GLenum type;
  };
  const std::size_t n = mesh.positions.size();
  const Part parts[] = {{mesh.positions.data(), n * 12, 3, GL_FLOAT},
                        {mesh.normals.data(), mesh.normals.size() * 12, 3, GL_FLOAT},
                        {mesh.colours.data(), mesh.colours.size() * 4, 4, GL_UNSIGNED_BYTE},
                        {mesh.texCoords.data(), mesh.texCoords.size() * 8, 2, GL_FLOAT}};
  std::size_t total = 0;
  for (const Part& part : parts) total += part.bytes;
  m_gl->glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(total), nullptr, GL_STATIC_DRAW);
  std::size_t at = 0;
  for (GLuint i = 0; i < 4; ++i) {
    const Part& part = parts[i];
    if (part.bytes == 0) continue;
    m_gl->glBufferSubData(GL_ARRAY_BUFFER, static_cast<GLintptr>(at),
                          static_cast<GLsizeiptr>(part.bytes), part.data);
    m_gl->glEnableVertexAttribArray(i);
    m_gl->glVertexAttribPointer(i, part.size, part.type, part.type == GL_UNSIGNED_BYTE, 0,
                                PointerAt(at));
    at += part.bytes;
  }
  m_gl->glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, held->indices);
  m_gl->glBufferData(GL_ELEMENT_ARRAY_BUFFER, static_cast<GLsizeiptr>(mesh.indices.size() * 4),
                     mesh.indices.data(), GL_STATIC_DRAW);
  for (GLuint i = kFirstInstanceAttribute; i <= kId; ++i) {
    m_gl->glEnableVertexAttribArray(i);
    m_gl->glVertexAttribDivisor(i, 1);
  }
  return *held;
}

unsigned Renderer::FindTexture(const Texture& texture) {
  GpuTexture& held = m_textures[texture.id];
  GLuint& name = held.name;
  if (name) return name;
  held.used = m_draws;
  m_gl->glGenTextures(1, &name);
  m_gl->glBindTexture(GL_TEXTURE_2D, name);
  m_gl->glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
  m_gl->glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, texture.width, texture.height, 0, GL_RGBA,
                     GL_UNSIGNED_BYTE, texture.pixels.data());
  m_gl->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, WrapMode(texture.wrapU));
  m_gl->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, WrapMode(texture.wrapV));
  m_gl->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER,
                        texture.smooth ? GL_LINEAR : GL_NEAREST);
  m_gl->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER,
                        texture.smooth ? GL_LINEAR_MIPMAP_NEAREST : GL_NEAREST);
  if (texture.smooth) m_gl->glGenerateMipmap(GL_TEXTURE_2D);
  return name;
}

void Renderer::DropMesh(GpuMesh& mesh) {
  m_gl->glDeleteVertexArrays(1, &mesh.array);
  m_gl->glDeleteBuffers(1, &mesh.vertices);
  m_gl->glDeleteBuffers(1, &mesh.indices);
  m_gl->glDeleteBuffers(1, &mesh.levelIndices);
  m_gl->glDeleteBuffers(1, &mesh.normals);
}

/// Those of the surface at its vertices. Its array is bound.
void Renderer::AddNormals(GpuMesh& held, const MeshData& mesh) {
  constexpr GLuint kNormal = 1;
  if (held.normals || !mesh.normals.empty()) return;
  const std::vector<MeshData::Float3> normals = SmoothNormals(mesh);
  m_gl->glGenBuffers(1, &held.normals);
  m_gl->glBindBuffer(GL_ARRAY_BUFFER, held.normals);
  m_gl->glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(normals.size() * 12), normals.data(),
                     GL_STATIC_DRAW);
  m_gl->glEnableVertexAttribArray(kNormal);
  m_gl->glVertexAttribPointer(kNormal, 3, GL_FLOAT, GL_FALSE, 0, nullptr);
}

/// Binds the indices that are drawn; the mesh's array is bound.
void Renderer::UseLevels(GpuMesh& mesh, const MeshLevels* levels) {
  if (levels && mesh.levels != levels) {
    if (!mesh.levelIndices) m_gl->glGenBuffers(1, &mesh.levelIndices);
    m_gl->glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, mesh.levelIndices);
    m_gl->glBufferData(GL_ELEMENT_ARRAY_BUFFER, static_cast<GLsizeiptr>(levels->indices.size() * 4),
                       levels->indices.data(), GL_STATIC_DRAW);
    mesh.levels = levels;
  }
  m_gl->glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, levels ? mesh.levelIndices : mesh.indices);
}

/// A few pictures after the structure has changed.
void Renderer::DropUnused(const FramePacket& packet) {
  constexpr std::uint64_t kPatience = 8;  ///< more than there are pictures at once
  ++m_draws;
  if (m_structure != packet.structure) {
    m_structure = packet.structure;
    m_changedAt = m_draws;
    // One that is due comes first, or changes in a row would put it off for ever.
    if (m_draws > m_dropAt) m_dropAt = m_draws + kPatience;
  }
  if (m_draws > m_dropAt) return;
  for (const auto* batches : {&packet.batches, &packet.blended, &packet.ghosts})
    for (const Batch& batch : *batches)
      if (const auto held = m_meshes.find(batch.mesh->id); held != m_meshes.end())
        held->second->used = m_draws;
  for (const Material& material : packet.materials)
    if (material.texture)
      if (const auto held = m_textures.find(material.texture->id); held != m_textures.end())
        held->second.used = m_draws;
  if (m_draws < m_dropAt) return;
  m_dropAt = std::max(m_dropAt, m_changedAt + kPatience);
  for (auto at = m_meshes.begin(); at != m_meshes.end();) {
    if (at->second->used + kPatience > m_draws) {
      ++at;
      continue;
    }
    DropMesh(*at->second);
    at = m_meshes.erase(at);
  }
  for (auto at = m_textures.begin(); at != m_textures.end();) {
    if (at->second.used + kPatience > m_draws) {
      ++at;
      continue;
    }
    m_gl->glDeleteTextures(1, &at->second.name);
    at = m_textures.erase(at);
  }
}

void Renderer::Upload(const FramePacket& packet) {
  DropUnused(packet);
  m_viewProjection = Multiply(packet.camera.projection, packet.camera.view);
  m_gl->glBindBuffer(GL_ARRAY_BUFFER, m_instances);
  const auto scene = static_cast<GLsizeiptr>(packet.instances.size() * sizeof(Instance));
  const auto ghosts = static_cast<GLsizeiptr>(packet.ghostInstances.size() * sizeof(Instance));
  m_gl->glBufferData(GL_ARRAY_BUFFER, scene + ghosts, ghosts ? nullptr : packet.instances.data(),
                     GL_STREAM_DRAW);
  if (ghosts) {
    m_gl->glBufferSubData(GL_ARRAY_BUFFER, 0, scene, packet.instances.data());
    m_gl->glBufferSubData(GL_ARRAY_BUFFER, scene, ghosts, packet.ghostInstances.data());
  }
}

/// Binds a framebuffer of its own: GL_R32UI and GL_RGBA8 with depth, GL_R8 without.
void Renderer::Prepare(Target& target, int width, int height, int format, int samples) {
  if (target.framebuffer && target.width == width && target.height == height &&
      target.samples == samples) {
    m_gl->glBindFramebuffer(GL_FRAMEBUFFER, target.framebuffer);
    return;
  }
  Free(target);
  target.width = width;
  target.height = height;
  target.samples = samples;
  m_gl->glGenFramebuffers(1, &target.framebuffer);
  m_gl->glBindFramebuffer(GL_FRAMEBUFFER, target.framebuffer);
  const auto internal = static_cast<GLenum>(format);
  if (format == GL_R8) {
    m_gl->glGenTextures(1, &target.texture);
    m_gl->glBindTexture(GL_TEXTURE_2D, target.texture);
    m_gl->glTexImage2D(GL_TEXTURE_2D, 0, format, width, height, 0, GL_RED, GL_UNSIGNED_BYTE,
                       nullptr);
    m_gl->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    m_gl->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    m_gl->glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D,
                                 target.texture, 0);
    return;
  }
  const auto attach = [&](GLuint& buffer, GLenum kind, GLenum place) {
    m_gl->glGenRenderbuffers(1, &buffer);
    m_gl->glBindRenderbuffer(GL_RENDERBUFFER, buffer);
    m_gl->glRenderbufferStorageMultisample(GL_RENDERBUFFER, samples, kind, width, height);
    m_gl->glFramebufferRenderbuffer(GL_FRAMEBUFFER, place, GL_RENDERBUFFER, buffer);
  };
  attach(target.colour, internal, GL_COLOR_ATTACHMENT0);
  attach(target.depth, GL_DEPTH_COMPONENT24, GL_DEPTH_ATTACHMENT);
}

void Renderer::Free(Target& target) {
  if (target.framebuffer) m_gl->glDeleteFramebuffers(1, &target.framebuffer);
  if (target.texture) m_gl->glDeleteTextures(1, &target.texture);
  if (target.colour) m_gl->glDeleteRenderbuffers(1, &target.colour);
  if (target.depth) m_gl->glDeleteRenderbuffers(1, &target.depth);
  target = {};
}

// --- pictures ---

unsigned Renderer::BitsFor(const MeshData& mesh, const Material& material) const {
  unsigned bits = 0;
  if (!mesh.normals.empty()) bits |= kShadeNormals;
  if (!mesh.colours.empty()) bits |= kShadeColours;
  if (material.texture && !mesh.texCoords.empty()) bits |= kShadeTexture;
  if (material.alpha == AlphaMode::kMask) bits |= kShadeMask;
  if (material.unlit || mesh.lines) bits = (bits | kShadeUnlit) & ~unsigned{kShadeNormals};
  return bits;
}

void Renderer::DrawBatch(const FramePacket& packet, const Batch& batch, unsigned bits,
                         std::uint32_t count) {
  if (count == 0) return;
  const Material& material = packet.materials[batch.material];
  // The order of a blended mesh's triangles is part of its look.
  const bool isExact = m_isExact || material.alpha == AlphaMode::kBlend;
  const MeshLevels* levels = m_levels && !isExact ? m_levels->Find(*batch.mesh) : nullptr;
  const bool isLit = !(bits & (kShadeUnlit | kShadeId | kShadePlain));
  // Ghosts lie behind the scene.
  const std::size_t scene = packet.instances.size();
  const Instance* instances = batch.first < scene ? &packet.instances[batch.first]
                                                  : &packet.ghostInstances[batch.first - scene];
  if (m_choice.Choose(instances, batch, levels, m_ranges) && isLit)
    bits = (bits | kShadeDense) & ~unsigned{kShadeNormals};
  Program* program = m_ranges.empty() ? nullptr : FindMeshProgram(bits);
  if (!program) return;
  GpuMesh& mesh = FindMesh(*batch.mesh);
  m_gl->glUseProgram(program->name);
  if (program->picture != m_draws) {
    program->picture = m_draws;
    auto& at = program->places;
    m_gl->glUniformMatrix4fv(at["viewProjection"], 1, GL_FALSE, m_viewProjection.data());
    const auto length = static_cast<float>(packet.light.length());
    m_gl->glUniform3f(at["light"], static_cast<float>(packet.light.x) / length,
                      static_cast<float>(packet.light.y) / length,
                      static_cast<float>(packet.light.z) / length);
    const auto& view = packet.camera.view;
    m_gl->glUniform3f(at["ahead"], view[2], view[6], view[10]);
  }
  m_gl->glUniform4fv(program->baseColour, 1, material.colour.data());
  if (bits & kShadePlain) m_gl->glUniform4fv(program->plain, 1, m_plain.data());
  if (bits & kShadeMask) m_gl->glUniform1f(program->cutoff, material.cutoff);
  if (bits & kShadeTexture) m_gl->glBindTexture(GL_TEXTURE_2D, FindTexture(*material.texture));
  if (material.doubleSided || batch.mesh->lines) {
    m_gl->glDisable(GL_CULL_FACE);
  } else {
    m_gl->glEnable(GL_CULL_FACE);
    m_gl->glFrontFace(batch.mirrored ? GL_CW : GL_CCW);
  }
  m_gl->glBindVertexArray(mesh.array);
  UseLevels(mesh, levels);
  if (bits & kShadeDense) AddNormals(mesh, *batch.mesh);
  m_gl->glBindBuffer(GL_ARRAY_BUFFER, m_instances);
  const std::size_t first = batch.first * sizeof(Instance);
  for (GLuint row = 0; row < 3; ++row)
    m_gl->glVertexAttribPointer(kFirstInstanceAttribute + row, 4, GL_FLOAT, GL_FALSE,
                                sizeof(Instance), PointerAt(first + 16 * row));
  m_gl->glVertexAttribPointer(kTint, 4, GL_UNSIGNED_BYTE, GL_TRUE, sizeof(Instance),
                              PointerAt(first + offsetof(Instance, colour)));
  m_gl->glVertexAttribIPointer(kId, 1, GL_UNSIGNED_INT, sizeof(Instance),
                               PointerAt(first + offsetof(Instance, id)));
  DrawMeshes(mesh, count);
}

/// The chosen ranges of what is bound.
void Renderer::DrawMeshes(const GpuMesh& mesh, std::uint32_t count) {
  ++m_counts.meshes;
  ++m_counts.all;
  for (const MeshLevels::Range& range : m_ranges)
    m_counts.triangles += mesh.mode == GL_TRIANGLES ? std::size_t{range.count} / 3 * count : 0;
  if (m_ranges.size() == 1) {
    m_gl->glDrawElementsInstanced(mesh.mode, static_cast<GLsizei>(m_ranges[0].count),
                                  GL_UNSIGNED_INT, PointerAt(4 * std::size_t{m_ranges[0].first}),
                                  static_cast<GLsizei>(count));
    return;
  }
  m_rangeCounts.clear();
  m_rangeOffsets.clear();
  for (const MeshLevels::Range& range : m_ranges) {
    m_rangeCounts.push_back(static_cast<int>(range.count));
    m_rangeOffsets.push_back(PointerAt(4 * std::size_t{range.first}));
  }
  m_gl->glMultiDrawElements(mesh.mode, m_rangeCounts.data(), GL_UNSIGNED_INT, m_rangeOffsets.data(),
                            static_cast<GLsizei>(m_ranges.size()));
}

void Renderer::Clear(const LinearColour& colour) {
  m_gl->glDisable(GL_SCISSOR_TEST);
  m_gl->glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
  m_gl->glClearColor(colour[0], colour[1], colour[2], 1.0f);
  m_gl->glClear(GL_COLOR_BUFFER_BIT);
}

void Renderer::Draw(const FramePacket& packet, const PixelRect& area, double pixelRatio,
                    const PictureQuality& quality) {
  m_counts = {};
  if (quality.samples == 0 && quality.scale == 1.0)
    return DrawPicture(packet, area, pixelRatio, quality.isRough);
  GLint framebuffer = 0;
  m_gl->glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &framebuffer);
  const auto scaled = [&quality](int length) {
    return std::max(1, static_cast<int>(std::lround(quality.scale * length)));
  };
  const PixelRect all{0, 0, scaled(area.width), scaled(area.height)};
  Prepare(*m_canvas, all.width, all.height, GL_RGBA8, quality.samples);
  DrawPicture(packet, all, pixelRatio * quality.scale, quality.isRough);
  m_gl->glBindFramebuffer(GL_READ_FRAMEBUFFER, m_canvas->framebuffer);
  m_gl->glBindFramebuffer(GL_DRAW_FRAMEBUFFER, static_cast<GLuint>(framebuffer));
  // Who reads by scissors would see them as they were.
  m_gl->glDisable(GL_SCISSOR_TEST);
  m_gl->glBlitFramebuffer(0, 0, all.width, all.height, area.x, area.y, area.x + area.width,
                          area.y + area.height, GL_COLOR_BUFFER_BIT,
                          quality.scale == 1.0 ? GL_NEAREST : GL_LINEAR);
  m_gl->glBindFramebuffer(GL_FRAMEBUFFER, static_cast<GLuint>(framebuffer));
}

void Renderer::DrawPicture(const FramePacket& packet, const PixelRect& area, double pixelRatio,
                           bool isRough) {
  Upload(packet);
  m_choice = LevelChoice(packet, area.height, isRough);
  const bool wire = packet.shading == Shading::kWireOverPlain;
  m_isExact = wire;  // the edges are those of the mesh
  m_gl->glActiveTexture(GL_TEXTURE0);
  m_gl->glViewport(area.x, area.y, area.width, area.height);
  m_gl->glEnable(GL_SCISSOR_TEST);
  m_gl->glScissor(area.x, area.y, area.width, area.height);
  m_gl->glDisable(GL_BLEND);
  m_gl->glEnable(GL_DEPTH_TEST);
  m_gl->glDepthFunc(GL_LEQUAL);
  m_gl->glDepthMask(GL_TRUE);
  m_gl->glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
  m_gl->glClearColor(packet.background[0], packet.background[1], packet.background[2], 1.0f);
  m_gl->glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  m_gl->glDisable(GL_SCISSOR_TEST);
  m_backdrop.Draw(*m_gl, packet, area.width, area.height, m_empty);
  if (wire) {
    m_gl->glEnable(GL_POLYGON_OFFSET_FILL);
    m_gl->glPolygonOffset(1.0f, 1.0f);
  }
  for (const Batch& batch : packet.batches)
    DrawBatch(packet, batch, BitsFor(*batch.mesh, packet.materials[batch.material]), batch.count);
  m_gl->glDisable(GL_POLYGON_OFFSET_FILL);
  // The picture's alpha stays 1: it may be composed with other widgets.
  m_gl->glEnable(GL_BLEND);
  m_gl->glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
  if (wire) DrawWire(packet);
  m_gl->glDepthMask(GL_FALSE);
  if (packet.grid.visible) DrawGrid(packet, isRough);
  for (const Batch& batch : packet.blended)
    DrawBatch(packet, batch, BitsFor(*batch.mesh, packet.materials[batch.material]), batch.count);
  if (!packet.ghosts.empty()) DrawGhosts(packet);
  if (packet.shading == Shading::kXRay) DrawThrough(packet);
  m_gl->glDisable(GL_DEPTH_TEST);
  m_gl->glDisable(GL_CULL_FACE);
  DrawOutline(packet, area, pixelRatio);
  m_counts.all += m_lines->Draw(packet, m_viewProjection, area.width, area.height, pixelRatio);
  if (packet.gate.visible) DrawGate(packet);
  if (packet.isFramed) DrawFrame(packet, area, pixelRatio);
  // As others who paint here expect it.
  m_gl->glDepthMask(GL_TRUE);
  m_gl->glDisable(GL_BLEND);
  m_gl->glBindVertexArray(0);
  m_gl->glBindBuffer(GL_ARRAY_BUFFER, 0);
  m_gl->glUseProgram(0);
}

/// Rigs once more, over all: their nearest surface, so that what is seen anyway stays as it is.
void Renderer::DrawThrough(const FramePacket& packet) {
  constexpr float kStrength = 0.45f;
  m_gl->glDepthRange(0.0, 0.05);
  m_gl->glDepthMask(GL_TRUE);
  m_gl->glBlendFuncSeparate(GL_CONSTANT_ALPHA, GL_ONE_MINUS_CONSTANT_ALPHA, GL_ZERO, GL_ONE);
  m_gl->glBlendColor(0.0f, 0.0f, 0.0f, kStrength);
  for (const bool isColour : {false, true}) {
    const GLboolean mask = isColour ? GL_TRUE : GL_FALSE;
    m_gl->glColorMask(mask, mask, mask, mask);
    for (const Batch& batch : packet.batches)
      if (batch.ofRig)
        DrawBatch(packet, batch, BitsFor(*batch.mesh, packet.materials[batch.material]),
                  batch.count);
  }
  m_gl->glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
  m_gl->glDepthRange(0.0, 1.0);
  m_gl->glDepthMask(GL_FALSE);
}

void Renderer::DrawWire(const FramePacket& packet) {
  m_plain = {0.05f, 0.06f, 0.08f, 0.6f};
  m_gl->glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
  for (const Batch& batch : packet.batches)
    if (!batch.mesh->lines) DrawBatch(packet, batch, kShadePlain, batch.count);
  m_gl->glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
}

/// Their depth first, so that one sees the scene through a ghost, but not its own inside.
void Renderer::DrawGhosts(const FramePacket& packet) {
  const auto draw = [&](bool isDepth) {
    for (Batch batch : packet.ghosts) {
      batch.first += static_cast<std::uint32_t>(packet.instances.size());
      const unsigned bits = BitsFor(*batch.mesh, packet.materials[batch.material]);
      DrawBatch(packet, batch, isDepth ? kShadePlain : bits, batch.count);
    }
  };
  m_gl->glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
  m_gl->glDepthMask(GL_TRUE);
  draw(true);
  m_gl->glDepthMask(GL_FALSE);
  m_gl->glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
  draw(false);
}

// --- the grid ---

void Renderer::DrawGrid(const FramePacket& packet, bool isRough) {
  if (!isRough) DrawLines(packet, packet.grid.step, 10, 0.45f * packet.grid.fade);
  DrawLines(packet, 10.0 * packet.grid.step, 0, 0.55f);
}

void Renderer::DrawLines(const FramePacket& packet, double step, int skip, float strength) {
  m_gl->glUseProgram(m_grid->name);
  auto& at = m_grid->places;
  // The number of a line tells tens and axes: where it would leave its type there are neither.
  constexpr double kMostNumber = 1e9;
  double corner[2];
  GLint first[2];
  for (int i = 0; i < 2; ++i) {
    const double number = std::clamp(std::floor(packet.grid.focus[i] / step) - kGridLines / 2,
                                     -kMostNumber, kMostNumber);
    first[i] = static_cast<GLint>(number);
    corner[i] = number * step - (i == 0 ? packet.origin.x : packet.origin.z);
  }
  m_gl->glUniformMatrix4fv(at["viewProjection"], 1, GL_FALSE, m_viewProjection.data());
  m_gl->glUniform3f(at["corner"], static_cast<float>(corner[0]),
                    static_cast<float>(-packet.origin.y), static_cast<float>(corner[1]));
  m_gl->glUniform2i(at["first"], first[0], first[1]);
  m_gl->glUniform1f(at["gap"], static_cast<float>(step));
  m_gl->glUniform1i(at["lines"], kGridLines);
  m_gl->glUniform1i(at["pieces"], kGridPieces);
  m_gl->glUniform1i(at["skip"], skip);
  m_gl->glUniform3fv(at["ink"], 1, packet.gridColour.data());
  m_gl->glUniform1f(at["strength"], strength);
  m_gl->glUniform1f(at["focus"], static_cast<float>(m_choice.GetFocus()));
  m_gl->glBindVertexArray(m_empty);
  m_gl->glDrawArrays(GL_LINES, 0, 4 * kGridLines * kGridPieces);
  ++m_counts.all;
}

// --- the selection ---

/// The part of the picture that the selected boxes cover; false when there are none in it.
bool Renderer::FindSelected(const FramePacket& packet, int width, int height, int reach,
                            PixelRect& part) const {
  float low[2] = {1.0f, 1.0f}, high[2] = {-1.0f, -1.0f};
  bool behind = false;
  for (const auto* batches : {&packet.batches, &packet.blended})
    for (const Batch& batch : *batches)
      for (std::uint32_t i = 0; i < batch.selected; ++i) {
        const float* pose = packet.instances[batch.first + i].pose;
        for (int corner = 0; corner < 8; ++corner) {
          float p[3], point[3], clip[4];
          for (int k = 0; k < 3; ++k)
            p[k] = static_cast<float>(
                (corner >> k & 1 ? batch.mesh->box.high : batch.mesh->box.low)[k]);
          for (int k = 0; k < 3; ++k)
            point[k] = pose[4 * k] * p[0] + pose[4 * k + 1] * p[1] + pose[4 * k + 2] * p[2] +
                       pose[4 * k + 3];
          for (std::size_t k = 0; k < 4; ++k)
            clip[k] = m_viewProjection[k] * point[0] + m_viewProjection[4 + k] * point[1] +
                      m_viewProjection[8 + k] * point[2] + m_viewProjection[12 + k];
          behind = behind || !(clip[3] > 0.0f);
          for (int k = 0; k < 2 && !behind; ++k) {
            low[k] = std::min(low[k], clip[k] / clip[3]);
            high[k] = std::max(high[k], clip[k] / clip[3]);
          }
        }
      }
  if (behind) low[0] = low[1] = -1.0f, high[0] = high[1] = 1.0f;
  const int size[2] = {width, height};
  int from[2], to[2];
  for (int k = 0; k < 2; ++k) {
    const float n = static_cast<float>(size[k]);
    from[k] = static_cast<int>(std::clamp(0.5f * (low[k] + 1.0f) * n, 0.0f, n)) - reach - 1;
    to[k] = static_cast<int>(std::clamp(0.5f * (high[k] + 1.0f) * n, 0.0f, n)) + reach + 2;
    from[k] = std::max(from[k], 0);
    to[k] = std::min(to[k], size[k]);
  }
  part = {from[0], from[1], to[0] - from[0], to[1] - from[1]};
  return low[0] <= high[0] && low[1] <= high[1] && part.width > 0 && part.height > 0;
}

void Renderer::DrawOutline(const FramePacket& packet, const PixelRect& area, double pixelRatio) {
  const int reach = std::max(1, static_cast<int>(std::lround(2.0 * pixelRatio)));
  PixelRect part;
  if (!FindSelected(packet, area.width, area.height, reach, part)) return;
  GLint framebuffer = 0;
  m_gl->glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &framebuffer);
  Prepare(*m_mask, area.width, area.height, GL_R8);
  m_gl->glViewport(0, 0, area.width, area.height);
  m_gl->glEnable(GL_SCISSOR_TEST);
  m_gl->glScissor(part.x, part.y, part.width, part.height);
  m_gl->glDisable(GL_BLEND);
  m_gl->glClearColor(0.0f, 0.0f, 0.0f, 0.0f);
  m_gl->glClear(GL_COLOR_BUFFER_BIT);
  m_plain = {1.0f, 1.0f, 1.0f, 1.0f};
  for (const auto* batches : {&packet.batches, &packet.blended})
    for (const Batch& batch : *batches) {
      const unsigned masked =
          BitsFor(*batch.mesh, packet.materials[batch.material]) & (kShadeMask | kShadeTexture);
      DrawBatch(packet, batch, kShadePlain | (masked & kShadeMask ? masked : 0), batch.selected);
    }
  m_gl->glBindFramebuffer(GL_FRAMEBUFFER, static_cast<GLuint>(framebuffer));
  m_gl->glViewport(area.x, area.y, area.width, area.height);
  m_gl->glScissor(area.x + part.x, area.y + part.y, part.width, part.height);
  m_gl->glDisable(GL_CULL_FACE);
  m_gl->glUseProgram(m_outline->name);
  m_gl->glBindTexture(GL_TEXTURE_2D, m_mask->texture);
  m_gl->glUniform4f(m_outline->places["plain"], packet.outline[0], packet.outline[1],
                    packet.outline[2], 1.0f);
  m_gl->glUniform1i(m_outline->places["reach"], reach);
  m_gl->glUniform2i(m_outline->places["from"], area.x, area.y);
  m_gl->glBindVertexArray(m_empty);
  m_gl->glDrawArrays(GL_TRIANGLES, 0, 3);
  ++m_counts.all;
  m_gl->glDisable(GL_SCISSOR_TEST);
  m_gl->glEnable(GL_BLEND);
}

/// Of the picture, in 0 to 1, by the rectangle's program, which is in use.
void Renderer::DrawRectangle(float left, float bottom, float width, float height) {
  m_gl->glUniform4f(m_rectangle->places["place"], left, bottom, width, height);
  m_gl->glDrawArrays(GL_TRIANGLES, 0, 6);
  ++m_counts.all;
}

void Renderer::DrawGate(const FramePacket& packet) {
  const Gate& gate = packet.gate;
  const float right = gate.left + gate.width, top = gate.bottom + gate.height;
  m_gl->glUseProgram(m_rectangle->name);
  m_gl->glUniform4f(m_rectangle->places["plain"], 0.0f, 0.0f, 0.0f, 0.55f);
  m_gl->glBindVertexArray(m_empty);
  DrawRectangle(0.0f, 0.0f, 1.0f, gate.bottom);
  DrawRectangle(0.0f, top, 1.0f, 1.0f - top);
  DrawRectangle(0.0f, gate.bottom, gate.left, gate.height);
  DrawRectangle(right, gate.bottom, 1.0f - right, gate.height);
}

void Renderer::DrawFrame(const FramePacket& packet, const PixelRect& area, double pixelRatio) {
  const double line = std::max(1.0, std::round(pixelRatio));
  const auto width = static_cast<float>(line / area.width);
  const auto height = static_cast<float>(line / area.height);
  m_gl->glUseProgram(m_rectangle->name);
  m_gl->glUniform4f(m_rectangle->places["plain"], packet.outline[0], packet.outline[1],
                    packet.outline[2], 1.0f);
  m_gl->glBindVertexArray(m_empty);
  DrawRectangle(0.0f, 0.0f, 1.0f, height);
  DrawRectangle(0.0f, 1.0f - height, 1.0f, height);
  DrawRectangle(0.0f, 0.0f, width, 1.0f);
  DrawRectangle(1.0f - width, 0.0f, width, 1.0f);
}

// --- picks ---

void Renderer::ReadIds(const FramePacket& packet, int width, int height, const PixelRect& part,
                       std::vector<std::uint32_t>& ids) {
  ids.assign(static_cast<std::size_t>(part.width) * static_cast<std::size_t>(part.height), 0);
  if (ids.empty()) return;
  GLint framebuffer = 0;
  m_gl->glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &framebuffer);
  const Counts counts = m_counts;
  Upload(packet);
  m_choice = LevelChoice(packet, height);
  m_isExact = true;
  Prepare(*m_ids, width, height, GL_R32UI);
  m_gl->glViewport(0, 0, width, height);
  m_gl->glEnable(GL_SCISSOR_TEST);
  m_gl->glScissor(part.x, part.y, part.width, part.height);
  m_gl->glDisable(GL_BLEND);
  m_gl->glEnable(GL_DEPTH_TEST);
  m_gl->glDepthFunc(GL_LEQUAL);
  m_gl->glDepthMask(GL_TRUE);
  const GLuint none[4] = {0, 0, 0, 0};
  m_gl->glClearBufferuiv(GL_COLOR, 0, none);
  m_gl->glClear(GL_DEPTH_BUFFER_BIT);
  for (const auto* batches : {&packet.batches, &packet.blended})
    for (const Batch& batch : *batches) {
      const unsigned masked =
          BitsFor(*batch.mesh, packet.materials[batch.material]) & (kShadeMask | kShadeTexture);
      DrawBatch(packet, batch, kShadeId | (masked & kShadeMask ? masked : 0), batch.count);
    }
  m_gl->glDisable(GL_SCISSOR_TEST);
  m_gl->glDisable(GL_CULL_FACE);
  m_gl->glPixelStorei(GL_PACK_ALIGNMENT, 4);
  m_gl->glReadPixels(part.x, part.y, part.width, part.height, GL_RED_INTEGER, GL_UNSIGNED_INT,
                     ids.data());
  m_gl->glBindVertexArray(0);
  m_gl->glUseProgram(0);
  m_gl->glBindFramebuffer(GL_FRAMEBUFFER, static_cast<GLuint>(framebuffer));
  m_counts = counts;
}

}  // namespace orv::app::view
