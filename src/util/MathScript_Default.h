// The nodes of the expression language.
#pragma once

#include <cmath>
#include <functional>
#include <string>
#include <utility>

#include "util/MathScript.h"

namespace orv::rws::core::MathScript_Default {

/// What all nodes of the language have in common: how they are saved.
class Node : public MathScript {
 public:
  void Save(util::xml::Tag& out) const final;

 protected:
  virtual std::string Keyword() const = 0;
  /// Number that the element holds as its text; empty for none.
  virtual std::string Data() const { return {}; }
  /// Operands that a saved node has at the least.
  virtual int Arity() const { return 0; }

 private:
  void WriteHead(util::xml::Element& out) const;
};

/// 0.
class Zero final : public Node {
 public:
  double Evaluate() const override { return 0.0; }

 protected:
  std::string Keyword() const override { return "zero"; }
};

/// A number.
class Constant final : public Node {
 public:
  explicit Constant(double number) : value(number) {}
  double Evaluate() const override { return value; }

  const double value;

 protected:
  std::string Keyword() const override { return "constant"; }
  std::string Data() const override;
};

/// A value that the root of the tree knows by its number.
class Parameter final : public Node {
 public:
  explicit Parameter(int number) : index(number) {}
  double Evaluate() const override {
    if (m_seen != s_structure) FindValue();
    return *m_value;
  }

  const int index;

 protected:
  std::string Keyword() const override { return "parameter"; }
  std::string Data() const override;

 private:
  void FindValue() const;

  mutable const double* m_value = nullptr;  ///< never null once looked for
  mutable std::uint64_t m_seen = 0;         ///< `s_structure` at the latest walk to the root
};

/// A node that computes from its children. One that is missing counts as 0.
class Function : public Node {
 public:
  explicit Function(std::string keyword) : m_keyword(std::move(keyword)) {}

 protected:
  double Operand(int i) const {
    const MathScript* operand = i < childCount() ? m_children[i] : nullptr;
    return operand ? operand->Evaluate() : 0.0;
  }
  /// Whether the tree from here on down is too deep for calls of Evaluate within Evaluate.
  bool IsDeep() const { return m_shallowAt != s_structure && Measure(); }
  /// The same result as Evaluate, with a stack on the heap.
  double EvaluateDeep() const;

  std::string Keyword() const override { return m_keyword; }

  // Evaluation in steps: `GetSteps()` operands, of which the step'th is child `GetOperand(step)`,
  // are gathered in two numbers, from which comes the result.
  virtual int GetSteps() const = 0;
  virtual int GetOperand(int step) const = 0;
  virtual void Gather(int step, double value, double& left, double& right) const = 0;
  virtual double Apply(double left, double right) const = 0;

 private:
  bool Measure() const;

  mutable std::uint64_t m_shallowAt = 0;  ///< `s_structure` when this was found not to be deep
  const std::string m_keyword;
};

/// The children added up in their order.
class Sum final : public Function {
 public:
  Sum() : Function("sum") {}
  double Evaluate() const override {
    if (IsDeep()) return EvaluateDeep();
    double sum = 0.0;
    for (const MathScript* operand : m_children) sum += operand->Evaluate();
    return sum;
  }

 protected:
  int GetSteps() const override { return childCount(); }
  int GetOperand(int step) const override { return step; }
  void Gather(int, double value, double& left, double&) const override { left += value; }
  double Apply(double left, double) const override { return left; }
};

/// `Op` of the first and the second child. The second is evaluated first; further ones never are.
template <class Op>
class BinaryFunction final : public Function {
 public:
  using Function::Function;
  double Evaluate() const override {
    if (IsDeep()) return EvaluateDeep();
    const double right = Operand(1);
    const double left = Operand(0);
    return Op()(left, right);
  }

 protected:
  int Arity() const override { return 2; }
  int GetSteps() const override { return 2; }
  int GetOperand(int step) const override { return 1 - step; }
  void Gather(int step, double value, double& left, double& right) const override {
    (step == 0 ? right : left) = value;
  }
  double Apply(double left, double right) const override { return Op()(left, right); }
};

/// `Op` of the first child; further ones are never evaluated.
template <class Op>
class UnaryFunction final : public Function {
 public:
  using Function::Function;
  double Evaluate() const override {
    if (IsDeep()) return EvaluateDeep();
    return Op()(Operand(0));
  }

 protected:
  int Arity() const override { return 1; }
  int GetSteps() const override { return 1; }
  int GetOperand(int) const override { return 0; }
  void Gather(int, double value, double& left, double&) const override { left = value; }
  double Apply(double left, double) const override { return Op()(left); }
};

struct Fmod {
  double operator()(double left, double right) const { return std::fmod(left, right); }
};
struct Pow {
  double operator()(double left, double right) const { return std::pow(left, right); }
};
struct Atan2 {
  double operator()(double left, double right) const { return std::atan2(left, right); }
};
struct Atan {
  double operator()(double x) const { return std::atan(x); }
};
struct Tan {
  double operator()(double x) const { return std::tan(x); }
};
struct Sin {
  double operator()(double x) const { return std::sin(x); }
};
struct Cos {
  double operator()(double x) const { return std::cos(x); }
};
/// Unguarded: 0, which a missing child is too, gives an infinity.
struct Invert {
  double operator()(double x) const { return 1.0 / x; }
};

}  // namespace orv::rws::core::MathScript_Default
