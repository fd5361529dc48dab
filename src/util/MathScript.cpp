#include "util/MathScript.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

#include "util/MathScriptRoot.h"
#include "util/MathScript_Default.h"
#include "util/NumberText.h"
#include "util/xml/Base64.h"
#include "util/xml/Tag.h"

namespace orv::rws::core {

using util::xml::Element;
using util::xml::Tag;
using Factories = util::FactoryManager<MathScript>;

namespace {

/// Deepest tree that is evaluated on the call stack.
constexpr int kMostLevels = 1000;

/// What still stands of trees that are being destroyed, so that no destructor calls the next.
std::vector<MathScript*>* s_remains = nullptr;

Factories::Factory* FactoryOf(const Element& element) {
  return element.kind == util::xml::kTag ? Factories::instance().match(element) : nullptr;
}

template <class T>
bool NumberOf(const Element& element, T& number) {
  std::string text = element.text();
  const char* const blanks = " \t\r\n";
  text.erase(0, text.find_first_not_of(blanks));
  text.erase(text.find_last_not_of(blanks) + 1);
  if constexpr (std::is_same_v<T, double>) {
    if (util::parseNumber(text, number, util::NonFinite::kAccept)) return true;
  } else {
    if (util::parseNumber(text, number)) return true;
  }
  const std::vector<unsigned char> bytes = util::xml::decodeBase64(text);
  if (bytes.size() != sizeof number) return false;
  std::memcpy(&number, bytes.data(), sizeof number);
  return true;
}

/// A leaf with the number of its element, or with 0.
template <class Leaf, class T>
MathScript* MakeLeaf(const Element& element) {
  T number{};
  MathScript::ReadNumber(element, number);
  return new Leaf(number);
}

}  // namespace

MathScript::~MathScript() {
  if (m_parent) m_parent->removeChild(this);
  ++s_structure;
  std::vector<MathScript*> remains;
  const bool isFirst = !s_remains;
  if (isFirst) s_remains = &remains;
  for (MathScript* child : m_children) {
    child->m_parent = nullptr;
    s_remains->push_back(child);
  }
  m_children.clear();
  if (!isFirst) return;
  while (!remains.empty()) {
    MathScript* const last = remains.back();
    remains.pop_back();
    last->destroyNode();
  }
  s_remains = nullptr;
}

bool MathScript::ReadNumber(const Element& element, double& number) {
  return NumberOf(element, number);
}

bool MathScript::ReadNumber(const Element& element, int& number) {
  return NumberOf(element, number);
}

MathScript* MathScript::Create(const Element& element) {
  const Factory* factory = FactoryOf(element);
  return factory ? factory->Create(element) : nullptr;
}

// Not in the header: who looks a keyword up links this file, and with it the registration.
std::string MathScript::Factory::name() const {
  return GetKeyword();
}

bool MathScript::Factory::matches(const Element& element) const {
  return element.name == GetKeyword();
}

MathScript* MathScript::Factory::Create(const Element& element) const {
  MathScript* const top = CreateNode(element);
  std::vector<std::pair<MathScript*, const Element*>> open;
  if (top && GetOperandCount() != 0) open.emplace_back(top, &element);
  while (!open.empty()) {
    const auto [node, from] = open.back();
    open.pop_back();
    for (const Element* below : from->children) {
      const Factory* factory = FactoryOf(*below);
      MathScript* child = factory ? factory->CreateNode(*below) : nullptr;
      if (!child) continue;
      node->addChild(child);
      if (factory->GetOperandCount() != 0) open.emplace_back(child, below);
    }
  }
  return top;
}

void MathScriptRoot::Save(Tag& out) const {
  if (childCount() > 0)
    child(0)->Save(out);
  else
    out = Tag("zero");
}

namespace MathScript_Default {

void Node::WriteHead(Element& out) const {
  out = Tag(Keyword());
  out.setText(Data());
}

void Node::Save(Tag& out) const {
  WriteHead(out);
  std::vector<std::pair<const Node*, Element*>> open{{this, &out}};
  while (!open.empty()) {
    const auto [node, element] = open.back();
    open.pop_back();
    for (const MathScript* child : node->children()) {
      Tag tag("");
      const Node* const known = dynamic_cast<const Node*>(child);
      if (known)
        known->WriteHead(tag);
      else
        child->Save(tag);
      Element& written = element->emplaceChild(std::move(tag));
      if (known) open.emplace_back(known, &written);
    }
    // So that the saved tree always has its arity.
    for (int i = node->childCount(); i < node->Arity(); ++i) element->emplaceChild(Tag("zero"));
  }
}

std::string Constant::Data() const {
  return util::shortText(value);
}

std::string Parameter::Data() const {
  return std::to_string(index);
}

void Parameter::FindValue() const {
  static constexpr double kNoValue = 0.0;
  const MathScript* root = this;
  while (root->parent()) root = root->parent();
  const double* const value = root->FindParameter(index);
  m_value = value ? value : &kNoValue;
  m_seen = s_structure;
}

/// Also marks all functions below that are not deep themselves.
bool Function::Measure() const {
  struct Place {
    const MathScript* node;
    std::size_t above;
    int height = 1;
  };
  std::vector<Place> places{{this, 0}};  // each behind its parent
  for (std::size_t i = 0; i < places.size(); ++i)
    for (const MathScript* child : places[i].node->children()) places.push_back({child, i});
  for (std::size_t i = places.size(); i-- > 0;) {
    const auto [node, above, height] = places[i];
    places[above].height = std::max(places[above].height, height + (i > 0 ? 1 : 0));
    if (height > kMostLevels) continue;
    if (const auto* function = dynamic_cast<const Function*>(node))
      function->m_shallowAt = s_structure;
  }
  return places[0].height > kMostLevels;
}

double Function::EvaluateDeep() const {
  struct Frame {
    const Function* node;
    int step = 0;
    double left = 0.0;
    double right = 0.0;
    void Take(double value) { node->Gather(step++, value, left, right); }
  };
  std::vector<Frame> stack{{this}};
  for (;;) {
    Frame& frame = stack.back();
    if (frame.step == frame.node->GetSteps()) {
      const double value = frame.node->Apply(frame.left, frame.right);
      stack.pop_back();
      if (stack.empty()) return value;
      stack.back().Take(value);
      continue;
    }
    const MathScript* operand = frame.node->child(frame.node->GetOperand(frame.step));
    if (const auto* function = dynamic_cast<const Function*>(operand))
      stack.push_back({function});
    else
      frame.Take(operand ? operand->Evaluate() : 0.0);
  }
}

}  // namespace MathScript_Default

// --- registration ---

namespace {

using namespace MathScript_Default;

class LeafFactory : public MathScript::Factory {
 public:
  using Make = MathScript* (*)(const Element&);
  LeafFactory(std::string keyword, Make make) : m_keyword(std::move(keyword)), m_make(make) {}
  std::string GetKeyword() const override { return m_keyword; }
  MathScript* CreateNode(const Element& element) const override { return m_make(element); }
  int GetOperandCount() const override { return 0; }

