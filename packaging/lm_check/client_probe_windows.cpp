#include "device/lmt_ctrlr.h"
#include "packaging/lm_check/client_probe.h"

#include <windows.h>

#include <array>
#include <chrono>
#include <cstring>
#include <future>
#include <memory>
#include <thread>

namespace {

// A name of its own, so that the driver does not take this program for AutoCAD.
constexpr const char* kName = "lm_check";
// Far longer than a working driver takes, short enough for a user who waits.
constexpr auto kPatience = std::chrono::seconds(10);

// The ordinals by which the module imports the operations.
constexpr int kConnect = 104;
constexpr int kDisconnect = 106;
constexpr int kGetDevInfo = 116;
constexpr int kGetDevNum = 117;
constexpr std::array<int, 7> kOperations = {kConnect, kDisconnect, 108, 110, kGetDevInfo, kGetDevNum, 180};

template <typename Function>
Function* operation(HMODULE library, int number) {
  const FARPROC address = GetProcAddress(library, MAKEINTRESOURCEA(number));
  // Copied by its bytes: a cast between the two function types would be a warning.
  Function* functionP = nullptr;
  static_assert(sizeof functionP == sizeof address);
  std::memcpy(&functionP, &address, sizeof functionP);
  return functionP;
}

struct Talk {
  Connection connection = Connection::kRefused;
  std::vector<std::optional<std::string>> devices;
};

std::optional<std::string> deviceName(HMODULE library, std::int32_t index) {
  LmDevInfo info{};
  // The same record and bounds as in the module, so that both show the same name.
  if (operation<decltype(lmGetDevInfo)>(library, kGetDevInfo)(index, &info) != 0) return std::nullopt;
  return std::string(info.name, strnlen(info.name, sizeof info.name));
}

Talk talk(HMODULE library) {
  Talk result;
  if (operation<decltype(lmConnect)>(library, kConnect)(0, kName) != 0) return result;
  std::int32_t count = 0, ignored1 = 0, ignored2 = 0;
  if (operation<decltype(lmGetDevNum)>(library, kGetDevNum)(&count, &ignored1, &ignored2) == 0) {
    result.connection = Connection::kOpen;
    for (std::int32_t i = 0; i < count; ++i) result.devices.push_back(deviceName(library, i));
  } else {
    // The module counts this as a failed connection.
    result.connection = Connection::kNoCount;
  }
  // Also without a count: the driver must not keep a client that has ended.
  operation<decltype(lmDisconnect)>(library, kDisconnect)();
  return result;
}

}  // namespace

void probeClient(ClientLibrary& client) {
  // With the altered search path Windows looks for what the library needs in its own folder first. Never
  // freed: a hanging thread may still be in it.
  const HMODULE library = LoadLibraryExA(client.path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
  client.loadError = library == nullptr ? GetLastError() : 0;
  if (library == nullptr) return;
  for (const int number : kOperations)
    if (GetProcAddress(library, MAKEINTRESOURCEA(number)) == nullptr)
      client.missingOperations.push_back(number);
  // Calling a missing operation would crash; what is missing is the finding.
  if (!client.missingOperations.empty()) return;
  // On a thread of its own, which a driver that hangs keeps for ever.
  // Shared with the thread, which may outlive this function.
  auto promiseP = std::make_shared<std::promise<Talk>>();
  std::future<Talk> result = promiseP->get_future();
  std::thread([promiseP, library] { promiseP->set_value(talk(library)); }).detach();
  if (result.wait_for(kPatience) != std::future_status::ready) {
    client.connection = Connection::kHangs;
    return;
  }
  // The thread has ended with a result; the library stays loaded until the program ends.
  Talk said = result.get();
  client.connection = said.connection;
  client.devices = std::move(said.devices);
}
