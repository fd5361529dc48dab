// The top of an expression.
#pragma once

#include "util/MathScript.h"

namespace orv::rws::core {

/// Holds one expression, its only child, and answers the parameters in it from an array of values.
class MathScriptRoot final : public MathScript {
 public:
  /// The values that the parameters read from now on; not owned.
  void SetValues(const double* values, int count) {
    m_values = values;
    m_count = count;
    ++s_structure;
  }

  /// As the expression; `zero` when there is none.
  void Save(util::xml::Tag& out) const override;
  double Evaluate() const override { return childCount() > 0 ? child(0)->Evaluate() : 0.0; }
  /// Null for an index that there is no value for.
  const double* FindParameter(int index) const override {
    return index >= 0 && index < m_count ? m_values + index : nullptr;
  }

 private:
  const double* m_values = nullptr;
  int m_count = 0;
};

}  // namespace orv::rws::core
