/// The seven operations of the maker's client library `lmt_ctrlr_64.dll` that the module uses, the records
/// that cross the boundary, and the vocabulary of event codes. The library is imported by ordinal
/// (`lmt_ctrlr_64.def`); every operation returns 0 for success and any other value for failure.
///
/// Calling order: lmConnect first; lmGetDevNum, then lmGetDevInfo for each index below the count;
/// lmGetAdvancedSettings after a connection and whenever the settings have changed; lmGetEvent again and
/// again from one thread; lmDisconnect when the connection is broken and at shutdown.
#ifndef DEVICE_LMT_CTRLR_H
#define DEVICE_LMT_CTRLR_H

#include <cstddef>
#include <cstdint>

/// What lmGetDevInfo fills. Only the name, NUL-terminated 8-bit text from byte 20, is read. The
/// library does not publish the record's size; half a kilobyte leaves it room.
struct LmDevInfo {
  char reserved[20];
  char name[492];
};
static_assert(offsetof(LmDevInfo, name) == 20, "the library writes the name at byte 20");

/// What lmGetAdvancedSettings fills: 148 bytes, zeroed by the caller.
struct LmAdvancedSettings {
  char reserved1[132];
  std::int32_t rotationMode;  ///< three-digit decimal code
  char reserved2[2];
  std::uint8_t zoomAfterView;  ///< 0 or 1: zoom to the extents after a standard view
  char reserved3[9];
};
static_assert(sizeof(LmAdvancedSettings) == 148, "the library fills 148 bytes");
static_assert(offsetof(LmAdvancedSettings, rotationMode) == 132, "rotation mode at byte 132");
static_assert(offsetof(LmAdvancedSettings, zoomAfterView) == 138, "zoom-after-view at byte 138");

/// Event codes. A code below 0 is a motion record; a code of 0 or more is a command event.
enum LmEventCode : std::int32_t {
  LM_SETTINGS_CHANGED = 0x20001,
  LM_SETTINGS_CHANGED_2 = 0x20002,
  LM_VIEW_FRONT = 0x20009,
  LM_VIEW_RIGHT = 0x2000A,
  LM_VIEW_TOP = 0x2000B,
  LM_FIT_ALL = 0x2000C,
  LM_SEND_APPL_MODE = 0x20013,
  LM_VIEW_BACK = 0x20016,
  LM_VIEW_LEFT = 0x20017,
  LM_VIEW_BOTTOM = 0x20018,
  APPL_FUNC_START = 0x20020,  ///< application function 0; function N is this plus N
};

extern "C" {

/// Connects to the driver daemon. `reserved` is always 0, `applName` the application's name.
std::int32_t lmConnect(std::int32_t reserved, const char* applName);

/// Closes the connection; a thread that waits in lmGetEvent returns with a failure.
std::int32_t lmDisconnect();

/// Fetches one event of device `devIdx`; waits some tens of milliseconds at least when none is pending, and
/// returns a failure when none came. The axis values and the extras are valid for a motion record only.
std::int32_t lmGetEvent(std::int32_t devIdx, std::int16_t* x, std::int16_t* y, std::int16_t* z,
                        std::int16_t* rx, std::int16_t* ry, std::int16_t* rz, std::int32_t* ignored1,
                        std::int32_t* ignored2, std::int32_t* eventCode, std::int32_t* extra1,
                        std::int32_t* extra2);

/// Fills the advanced settings record of device `devIdx`.
std::int32_t lmGetAdvancedSettings(std::int32_t devIdx, LmAdvancedSettings* record);

/// Fills the information record of device `devIdx`.
std::int32_t lmGetDevInfo(std::int32_t devIdx, LmDevInfo* record);

/// Fills the number of devices, and two counts that the module ignores.
std::int32_t lmGetDevNum(std::int32_t* count, std::int32_t* ignored1, std::int32_t* ignored2);

/// Reports the application's current mode to the daemon.
std::int32_t lmSetApplMode(const char* applName, const char* modeName);
}

#endif
