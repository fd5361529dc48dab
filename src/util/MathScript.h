// The expression tree of a template tool.
#pragma once

#include <cstdint>
#include <string>

#include "util/Composite_Dynamic.h"
#include "util/DynamicObject.h"
#include "util/FactoryManager.h"

namespace orv::util::xml {
class Element;
class Tag;
}  // namespace orv::util::xml

namespace orv::rws::core {

/// A small language with no text syntax: a program is a tree of XML elements, and evaluation gives
/// one double. A node owns its children. No evaluation fails: arithmetic follows the floating-point
/// rules, and what comes out may be infinite or no number. The keywords are those of
/// `MathScript_Default`, in the order in which they stand in `FactoryManager<MathScript>`.
///
/// Building, saving, evaluating and destroying a tree of any depth take a bounded part of the
/// stack. All use is on the main thread.
class MathScript : public util::DynamicObject, public util::Composite_Dynamic<MathScript> {
 public:
  /// Makes the nodes of one keyword.
  class Factory : public util::DynamicObject {
   public:
    virtual std::string GetKeyword() const = 0;
    /// The node of `element` alone, without what stands below it. The caller owns it.
    virtual MathScript* CreateNode(const util::xml::Element& element) const = 0;
    /// Number of children that such a node evaluates, or kAnyNumber. With 0 none are built.
    virtual int GetOperandCount() const = 0;
    static constexpr int kAnyNumber = -1;

    /// The node of `element` and, below it, the nodes of the element's children. A child whose name
    /// no factory knows adds no child. The caller owns the tree.
    MathScript* Create(const util::xml::Element& element) const;

    // What FactoryManager asks for.
    std::string name() const;
    bool matches(const util::xml::Element& element) const;
    MathScript* create(const util::xml::Element& element) const { return Create(element); }
  };

  MathScript() = default;
  ~MathScript() override;
  void destroyNode() override { destroy(); }

  /// Makes `out` the element from which a factory builds this tree again.
  virtual void Save(util::xml::Tag& out) const = 0;
  virtual double Evaluate() const = 0;
  /// What a parameter below asks the root of its tree for: where its value stands, until any tree
  /// changes. Null, which counts as 0, unless the root knows better.
  virtual const double* FindParameter(int /*index*/) const { return nullptr; }

  /// The number that an element holds as its text: a decimal one or, as in profiles, the base64 of
  /// its bytes; a double may be "inf" or "nan". False when it holds neither, which counts as 0.
  static bool ReadNumber(const util::xml::Element& element, double& number);
  static bool ReadNumber(const util::xml::Element& element, int& number);
  /// The tree of an element; null when no factory knows its name. The caller owns it.
  static MathScript* Create(const util::xml::Element& element);

  void onChildAdded(MathScript* /*child*/, int /*index*/) override { ++s_structure; }
  void onChildRemoved(MathScript* /*child*/, int /*index*/) override { ++s_structure; }

 protected:
  /// Counts the changes to any tree: what a node remembers of its place holds until the next. Who
  /// overrides the two hooks above calls them.
  inline static std::uint64_t s_structure = 1;
};

}  // namespace orv::rws::core
