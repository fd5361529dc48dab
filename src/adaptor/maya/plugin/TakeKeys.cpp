#include "adaptor/maya/plugin/TakeKeys.h"

#include <maya/MGlobal.h>
#include <maya/MString.h>

#include "adaptor/maya/MelText.h"

namespace orv::rws::adaptor::maya {

namespace {

constexpr char kStandardSet[] = "Maya_Default";

bool RunKeyLine(const std::string& line) {
  return MGlobal::executeCommand(line.c_str(), false, false) == MStatus::kSuccess;
}

std::string AskKeyLine(const std::string& line) {
  MString answer;
  if (MGlobal::executeCommand(line.c_str(), answer, false, false) != MStatus::kSuccess) return {};
  return answer.asChar();
}

/// A quoted dash would be read as a flag.
std::string KeyWord(const std::string& key) {
  return key == "-" ? "Dash " : QuoteMel(key);
}

}  // namespace

TakeKeys::~TakeKeys() {
  Do(kRestore);
}

bool TakeKeys::CanBind() {
  const std::string set = AskKeyLine("hotkeySet -q -current");
  return !set.empty() && set != kStandardSet;
}

bool TakeKeys::Bind(const std::string& command, const std::string& key,
                    const std::string& modifiers) {
  const std::string held = modifiers.empty() ? "" : " " + modifiers;
  const std::string before = AskKeyLine("hotkey -q -name " + KeyWord(key) + held);
  m_restore += "hotkey -k " + QuoteMel(key) + held + " -name " + QuoteMel(before) + ";";
  return RunKeyLine("nameCommand -ann " + QuoteMel(command) + " -command " + QuoteMel(command) +
                    " " + command) &&
         RunKeyLine("hotkey -k " + QuoteMel(key) + held + " -name " + QuoteMel(command));
}

bool TakeKeys::Do(int actions) {
  bool done = true;
  if ((actions & (kBindStart | kBindTake)) != 0 && !CanBind()) return false;
  if ((actions & kBindStart) != 0) done = Bind("OrvelStartAnimationCmd", "Space", "-ctl -alt");
  if ((actions & kBindTake) != 0) {
    done = Bind("OrvelIncSlowFactorCmd", "+", "") && done;
    done = Bind("OrvelDecSlowFactorCmd", "-", "") && done;
    done = Bind("OrvelStopAnimationCmd", "Space", "") && done;
  }
  if ((actions & kRestore) != 0 && !m_restore.empty()) {
    done = RunKeyLine(m_restore) && done;
    m_restore.clear();
  }
  return done;
}

}  // namespace orv::rws::adaptor::maya
