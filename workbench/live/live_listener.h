/// Collects what the host, the desktop and the module report during a live session, for the pages. The calls
/// come on the main thread from a module that keeps the rules, and from any thread otherwise.
#ifndef WORKBENCH_LIVE_LISTENER_H
#define WORKBENCH_LIVE_LISTENER_H

#include "workbench/running/recording.h"

#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

namespace workbench {

/// Nothing is kept once it has been taken, so that a page that is open for days takes no more memory than one
/// that was just opened. The base class keeps what it records; what it would do with views and texts is left
/// out.
class LiveListener final : public Recorder {
 public:
  LiveListener();

  struct News {
    std::vector<CommandLineEntry> lines;
    std::vector<std::string> breaches;  ///< each text once
    std::uint64_t passes = 0;
  };
  /// What has been reported since the last call.
  News take();

  void viewUpdated(int viewport, const standin::host::Camera& camera) override;
  void viewCommitted(int, const standin::host::Camera&) override {}
  void viewChanged(int, const standin::host::Camera&) override {}
  void paperChanged(int viewport, const standin::host::PaperView& view) override;
  void textSent(const std::wstring& text, bool activate) override;
  void modulePrinted(const std::wstring& text) override;
  void hostPrinted(const std::wstring& text) override;
  void ruleBroken(const std::string& breach) override;

 private:
  void add(LineKind kind, const std::wstring& text);

  std::mutex mMutex;
  News mNews;
  std::vector<std::string> mKnownBreaches;
};

}  // namespace workbench

#endif
