/// What a page sends: one JSON object a message. docs/live.md has the list. Any thread.
#ifndef WORKBENCH_PAGE_MESSAGE_H
#define WORKBENCH_PAGE_MESSAGE_H

#include "workbench/sessions/session.h"

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace workbench {

/// An action of the device or the user, in the language of sessions; `text` is the line without its time.
struct PageDeviceAction {
  DeviceAction action;
  std::string text;
  std::uint32_t number = 0;  ///< of the message, for the page to find its effect in the pictures; 0: none
};
struct PageUserAction {
  UserAction action;
  std::string text;
};
struct PageIsAwake {};
struct PageHasSeen {};  ///< a picture; it is ready for the next
struct PageTakesOver {};
struct PageOpens {
  std::size_t drawing = 0;  ///< index into the drawings that were named at the start
};
struct PageChangesSettings {
  std::vector<std::pair<std::string, std::string>> values;  ///< key and value, UTF-8
};
struct PageSaves {};
struct PageWantsReport {};

using PageMessage = std::variant<PageDeviceAction, PageUserAction, PageIsAwake, PageHasSeen, PageTakesOver,
                                 PageOpens, PageChangesSettings, PageSaves, PageWantsReport>;

/// Not a message that a page sends; the text says why. A page that sends one is not ours.
class PageMessageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Throws PageMessageError; no text makes it throw anything else.
PageMessage parsePageMessage(std::string_view text);

}  // namespace workbench

#endif
