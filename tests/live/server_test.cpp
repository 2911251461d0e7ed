/// The server of the live page against those who should not reach it, and pages that misbehave.
#include "workbench/live/server.h"

#include "tests/live/page_client.h"
#include "workbench/input_error.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <atomic>
#include <condition_variable>
#include <mutex>

namespace workbench {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr const char* kToken = "0123456789abcdef0123456789abcdef";
constexpr std::string_view kPage = "<!doctype html><title>The page</title>";

/// Counts what the server reports.
class Counting : public ServerEvents {
 public:
  void opened(PageId page) override { count(mOpened, page); }
  void closed(PageId page) override { count(mClosed, page); }
  bool received(PageId page, std::string_view text) override {
    count(mReceived, page);
    if (Server* const serverP = confirming) serverP->pictureSeen(page);
    return text != "unknown";
  }
  void looked() override {}

  /// Each message confirms a picture to this server.
  std::atomic<Server*> confirming{nullptr};

  std::size_t received() {
    const std::lock_guard lock(mMutex);
    return mReceived;
  }
  bool awaitClosed(std::size_t count) {
    std::unique_lock lock(mMutex);
    return mNews.wait_for(lock, std::chrono::seconds(20), [&] { return mClosed >= count; });
  }
  PageId awaitOpened(std::size_t count) {
    std::unique_lock lock(mMutex);
    mNews.wait_for(lock, std::chrono::seconds(20), [&] { return mOpened >= count; });
    return mLast;
  }

 private:
  void count(std::size_t& counter, PageId page) {
    const std::lock_guard lock(mMutex);
    ++counter;
    mLast = page;
    mNews.notify_all();
  }

  std::mutex mMutex;
  std::condition_variable mNews;
  std::size_t mOpened = 0, mClosed = 0, mReceived = 0;
  PageId mLast = 0;
};

class ServerTest : public ::testing::Test {
 protected:
  static ServerOptions options() {
    ServerOptions options;
    options.token = kToken;
    options.page = kPage;
    options.handshakeTime = std::chrono::milliseconds(200);
    return options;
  }
  std::string request(const std::string& target, const std::string& headers) const {
    return exchange(server.port(), "GET " + target + " HTTP/1.1\r\n" + headers + "\r\n");
  }
  std::string ownHost() const { return "Host: 127.0.0.1:" + std::to_string(server.port()) + "\r\n"; }
  PageIdentity page() const { return {std::string("/") + kToken + "/ws", {}, {}}; }
  /// The server still serves the page to those who may have it.
  void expectServing() const {
    EXPECT_THAT(request(std::string("/") + kToken + "/", ownHost()), HasSubstr("The page"));
  }

