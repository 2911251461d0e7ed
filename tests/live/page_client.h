/// A page without a browser: a WebSocket client for tests of the live page's server.
#ifndef TESTS_LIVE_PAGE_CLIENT_H
#define TESTS_LIVE_PAGE_CLIENT_H

#include <nlohmann/json.hpp>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

/// Who the client says it is.
struct PageIdentity {
  std::string path;                   ///< "/TOKEN/ws"
  std::string host;                   ///< the header; empty: the server's own
  std::optional<std::string> origin;  ///< the header; none: the server's own; empty: left out
};

class PageClient {
 public:
  /// Throws std::runtime_error when the server refuses.
  PageClient(std::uint16_t port, const PageIdentity& identity);
  ~PageClient();
  PageClient(const PageClient&) = delete;
  PageClient& operator=(const PageClient&) = delete;

  void send(const std::string& text);
  void sendBinary(const std::string& bytes);
  /// Bytes that need not be a frame.
  void sendRaw(const std::string& bytes);
  /// No longer confirms pictures.
  void fallSilent();
  /// {"do": LINE, "n": NUMBER}
  void act(const std::string& line, std::uint32_t number = 0);

  /// Waits for a message that the predicate accepts, and drops those before it. Binary messages are passed as
  /// {"t": "scene", ...}, the header. Each picture is confirmed as a page does. Null when the connection ends
  /// or the time is up.
  nlohmann::json await(const std::function<bool(const nlohmann::json&)>& isIt,
                       std::chrono::milliseconds patience = std::chrono::milliseconds(20000));
  /// The next message of that type.
  nlohmann::json await(const std::string& type) {
    return await([&type](const nlohmann::json& message) { return message.value("t", "") == type; });
  }
  /// True when the server ends the connection before the time is up.
  bool isEnded(std::chrono::milliseconds patience = std::chrono::milliseconds(20000));
  /// Closes the connection without a farewell, as a page does that crashes.
  void drop();

 private:
  struct Impl;
  std::unique_ptr<Impl> mImplP;
};

/// Sends bytes on a connection of its own and returns what comes back until the server closes it.
std::string exchange(std::uint16_t port, const std::string& bytes);

/// Connections that send nothing, for as long as this lives.
class SilentConnections {
 public:
  SilentConnections(std::uint16_t port, std::size_t count);
  ~SilentConnections();
  /// Waits until the server has closed all of them.
  bool areAllClosed();

 private:
  struct Impl;
  std::unique_ptr<Impl> mImplP;
};

#endif
