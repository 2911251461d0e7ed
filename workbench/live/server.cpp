#include "workbench/live/server.h"

#include "workbench/input_error.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <boost/beast/websocket.hpp>
#include <fcntl.h>

#include <algorithm>
#include <chrono>
#include <deque>
#include <map>
#include <optional>
#include <random>
#include <thread>
#include <utility>

namespace workbench {
namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
namespace websocket = beast::websocket;
using tcp = asio::ip::tcp;
using Clock = std::chrono::steady_clock;
using Bytes = std::shared_ptr<const ServerMessage>;
using Request = http::request<http::empty_body>;

constexpr std::size_t kMostConnections = 32;
constexpr std::size_t kMostPages = 8;
constexpr std::size_t kMostHeaderBytes = 8 * 1024;
constexpr std::size_t kMostMessageBytes = 256 * 1024;
/// Of what waits for a page. A large drawing takes tens of megabytes; more means that the page has stopped.
constexpr std::size_t kMostWaitingBytes = 256U * 1024 * 1024;
/// Pictures on their way to a page: one that it draws and one that follows at once.
constexpr int kMostPicturesAhead = 2;
constexpr std::chrono::milliseconds kLookPeriod(100);
/// A page sends at most one message for each of its pictures and a few more; this is several times that.
constexpr double kMessagesPerSecond = 500;
constexpr double kBytesPerSecond = 1024 * 1024;

/// What may be used in a second, and up to twice that at once.
class Allowance {
 public:
  explicit Allowance(double perSecond) : mPerSecond(perSecond), mLeft(2 * perSecond) {}

  /// False when more is used than there is.
  bool use(double amount) {
    const Clock::time_point now = Clock::now();
    mLeft += std::chrono::duration<double>(now - mLast).count() * mPerSecond;
    mLeft = std::min(mLeft, 2 * mPerSecond) - amount;
    mLast = now;
    return mLeft >= 0;
  }

 private:
  double mPerSecond;
  double mLeft;
  Clock::time_point mLast = Clock::now();
};

/// Takes the same time wherever two texts of one length differ: the time must not help to guess the token.
bool isSameSecret(std::string_view a, std::string_view b) {
  unsigned difference = a.size() == b.size() ? 0 : 1;
  for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i)
    difference |= static_cast<unsigned char>(a[i]) ^ static_cast<unsigned char>(b[i]);
  return difference == 0;
}

/// Programs that this one starts must not hold its port: the library opens sockets that they would inherit.
void keepFromChildren(int socket) {
  fcntl(socket, F_SETFD, FD_CLOEXEC);
}

std::string_view toView(beast::string_view text) {
  return {text.data(), text.size()};
}

}  // namespace

struct Server::Impl {
  class Connection;
  class Page;

  Impl(const ServerOptions& options, ServerEvents& serverEvents)
      : token(options.token),
        html(options.page),
        handshakeTime(options.handshakeTime),
        idleTime(options.idleTime),
        events(serverEvents) {
    try {
      const tcp::endpoint loopback(asio::ip::address_v4::loopback(), options.port);
      acceptor.open(loopback.protocol());
      keepFromChildren(acceptor.native_handle());
      // A server that was ended a moment ago must not keep its port from the next one.
      acceptor.set_option(asio::socket_base::reuse_address(true));
      acceptor.bind(loopback);
      acceptor.listen();
    } catch (const boost::system::system_error& error) {
      throw InputError({"port " + std::to_string(options.port)}, "a port that is free on this machine",
                       error.code().message());
    }
    port = acceptor.local_endpoint().port();
    accept();
    look();
    thread = std::thread([this] { context.run(); });
  }

  void accept();
  void look();
  /// What the request may have, as a status: ok for the page, switching_protocols for the WebSocket.
  http::status judge(const Request& request, bool isUpgrade) const;

  bool isOwnHost(std::string_view host) const {
    const std::string end = ":" + std::to_string(port);
    return host == "127.0.0.1" + end || host == "localhost" + end;
  }
  bool isOwnOrigin(std::string_view origin) const {
    constexpr std::string_view kScheme = "http://";
    return origin.substr(0, kScheme.size()) == kScheme && isOwnHost(origin.substr(kScheme.size()));
  }

  std::uint16_t port = 0;
  const std::string token;
  const std::string_view html;
  const std::chrono::milliseconds handshakeTime;
  const std::chrono::milliseconds idleTime;
  ServerEvents& events;
  // Everything from here to the context belongs to the server's thread.
  std::size_t connections = 0;
  PageId lastPage = 0;
  std::map<PageId, std::shared_ptr<Page>> pages;
  Bytes picture;
  bool isEnding = false;
  // After what its pending operations refer to: they are destroyed with it.
  asio::io_context context{1};
  tcp::acceptor acceptor{context};
  asio::steady_timer lookTimer{context};
  std::thread thread;
};