 private:
  const std::string m_keyword;
  const Make m_make;
};

class SumFactory : public MathScript::Factory {
 public:
  std::string GetKeyword() const override { return "sum"; }
  int GetOperandCount() const override { return kAnyNumber; }
  MathScript* CreateNode(const Element&) const override { return new Sum; }
};

template <class T>
class FunctionFactory : public MathScript::Factory {
 public:
  FunctionFactory(std::string keyword, int operands)
      : m_keyword(std::move(keyword)), m_operands(operands) {}
  std::string GetKeyword() const override { return m_keyword; }
  int GetOperandCount() const override { return m_operands; }
  MathScript* CreateNode(const Element&) const override { return new T(m_keyword); }

 private:
  const std::string m_keyword;
  const int m_operands;
};

template <class Op>
void AddBinary(const char* keyword) {
  Factories::instance().add(new FunctionFactory<BinaryFunction<Op>>(keyword, 2));
}

template <class Op>
void AddUnary(const char* keyword) {
  Factories::instance().add(new FunctionFactory<UnaryFunction<Op>>(keyword, 1));
}

bool Register() {
  Factories& factories = Factories::instance();
  factories.add(new LeafFactory("parameter", MakeLeaf<Parameter, int>));
  factories.add(new LeafFactory("zero", [](const Element&) -> MathScript* { return new Zero; }));
  factories.add(new LeafFactory("constant", MakeLeaf<Constant, double>));
  factories.add(new SumFactory);
  AddBinary<std::plus<double>>("add");
  AddBinary<std::minus<double>>("sub");
  AddBinary<std::multiplies<double>>("mul");
  AddBinary<std::divides<double>>("div");
  AddBinary<std::greater<double>>("greater");
  AddBinary<std::greater_equal<double>>("greater_equal");
  AddBinary<std::less<double>>("less");
  AddBinary<std::less_equal<double>>("less_equal");
  AddBinary<std::equal_to<double>>("equals");
  AddBinary<std::not_equal_to<double>>("notequals");
  AddBinary<Fmod>("mod");
  AddBinary<Pow>("pow");
  AddBinary<Atan2>("atan2");
  AddUnary<Atan>("atan");
  AddUnary<Tan>("tan");
  AddUnary<Sin>("sin");
  AddUnary<Cos>("cos");
  AddUnary<Invert>("inv");
  AddUnary<std::negate<double>>("neg");
  return true;
}

const bool s_registered = Register();

}  // namespace

}  // namespace orv::rws::core
