#include "tests/live/page_client.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core/buffers_to_string.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/websocket.hpp>

#include <condition_variable>
#include <cstring>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace asio = boost::asio;
namespace beast = boost::beast;
using tcp = asio::ip::tcp;
using Json = nlohmann::json;

namespace {

tcp::endpoint loopback(std::uint16_t port) {
  return {asio::ip::address_v4::loopback(), port};
}

Json headerOf(const std::string& bytes) {
  std::uint32_t length = 0;
  std::memcpy(&length, bytes.data(), sizeof length);
  return Json::parse(bytes.substr(sizeof length, length));
}

}  // namespace

/// The connection belongs to a thread of its own; the test's thread posts to it.
struct PageClient::Impl {
  asio::io_context context;
  beast::websocket::stream<tcp::socket> socket{context};
  beast::flat_buffer buffer;
  std::deque<std::pair<std::string, bool>> waiting;  ///< bytes, and whether they are a text
  bool isWriting = false;
  bool isSilent = false;
  std::thread thread;

  std::mutex mutex;
  std::condition_variable news;
  std::deque<Json> messages;
  bool isEnded = false;

  void read() {
    socket.async_read(buffer, [this](beast::error_code error, std::size_t) {
      if (error) return end();
      const std::string bytes = beast::buffers_to_string(buffer.data());
      buffer.consume(buffer.size());
      Json message = socket.got_text() ? Json::parse(bytes) : headerOf(bytes);
      if (message.value("t", "") == "picture" && !isSilent)
        queue("{\"seen\":" + message.at("n").dump() + "}", true);
      {
        const std::lock_guard lock(mutex);
        messages.push_back(std::move(message));
      }
      news.notify_all();
      read();
    });
  }

  void end() {
    {
      const std::lock_guard lock(mutex);
      isEnded = true;
    }
    news.notify_all();
  }

  void queue(std::string bytes, bool isText) {
    waiting.emplace_back(std::move(bytes), isText);
    writeNext();
  }

  void writeNext() {
    if (isWriting || waiting.empty()) return;
    isWriting = true;
    socket.text(waiting.front().second);
    socket.async_write(asio::buffer(waiting.front().first), [this](beast::error_code error, std::size_t) {
      isWriting = false;
      waiting.pop_front();
      // The read fails as well.
      if (!error) writeNext();
    });
  }
};

PageClient::PageClient(std::uint16_t port, const PageIdentity& identity) : mImplP(std::make_unique<Impl>()) {
  auto& socket = mImplP->socket;
  socket.next_layer().connect(loopback(port));
  const std::string own = "127.0.0.1:" + std::to_string(port);
  const std::string origin = identity.origin.value_or("http://" + own);
  socket.set_option(
      beast::websocket::stream_base::decorator([&origin](beast::websocket::request_type& request) {
        if (!origin.empty()) request.set(beast::http::field::origin, origin);
      }));
  socket.read_message_max(0);
  socket.handshake(identity.host.empty() ? own : identity.host, identity.path);
  mImplP->read();
  mImplP->thread = std::thread([this] { mImplP->context.run(); });
}

PageClient::~PageClient() {
  drop();
  mImplP->thread.join();
}

void PageClient::send(const std::string& text) {
  asio::post(mImplP->context, [this, text] { mImplP->queue(text, true); });
}

void PageClient::sendBinary(const std::string& bytes) {
  asio::post(mImplP->context, [this, bytes] { mImplP->queue(bytes, false); });
}

void PageClient::sendRaw(const std::string& bytes) {
  asio::post(mImplP->context, [this, bytes] {
    beast::error_code ignored;
    // Too few for the system to make it wait.
    asio::write(mImplP->socket.next_layer(), asio::buffer(bytes), ignored);
  });
}

void PageClient::fallSilent() {
  asio::post(mImplP->context, [this] { mImplP->isSilent = true; });
}

void PageClient::act(const std::string& line, std::uint32_t number) {
  Json message{{"do", line}};
  if (number != 0) message["n"] = number;
  send(message.dump());
}

Json PageClient::await(const std::function<bool(const Json&)>& isIt, std::chrono::milliseconds patience) {
  const auto until = std::chrono::steady_clock::now() + patience;
  std::unique_lock lock(mImplP->mutex);
  while (true) {
    while (!mImplP->messages.empty()) {
      Json message = std::move(mImplP->messages.front());
      mImplP->messages.pop_front();
      if (isIt(message)) return message;
    }
    if (mImplP->isEnded || mImplP->news.wait_until(lock, until) == std::cv_status::timeout) return nullptr;
  }
}

bool PageClient::isEnded(std::chrono::milliseconds patience) {
  std::unique_lock lock(mImplP->mutex);
  return mImplP->news.wait_for(lock, patience, [this] { return mImplP->isEnded; });
}

void PageClient::drop() {
  asio::post(mImplP->context, [this] {
    beast::error_code ignored;
    mImplP->socket.next_layer().shutdown(tcp::socket::shutdown_both, ignored);
  });
}

std::string exchange(std::uint16_t port, const std::string& bytes) {
  asio::io_context context;
  tcp::socket socket(context);
  socket.connect(loopback(port));
  beast::error_code ignored;
  asio::write(socket, asio::buffer(bytes), ignored);
  std::string reply;
  asio::read(socket, asio::dynamic_buffer(reply), ignored);
  return reply;
}

struct SilentConnections::Impl {
  asio::io_context context;
  std::vector<tcp::socket> sockets;
};

SilentConnections::SilentConnections(std::uint16_t port, std::size_t count)
    : mImplP(std::make_unique<Impl>()) {
  for (std::size_t i = 0; i < count; ++i) {
    mImplP->sockets.emplace_back(mImplP->context);
    mImplP->sockets.back().connect(loopback(port));
  }
}

SilentConnections::~SilentConnections() = default;

bool SilentConnections::areAllClosed() {
  for (tcp::socket& socket : mImplP->sockets) {
    char byte = 0;
    beast::error_code error;
    // Returns when the server closes the connection; the test's own time limit ends one that it keeps.
    if (asio::read(socket, asio::buffer(&byte, 1), error) != 0 || !error) return false;
  }
  return true;
}
