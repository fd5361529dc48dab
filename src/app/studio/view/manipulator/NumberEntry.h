// Numbers that are typed while something is dragged.
#pragma once

#include <array>
#include <string>

#include "util/Vector3.h"

namespace orv::app::view {

/// Up to three numbers, one of which is being typed. A comma and a full stop both begin the
/// decimals.
class NumberEntry {
 public:
  /// So many numbers, none typed.
  void Begin(int count);
  /// Digits, "." "," and "-", which changes the sign; false for all else.
  bool Type(char letter);
  void Erase();
  void Next() { m_current = (m_current + 1) % m_count; }

  /// Whether anything has been typed, and so counts in place of the pointer.
  bool IsUsed() const;
  int GetCurrent() const { return m_current; }
  /// As typed; empty where nothing is.
  const std::string& GetText(int number) const { return m_texts[static_cast<std::size_t>(number)]; }
  /// The number; `otherwise` where nothing is typed, or no digit yet.
  double Get(int number, double otherwise) const;

 private:
  std::array<std::string, 3> m_texts;
  int m_count = 1, m_current = 0;
};

}  // namespace orv::app::view
