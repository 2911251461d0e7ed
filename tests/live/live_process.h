/// The program as a user starts it for the live page, in a folder that lives as long as the object.
#ifndef TESTS_LIVE_LIVE_PROCESS_H
#define TESTS_LIVE_LIVE_PROCESS_H

#include "tests/live/page_client.h"
#include "tests/support/temp_folder.h"

#include <sys/types.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class LiveProcess : public TempFolder {
 public:
  /// Starts "workbench live --no-browser ARGUMENTS" with results in the folder "out", and waits for its
  /// address. Throws std::runtime_error when it prints none.
  explicit LiveProcess(const std::vector<std::string>& arguments);
  /// Kills the program if it still runs.
  ~LiveProcess();

  std::unique_ptr<PageClient> connect() const;
  std::uint16_t port() const { return mPort; }
  const std::string& token() const { return mToken; }

  struct Ending {
    int status = -1;  ///< exit status; -1 when a signal ended the program
    std::string out;  ///< what it has printed after its address
    std::string err;
  };
  /// Sends SIGINT, as Ctrl-C does, and waits.
  Ending interrupt();

 private:
  pid_t mProcess = 0;
  std::uint16_t mPort = 0;
  std::string mToken;
};

#endif
