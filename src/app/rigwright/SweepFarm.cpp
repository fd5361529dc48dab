#include "app/rigwright/SweepFarm.h"

#include <QCoreApplication>
#include <QProcess>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "app/rigwright/Failure.h"
#include "app/rigwright/Program.h"
#include "app/sweep/SweepFolder.h"
#include "util/AtomicFile.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

constexpr int kSubmitMs = 60000;

/// In single quotes, as a shell takes any text whole.
std::string Quoted(const std::string& text) {
  std::string quoted = "'";
  for (const char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

void WriteOrFail(const std::string& path, const std::string& text) {
  std::string why;
  if (!util::writeFile(path, text, &why)) throw Failure("", why);
}

/// Prints the id of the job.
std::string Submit(const std::string& script, long tasks, const std::string& logs) {
  QProcess sbatch;
  sbatch.start("sbatch", {"--parsable", "--no-requeue", "--job-name=sweep",
                          "--array=0-" + QString::number(static_cast<qlonglong>(tasks - 1)),
                          "--output=" + QString::fromStdString(logs) + "/%A_%a.log",
                          QString::fromStdString(script)});
  if (!sbatch.waitForStarted())
    throw Failure("sbatch", "could not be run",
                  "install Slurm's commands (Debian: slurm-client), or leave --slurm out");
  if (!sbatch.waitForFinished(kSubmitMs)) {
    sbatch.kill();
    sbatch.waitForFinished();
    throw Failure("sbatch", "does not answer", "see that the farm's controller runs");
  }
  if (sbatch.exitStatus() != QProcess::NormalExit || sbatch.exitCode() != 0)
    throw Failure("sbatch", sbatch.readAllStandardError().trimmed().toStdString());
  return sbatch.readAllStandardOutput().trimmed().toStdString();
}

}  // namespace

void SubmitToFarm(Program& program, const SweepFolder& folder, const std::vector<long>& rows,
                  int chunk) {
  const std::string logs = folder.GetPath() + "/slurm";
  std::error_code error;
  std::filesystem::create_directories(logs, error);
  if (error) throw Failure(logs, "cannot be created: " + error.message());
  std::string numbers;
  for (const long row : rows) numbers += std::to_string(row) + "\n";
  const std::string list = logs + "/rows.txt";
  // Tasks of an earlier array may still read their list: each array has its own.
  int array = 1;
  while (std::filesystem::exists(list + "." + std::to_string(array), error)) ++array;
  const std::string own = list + "." + std::to_string(array);
  WriteOrFail(own, numbers);
  const std::string c = std::to_string(chunk);
  const std::string script = logs + "/job.sh." + std::to_string(array);
  WriteOrFail(script,
              "#!/bin/sh\n"
              "# The rows of this task go to one worker, a line each.\n"
              "first=$((SLURM_ARRAY_TASK_ID * " +
                  c +
                  " + 1))\n"
                  "last=$((SLURM_ARRAY_TASK_ID * " +
                  c + " + " + c +
                  "))\n"
                  "sed -n \"${first},${last}p\" " +
                  Quoted(own) + " | exec " +
                  Quoted(QCoreApplication::applicationFilePath().toStdString()) +
                  " --quiet --data-root " + Quoted(folder.GetPlan().dataRoot) + " sweep work " +
                  Quoted(folder.GetPath()) + "\n");
  const long tasks = (static_cast<long>(rows.size()) + chunk - 1) / chunk;
  const std::string job = Submit(script, tasks, logs);
  program.GetOutput().GetObject()["job"] = job;
  program.GetOutput().GetObject()["rows"] = rows.size();
  program.GetOutput().GetObject()["tasks"] = tasks;
  program.GetOutput().Line("job " + job);
  program.GetOutput().Note("sweep: " + util::counted(rows.size(), "row") + " in " +
                           util::counted(tasks, "task") +
                           " sent; when they are done: rigwright "
                           "sweep collect " +
                           folder.GetPath());
}

}  // namespace orv::app
