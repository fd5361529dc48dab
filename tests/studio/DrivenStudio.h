// The desktop program as a process of its own, driven a command a line.
#pragma once

#include <gtest/gtest.h>

#include <QProcess>
#include <initializer_list>
#include <nlohmann/json.hpp>
#include <string>

namespace orv::tests {

class DrivenStudio {
 public:
  using Json = nlohmann::json;

  /// On this data root, with a command line behind it, and these variables besides.
  explicit DrivenStudio(const std::string& root, const QStringList& more = {},
                        const QStringList& variables = {}, const QString& size = "1200x800") {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    environment.insert("SDL_VIDEODRIVER", "dummy");
    for (const QString& variable : variables)
      environment.insert(variable.section('=', 0, 0), variable.section('=', 1));
    m_process.setProcessEnvironment(environment);
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    const QStringList language =
        more.contains("--lang") ? QStringList() : QStringList{"--lang", "en"};
    m_process.start(STUDIO_PROGRAM, QStringList{"--script", "-", "--geometry", size, "--data-root",
                                                QString::fromStdString(root)} +
                                        language + more);
  }
  ~DrivenStudio() { Kill(); }

  void Send(const std::string& command) { m_process.write((command + "\n").c_str()); }
  /// The next answer; null when none comes within `patience` (ms).
  Json Read(int patience = 20000) {
    while (!m_process.canReadLine())
      if (!m_process.waitForReadyRead(patience)) return {};
    return Json::parse(m_process.readLine().toStdString(), nullptr, false);
  }
  /// An answer that must be good.
  Json Do(const std::string& command) {
    Send(command);
    Json answer = Read();
    EXPECT_TRUE(answer.is_object() && answer.value("ok", false)) << command << ": " << answer;
    return answer.is_object() ? answer : Json::object();
  }
  void DoAll(std::initializer_list<std::string> commands) {
    for (const std::string& command : commands) Do(command);
  }
  /// What the widget `id` of a shown window reads; "no window", "no widget" where there is none.
  std::string ValueOf(const std::string& window, int id) {
    for (const Json& shown : Do("dump " + window).value("windows", Json::array())) {
      for (const Json& widget : shown["widgets"])
        if (widget["id"] == std::to_string(id)) return widget.value("value", std::string());
      return "no widget";
    }
    return "no window";
  }
  /// All that can have the focus has a name, and no text is cut off.
  void ExpectReadable(const std::string& window) {
    const Json shown = Do("dump " + window)["windows"];
    ASSERT_EQ(shown.size(), 1u) << window;
    for (const Json& widget : shown[0]["widgets"]) {
      EXPECT_FALSE(widget["clipped"].get<bool>()) << window << ": " << widget;
      const bool isPart = widget["id"].get<std::string>().rfind("qt_", 0) == 0;
      EXPECT_FALSE(widget["focusable"].get<bool>() && widget["name"] == "" && !isPart)
          << window << ": " << widget;
    }
  }
  bool Shows(const std::string& window) { return !Do("dump " + window)["windows"].empty(); }
  Json State() { return Do("state"); }

  void Kill() {
    if (m_process.state() == QProcess::NotRunning) return;
    m_process.kill();
    m_process.waitForFinished();
  }
  /// The exit status once it has ended by itself.
  int Wait() {
    m_process.waitForFinished(20000);
    return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
  }

 private:
  QProcess m_process;
};

}  // namespace orv::tests
