// The check for newer versions, against servers on this computer.
#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

#include "core/update/UpdateAnswer.h"
#include "support/CoreTest.h"

namespace orv::tests {
namespace {

using namespace std::chrono_literals;
using rws::core::UpdateChecked;
using rws::core::UpdateQuery;
using std::chrono::steady_clock;

/// Takes connections one at a time, notes what they send and does with each what it is told.
class Server {
 public:
  using Answer = std::function<void(int)>;
  explicit Server(Answer answer) : m_answer(std::move(answer)) {
    m_listener = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    EXPECT_EQ(bind(m_listener, reinterpret_cast<sockaddr*>(&address), size), 0);
    EXPECT_EQ(listen(m_listener, 8), 0);
    getsockname(m_listener, reinterpret_cast<sockaddr*>(&address), &size);
    port = ntohs(address.sin_port);
    m_thread = std::thread([this] { Serve(); });
  }
  ~Server() {
    shutdown(m_listener, SHUT_RDWR);
    {
      const std::lock_guard<std::mutex> lock(m_mutex);
      if (m_connection >= 0) shutdown(m_connection, SHUT_RDWR);
    }
    m_thread.join();
    close(m_listener);
  }
  std::string GetAddress() const { return "http://127.0.0.1:" + std::to_string(port); }
  std::string GetAsked() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_asked;
  }
  /// False when the other side has gone.
  static bool Send(int connection, const std::string& text) {
    return send(connection, text.data(), text.size(), MSG_NOSIGNAL) ==
           static_cast<ssize_t>(text.size());
  }
  static Answer Saying(const std::string& status, const std::string& body,
                       const std::string& headers = {}) {
    return [=](int connection) {
      Send(connection, "HTTP/1.1 " + status + "\r\n" + headers +
                           "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body);
    };
  }

  std::atomic<int> connections{0};
  int port = 0;

 private:
  void Serve() {
    for (int connection; (connection = accept(m_listener, nullptr, nullptr)) >= 0;) {
      ++connections;
      Note(connection);
      std::string asked;
      char byte = 0;
      while (asked.find("\r\n\r\n") == std::string::npos && recv(connection, &byte, 1, 0) == 1)
        asked += byte;
      {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_asked = asked;
      }
      m_answer(connection);
      Note(-1);
      close(connection);
    }
  }

  void Note(int connection) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_connection = connection;
  }

  Answer m_answer;
  int m_listener = -1;
  int m_connection = -1;  ///< the present one
  std::mutex m_mutex;
  std::string m_asked;
  std::thread m_thread;
};

/// Blocks like a name server that never answers, until the test is over.
struct HangingResolver {
  struct Gate {
    std::mutex mutex;
    std::condition_variable changed;
    bool open = false;
    int passed = 0;
  };
  std::shared_ptr<Gate> gate = std::make_shared<Gate>();
  std::string operator()(const std::string&) const {
    std::unique_lock<std::mutex> lock(gate->mutex);
    gate->changed.wait(lock, [this] { return gate->open; });
    ++gate->passed;
    return "127.0.0.1";
  }
};

class Update : public DataRootTest, public util::MessageNode {
 protected:
  Update() : MessageNode("listener") { Begin(); }
  ~Update() override { disconnect(core.get()); }
  void Begin() {
    if (core) disconnect(core.get());
    Start({&plugin});
    connect(core.get());
    core->currentDay = [this] { return day; };
  }
  void onMessage(util::Message& message, bool) override {
    if (const auto* told = rws::core::NewsIn<UpdateChecked>(message)) answers.push_back(*told);
  }
  void Point(const std::string& address) { core->SetQuery({address, "linux-x", "7.0", true}); }
  /// Lets events run until an answer has come, or for a while.
  void Wait(std::chrono::milliseconds most) {
    const auto end = steady_clock::now() + most;
    while (answers.empty() && steady_clock::now() < end) {
      QCoreApplication::processEvents();
      std::this_thread::sleep_for(2ms);
    }
  }
  /// Asks by hand; the one answer, and how long it took.
  UpdateChecked Ask(const std::string& address, double& seconds) {
    Point(address);
    EXPECT_EQ(core->SetConsent(true), "");
    answers.clear();
    const auto begin = steady_clock::now();
    EXPECT_EQ(core->CheckNow(), "");
    Wait(8s);
    seconds = std::chrono::duration<double>(steady_clock::now() - begin).count();
    return answers.size() == 1 ? answers[0] : UpdateChecked{false, "none", "", ""};
  }
  UpdateChecked AskServer(Server::Answer answer, double* seconds = nullptr) {
    Server server(std::move(answer));
    double took = 0.0;
    const UpdateChecked told = Ask(server.GetAddress(), took);
    if (seconds) *seconds = took;
    EXPECT_EQ(server.connections, 1);
    asked = server.GetAsked();
    return told;
  }