  Counting events;
  Server server{options(), events};
};

TEST_F(ServerTest, ServesThePageToThoseWhoKnowTheToken) {
  const std::string reply = request(std::string("/") + kToken + "/", ownHost());
  EXPECT_THAT(reply, StartsWith("HTTP/1.1 200 OK\r\n"));
  EXPECT_THAT(reply, HasSubstr("Content-Security-Policy: default-src 'none'"));
  EXPECT_THAT(reply, HasSubstr(std::string(kPage)));
}

TEST_F(ServerTest, RefusesEveryOtherPath) {
  for (const char* target : {"/", "/0123456789abcdef0123456789abcdee/", "/0123456789abcdef0123456789abcdef",
                             "/0123456789abcdef0123456789abcdef/../etc/passwd", "//etc/passwd", "*"})
    EXPECT_THAT(request(target, ownHost()), StartsWith("HTTP/1.1 404 Not Found\r\n")) << target;
}

TEST_F(ServerTest, RefusesAnotherHost) {
  const std::string target = std::string("/") + kToken + "/", port = std::to_string(server.port());
  for (const std::string& host : {"evil.example:" + port, std::string("127.0.0.1"), "127.0.0.1:1" + port,
                                  "localhost.evil.example:" + port, std::string()})
    EXPECT_THAT(request(target, "Host: " + host + "\r\n"), StartsWith("HTTP/1.1 421 ")) << host;
  EXPECT_THAT(request(target, ""), StartsWith("HTTP/1.1 421 "));
}

TEST_F(ServerTest, RefusesAWebSocketOfAnotherOrigin) {
  for (const char* origin : {"http://evil.example", "https://127.0.0.1:1", "null", ""}) {
    PageIdentity identity = page();
    identity.origin = origin;
    EXPECT_THROW(PageClient(server.port(), identity), std::exception) << origin;
  }
  expectServing();
}

TEST_F(ServerTest, RefusesAWebSocketWithoutTheToken) {
  for (const char* path :
       {"/ws", "/0123456789abcdef0123456789abcdee/ws", "/0123456789abcdef0123456789abcdef/"})
    EXPECT_THROW(PageClient(server.port(), {path, {}, {}}), std::exception) << path;
}

TEST_F(ServerTest, RefusesAWebSocketUnderAnotherName) {
  PageIdentity identity = page();
  identity.host = "rebound.example:" + std::to_string(server.port());
  EXPECT_THROW(PageClient(server.port(), identity), std::exception);
}

TEST_F(ServerTest, RefusesOtherMethods) {
  const std::string reply =
      exchange(server.port(), "DELETE /" + std::string(kToken) + "/ HTTP/1.1\r\n" + ownHost() + "\r\n");
  EXPECT_THAT(reply, StartsWith("HTTP/1.1 405 "));
}

TEST_F(ServerTest, EndsRequestsThatAreNone) {
  for (const std::string& bytes :
       {std::string("\0\1\2\3\r\n\r\n", 8), std::string("GET\r\n\r\n"),
        "GET / HTTP/1.1\r\nX: " + std::string(100000, 'x'), std::string(200000, '\n'),
        std::string("\x16\x03\x01\x02\x00\x01\x00\x01", 8)})
    exchange(server.port(), bytes);
  expectServing();
}

TEST_F(ServerTest, EndsAPageThatSendsTooMuchAtOnce) {
  PageClient client(server.port(), page());
  client.send(std::string(300 * 1024, 'x'));
  EXPECT_TRUE(client.isEnded());
  EXPECT_TRUE(events.awaitClosed(1));
  EXPECT_EQ(events.received(), 0U);
}

TEST_F(ServerTest, EndsAPageThatSendsTooOften) {
  PageClient client(server.port(), page());
  for (int i = 0; i < 3000; ++i) client.send("x");
  EXPECT_TRUE(client.isEnded());
  EXPECT_LT(events.received(), 3000U);
}

TEST_F(ServerTest, EndsAPageThatSendsBytes) {
  PageClient client(server.port(), page());
  client.sendBinary("x");
  EXPECT_TRUE(client.isEnded());
  EXPECT_EQ(events.received(), 0U);
}

TEST_F(ServerTest, EndsAPageThatSaysWhatNoPageSays) {
  PageClient client(server.port(), page());
  client.send("unknown");
  EXPECT_TRUE(client.isEnded());
}

TEST_F(ServerTest, EndsMalformedFrames) {
  // Reserved bits, an unknown kind, no mask, a length without end, a fragmented ping, broken UTF-8.
  for (const std::string& bytes :
       {std::string("\xF1\x81mask!", 7), std::string("\x8F\x81mask!", 7), std::string("\x81\x01x", 3),
        std::string("\x81\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFFmask", 14), std::string("\x09\x81mask!", 7),
        std::string("\x81\x82\0\0\0\0\xC3\x28", 8)}) {
    PageClient client(server.port(), page());
    client.sendRaw(bytes);
    EXPECT_TRUE(client.isEnded());
  }
  EXPECT_EQ(events.received(), 0U);
  expectServing();
}

TEST_F(ServerTest, AHundredSilentConnectionsMakeRoomForThePage) {
  SilentConnections silent(server.port(), 100);
  EXPECT_TRUE(silent.areAllClosed());
  expectServing();
}

TEST_F(ServerTest, HalfARequestIsNotAwaitedForEver) {
  EXPECT_EQ(exchange(server.port(), "GET /" + std::string(kToken) + "/ HTT"), "");
  expectServing();
}

TEST_F(ServerTest, RefusesMorePagesThanItShows) {
  std::vector<std::unique_ptr<PageClient>> pages;
  for (int i = 0; i < 9; ++i) pages.push_back(std::make_unique<PageClient>(server.port(), page()));
  EXPECT_TRUE(pages.back()->isEnded());
  EXPECT_FALSE(pages.front()->isEnded(std::chrono::milliseconds(0)));
}

TEST_F(ServerTest, MessagesArriveInOrder) {
  PageClient client(server.port(), page());
  const PageId id = events.awaitOpened(1);
  server.send(id, {R"({"t":"a"})"});
  server.sendAll({R"({"t":"b"})"});
  EXPECT_EQ(client.await([](const auto&) { return true; }).at("t"), "a");
  EXPECT_EQ(client.await([](const auto&) { return true; }).at("t"), "b");
}

TEST_F(ServerTest, SlowPageGetsTheNewestPicture) {
  PageClient client(server.port(), page());
  const PageId id = events.awaitOpened(1);
  server.send(id, {R"({"t":"hello"})"});
  client.await("hello");
  const auto show = [this](int n) { server.show(R"({"t":"picture","n":)" + std::to_string(n) + "}"); };
  // Two are sent ahead; nobody tells the server that the client has seen them.
  for (int i = 1; i <= 2; ++i) {
    show(i);
    EXPECT_EQ(client.await("picture").at("n"), i);
  }
  for (int i = 3; i <= 100; ++i) show(i);
  server.send(id, {R"({"t":"after"})"});
  EXPECT_EQ(client.await([](const auto&) { return true; }).at("t"), "after");
  events.confirming = &server;
  client.send("seen");
  EXPECT_EQ(client.await("picture").at("n"), 100);
}

TEST_F(ServerTest, StartedProgramsInheritNoSocket) {
  const PageClient client(server.port(), page());
  events.awaitOpened(1);
  std::size_t sockets = 0;
  for (int fd = 0; fd < 1024; ++fd) {
    sockaddr_in local{};
    socklen_t size = sizeof local;
    // The client's end has another port of its own.
    if (getsockname(fd, reinterpret_cast<sockaddr*>(&local), &size) != 0) continue;
    if (local.sin_family != AF_INET || ntohs(local.sin_port) != server.port()) continue;
    ++sockets;
    EXPECT_NE(fcntl(fd, F_GETFD) & FD_CLOEXEC, 0) << fd;
  }
  // The one that listens and that of the page.
  EXPECT_EQ(sockets, 2U);
}

TEST_F(ServerTest, TakenPortIsReported) {
  ServerOptions same = options();
  same.port = server.port();
  try {
    Counting others;
    Server second(same, others);
    FAIL() << "the port was given twice";
  } catch (const InputError& error) {
    EXPECT_THAT(error.what(), HasSubstr("expected a port that is free on this machine"));
  }
}

TEST(ServerToken, IsNewEachTime) {
  const std::string first = makeToken();
  EXPECT_EQ(first.size(), 32U);
  EXPECT_NE(first, makeToken());
}

}  // namespace
}  // namespace workbench
