#include "app/rigwright/Output.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <nlohmann/json.hpp>

#include "app/rigwright/Texts.h"

namespace orv::app {

namespace {

void ToStderr(const std::string& text) {
  std::fputs((text + "\n").c_str(), stderr);
}

std::string Coloured(const char* code, const std::string& text) {
  return HasColour() ? "\033[" + std::string(code) + "m" + text + "\033[0m" : text;
}

}  // namespace

Output::Output() : m_object(std::make_unique<nlohmann::ordered_json>()) {
  *m_object = nlohmann::ordered_json::object();
}

Output::~Output() = default;

void Output::Line(const std::string& text) {
  m_text += text + "\n";
}

void Output::Note(const std::string& text) {
  if (!quiet) ToStderr(text);
}

void Output::Warn(const std::string& text) {
  m_warnings.push_back(InOneLine(text));
  ToStderr(Coloured("33", "rigwright: warning") + ": " + m_warnings.back());
}

void Output::Error(const std::string& text) {
  ToStderr(Coloured("31", "rigwright") + ": " + InOneLine(text));
}

bool Output::Finish() {
  if (json) {
    (*m_object)["warnings"] = m_warnings;
    // A scene's names need not be UTF-8; what is not is shown as the replacement character.
    m_text = m_object->dump(2, ' ', false, nlohmann::json::error_handler_t::replace) + "\n";
  }
  const bool written = std::fwrite(m_text.data(), 1, m_text.size(), stdout) == m_text.size();
  if (written && std::fflush(stdout) == 0) return true;
  Error(std::string("the standard output: ") + std::strerror(errno) +
        " (free some space, or send it elsewhere)");
  return false;
}

bool IsTerminal() {
  static const bool terminal = [] {
    const char* kind = std::getenv("TERM");
    return isatty(STDERR_FILENO) == 1 && kind && std::strcmp(kind, "dumb") != 0;
  }();
  return terminal;
}

bool HasColour() {
  const char* noColour = std::getenv("NO_COLOR");
  return IsTerminal() && !(noColour && *noColour);
}

}  // namespace orv::app
