#include "adaptor/headless/ForeignFile.h"

#include <algorithm>

namespace orv::rws::adaptor::headless {

namespace {

constexpr const char* kExport =
    "open it in a program that reads it, such as Blender, and export glTF 2.0: .glb or .gltf";
constexpr const char* kTable = "name the scene here, and a table of inputs by --inputs or --play";

struct Format {
  const char* what;
  std::string_view endings;  ///< each with a blank behind it
  std::string_view start;    ///< of the content; empty: the ending must do
  const char* advice = kExport;
};

constexpr Format kFormats[] = {
    {"a Blender file", ".blend .blend1 ", "BLENDER"},
    {"an FBX file", ".fbx ", "Kaydara FBX"},
    {"an FBX file", ".fbx ", "; FBX"},
    {"a USD file", ".usd .usdc ", "PXR-USDC"},
    {"a USD file", ".usda ", "#usda"},
    {"a USD file", ".usdz ", ""},
    {"an Alembic file", ".abc ", "Ogawa"},
    {"an Alembic file", ".abc ", "\x89HDF"},
    {"a Collada file", ".dae ", ""},
    {"a Maya file", ".ma ", "//Maya"},
    {"a Maya file", ".mb ", "FOR4"},
    {"a Maya file", ".mb ", "FOR8"},
    {"a Wavefront OBJ file", ".obj ", "mtllib "},
    {"a Wavefront OBJ file", ".obj ", "v "},
    {"an STL file", ".stl ", "solid "},
    {"a PLY file", ".ply ", "ply\n"},
    {"a 3ds Max file", ".max .3ds ", ""},
    {"a Cinema 4D file", ".c4d ", ""},
    {"a table (CSV)", ".csv ", "time,", kTable},
};

std::string EndingOf(const std::string& name) {
  const std::size_t point = name.find_last_of("./");
  if (point == std::string::npos || name[point] != '.') return {};
  std::string ending = name.substr(point);
  for (char& c : ending)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return ending + " ";
}

/// Without blank lines and what begins with "# ", as an OBJ file's comments do.
std::string_view WithoutComments(std::string_view text) {
  while (!text.empty()) {
    const bool comment = text.substr(0, 2) == "# ";
    if (!comment && text.front() != '\n' && text.front() != '\r') break;
    const std::size_t end = text.find('\n');
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return text;
}

}  // namespace

std::string ForeignFile(std::string_view bytes, const std::string& name) {
  const std::size_t first = bytes.find_first_not_of("\xEF\xBB\xBF \t\r\n");
  if (first == std::string_view::npos || bytes[first] == '{' || bytes.substr(0, 4) == "glTF")
    return {};
  const std::string_view content = WithoutComments(bytes);
  const std::string ending = EndingOf(name);
  const auto begins = [&](const Format& format) {
    return !format.start.empty() && content.substr(0, format.start.size()) == format.start;
  };
  const auto isNamed = [&](const Format& format) {
    return !ending.empty() && format.endings.find(ending) != std::string_view::npos;
  };
  const auto* const end = std::end(kFormats);
  const Format* found = std::find_if(std::begin(kFormats), end, begins);
  if (found == end) found = std::find_if(std::begin(kFormats), end, isNamed);
  if (found == end) return {};
  return std::string("this is ") + found->what + ", no glTF scene (" + found->advice + ")";
}

}  // namespace orv::rws::adaptor::headless
