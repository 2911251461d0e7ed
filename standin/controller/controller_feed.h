/// The other side of the controller stand-in: what the workbench or a test makes the daemon and its device
/// do. Any thread. The module never uses this; it calls the seven operations of `device/lmt_ctrlr.h`.
#ifndef STANDIN_CONTROLLER_FEED_H
#define STANDIN_CONTROLLER_FEED_H

#include "standin/controller/controller_api.h"
#include "standin/fault_point.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace standin::controller {

/// One event as the daemon sends it: a code below 0 is a motion record. Of a command event only the code
/// reaches the reader; it gets garbage for the axes and extras.
struct Event {
  std::int32_t code = -1;
  std::array<std::int16_t, 6> axes{};  ///< x, y, z, rx, ry, rz
  std::int32_t extra1 = 0;
  std::int32_t extra2 = 0;
};

/// A daemon freshly started: one device "Lumetrapad", rotation mode 0, zoom-after-view off, not connected,
/// nothing pending, no faults, all counts 0.
STANDIN_CONTROLLER_API void reset();

/// Queues the event for lmGetEvent and wakes its reader. While the device is down the event is lost; without
/// a connection it waits for one. On a clock that replays, and on its main thread, a reader that waits has
/// processed the event when this returns.
STANDIN_CONTROLLER_API void deliver(const Event& event);

/// The names of the devices that the daemon lists.
STANDIN_CONTROLLER_API void setDevices(const std::vector<std::string>& names);

/// The advanced settings; announced only by an event of the caller's.
STANDIN_CONTROLLER_API void setAdvancedSettings(std::int32_t rotationMode, std::uint8_t zoomAfterView);

/// Down: every operation fails until it is up again; a reader waiting in lmGetEvent gets its failure, and
/// events still pending are lost. The connection outlives it unless lmDisconnect is called meanwhile, which
/// fails and closes it.
STANDIN_CONTROLLER_API void setDown(bool isDown);

/// Whether a read waits until an event comes or the connection changes, instead of 50 ms at most; off at
/// first. Without a connection, or while the device is down, a read fails after 50 ms all the same.
STANDIN_CONTROLLER_API void setReadsBlock(bool isBlocking);

/// Axis values of the last motion record that lmGetEvent returned; zero at start.
STANDIN_CONTROLLER_API std::array<std::int16_t, 6> lastHandedOver();

/// Events of any code that lmGetEvent has returned since reset().
STANDIN_CONTROLLER_API std::uint64_t eventsHandedOver();

/// Events queued and not yet fetched.
STANDIN_CONTROLLER_API std::size_t eventsPending();

/// Mode names that lmSetApplMode was given with success, in order, each with its application name.
struct ApplMode {
  std::string application;
  std::string mode;
};
STANDIN_CONTROLLER_API std::vector<ApplMode> applModes();

/// The application name of the last call of lmConnect, whether it succeeded or not; empty before the first.
STANDIN_CONTROLLER_API std::string connectedAs();

/// The first argument of the last call of lmConnect, 0 before the first.
STANDIN_CONTROLLER_API std::int32_t connectReserved();

/// Whether a connection is open. Without one every operation but lmConnect fails.
STANDIN_CONTROLLER_API bool isConnected();

/// A call of an operation, by its name, when it began.
struct Call {
  std::string operation;
  std::int64_t timeMs = 0;  ///< on the clock in force
};

/// The operations called since reset(), in order, the newest 10,000; of reads that follow one another only
/// the first.
STANDIN_CONTROLLER_API std::vector<Call> calls();

/// Breaches of the calling order seen since reset(): "NAME called before the first lmConnect", "lmGetEvent
/// called from two threads" (on one connection). Each line once.
STANDIN_CONTROLLER_API std::vector<std::string> breaches();

/// Faults by the operations' names ("lmConnect" ...). One of lmGetEvent takes effect after its wait, which it
/// has in any case, and leaves the event pending. Whatever the reason, an operation that fails or throws
/// leaves garbage in its outputs.
STANDIN_CONTROLLER_API FaultRegistry& faults();

}  // namespace standin::controller

#endif
