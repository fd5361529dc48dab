// Storage nodes of the open scene.
#pragma once

#include <maya/MObject.h>
#include <maya/MTypeId.h>

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "adaptor/maya/scene/StorageTable.h"
#include "adaptor/maya/scene/StorageValues.h"

namespace orv::rws::adaptor::maya {

/// A storage node that was found, and what it holds.
struct StoredNode {
  MObject node;
  std::string space;  ///< its namespace; empty for the root's
  StorageValues values;
};

/// A node of the scene that carries a tag, see AdaptorInterface::TagNode.
struct TaggedNode {
  MObject node;
  std::string space;
  std::string tag;
};

/// In the order of the scene's nodes; those of referenced files are left out and counted.
std::vector<StoredNode> FindStorage(const MTypeId& type, bool ofRigs, int& referenced);
/// Nodes of referenced files are left out.
std::vector<TaggedNode> FindTaggedNodes();
void SetTagOf(MObject& node, const std::string& tag);

/// Makes a node of this type in the root namespace. False when the host refuses.
bool MakeStorage(const MTypeId& type, const std::string& name, bool ofRig,
                 const StorageValues& values);
/// Deletes all nodes of both types but those of referenced files.
void DeleteStorage();

}  // namespace orv::rws::adaptor::maya
