// Words as the user reads them.
#pragma once

#include <functional>
#include <initializer_list>
#include <string>

namespace orv::gui {

/// Texts are English in code and documents and are turned into the user's language when they are
/// shown, never before. The components do that with what their document says; a text that code sets
/// is shown as it is (it may be a rig's name), so code translates what it makes up.
using Translator = std::function<std::string(const std::string& english)>;

/// Null goes back to English. What is on the screen changes by `Component::Retranslate`.
void SetTranslator(Translator translator);
/// The text in the user's language, or as it is where there is none.
std::string Translate(const std::string& english);
/// As above, and "%1" to "%9" replaced by the values.
std::string Translate(const std::string& english, std::initializer_list<std::string> values);

/// "&" marks the letter that a label, button, check box or menu is reached by with Alt, and "&&" is
/// an ampersand: a name that is shown in one of these is guarded first. (What code sets as the text
/// of a `label` element, and titles, have no such marks.)
std::string EscapeMnemonics(const std::string& name);

/// What the attribute `tooltipid` names; English. Without one, such tooltips are empty.
void SetTooltipTexts(std::function<std::string(int)> texts);
std::string TooltipText(int id);

}  // namespace orv::gui
