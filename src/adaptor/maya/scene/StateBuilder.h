// The adaptor's state in a scene file.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "util/Composite_Dynamic.h"

namespace orv::util::xml {
class Element;
}

namespace orv::rws::adaptor::maya {

/// A piece of the state: a name, a text and further pieces, which it owns. The root is what
/// `AdaptorState` holds.
class StateBuilder : public util::Composite_Dynamic<StateBuilder> {
 public:
  explicit StateBuilder(std::string name, std::string text = {});
  void destroyNode() override { delete this; }

  /// Adds a piece below this one.
  StateBuilder& Add(const std::string& name, const std::string& text = {});
  /// The first piece below of this name; null without one.
  const StateBuilder* Find(const std::string& name) const;
  const std::string& GetName() const { return m_name; }
  const std::string& GetText() const { return m_text; }

  /// The piece and all below it as XML.
  std::string Build() const;
  /// Null, with `problem` filled, when the text can't be read.
  static std::unique_ptr<StateBuilder> Read(const std::string& text, std::string& problem);

 private:
  void Write(util::xml::Element& out) const;
  void Take(const util::xml::Element& from);

  std::string m_name;
  std::string m_text;
};

/// What the state of a scene holds.
struct SceneState {
  std::vector<std::string> order;  ///< names of the rigs, in the order in which they are stepped
  std::string rows;                ///< see SceneRigs; empty without groups
};

std::string BuildState(const SceneState& state);
/// False, with `problem` filled and an empty state, when it can't be read. An empty text is an
/// empty state.
bool ReadState(const std::string& text, SceneState& state, std::string& problem);

}  // namespace orv::rws::adaptor::maya
