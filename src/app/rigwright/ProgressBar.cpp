#include "app/rigwright/ProgressBar.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "app/rigwright/Interrupt.h"
#include "app/rigwright/Output.h"

namespace orv::app {

namespace {

constexpr double kBarInterval = 0.1;   ///< s between two pictures of the bar
constexpr double kLineInterval = 1.0;  ///< s between two plain lines
constexpr int kMaxBarWidth = 40;       ///< characters

int TerminalWidth() {
  winsize size{};
  if (ioctl(STDERR_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return 80;
  return size.ws_col;
}

int Percent(long done, long total) {
  return total > 0 ? static_cast<int>(100 * std::clamp(done, 0L, total) / total) : 100;
}

}  // namespace

std::string ClockText(double seconds) {
  const long s = std::lround(std::clamp(seconds, 0.0, 359999.0));
  const auto two = [](long n) { return (n < 10 ? "0" : "") + std::to_string(n); };
  const std::string tail = two(s % 60);
  if (s < 3600) return std::to_string(s / 60) + ":" + tail;
  return std::to_string(s / 3600) + ":" + two(s / 60 % 60) + ":" + tail;
}

ProgressBar::ProgressBar(Output& output, std::string title)
    : m_silent(output.quiet),
      m_title(std::move(title)),
      m_monitor([this](long done, long total, double seconds) { Set(done, total, seconds); },
                &InterruptFlag()) {}

ProgressBar::~ProgressBar() {
  Clear();
}

bool ProgressBar::IsDue(double interval) {
  const auto now = Clock::now();
  if (std::chrono::duration<double>(now - m_shownAt).count() < interval) return false;
  m_shownAt = now;
  return true;
}

void ProgressBar::Set(long done, long total, double seconds) {
  if (m_silent || !IsDue(IsTerminal() ? kBarInterval : kLineInterval)) return;
  const std::string left =
      done <= 0
          ? "--:--"
          : ClockText(seconds * static_cast<double>(total - done) / static_cast<double>(done));
  if (IsTerminal())
    ShowBar(done, total, left);
  else
    ShowLine(done, total, left);
}

void ProgressBar::ShowBar(long done, long total, const std::string& left) {
  const std::string tail = " " + std::to_string(Percent(done, total)) + " %  " +
                           std::to_string(done) + "/" + std::to_string(total) + "  " + left +
                           " left";
  const int room = TerminalWidth() - static_cast<int>(m_title.size() + tail.size()) - 5;
  std::string bar;
  if (room >= 4) {
    const int width = std::min(room, kMaxBarWidth);
    const int full = width * Percent(done, total) / 100;
    bar = " [" + std::string(static_cast<std::size_t>(full), '=') +
          std::string(static_cast<std::size_t>(width - full), ' ') + "]";
    if (HasColour()) bar = "\033[36m" + bar + "\033[0m";
  }
  std::fputs(("\r\033[K" + m_title + bar + tail).c_str(), stderr);
  std::fflush(stderr);
  m_visible = true;
}

void ProgressBar::ShowLine(long done, long total, const std::string& left) {
  std::fputs((m_title + ": " + std::to_string(Percent(done, total)) + " %, " +
              std::to_string(done) + " of " + std::to_string(total) + ", " + left + " left\n")
                 .c_str(),
             stderr);
}

void ProgressBar::Say(const std::string& text) {
  if (m_silent || text == m_said) return;
  m_said = text;
  std::fputs((IsTerminal() ? "\r\033[K" + text : text + "\n").c_str(), stderr);
  std::fflush(stderr);
  m_visible = IsTerminal();
}

void ProgressBar::Clear() {
  if (!m_visible) return;
  std::fputs("\r\033[K", stderr);
  std::fflush(stderr);
  m_visible = false;
}

}  // namespace orv::app
