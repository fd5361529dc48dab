// One question to the server for newer versions.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <thread>

#include "core/update/UpdateAnswer.h"

namespace orv::rws::core {

/// Whom to ask, and all that is sent.
struct UpdateQuery {
  std::string address;   ///< "https://host" or "https://host:port"
  std::string platform;  ///< such as "linux-x86_64"
  std::string version;
  bool plainLoopback = false;  ///< http is good too when the host is this computer; for tests
};

/// Asks on threads of its own from its beginning on. Whatever the server does, the answer is there
/// within kMostSeconds: then, or when more comes than an answer has, the connection is cut from
/// outside. The end takes a moment, even when the system is still looking the server's name up:
/// that can't be broken off, so its thread is left alone with what it needs and sends nothing.
class UpdateReciever {
 public:
  static constexpr double kMostSeconds = 5.0;
  static constexpr std::size_t kMostBytes = 4096;  ///< of the answer itself

  /// Gets the answer once, on another thread, and not after the end.
  using Receive = std::function<void(const UpdateAnswer&)>;
  /// A numeric address of a host, empty when there is none. May block, and outlive the rest.
  using Resolver = std::function<std::string(const std::string& host)>;

  UpdateReciever(const UpdateQuery& query, Receive receive, Resolver resolver = ResolveBySystem);
  ~UpdateReciever();
  UpdateReciever(const UpdateReciever&) = delete;
  UpdateReciever& operator=(const UpdateReciever&) = delete;

  static std::string ResolveBySystem(const std::string& host);

 private:
  struct Job;

  static void Ask(Job& job);
  static void Watch(Job& job, const Receive& receive);

  std::shared_ptr<Job> m_job;
  std::thread m_watch;
};

}  // namespace orv::rws::core
