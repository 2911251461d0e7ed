/// The server of the live page: HTTP and WebSocket on the loopback address, for those who know the token. It
/// hands texts over and knows nothing of what they mean.
///
/// A page reaches it when the address holds the token, `Host` names this server and `Origin`, where it must
/// be or is given, names it too: neither another user of the machine nor another site in the user's browser,
/// not even one whose name resolves to this machine, gets further than a refusal.
#ifndef WORKBENCH_SERVER_H
#define WORKBENCH_SERVER_H

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace workbench {

/// A connected page; numbers are never used again.
using PageId = std::uint64_t;

struct ServerMessage {
  std::string bytes;
  bool isBinary = false;
};

/// What the server reports. All calls come on its own thread, one at a time.
class ServerEvents {
 public:
  virtual ~ServerEvents() = default;
  virtual void opened(PageId page) = 0;
  virtual void closed(PageId page) = 0;
  /// A text message; false ends the connection.
  virtual bool received(PageId page, std::string_view text) = 0;
  /// Several times a second, also while nothing arrives.
  virtual void looked() = 0;
};

struct ServerOptions {
  std::uint16_t port = 0;  ///< 0: any that is free
  std::string token;       ///< part of the address, letters and digits
  std::string_view page;   ///< the HTML page; must outlive the server
  /// Time for a request to arrive, so that connections which send nothing make room for others.
  std::chrono::milliseconds handshakeTime{5000};
  /// After half of this a silent page is asked for a sign of life, after all of it it is gone.
  std::chrono::milliseconds idleTime{10000};
};

class Server {
 public:
  /// Begins to listen, on a thread of its own. Throws InputError when the port cannot be had.
  Server(const ServerOptions& options, ServerEvents& events);
  /// Closes all connections and ends the thread; no event is reported during it.
  ~Server();
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  std::uint16_t port() const;
  /// Address of the page, with the token.
  std::string address() const;

  /// Any thread; none of these waits for the network. A message arrives after those before it. A page that
  /// takes too little is disconnected.
  void send(PageId page, ServerMessage message);
  /// To every page that has been sent something by send().
  void sendAll(ServerMessage message);
  /// The picture that the pages show from now on. A page that is still busy with earlier ones gets the newest
  /// when it is ready; those between are dropped.
  void show(std::string picture);
  /// On the server's thread: the page has shown a picture and is ready for another.
  void pictureSeen(PageId page);

 private:
  struct Impl;
  std::unique_ptr<Impl> mImplP;
};

/// A token that nobody can guess: 128 random bits, in hexadecimal.
std::string makeToken();

}  // namespace workbench

#endif
