// What the attributes of a storage node hold.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace orv::rws::adaptor::maya {

/// Values by the long names of StorageTable.h. What is missing is empty, or 0.
class StorageValues {
 public:
  const std::string& Text(const std::string& name) const;
  const std::vector<std::string>& Texts(const std::string& name) const;
  int Number(const std::string& name) const;
  void SetText(const std::string& name, std::string text) { m_texts[name] = std::move(text); }
  void SetTexts(const std::string& name, std::vector<std::string> all) {
    m_lists[name] = std::move(all);
  }
  void SetNumber(const std::string& name, int value) { m_numbers[name] = value; }

  /// All of it as one text, for a record that can't be read but must survive the next save.
  std::string ToRaw() const;
  static StorageValues FromRaw(const std::string& raw);

 private:
  std::map<std::string, std::string> m_texts;
  std::map<std::string, std::vector<std::string>> m_lists;
  std::map<std::string, int> m_numbers;
};

}  // namespace orv::rws::adaptor::maya
