// Why a verb could not do its job.
#pragma once

#include <exception>
#include <string>
#include <utility>

#include "app/session/anyhost/Problem.h"

namespace orv::rws::adaptor::headless {
class Scene;
}

namespace orv::app {

/// A problem as it is shown, its remedy as the verb that does it. `scene` is where its node stands.
std::string TextOf(const Problem& problem, const rws::adaptor::headless::Scene& scene);

/// Ends the verb with exit status 1. Shown as `rigwright: <what>: <why> (<what to do>)`.
class Failure : public std::exception {
 public:
  /// `hint` says what to do and may be empty.
  Failure(const std::string& what, const std::string& why, const std::string& hint = {})
      : m_text((what.empty() ? "" : what + ": ") + why + (hint.empty() ? "" : " (" + hint + ")")) {}
  Failure(const Problem& problem, const rws::adaptor::headless::Scene& scene)
      : m_text(TextOf(problem, scene)) {}

  const char* what() const noexcept override { return m_text.c_str(); }

 private:
  std::string m_text;
};

/// The user has ended the verb by a signal. Exit status 130.
class Interrupted : public std::exception {
 public:
  explicit Interrupted(std::string text = "interrupted: nothing was written")
      : m_text(std::move(text)) {}
  const char* what() const noexcept override { return m_text.c_str(); }

 private:
  std::string m_text;
};

/// The command line alone shows that it can't be meant; exit status 2.
class WrongUsage : public std::exception {
 public:
  explicit WrongUsage(std::string text) : m_text(std::move(text)) {}
  const char* what() const noexcept override { return m_text.c_str(); }

 private:
  std::string m_text;
};

}  // namespace orv::app
