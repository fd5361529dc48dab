#include "adaptor/headless/GltfMedia.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

namespace orv::rws::adaptor::headless {

namespace fs = std::filesystem;

namespace {

constexpr double kMostFrame = 1e9;

std::string FileOf(const Json& json, const std::string& folder) {
  const Json* file = json.is_object() ? Member(json, "file") : nullptr;
  if (file == nullptr || !file->is_string() || file->get<std::string>().empty()) return {};
  std::error_code none;
  const fs::path path = fs::absolute(fs::path(folder) / file->get<std::string>(), none);
  return path.lexically_normal().string();
}

std::string ReferenceTo(const std::string& file, const std::string* folder) {
  if (folder == nullptr) return file;
  std::error_code none;
  const fs::path base = fs::absolute(folder->empty() ? fs::path(".") : fs::path(*folder), none);
  const fs::path relative = fs::path(file).lexically_relative(base.lexically_normal());
  return relative.empty() ? file : relative.generic_string();
}

Json& ObjectIn(Json& json) {
  if (!json.is_object()) json = Json::object();
  return json;
}

}  // namespace

std::optional<SceneSound> SoundOf(const Json& json, const std::string& folder) {
  SceneSound sound;
  sound.file = FileOf(json, folder);
  if (sound.file.empty()) return std::nullopt;
  sound.start = NumberOr(json, "start", 0.0);
  return sound;
}

std::optional<Backdrop> BackdropOf(const Json& json, const std::string& folder) {
  Backdrop backdrop;
  backdrop.file = FileOf(json, folder);
  if (backdrop.file.empty()) return std::nullopt;
  const double frame = std::clamp(NumberOr(json, "frame", 0.0), -kMostFrame, kMostFrame);
  backdrop.frame = static_cast<int>(std::lround(frame));
  backdrop.opacity = std::clamp(NumberOr(json, "opacity", 1.0), 0.0, 1.0);
  return backdrop;
}

void WriteSound(const SceneSound& sound, const std::string* folder, Json& json) {
  ObjectIn(json)["file"] = ReferenceTo(sound.file, folder);
  json["start"] = sound.start;
}

void WriteBackdrop(const Backdrop& backdrop, const std::string* folder, Json& json) {
  ObjectIn(json)["file"] = ReferenceTo(backdrop.file, folder);
  json["frame"] = backdrop.frame;
  json["opacity"] = backdrop.opacity;
}

}  // namespace orv::rws::adaptor::headless
