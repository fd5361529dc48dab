#include "core/update/UpdateReciever.h"

#include <httplib.h>
#include <netdb.h>
#include <signal.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <system_error>
#include <utility>

#include "core/services/Translation.h"
#include "core/update/ReceivedBytes.h"

namespace orv::rws::core {

namespace {

using Clock = std::chrono::steady_clock;

constexpr char kPath[] = "/cgi-bin/rwsversion";
constexpr int kStatusOk = 200;
/// Answer, headers and certificates of a server that means well.
constexpr std::uint64_t kMostReceived = 65536;
constexpr std::chrono::milliseconds kWatchPeriod{10};
/// How long the end waits for a thread whose connection it has cut.
constexpr std::chrono::milliseconds kMostWait{300};

struct Address {
  bool secure = false;
  std::string host;
};

/// Empty host when the address is none, or not one that may be asked.
Address ParseAddress(const UpdateQuery& query) {
  Address address;
  address.secure = query.address.rfind("https://", 0) == 0;
  if (!address.secure && query.address.rfind("http://", 0) != 0) return {};
  std::string host = query.address.substr(query.address.find("//") + 2);
  if (!host.empty() && host[0] == '[')
    host = host.substr(1, host.find(']') - 1);
  else
    host = host.substr(0, host.find(':'));
  const bool isLoopback = host == "127.0.0.1" || host == "::1" || host == "localhost";
  if (host.find_first_of("/?#@ ") != std::string::npos) return {};
  if (address.secure || (query.plainLoopback && isLoopback)) address.host = host;
  return address;
}

/// Ends a connection at once: whoever reads or writes there gets an error, and the server is told
/// when the last handle closes, even if it is still sending.
void Cut(int connection) {
  const linger atOnce = {1, 0};
  setsockopt(connection, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
  shutdown(connection, SHUT_RDWR);
}

}  // namespace

/// What both threads share.
struct UpdateReciever::Job {
  UpdateQuery query;
  Resolver resolver;
  std::mutex mutex;
  std::condition_variable changed;
  bool ended = false;  ///< nobody waits for the answer any more
  bool done = false;
  UpdateAnswer answer;
  int socket = -1;  ///< a second handle of the connection's, which stays ours to cut

  ~Job() {
    if (socket >= 0) close(socket);
  }
  void KeepSocket(int connection) {
    const std::lock_guard<std::mutex> lock(mutex);
    if (socket >= 0) close(socket);
    socket = dup(connection);
    if (ended) Cut(connection);
  }
  bool HasEnded() {
    const std::lock_guard<std::mutex> lock(mutex);
    return ended;
  }
  /// With the mutex held.
  void End() {
    ended = true;
    if (socket >= 0) Cut(socket);
    changed.notify_all();
  }
};

std::string UpdateReciever::ResolveBySystem(const std::string& host) {
  addrinfo hints = {};
  hints.ai_family = AF_UNSPEC;
  hints.ai_socktype = SOCK_STREAM;
  hints.ai_flags = AI_ADDRCONFIG;
  addrinfo* found = nullptr;
  if (getaddrinfo(host.c_str(), nullptr, &hints, &found) != 0 || !found) return {};
  char text[NI_MAXHOST] = {};
  const int failed =
      getnameinfo(found->ai_addr, found->ai_addrlen, text, sizeof text, nullptr, 0, NI_NUMERICHOST);
  freeaddrinfo(found);
  return failed ? std::string() : std::string(text);
}

void UpdateReciever::Ask(Job& job) {
  const auto refuse = [&job](const char* problem, std::vector<std::string> details = {}) {
    job.answer.problem = problem;
    job.answer.details = std::move(details);
  };
  const Address address = ParseAddress(job.query);
  if (address.host.empty()) return refuse(Translatable("its address is not an https one"));
  const std::string numeric = job.resolver(address.host);
  if (numeric.empty()) return refuse(Translatable("%1 can't be found"), {address.host});
  if (job.HasEnded()) return;

  httplib::Client client(job.query.address);
  client.set_hostname_addr_map({{address.host, numeric}});
  client.set_socket_options([&job](int socket) { job.KeepSocket(socket); });
  client.set_connection_timeout(static_cast<time_t>(kMostSeconds));
  client.set_read_timeout(static_cast<time_t>(kMostSeconds));
  client.set_write_timeout(static_cast<time_t>(kMostSeconds));
  client.set_follow_location(false);
  client.set_decompress(false);
  std::string body;
  // Who asks is nobody's business: the version is in the question, and no agent is named.
  const auto result = client.Get(
      kPath, {{"platform", job.query.platform}, {"currentversion", job.query.version}},
      {{"User-Agent", ""}, {"Accept", "application/json"}},
      [](const httplib::Response& response) { return response.status == kStatusOk; },
      [&body](const char* data, std::size_t size) {
        if (body.size() + size > kMostBytes) return false;
        body.append(data, size);
        return true;
      });
  if (result && result->status == kStatusOk) {
    job.answer = ReadUpdateAnswer(body);
    return;
  }
  if (!result && result.error() == httplib::Error::Canceled)
    return refuse(Translatable("the server does not answer as it should"));
  refuse(Translatable("%1 can't be asked: %2"), {address.host, httplib::to_string(result.error())});
}

void UpdateReciever::Watch(Job& job, const Receive& receive) {
  const auto deadline = Clock::now() + std::chrono::duration<double>(kMostSeconds);
  UpdateAnswer answer;
  {
    std::unique_lock<std::mutex> lock(job.mutex);
    while (!job.done && !job.ended && answer.problem.empty()) {
      job.changed.wait_for(lock, kWatchPeriod);
      if (job.done || job.ended) break;
      if (Clock::now() >= deadline)
        answer.problem = Translatable("the server takes too long to answer");
      else if (job.socket >= 0 && CountReceivedBytes(job.socket) > kMostReceived)
        answer.problem = Translatable("the server does not answer as it should");
    }
    if (job.ended) return;
    if (job.done)
      answer = job.answer;
    else
      job.End();
  }
  receive(answer);
}

UpdateReciever::UpdateReciever(const UpdateQuery& query, Receive receive, Resolver resolver)
    : m_job(std::make_shared<Job>()) {
  m_job->query = query;
  m_job->resolver = std::move(resolver);
  const auto ask = [job = m_job] {
    // A connection that is cut while it is written to must not end the program.
    sigset_t pipe;
    sigemptyset(&pipe);
    sigaddset(&pipe, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &pipe, nullptr);
    try {
      Ask(*job);
    } catch (const std::exception& error) {
      job->answer.problem = error.what();
    }
    const std::lock_guard<std::mutex> lock(job->mutex);
    job->done = true;
    job->changed.notify_all();
  };
  try {
    m_watch = std::thread([job = m_job, receive = std::move(receive)] { Watch(*job, receive); });
    std::thread(ask).detach();
  } catch (const std::system_error& error) {
    const std::lock_guard<std::mutex> lock(m_job->mutex);
    m_job->answer.problem = error.what();
    m_job->done = true;
    m_job->changed.notify_all();
  }
}

UpdateReciever::~UpdateReciever() {
  {
    std::unique_lock<std::mutex> lock(m_job->mutex);
    m_job->End();
  }
  if (m_watch.joinable()) m_watch.join();
  std::unique_lock<std::mutex> lock(m_job->mutex);
  m_job->changed.wait_for(lock, kMostWait, [this] { return m_job->done; });
}

}  // namespace orv::rws::core