  int day = 20000;
  std::vector<UpdateChecked> answers;
  std::string asked;
};

TEST_F(Update, ReadsVersionsByTheirNumbersAndShowsOnlyGoodLinks) {
  using rws::core::IsNewerVersion;
  using rws::core::ReadUpdateAnswer;
  EXPECT_TRUE(IsNewerVersion("7.10", "7.9"));
  EXPECT_TRUE(IsNewerVersion("7.0.1", "7.0"));
  EXPECT_TRUE(IsNewerVersion("10", "7.0"));
  EXPECT_FALSE(IsNewerVersion("7.0.0", "7.0"));
  EXPECT_FALSE(IsNewerVersion("6.99", "7.0"));
  for (const char* wrong : {"", "7.", ".7", "7.x", "-7", "7 ", "99999999999"})
    EXPECT_FALSE(rws::core::IsVersion(wrong)) << wrong;
  for (const char* link : {"http://a.b", "javascript:x", "https://", "https:///a", "https://a b",
                           "https://a@b.c", "https://a\\\"b"})
    EXPECT_EQ(ReadUpdateAnswer(R"({"version":"8","link":")" + std::string(link) + "\"}").link, "");
  EXPECT_EQ(ReadUpdateAnswer(R"({"version":"8","link":"https://a.b/c"})").link, "https://a.b/c");
  for (const char* wrong : {"", "{", "[]", "7", R"({"version":7.1})", R"({"link":"https://a.b"})"})
    EXPECT_NE(ReadUpdateAnswer(wrong).problem, "") << wrong;
}

TEST_F(Update, SendsPlatformAndVersionAndNothingElse) {
  const UpdateChecked told =
      AskServer(Server::Saying("200 OK", R"({"version":"7.10","link":"https://a.b/7.10"})"));
  EXPECT_TRUE(told.isNewer);
  EXPECT_EQ(told.version + " " + told.link + told.problem, "7.10 https://a.b/7.10");
  EXPECT_EQ(
      asked.rfind("GET /cgi-bin/rwsversion?currentversion=7.0&platform=linux-x HTTP/1.1\r\n", 0),
      0u)
      << asked;
  for (const char* teller : {"cpp-httplib", "Cookie", "Referer", "rigwright"})
    EXPECT_EQ(asked.find(teller), std::string::npos) << asked;
  EXPECT_FALSE(AskServer(Server::Saying("200 OK", R"({"version":"6.2"})")).isNewer);
}

TEST_F(Update, EndsWhateverTheServerDoes) {
  const std::string good = R"({"version":"8","link":"https://a.b"})";
  double seconds = 0.0;
  const auto fails = [&](Server::Answer answer, double most) {
    const UpdateChecked told = AskServer(std::move(answer), &seconds);
    EXPECT_NE(told.problem, "");
    EXPECT_EQ(told.version, "");
    EXPECT_LT(seconds, most);
  };
  fails(Server::Saying("302 Found", good, "Location: http://127.0.0.1:1/\r\n"), 1.0);
  fails(Server::Saying("404 Not Found", good), 1.0);
  fails(Server::Saying("200 OK", good + std::string(5000, ' ')), 1.0);
  fails(Server::Saying("200 OK", "no JSON"), 1.0);
  fails([](int) {}, 1.0);  // hangs up
  fails(
      [](int connection) {  // floods with headers
        Server::Send(connection, "HTTP/1.1 200 OK\r\n");
        std::string headers;
        for (int i = 0; i < 64; ++i) headers += "A: " + std::string(1000, 'x') + "\r\n";
        while (Server::Send(connection, headers)) {
        }
      },
      1.0);
  fails(
      [](int connection) {  // drips
        Server::Send(connection, "HTTP/1.1 200 OK\r\nContent-Length: 4000\r\n\r\n");
        while (Server::Send(connection, " ")) std::this_thread::sleep_for(50ms);
      },
      5.6);
  EXPECT_GT(seconds, 4.5);
  int unused = 0;
  {
    const Server gone([](int) {});
    unused = gone.port;
  }
  EXPECT_NE(Ask("http://127.0.0.1:" + std::to_string(unused), seconds).problem, "");
  EXPECT_LT(seconds, 1.0);
  EXPECT_NE(Ask("http://localhost.example", seconds).problem, "") << "not https";
  EXPECT_LT(seconds, 1.0);
  // Without TLS behind it an https address is an error and no wait.
  Server plain(Server::Saying("200 OK", good));
  EXPECT_NE(Ask("https://127.0.0.1:" + std::to_string(plain.port), seconds).problem, "");
}

TEST_F(Update, AsksNobodyWithoutConsentAndThenOnceAWeek) {
  Server server(Server::Saying("200 OK", R"({"version":"6.0"})"));
  EXPECT_FALSE(core->IsOffered()) << "built without an address";
  EXPECT_FALSE(core->MustAskConsent());
  EXPECT_NE(core->CheckNow(), "");
  const auto check = [&] {
    Begin();
    Point(server.GetAddress());
    const int before = server.connections;
    core->CheckWhenDue();
    Wait(300ms);
    EXPECT_TRUE(answers.empty()) << "nothing newer is nothing to tell";
    return server.connections - before;
  };
  EXPECT_EQ(check(), 0);
  EXPECT_TRUE(core->MustAskConsent());
  EXPECT_NE(core->CheckNow().find("switched off"), std::string::npos);
  EXPECT_EQ(core->SetConsent(false), "");
  EXPECT_EQ(check(), 0);
  EXPECT_FALSE(core->MustAskConsent()) << "once";
  EXPECT_EQ(core->SetConsent(true), "");
  EXPECT_EQ(check(), 1);
  EXPECT_EQ(check(), 0);
  day += 6;
  EXPECT_EQ(check(), 0);
  day += 1;
  EXPECT_EQ(check(), 1);
  day -= 1000;
  EXPECT_EQ(check(), 1) << "the last one was kept by a clock that was wrong";
  core.reset();
  std::filesystem::remove_all(folder.path + "/data");
  folder.Write("data", "");
  Begin();
  Point(server.GetAddress());
  core->GetPreferences().updateCheck = true;
  const int before = server.connections;
  core->CheckWhenDue();
  Wait(300ms);
  EXPECT_EQ(server.connections, before) << "what can't be kept is not asked at each start";
}

TEST_F(Update, TheProgramQuitsAtOnceWhateverTheNetworkDoes) {
  const auto quits = [this](const std::string& address, auto&&... resolver) {
    Begin();
    Point(address);
    (core->SetResolver(resolver), ...);
    EXPECT_EQ(core->SetConsent(true), "");
    EXPECT_EQ(core->CheckNow(), "");
    Wait(200ms);
    disconnect(core.get());
    const auto begin = steady_clock::now();
    core.reset();
    EXPECT_LT(steady_clock::now() - begin, 700ms) << address;
    EXPECT_TRUE(answers.empty());
  };
  Server server([](int connection) {
    char byte;
    recv(connection, &byte, 1, 0);  // hangs until the other side goes
  });
  quits(server.GetAddress());
  quits("https://127.0.0.1:" + std::to_string(server.port));  // within the handshake
  const HangingResolver resolver;
  quits("https://hangs.example", resolver);
  const int before = server.connections;
  quits(server.GetAddress(), resolver);
  {
    const std::lock_guard<std::mutex> lock(resolver.gate->mutex);
    resolver.gate->open = true;
  }
  resolver.gate->changed.notify_all();
  const auto end = steady_clock::now() + 2s;
  while (resolver.gate.use_count() > 1 && steady_clock::now() < end)
    std::this_thread::sleep_for(5ms);
  EXPECT_EQ(resolver.gate->passed, 2);
  EXPECT_EQ(server.connections, before) << "a name that comes too late is not asked";
  Begin();
}

// The whole process, with the thread still in the look-up.
TEST_F(Update, TheProcessEndsWhileANameIsLookedUp) {
  testing::FLAGS_gtest_death_test_style = "threadsafe";
  const auto begin = steady_clock::now();
  EXPECT_EXIT(
      {
        HangingResolver resolver;
        Point("https://hangs.example");
        core->SetResolver(resolver);
        core->SetConsent(true);
        core->CheckNow();
        std::this_thread::sleep_for(100ms);
        disconnect(core.get());
        core.reset();
        kQtApplication->TearDown();
        std::exit(0);
      },
      testing::ExitedWithCode(0), "");
  EXPECT_LT(steady_clock::now() - begin, 3s);
}

}  // namespace
}  // namespace orv::tests
