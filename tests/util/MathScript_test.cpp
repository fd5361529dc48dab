#include "util/MathScript.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "util/MathScriptRoot.h"
#include "util/MathScript_Default.h"
#include "util/NumberText.h"
#include "util/xml/Base64.h"
#include "util/xml/Tag.h"

namespace orv::rws::core {
namespace {

using util::xml::Element;
using util::xml::Tag;

struct Destroy {
  void operator()(MathScript* node) const { util::destroy(node); }
};
using Tree = std::unique_ptr<MathScript, Destroy>;

const std::vector<std::string> kKeywords = {
    "parameter", "zero",          "constant", "sum",        "add",    "sub",       "mul", "div",
    "greater",   "greater_equal", "less",     "less_equal", "equals", "notequals", "mod", "pow",
    "atan2",     "atan",          "tan",      "sin",        "cos",    "inv",       "neg"};
constexpr double kValues[] = {0.5, -3.0, 1e300, 7.25};

Tree Read(const std::string& text) {
  Element element;
  EXPECT_EQ(element.loadText(text), 0) << text;
  return Tree(MathScript::Create(element));
}

std::uint64_t Bits(double value) {
  if (std::isnan(value)) return 1;  // one kind of no number is like another
  std::uint64_t bits;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

/// A program for a machine with a stack, and the same program as a tree of elements.
class RandomProgram {
 public:
  RandomProgram(unsigned seed, int depth) : m_random(seed), document(Make(depth)) {}

  double Run() const {
    std::vector<double> stack;
    const auto pop = [&] {
      const double top = stack.back();
      stack.pop_back();
      return top;
    };
    for (const auto& [op, number] : m_code) {
      if (op == "push") {
        stack.push_back(number);
        continue;
      }
      if (op == "sum") {
        double sum = 0.0;
        const auto first = stack.end() - static_cast<std::ptrdiff_t>(number);
        for (auto it = first; it != stack.end(); ++it) sum += *it;
        stack.erase(first, stack.end());
        stack.push_back(sum);
        continue;
      }
      const double b = pop();
      stack.push_back(number == 1.0 ? Unary(op, b) : Binary(op, pop(), b));
    }
    return stack.at(0);
  }

 private:
  static double Unary(const std::string& op, double x) {
    if (op == "atan") return std::atan(x);
    if (op == "tan") return std::tan(x);
    if (op == "sin") return std::sin(x);
    if (op == "cos") return std::cos(x);
    return op == "inv" ? 1.0 / x : -x;
  }
  static double Binary(const std::string& op, double a, double b) {
    if (op == "add") return a + b;
    if (op == "sub") return a - b;
    if (op == "mul") return a * b;
    if (op == "div") return a / b;
    if (op == "greater") return a > b ? 1.0 : 0.0;
    if (op == "greater_equal") return a >= b ? 1.0 : 0.0;
    if (op == "less") return a < b ? 1.0 : 0.0;
    if (op == "less_equal") return a <= b ? 1.0 : 0.0;
    if (op == "equals") return a == b ? 1.0 : 0.0;
    if (op == "notequals") return a != b ? 1.0 : 0.0;
    if (op == "mod") return std::fmod(a, b);
    return op == "pow" ? std::pow(a, b) : std::atan2(a, b);
  }

  int Pick(int count) { return static_cast<int>(m_random() % static_cast<unsigned>(count)); }

  Tag Leaf() {
    Tag tag(kKeywords[static_cast<std::size_t>(Pick(3))]);
    double number = 0.0;
    if (tag.name == "parameter") {
      const int index = Pick(6) - 1;
      tag.setText(std::to_string(index));
      if (index >= 0 && index < 4) number = kValues[index];
    } else if (tag.name == "constant") {
      number = std::ldexp(Pick(2000) - 1000.0, Pick(60) - 40);
      tag.setText(util::shortText(number));
    }
    m_code.emplace_back("push", number);
    return tag;
  }

  /// A way of `depth` levels down, with leaves beside it.
  Tag Make(int depth) {
    struct Level {
      Tag tag;
      int operands, way;
    };
    std::vector<Level> levels;
    std::vector<std::vector<Tag>> before;
    for (int i = 1; i < depth; ++i) {
      const std::string& keyword = kKeywords[static_cast<std::size_t>(3 + Pick(20))];
      const bool isUnary = &keyword >= &kKeywords[17];
      const int operands = keyword == "sum" ? 1 + Pick(3) : isUnary ? 1 : 2;
      const int way = Pick(operands);
      before.emplace_back();
      for (int k = 0; k < way; ++k) before.back().push_back(Leaf());
      levels.push_back({Tag(keyword), operands, way});
    }
    Tag below = Leaf();
    for (auto level = levels.rbegin(); level != levels.rend(); ++level) {
      for (Tag& leaf : before.back()) level->tag.emplaceChild(std::move(leaf));
      before.pop_back();
      level->tag.emplaceChild(std::move(below));
      for (int k = level->way + 1; k < level->operands; ++k) level->tag.emplaceChild(Leaf());
      m_code.emplace_back(level->tag.name, level->operands);
      // What is no operand of a function changes nothing.
      if (Pick(8) == 0) level->tag.emplaceChild(Tag("nonsense"));
      if (Pick(8) == 0 && level->tag.name != "sum") level->tag.emplaceChild(Tag("inv"));
      below = std::move(level->tag);
    }
    return below;
  }

  std::minstd_rand m_random;
  std::vector<std::pair<std::string, double>> m_code;

 public:
  const Tag document;
};

TEST(MathScript, TenThousandRandomTreesGiveWhatAStackMachineGives) {
  int finite = 0;
  for (unsigned seed = 1; seed <= 10000; ++seed) {
    // Mostly short ones, since few deep ones end in a number; the last are a thousand deep.
    const int depth = static_cast<int>(seed <= 9900 ? 1 + seed % 30 : seed - 9000);
    const RandomProgram program(seed, depth);
    MathScriptRoot root;
    root.SetValues(kValues, 4);
    root.addChild(MathScript::Create(program.document));
    ASSERT_TRUE(root.child(0));
    const double value = root.Evaluate();
    ASSERT_EQ(Bits(value), Bits(program.Run())) << program.document.toText();
    finite += std::isfinite(value);
    Tag saved("");
    root.Save(saved);
    Element read = saved;
    if (depth < 100) {
      ASSERT_EQ(read.loadText(saved.toText("", "")), 0) << seed;
    }
    MathScriptRoot again;
    again.SetValues(kValues, 4);
    again.addChild(MathScript::Create(read));
    ASSERT_EQ(Bits(again.Evaluate()), Bits(value)) << program.document.toText();
  }
  EXPECT_GT(finite, 5000);
}

TEST(MathScript, KeywordsStandInTheirOrderAndWhatIsMissingCountsAsZero) {
  std::vector<std::string> keywords;
  for (auto* factory : util::FactoryManager<MathScript>::instance().factories())
    keywords.push_back(factory->GetKeyword());
  EXPECT_EQ(keywords, kKeywords);
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  struct Row {
    std::string text;
    double value;
    std::string saved;  ///< has its arity
  };
  const Row rows[] = {
      {"<sum/>", 0.0, "<sum/>"},
      {"<div><constant>-1</constant><zero/></div>", -kInfinity,
       "<div><constant>-1</constant><zero/></div>"},
      {"<div/>", NAN, "<div><zero/><zero/></div>"},
      {"<inv/>", kInfinity, "<inv><zero/></inv>"},
      {"<pow><neg/></pow>", 1.0, "<pow><neg><zero/></neg><zero/></pow>"},
      {"<cos/>", 1.0, "<cos><zero/></cos>"},
      {"<sub><constant>3</constant></sub>", 3.0, "<sub><constant>3</constant><zero/></sub>"},
      {"<neg><constant>0</constant></neg>", -0.0, "<neg><constant>0</constant></neg>"},
      {"<mod><constant>-7</constant><constant>3</constant></mod>", -1.0,
       "<mod><constant>-7</constant><constant>3</constant></mod>"},
      {"<equals><constant>0.3</constant><add><constant>0.1</constant><constant>0.2</constant></add>"
       "</equals>",
       0.0,
       "<equals><constant>0.3</constant><add><constant>0.1</constant><constant>0.2</constant></add>"
       "</equals>"},
      {"<constant>AAAAAAAANEA=</constant>", 20.0, "<constant>20</constant>"},
      {"<constant> 1e3\n</constant>", 1000.0, "<constant>1000</constant>"},
      {"<constant>much</constant>", 0.0, "<constant>0</constant>"},
      {"<sum><other/><parameter>3</parameter></sum>", 0.0, "<sum><parameter>3</parameter></sum>"},
      {"<neg>add<!-- add --><Zero/><constant>4</constant></neg>", -4.0,
       "<neg><constant>4</constant></neg>"}};
  for (const Row& row : rows) {
    const Tree tree = Read(row.text);
    EXPECT_EQ(Bits(tree->Evaluate()), Bits(row.value)) << row.text;
    Tag out("before");
    tree->Save(out);
    EXPECT_EQ(out.toText("", ""), row.saved) << row.text;
  }
  EXPECT_FALSE(Read("<Add/>"));
}

TEST(MathScript, TheSecondOperandIsEvaluatedFirst) {
  static std::string log;
  struct Spy : MathScript {
    explicit Spy(char mark) : letter(mark) {}
    void Save(Tag&) const override {}
    double Evaluate() const override { return log += letter, 1.0; }
    char letter;
  };
  for (const bool isDeep : {false, true}) {
    log.clear();
    MathScriptRoot root;
    MathScript* at = &root;
    for (int i = 0; i < (isDeep ? 3000 : 0); ++i) {
      at->addChild(Read("<neg/>").release());
      at = at->child(0);
    }
    at->addChild(Read("<sum><sub/></sum>").release());
    for (const char letter : {'a', 'b', 'c'}) at->child(0)->child(0)->addChild(new Spy(letter));
    for (const char letter : {'d', 'e'}) at->child(0)->addChild(new Spy(letter));
    EXPECT_EQ(root.Evaluate(), 2.0);
    EXPECT_EQ(log, "bade");
  }
}

TEST(MathScript, ParametersAskTheRootThatTheyStandUnderNow) {
  const double one[] = {1.0, 2.0}, other[] = {10.0, 20.0};
  MathScriptRoot first;
  first.SetValues(one, 2);
  first.addChild(Read("<add><parameter>1</parameter><parameter>2</parameter></add>").release());
  EXPECT_EQ(first.Evaluate(), 2.0);
  MathScriptRoot second;
  second.SetValues(other, 2);
  MathScript* moved = first.child(0);
  second.addChild(moved);
  EXPECT_EQ(first.Evaluate(), 0.0);
  EXPECT_EQ(second.Evaluate(), 20.0);
  second.removeChild(moved);
  EXPECT_EQ(moved->Evaluate(), 0.0);
  moved->destroy();
}

TEST(MathScript, DepthTakesNoStack) {
  constexpr int kDepth = 300000;
  Tag document("constant");
  document.setText("5");
  for (int i = 0; i < kDepth; ++i) {
    Tag above(i % 2 ? "neg" : "add");
    above.emplaceChild(std::move(document));
    document = std::move(above);
  }
  Tree tree(MathScript::Create(document));
  EXPECT_EQ(tree->Evaluate(), 5.0);
  Tag saved("");
  tree->Save(saved);
  EXPECT_EQ(Tree(MathScript::Create(saved))->Evaluate(), 5.0);
}

}  // namespace
}  // namespace orv::rws::core