/// A page's WebSocket. Lives until its last operation has ended.
class Server::Impl::Page : public std::enable_shared_from_this<Page> {
 public:
  Page(Impl& server, beast::tcp_stream&& stream) : mServer(server), mSocket(std::move(stream)) {}
  ~Page() { --mServer.connections; }
  Page(const Page&) = delete;
  Page& operator=(const Page&) = delete;

  void begin(const Request& request) {
    // The WebSocket has time limits of its own; both would end each other's operations.
    beast::get_lowest_layer(mSocket).expires_never();
    mSocket.set_option(websocket::stream_base::timeout{mServer.handshakeTime, mServer.idleTime, true});
    mSocket.read_message_max(kMostMessageBytes);
    mSocket.async_accept(request, [self = this->shared_from_this()](beast::error_code error) {
      if (!error) self->open();
    });
  }

  void queue(const Bytes& bytes) {
    mIsWelcome = true;
    mWaitingBytes += bytes->bytes.size();
    mWaiting.push_back(bytes);
    if (mWaitingBytes > kMostWaitingBytes) return end();
    writeNext();
  }

  bool isWelcome() const { return mIsWelcome; }

  void pictureChanged() {
    mIsPictureDue = true;
    writeNext();
  }

  void pictureSeen() {
    if (mPicturesAhead > 0) --mPicturesAhead;
    writeNext();
  }

  /// Without a farewell: a page that breaks the rules may not read one.
  void end() {
    beast::error_code ignored;
    beast::get_lowest_layer(mSocket).socket().close(ignored);
  }

 private:
  void open() {
    if (mServer.isEnding || mServer.pages.size() >= kMostPages) return end();
    mId = ++mServer.lastPage;
    mServer.pages.emplace(mId, this->shared_from_this());
    mServer.events.opened(mId);
    read();
  }

  void read() {
    mSocket.async_read(mBuffer, [self = this->shared_from_this()](beast::error_code error, std::size_t size) {
      if (error) return self->close();
      const bool isTaken =
          self->mSocket.got_text() && self->mMessages.use(1) && self->mBytes.use(static_cast<double>(size)) &&
          self->mServer.events.received(
              self->mId, {static_cast<const char*>(self->mBuffer.cdata().data()), self->mBuffer.size()});
      self->mBuffer.consume(self->mBuffer.size());
      if (!isTaken) {
        self->end();
        return self->close();
      }
      self->read();
    });
  }

  void close() {
    if (mServer.pages.erase(mId) == 0 || mServer.isEnding) return;
    mServer.events.closed(mId);
  }

  /// What was queued first, then the newest picture.
  void writeNext() {
    if (mIsWriting) return;
    Bytes next;
    if (!mWaiting.empty()) {
      next = std::move(mWaiting.front());
      mWaiting.pop_front();
      mWaitingBytes -= next->bytes.size();
    } else if (mIsWelcome && mIsPictureDue && mPicturesAhead < kMostPicturesAhead && mServer.picture) {
      next = mServer.picture;
      mIsPictureDue = false;
      ++mPicturesAhead;
    }
    if (!next) return;
    mIsWriting = true;
    mSocket.binary(next->isBinary);
    mSocket.async_write(asio::buffer(next->bytes),
                        [self = this->shared_from_this(), next](beast::error_code error, std::size_t) {
                          self->mIsWriting = false;
                          // The read fails as well, and closes the page.
                          if (!error) self->writeNext();
                        });
  }

  Impl& mServer;
  websocket::stream<beast::tcp_stream> mSocket;
  beast::flat_buffer mBuffer;
  PageId mId = 0;
  Allowance mMessages{kMessagesPerSecond};
  Allowance mBytes{kBytesPerSecond};
  std::deque<Bytes> mWaiting;
  std::size_t mWaitingBytes = 0;
  bool mIsWriting = false;
  bool mIsWelcome = false;
  bool mIsPictureDue = true;
  int mPicturesAhead = 0;
};

/// A connection until its one request is answered or has become a WebSocket.
class Server::Impl::Connection : public std::enable_shared_from_this<Connection> {
 public:
  Connection(Impl& server, tcp::socket&& socket) : mServer(server), mStream(std::move(socket)) {
    ++mServer.connections;
  }
  ~Connection() {
    if (!mIsHandedOn) --mServer.connections;
  }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  void begin() {
    mStream.expires_after(mServer.handshakeTime);
    mParser.header_limit(kMostHeaderBytes);
    // None of the requests that are served has a body.
    mParser.body_limit(0);
    http::async_read_header(mStream, mBuffer, mParser,
                            [self = this->shared_from_this()](beast::error_code error, std::size_t) {
                              if (!error) self->answer();
                            });
  }

