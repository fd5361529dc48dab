#include "util/MathScript.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <numeric>
#include <random>
#include <string>
#include <tuple>
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

/// A random tree, and its value as it comes of growing it up from a leaf.
class RandomTree {
 public:
  RandomTree(unsigned seed, int depth) : m_random(seed) {
    std::tie(document, value) = Leaf();
    for (int i = 1; i < depth; ++i) Grow();
  }
  Tag document{""};
  double value = 0.0;

 private:
  static double Apply(const std::string& op, const std::vector<double>& x) {
    if (op == "sum") return std::accumulate(x.begin(), x.end(), 0.0);
    if (op == "atan") return std::atan(x[0]);
    if (op == "tan") return std::tan(x[0]);
    if (op == "sin") return std::sin(x[0]);
    if (op == "cos") return std::cos(x[0]);
    if (op == "inv") return 1.0 / x[0];
    if (op == "neg") return -x[0];
    if (op == "add") return x[0] + x[1];
    if (op == "sub") return x[0] - x[1];
    if (op == "mul") return x[0] * x[1];
    if (op == "div") return x[0] / x[1];
    if (op == "greater") return x[0] > x[1];
    if (op == "greater_equal") return x[0] >= x[1];
    if (op == "less") return x[0] < x[1];
    if (op == "less_equal") return x[0] <= x[1];
    if (op == "equals") return x[0] == x[1];
    if (op == "notequals") return x[0] != x[1];
    if (op == "mod") return std::fmod(x[0], x[1]);
    return op == "pow" ? std::pow(x[0], x[1]) : std::atan2(x[0], x[1]);
  }

  int Pick(int count) { return static_cast<int>(m_random() % static_cast<unsigned>(count)); }

  std::pair<Tag, double> Leaf() {
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
    return {std::move(tag), number};
  }

  /// A function above what stands, with leaves beside it.
  void Grow() {
    const std::string& keyword = kKeywords[static_cast<std::size_t>(3 + Pick(20))];
    const bool isUnary = &keyword >= &kKeywords[17];
    const int operands = keyword == "sum" ? 1 + Pick(3) : isUnary ? 1 : 2;
    const int way = Pick(operands);
    Tag above(keyword);
    std::vector<double> values;
    for (int k = 0; k < operands; ++k) {
      auto [tag, number] = k == way ? std::pair(std::move(document), value) : Leaf();
      above.emplaceChild(std::move(tag));
      values.push_back(number);
    }
    value = Apply(keyword, values);
    // What is no operand of a function changes nothing.
    if (Pick(8) == 0) above.emplaceChild(Tag("nonsense"));
    if (Pick(8) == 0 && keyword != "sum") above.emplaceChild(Tag("inv"));
    document = std::move(above);
  }

  std::minstd_rand m_random;
};

TEST(MathScript, TenThousandRandomTreesGiveTheValuesThatTheyGrewBy) {
  int finite = 0;
  for (unsigned seed = 1; seed <= 10000; ++seed) {
    // Mostly short ones, since few deep ones end in a number; the last are a thousand deep.
    const int depth = static_cast<int>(seed <= 9900 ? 1 + seed % 30 : seed - 9000);
    const RandomTree tree(seed, depth);
    MathScriptRoot root;
    root.SetValues(kValues, 4);
    root.addChild(MathScript::Create(tree.document));
    ASSERT_TRUE(root.child(0));
    const double value = root.Evaluate();
    ASSERT_EQ(Bits(value), Bits(tree.value)) << tree.document.toText();
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
    ASSERT_EQ(Bits(again.Evaluate()), Bits(value)) << tree.document.toText();
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
    std::string saved;  ///< has its arity; empty where it is the text
  };
  const Row rows[] = {
      {"<sum/>", 0.0, ""},
      {"<div><constant>-1</constant><zero/></div>", -kInfinity, ""},
      {"<div/>", NAN, "<div><zero/><zero/></div>"},
      {"<inv/>", kInfinity, "<inv><zero/></inv>"},
      {"<pow><neg/></pow>", 1.0, "<pow><neg><zero/></neg><zero/></pow>"},
      {"<cos/>", 1.0, "<cos><zero/></cos>"},
      {"<sub><constant>3</constant></sub>", 3.0, "<sub><constant>3</constant><zero/></sub>"},
      {"<neg><constant>0</constant></neg>", -0.0, ""},
      {"<mod><constant>-7</constant><constant>3</constant></mod>", -1.0, ""},
      {"<equals><constant>0.3</constant><add><constant>0.1</constant><constant>0.2</constant></add>"
       "</equals>",
       0.0, ""},
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
    EXPECT_EQ(out.toText("", ""), row.saved.empty() ? row.text : row.saved);
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
