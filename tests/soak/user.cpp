#include "tests/soak/user.h"

#include "standin/controller/controller_feed.h"
#include "standin/objectarx/host_control.h"
#include "standin_desktop.h"
#include "standin_win32_faults.h"

#include <memory>
#include <string>
#include <vector>

namespace soak {

namespace desktop = standin::desktop;
namespace host = standin::host;

namespace {

/// More than a handful makes each action slower and finds nothing new.
constexpr std::size_t kMostDocuments = 4;

const std::wstring kCommands[] = {L"LM_Toggle_Rotation_Center",
                                  L"LM_Toggle_Rotation_Axis",
                                  L"LM_Toggle_Object_Move_Mode",
                                  L"LM_Toggle_Scrolling",
                                  L"'_-VIEW _TOP ",
                                  L"_ZOOM _EXTENTS",
                                  L"LINE 0,0 3,4 ",
                                  L"CIRCLE 5,5 2",
                                  L"ERASE ALL ",
                                  L"UNHEARD_OF"};

const std::string kPlaces[] = {"canvas", "canvas", "tree", "list", "edit", "qt", "none"};

std::unique_ptr<standin::Drawing> someDrawing() {
  auto drawing = std::make_unique<standin::Drawing>();
  drawing->add(standin::makeLine({0x10, "0", 256}, {0, 0, 0}, {10, 5, 2}));
  drawing->add(standin::makeLine({0x11, "0", 256}, {3, 3, 3}, {3, 3, 3}));
  drawing->add(standin::makeLine({0x12, "0", 256}, {-40, 8, 0}, {90, 70, 30}));
  return drawing;
}

}  // namespace

void User::act() {
  switch (mRandom.from(0, 11)) {
    case 0:
      return openDocument();
    case 1:
      return switchDocument();
    case 2:
      return closeDocument();
    case 3:
      return switchTab();
    case 4:
    case 5:
      return typeCommand();
    case 6:
    case 7:
      return select();
    case 8:
      return host::setPerspective(mRandom.once(2));
    case 9:
      return changeMenuFile();
    default:
      return movePointer();
  }
}

void User::openDocument() {
  if (host::documentNames().size() >= kMostDocuments) closeDocument();
  if (host::openDocument(someDrawing())) ++mDocumentsOpened;
}

void User::switchDocument() {
  const std::vector<std::wstring> names = host::documentNames();
  if (!names.empty()) host::switchDocument(mRandom.of(names));
}

void User::closeDocument() {
  if (host::drawing() != nullptr) host::closeDocument();
}

void User::switchTab() {
  if (host::drawing() == nullptr) return;
  const bool isModel = mRandom.once(2);
  host::setVariable(L"TILEMODE", isModel ? L"1" : L"0");
  if (!isModel) host::setVariable(L"CVPORT", std::to_wstring(mRandom.from(1, 3)));
}

void User::typeCommand() {
  if (host::drawing() != nullptr) host::type(mRandom.of(kCommands));
}

void User::select() {
  if (host::drawing() == nullptr) return;
  if (mRandom.once(3)) return host::selectNone();
  if (mRandom.once(2)) return host::selectAll();
  host::select({0x10ull});
}

void User::movePointer() {
  desktop::pointAt(mRandom.of(kPlaces));
}

void User::changeMenuFile() {
  if (mRandom.once(2))
    std::filesystem::copy_file(MENU_FILE, mMenuFile, std::filesystem::copy_options::overwrite_existing);
  else
    std::filesystem::remove(mMenuFile);
}

void User::injectFault() {
  standin::FaultRegistry* const registries[] = {&host::faults(), &standin::windows::faults(),
                                                &standin::controller::faults()};
  standin::FaultRegistry& registry = *mRandom.of(registries);
  const std::vector<std::string> names = registry.names();
  const std::string& name = mRandom.of(names);
  const bool isThrown = mRandom.once(2);
  // A tick whose count never reads again has no end: a failed pass goes on, and only the count ends it. The
  // real one cannot fail.
  const bool isOnce = name == "GetTickCount" || !mRandom.once(5);
  const auto kind = isThrown ? standin::Misbehaviour::kThrow : standin::Misbehaviour::kFail;
  if (registry.inject(name, {kind, static_cast<std::uint64_t>(mRandom.from(1, 20)), isOnce}))
    ++mFaultsInjected;
}

}  // namespace soak