 private:
  void answer() {
    const Request& request = mParser.get();
    const bool isUpgrade = websocket::is_upgrade(request);
    const http::status status = mServer.judge(request, isUpgrade);
    if (status == http::status::switching_protocols) {
      mIsHandedOn = true;
      return std::make_shared<Page>(mServer, std::move(mStream))->begin(request);
    }
    mResponse.result(status);
    mResponse.keep_alive(false);
    // Nothing of the page may be kept, shown inside of another page, or reach another address.
    mResponse.set(http::field::cache_control, "no-store");
    mResponse.set("X-Content-Type-Options", "nosniff");
    mResponse.set("Referrer-Policy", "no-referrer");
    mResponse.set("X-Frame-Options", "DENY");
    mResponse.set("Cross-Origin-Resource-Policy", "same-origin");
    if (status == http::status::ok) {
      mResponse.set(http::field::content_type, "text/html; charset=utf-8");
      mResponse.set("Content-Security-Policy",
                    "default-src 'none'; script-src 'unsafe-inline'; style-src 'unsafe-inline'; "
                    "img-src data: blob:; connect-src ws://" +
                        std::string(toView(request[http::field::host])) +
                        "; base-uri 'none'; form-action 'none'; frame-ancestors 'none'");
      mResponse.body() = beast::span<const char>(mServer.html.data(), mServer.html.size());
    }
    mResponse.prepare_payload();
    http::async_write(mStream, mResponse, [self = this->shared_from_this()](beast::error_code, std::size_t) {
      beast::error_code ignored;
      self->mStream.socket().shutdown(tcp::socket::shutdown_both, ignored);
    });
  }

  Impl& mServer;
  beast::tcp_stream mStream;
  beast::flat_buffer mBuffer{kMostHeaderBytes};
  http::request_parser<http::empty_body> mParser;
  http::response<http::span_body<const char>> mResponse;
  bool mIsHandedOn = false;
};

http::status Server::Impl::judge(const Request& request, bool isUpgrade) const {
  // A name that somebody else's name server resolves to this machine is not this server.
  if (!isOwnHost(toView(request[http::field::host]))) return http::status::misdirected_request;
  const auto origin = request.find(http::field::origin);
  const bool hasOrigin = origin != request.end();
  if (hasOrigin && !isOwnOrigin(toView(origin->value()))) return http::status::forbidden;
  // Browsers name the origin of every WebSocket; what does not is no page.
  if (isUpgrade && !hasOrigin) return http::status::forbidden;
  const std::string_view target = toView(request.target());
  if (!isSameSecret(target, "/" + token + (isUpgrade ? "/ws" : "/"))) return http::status::not_found;
  if (request.method() != http::verb::get) return http::status::method_not_allowed;
  return isUpgrade ? http::status::switching_protocols : http::status::ok;
}

void Server::Impl::accept() {
  acceptor.async_accept([this](beast::error_code error, tcp::socket socket) {
    if (error == asio::error::operation_aborted) return;
    // Too many: the socket closes at the end of this call.
    if (!error && connections < kMostConnections) {
      keepFromChildren(socket.native_handle());
      beast::error_code ignored;
      socket.set_option(tcp::no_delay(true), ignored);
      std::make_shared<Connection>(*this, std::move(socket))->begin();
    }
    accept();
  });
}

void Server::Impl::look() {
  lookTimer.expires_after(kLookPeriod);
  lookTimer.async_wait([this](beast::error_code error) {
    if (error) return;
    events.looked();
    look();
  });
}

Server::Server(const ServerOptions& options, ServerEvents& events)
    : mImplP(std::make_unique<Impl>(options, events)) {}

Server::~Server() {
  asio::post(mImplP->context, [this] {
    mImplP->isEnding = true;
    mImplP->context.stop();
  });
  mImplP->thread.join();
  // Pages refer to the server when they end, so they end first.
  mImplP->pages.clear();
}

std::uint16_t Server::port() const {
  return mImplP->port;
}

std::string Server::address() const {
  return "http://127.0.0.1:" + std::to_string(mImplP->port) + "/" + mImplP->token + "/";
}

void Server::send(PageId page, ServerMessage message) {
  auto bytes = std::make_shared<const ServerMessage>(std::move(message));
  asio::post(mImplP->context, [this, page, bytes = std::move(bytes)] {
    const auto found = mImplP->pages.find(page);
    if (found != mImplP->pages.end()) found->second->queue(bytes);
  });
}

void Server::sendAll(ServerMessage message) {
  auto bytes = std::make_shared<const ServerMessage>(std::move(message));
  asio::post(mImplP->context, [this, bytes = std::move(bytes)] {
    for (const auto& [id, pageP] : mImplP->pages)
      if (pageP->isWelcome()) pageP->queue(bytes);
  });
}

void Server::show(std::string picture) {
  auto bytes = std::make_shared<const ServerMessage>(ServerMessage{std::move(picture), false});
  asio::post(mImplP->context, [this, bytes = std::move(bytes)] {
    mImplP->picture = bytes;
    for (const auto& [id, pageP] : mImplP->pages) pageP->pictureChanged();
  });
}

void Server::pictureSeen(PageId page) {
  const auto found = mImplP->pages.find(page);
  if (found != mImplP->pages.end()) found->second->pictureSeen();
}

std::string makeToken() {
  // The system's own source of randomness; nothing is derived from a seed.
  std::random_device random;
  std::string token;
  for (int i = 0; i < 32; ++i) token += "0123456789abcdef"[random() & 15U];
  return token;
}

}  // namespace workbench
