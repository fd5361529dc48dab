// Which rows of a sweep are wanted.
#pragma once

#include <string>
#include <vector>

#include "app/sweep/SweepRow.h"

namespace orv::app {

/// Conditions such as "lean<8" or "length>=100,air<2", all of which must hold.
class SweepPick {
 public:
  /// Empty, or what is wrong with the text.
  std::string Parse(const std::string& text);
  /// A row that failed, or has no value for what is asked, is never picked.
  bool Picks(const SweepRow& row) const;
  bool Asks(SweepMeasure measure) const;

 private:
  struct Condition {
    std::size_t measure;
    std::string relation;  ///< <, <=, >, >=
    double value;
  };
  std::vector<Condition> m_conditions;
};

}  // namespace orv::app
