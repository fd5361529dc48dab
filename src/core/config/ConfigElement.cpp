#include "core/config/ConfigElement.h"

#include <algorithm>
#include <cmath>

#include "util/NumberText.h"

namespace orv::rws::core {

namespace {

struct FlagWord {
  const char* text;
  bool value;
};

constexpr FlagWord kFlagWords[] = {{"1", true},      {"0", false}, {"true", true},
                                   {"false", false}, {"on", true}, {"off", false}};

std::string Trimmed(const std::string& text) {
  const char* blanks = " \t\r\n";
  const std::size_t begin = text.find_first_not_of(blanks);
  if (begin == std::string::npos) return {};
  return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

std::string Lowered(std::string text) {
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return text;
}

std::string Quoted(const std::string& text) {
  return "\"" + text + "\"";
}

}  // namespace

bool ConfigElement::HasValue() const {
  return std::visit(
      [](auto held) {
        if constexpr (std::is_same_v<decltype(held), std::monostate>)
          return false;
        else
          return held != nullptr;
      },
      m_variable);
}

double ConfigElement::GetNumber() const {
  if (const double* value = GetVariable<double>()) return *value;
  if (const bool* value = GetVariable<bool>()) return *value ? 1.0 : 0.0;
  const int* value = GetVariable<int>();
  if (!value) return 0.0;
  return m_kind == Kind::kSpinnerInt && *value == m_rounded ? m_exact : *value;
}

double ConfigElement::Clamped(double value) const {
  if (m_kind == Kind::kComboBox) {
    const double last = m_items.empty() ? 0.0 : static_cast<double>(m_items.size() - 1);
    return std::min(std::max(value, 0.0), last);
  }
  if (m_kind == Kind::kCheckBox) return value != 0.0 ? 1.0 : 0.0;
  return std::min(std::max(value, m_range.min), m_range.max);
}

bool ConfigElement::SetNumber(double value) {
  if (!std::isfinite(value)) return false;
  value = Clamped(value);
  if (double* real = GetVariable<double>()) {
    *real = value;
  } else if (bool* flag = GetVariable<bool>()) {
    *flag = value != 0.0;
  } else if (int* whole = GetVariable<int>()) {
    // The fraction is kept, so that increments far below 1 a frame still turn the spinner.
    m_exact = value;
    m_rounded = static_cast<int>(std::lround(value));
    *whole = m_rounded;
  } else {
    return false;
  }
  return true;
}

std::string ConfigElement::GetValueText() const {
  if (const double* value = GetVariable<double>()) return util::shortText(*value);
  if (const bool* value = GetVariable<bool>()) return *value ? "1" : "0";
  if (const std::string* value = GetVariable<std::string>()) return *value;
  const int* value = GetVariable<int>();
  if (!value) return {};
  if (m_kind == Kind::kComboBox && *value >= 0 && *value < static_cast<int>(m_items.size())) {
    const std::string& item = m_items[static_cast<std::size_t>(*value)];
    if (std::count(m_items.begin(), m_items.end(), item) == 1) return item;
  }
  return std::to_string(*value);
}

bool ConfigElement::SetValueText(const std::string& text, std::string& problem) {
  problem.clear();
  if (std::string* value = GetVariable<std::string>()) {
    *value = text;
    return true;
  }
  if (!HasValue()) {
    problem = m_kind == Kind::kButton ? "a button has no value" : "it has no value";
    return false;
  }
  if (m_kind == Kind::kCheckBox) return SetFlagText(text, problem);
  if (m_kind == Kind::kComboBox) return SetItemText(text, problem);
  return SetNumberText(text, problem);
}

bool ConfigElement::SetFlagText(const std::string& text, std::string& problem) {
  const std::string word = Lowered(Trimmed(text));
  for (const FlagWord& flag : kFlagWords) {
    if (word == flag.text) return SetNumber(flag.value ? 1.0 : 0.0);
  }
  problem = Quoted(text) + " is neither on nor off (give true, false, on, off, 1 or 0)";
  return false;
}

bool ConfigElement::SetItemText(const std::string& text, std::string& problem) {
  const auto item = std::find(m_items.begin(), m_items.end(), text);
  if (item != m_items.end()) return SetNumber(static_cast<double>(item - m_items.begin()));
  int index = 0;
  if (!util::parseNumber(Trimmed(text), index)) {
    std::string known;
    for (const std::string& one : m_items) known += (known.empty() ? "" : ", ") + one;
    problem = Quoted(text) + " is none of its items (" + known + ")";
    return false;
  }
  SetNumber(index);
  const int taken = static_cast<int>(GetNumber());
  if (taken != index)
    problem = "there is no item " + std::to_string(index) + ": " + std::to_string(taken) +
              " is taken instead";
  return true;
}

bool ConfigElement::SetNumberText(const std::string& text, std::string& problem) {
  double value = 0.0;
  const bool whole = m_kind == Kind::kSpinnerInt;
  if (!util::parseNumber(Trimmed(text), value) || (whole && value != std::nearbyint(value))) {
    problem = Quoted(text) + (whole ? " is no whole number" : " is no number");
    return false;
  }
  SetNumber(value);
  if (GetNumber() != value)
    problem = util::shortText(value) + " lies outside of " + util::shortText(m_range.min) + " to " +
              util::shortText(m_range.max) + ": " + util::shortText(GetNumber()) +
              " is taken instead";
  return true;
}

void ConfigElement::Apply() {
  if (m_callback) m_callback->OnCallback(m_label);
}

}  // namespace orv::rws::core
