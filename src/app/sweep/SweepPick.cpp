#include "app/sweep/SweepPick.h"

#include <algorithm>

#include "app/session/anyhost/Names.h"
#include "util/NumberText.h"

namespace orv::app {

std::string SweepPick::Parse(const std::string& text) {
  std::vector<std::string> known;
  for (const auto& each : kSweepMeasureNames) known.emplace_back(each.name);
  for (std::size_t from = 0; from <= text.size();) {
    const std::size_t comma = std::min(text.find(',', from), text.size());
    const std::string part = text.substr(from, comma - from);
    from = comma + 1;
    const std::size_t relation = part.find_first_of("<>");
    if (relation == std::string::npos) return "\"" + part + "\" is no condition such as lean<8";
    Condition condition;
    const std::string name = part.substr(0, relation);
    const std::size_t behind = relation + (part.compare(relation + 1, 1, "=") == 0 ? 2 : 1);
    condition.relation = part.substr(relation, behind - relation);
    condition.measure =
        static_cast<std::size_t>(std::find(known.begin(), known.end(), name) - known.begin());
    if (condition.measure == kSweepMeasures)
      return "there is no measure " + name + "; " + HintFor(name, known, "measures");
    if (!util::parseNumber(part.substr(behind), condition.value))
      return "\"" + part.substr(behind) + "\" in \"" + part + "\" is not a number";
    m_conditions.push_back(condition);
  }
  return {};
}

bool SweepPick::Picks(const SweepRow& row) const {
  return row.error.empty() &&
         std::all_of(m_conditions.begin(), m_conditions.end(), [&](const Condition& condition) {
           const auto& value = row.measures[condition.measure];
           if (!value) return false;
           if (*value == condition.value) return condition.relation.size() == 2;
           return (*value < condition.value) == (condition.relation.front() == '<');
         });
}

bool SweepPick::Asks(SweepMeasure measure) const {
  return std::any_of(m_conditions.begin(), m_conditions.end(),
                     [&](const Condition& condition) { return condition.measure == measure; });
}

}  // namespace orv::app
