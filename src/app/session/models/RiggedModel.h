// Models that come with their rigs: one file (.prm), made from a selection and added to any scene.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "app/session/anyhost/Problem.h"
#include "util/Vector3.h"

namespace orv::app {

class SceneSession;

/// What a user sees of a pre-rigged model before adding it.
struct ModelCard {
  std::string title;
  std::string text;     ///< what it is and how to drive it, in paragraphs
  std::string picture;  ///< bytes of a PNG; empty: none
};

struct RiggedModelInfo {
  Problem problem;  ///< why the file can't be used; the rest is empty then
  ModelCard card;
  struct Rig {
    std::string name;
    std::string kind;
  };
  std::vector<Rig> rigs;  ///< in the order in which they are stepped
  std::size_t nodes = 0;
  bool hasTake = false;             ///< keys or recorded inputs of a rig come along
  util::Vector3<double> low, high;  ///< box around its meshes, in the world (m)
};

/// Reads a .prm, or one of those that come with the program.
RiggedModelInfo ReadRiggedModel(const std::string& path);
/// Paths, for all functions here, of the models that come with the program, by title.
std::vector<std::string> ShippedModels();

/// What a model is made of: these rigs and nodes, with all that stands below them.
struct ModelSelection {
  std::vector<std::string> rigs;
  std::vector<std::string> nodes;
};

/// Writes `path` (.prm), whole or not at all; the open scene stays as it is. What hangs on a node
/// outside of the selection is put into the world where it is now, which `warnings` tell.
Problem MakeRiggedModel(SceneSession& session, const ModelSelection& selection,
                        const ModelCard& card, const std::string& path,
                        std::vector<std::string>& warnings);

struct ModelPlacing {
  util::Vector3<double> translation;  ///< by which all of it is moved (m)
  std::string ground;  ///< name of the node that its rigs take as their ground; "" none
};

struct AddedModel {
  Problem problem;                 ///< why nothing has changed
  std::vector<std::string> rigs;   ///< names of the new rigs, in the order of the file
  std::vector<std::string> nodes;  ///< of the new nodes without a new one above them
  std::vector<std::string> warnings;
};

/// Adds rigs and nodes of a model to the open scene under names that are free there; what hung on
/// each other still does. Poses, parameters and mappings are those of
/// the file. One undo step, which leaves the scene as it was to the byte.
AddedModel AddRiggedModel(SceneSession& session, const std::string& path,
                          const ModelPlacing& placing);

}  // namespace orv::app
