/// Between the server and the main thread: reads what the pages send, hands it on, and lets the cap go when
/// the page that drives is gone. On the server's thread, apart from the constructor.
#ifndef WORKBENCH_HUB_H
#define WORKBENCH_HUB_H

#include "workbench/live/cap_guard.h"
#include "workbench/live/inbox.h"
#include "workbench/live/server.h"

#include <atomic>
#include <cstdint>

namespace workbench {

class Hub : public ServerEvents {
 public:
  explicit Hub(Inbox& inbox) : mInbox(inbox) {}
  /// Before any page connects.
  void setServer(Server& server) { mServerP = &server; }

  /// The page that drives, 0 for none. Any thread.
  std::uint64_t driver() const { return mDriver; }

  void opened(PageId page) override;
  void closed(PageId page) override;
  bool received(PageId page, std::string_view text) override;
  void looked() override;

 private:
  bool handle(PageId page, PageMessage message);
  void letGo();
  void noteDriver();

  Inbox& mInbox;
  std::atomic<Server*> mServerP{nullptr};
  CapGuard mGuard;
  bool mIsDeviceDown = false;
  std::atomic<std::uint64_t> mDriver{CapGuard::kNobody};
};

}  // namespace workbench

#endif
