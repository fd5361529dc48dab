// The built desktop program, driven by a script in a folder of its own.
#pragma once

#include <gtest/gtest.h>

#include <QProcess>
#include <QProcessEnvironment>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "support/TempFolder.h"

namespace orv::tests {

class StudioRun : public testing::Test {
 protected:
  using Json = nlohmann::json;

  std::string Path(const std::string& name) const { return folder.path + "/" + name; }

  /// Runs a built program in the folder, with these variables besides; the status, -1 for one that
  /// crashed or hung.
  int Run(const std::string& program, const QStringList& arguments, std::string& out,
          const QStringList& variables = {}, int seconds = 300) const {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    environment.insert("RIGWRIGHT_DATA_ROOT", QString::fromStdString(Path("root")));
    for (const QString& variable : variables)
      environment.insert(variable.section('=', 0, 0), variable.section('=', 1));
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(QString::fromStdString(folder.path));
    process.start(QString::fromStdString(program), arguments);
    const bool ended = process.waitForFinished(1000 * seconds);
    if (!ended) process.kill();
    process.waitForFinished();
    out = process.readAllStandardOutput().toStdString();
    const QByteArray errors = process.readAllStandardError();
    if (!ended || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
      ADD_FAILURE() << program << ": " << process.exitCode() << (ended ? "" : " (killed)") << "\n"
                    << errors.right(6000).toStdString() << out;
    return ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
  }

  /// The command line, in the folder; what it writes on stdout.
  std::string Rigwright(const QStringList& words) const {
    std::string out;
    EXPECT_EQ(Run(RIGWRIGHT_PROGRAM, words, out), 0) << words.join(' ').toStdString();
    return out;
  }

  /// The answers to the script's commands, each of which must have been done.
  std::vector<Json> Script(const std::string& lines, const QStringList& options = {},
                           const QStringList& variables = {}) {
    folder.Write("script.txt", lines);
    std::string out;
    Run(STUDIO_PROGRAM,
        QStringList{"--script", "script.txt", "--geometry", "1300x850+0+0", "--lang", "en"} +
            options,
        out, variables);
    std::vector<Json> answers;
    std::istringstream text(out);
    for (std::string line; std::getline(text, line);) {
      answers.push_back(Json::parse(line, nullptr, false));
      EXPECT_TRUE(answers.back().is_object() && answers.back().value("ok", false)) << line;
    }
    return answers;
  }

  TempFolder folder;
};

}  // namespace orv::tests
