/// Who refers to whom by index in a glTF file.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "adaptor/headless/GltfJson.h"

namespace orv::rws::adaptor::headless {

/// The lists of a glTF file whose elements come and go with our own data.
enum class Table {
  kMeshes,
  kCameras,
  kSkins,
  kMaterials,
  kTextures,
  kImages,
  kSamplers,
  kAccessors,
  kBufferViews
};
/// All of them, each ahead of those that it refers to.
inline constexpr Table kTables[] = {Table::kMeshes,    Table::kCameras,   Table::kSkins,
                                    Table::kMaterials, Table::kTextures,  Table::kImages,
                                    Table::kSamplers,  Table::kAccessors, Table::kBufferViews};
/// The list's name in the file.
const char* NameOf(Table table);

/// Whether a value can be an index; what is none, others may have put there, and is left alone.
bool IsIndex(const Json& value);

/// Calls `visit` with every index into `table` that the file holds, in all places of glTF itself
/// and of the extensions in `knowsAllExtensions`.
void VisitReferences(Json& json, Table table, const std::function<void(Json&)>& visit);

/// Takes out the elements of `table` that are ours and that nobody refers to, and adapts all
/// indices. Gives for each old index its new one, -1 for an element that is gone. When the file
/// uses an extension whose references we can't adapt, nothing is taken out in front of others'
/// elements.
std::vector<int> DropUnusedOwn(Json& json, Table table);

/// Adapts all node indices; `map` gives the new index or -1. Channels of nodes that are gone go
/// with them, so do samplers that nobody uses then; a clip may be left without channels. Skins must
/// not refer to nodes that are gone; in lists of nodes these become -1.
void RemapNodes(Json& json, const std::vector<int>& map);

/// Takes out the samplers of an animation that none of its channels uses.
void DropUnusedSamplers(Json& animation);

/// The first extension in use whose references to nodes or data we do not know; "" for none.
std::string UnknownExtension(const Json& json);

}  // namespace orv::rws::adaptor::headless
