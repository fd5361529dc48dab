// `spinner`: a number.
#pragma once

#include "gui/component/Number.h"
#include "gui/componentinterface/Spinner.h"

namespace orv::gui::component {

class Spinner : public Number<componentinterface::Spinner> {
 public:
  explicit Spinner(const util::xml::Element& tag);
  const char* GetElement() const override { return "spinner"; }
  bool KnowsAttribute(std::string_view name) const override;

  void SetDecimals(int decimals) override;
  int GetDecimals() const override { return m_decimals; }
  void SetUnit(const std::string& unit) override;
  const std::string& GetUnit() const override { return m_unit; }
  bool IsReadOnly() const override { return m_readOnly; }
  void SetReadOnly(bool readOnly) override;
  void SetWhole(bool whole) override;
  bool IsWhole() const override { return m_whole; }
  std::string GetShownText() const override;
  bool IsBeingEdited() const override { return m_typing || Number::IsBeingEdited(); }

  // The toolkit's words.

  /// The user began or ended typing, which alone posts nothing.
  void SetTyping(bool typing) { m_typing = typing; }
  /// Takes the user's text, cut to the range. False, with nothing changed, when it is no number.
  bool ReadText(const std::string& text, double& value) const;
  /// The value that `steps` steps from `from` lead to, rounded to the step and cut to the range.
  double Stepped(double from, double steps) const;

 private:
  double Allowed(double value) const;

  int m_decimals;
  std::string m_unit;
  bool m_readOnly, m_whole;
  bool m_typing = false;
};

}  // namespace orv::gui::component
