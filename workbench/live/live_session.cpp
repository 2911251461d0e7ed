#include "workbench/live/live_session.h"

#include "standin/controller/controller_feed.h"
#include "standin/objectarx/host_control.h"
#include "standin_clock.h"
#include "workbench/dxf/reader.h"
#include "workbench/input_error.h"
#include "workbench/live/live_view.h"
#include "workbench/platform/desktop.h"
#include "workbench/platform/interruption.h"
#include "workbench/report/menu_functions.h"
#include "workbench/running/guarded.h"
#include "workbench/running/outputs.h"
#include "workbench/running/settings_file.h"
#include "workbench/text_input.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

namespace workbench {
namespace {

namespace clock = standin::clock;
namespace controller = standin::controller;
namespace host = standin::host;
using Json = nlohmann::json;
using SteadyClock = std::chrono::steady_clock;

constexpr std::uint32_t kFrameMs = 16;
/// Short enough for Ctrl-C to seem immediate, and for the log to be live.
constexpr std::int64_t kLongestWaitMs = 100;
constexpr std::size_t kMostLinesKept = 500;

std::string dumped(const Json& json) {
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::int64_t utcNowMs() {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

/// Virtual time runs ahead for as long as this lives, and keeps pace again from then on.
class Hurry {
 public:
  explicit Hurry(Pacer& pacer) : mPacer(pacer) { mPacer.setHurrying(true); }
  ~Hurry() {
    mPacer.setHurrying(false);
    mPacer.start(clock::nowMs());
  }
  Hurry(const Hurry&) = delete;
  Hurry& operator=(const Hurry&) = delete;

 private:
  Pacer& mPacer;
};

std::string textOf(const std::filesystem::path& settings) {
  return std::filesystem::is_regular_file(settings) ? readBytes(settings, "the module's settings") : "";
}

}  // namespace

LiveSession::LiveSession(LiveWorld world, std::unique_ptr<standin::Drawing> drawing)
    : mWorld(std::move(world)),
      mModuleRun(mWorld.module, mProblems),
      mReloading(mWorld.module, mModuleRun, mWorld.profile.settingsFile()),
      mSurroundings{mListener, {}, mReloading} {
  mPlace.file = "page";
  startWorld(std::move(drawing));
}

void LiveSession::startWorld(std::unique_ptr<standin::Drawing> drawing) {
  // As a replay does it, step by step: the session that is saved begins with the same world.
  resetDesktop();
  clock::start(clock::Kind::kReplay, kFrameMs);
  clock::setDate(utcNowMs());
  clock::setSettlingNewThreads(true);
  controller::reset();
  controller::setReadsBlock(true);
  host::start([] { clock::drawn(); });
  host::openDocument(std::move(drawing));
}

void LiveSession::run() {
  mLog.follow(mWorld.profile.settings(), textOf(mWorld.profile.settingsFile()));
  mModuleRun.begin();
  loaded();
  tidyUp();
  // Only now: nobody is to wait while the module is loaded.
  mPacer.start(clock::nowMs());
  clock::setPacer([this](std::int64_t timeMs) { pace(timeMs); });
  loop();
  mText = mSession.ended(clock::nowMs());
  mPacer.setHurrying(true);
  mModuleRun.end();
  mModuleRun.unload();
  clock::stop();
  for (const std::string& breach : controller::breaches()) mProblems.push_back("controller: " + breach);
  const std::vector<std::string> breaches = host::counts().breaches;
  // Each text once; the host has one for each time.
  for (const std::string& breach : std::set<std::string>(breaches.begin(), breaches.end()))
    mProblems.push_back("host: " + breach);
}

/// Before virtual time moves: whatever the module has drawn or scrolled is shown, and what the device has
/// done meanwhile happens on the way.
void LiveSession::pace(std::int64_t timeMs) {
  // Within a tick a pass lies between two waits.
  if (mIsInTick) mMeters.passTook(SteadyClock::now() - mWaitEnd);
  showPicture();
  if (interruption() != nullptr && controller::lastHandedOver() != std::array<std::int16_t, 6>{})
    // Otherwise the module would go on for the rest of its tick.
    mWorld.inbox.put(PageDeviceAction{DeviceEvent{}, "motion 0 0 0 0 0 0"});
  mPacer.await(timeMs);
  mWaitEnd = SteadyClock::now();
  takeDeviceActions();
}

void LiveSession::loop() {
  while (interruption() == nullptr) {
    // The order is that of HostLoop, so that a replay repeats it.
    clock::advanceTo(clock::nowMs());
    if (runQueuedText() || runTimer() || runErrand()) continue;
    tidyUp();
    waitForSomething();
  }
}

bool LiveSession::runQueuedText() {
  bool isRun = false;
  guarded("a queued command", mProblems, [&isRun] {
    isRun = true;
    isRun = host::runQueuedText();
  });
  mIsEverythingDue = mIsEverythingDue || isRun;
  mIsStateDue = mIsStateDue || isRun;
  return isRun;
}

bool LiveSession::runTimer() {
  const auto due = clock::nextTimer();
  if (!due || *due > clock::nowMs()) return false;
  const SteadyClock::time_point begin = SteadyClock::now();
  mWaitEnd = begin;
  mIsInTick = true;
  guarded("a timer procedure", mProblems, [] { clock::runDueTimer(); });
  mIsInTick = false;
  mMeters.tickTook(SteadyClock::now() - begin);
  return true;
}

bool LiveSession::runErrand() {
  Errand errand;
  if (!mWorld.inbox.take(errand)) return false;
  guarded("a command of the page", mProblems, [&] { carryOut(errand); });
  mIsEverythingDue = true;
  mIsStateDue = true;
  return true;
}

void LiveSession::waitForSomething() {
  const std::int64_t latest = clock::nowMs() + kLongestWaitMs;
  const std::int64_t next = std::min(clock::nextTimer().value_or(latest), latest);
  mWorld.inbox.await(mPacer.at(next));
  // At least one step, in which what the device has done can happen.
  clock::advanceTo(std::clamp(mPacer.nowMs(), clock::nowMs() + 1, std::max(next, clock::nowMs() + 1)));
}

void LiveSession::takeDeviceActions() {
  for (PageDeviceAction& action : mWorld.inbox.takeDevice()) {
    // A time of its own, after everything that has happened: in a replay it comes before whatever else
    // happens at its time.
    const std::int64_t timeMs = clock::nowMs() + 1;
    mSession.add(timeMs, action.text);
    mIsStateDue = true;
    if (const auto* const daemonP = std::get_if<AdvancedSettings>(&action.action)) mDaemon = *daemonP;
    if (const auto* const powerP = std::get_if<DevicePower>(&action.action)) mIsDeviceDown = powerP->isDown;
    clock::schedule(timeMs, [this, device = std::move(action.action), number = action.number] {
      workbench::perform(device);
      if (number != 0) mDone = number;
    });
  }
}

/// When the host is idle.
void LiveSession::tidyUp() {
  showNews();
  showScene();
  showChanges();
  showState();
  showPicture();
  if (const auto report = mWorld.files.finishedReport())
    mWorld.server.sendAll({dumped({{"t", report->isMade ? "report" : "error"}, {"text", report->text}})});
}

void LiveSession::carryOut(const Errand& errand) {
  try {
    if (const auto* const actionP = std::get_if<PageUserAction>(&errand.what))
      perform(actionP->action, actionP->text);
    if (const auto* const opensP = std::get_if<PageOpens>(&errand.what)) open(opensP->drawing);
    if (const auto* const changeP = std::get_if<PageChangesSettings>(&errand.what)) changeSettings(*changeP);
    if (std::holds_alternative<PageArrived>(errand.what)) welcome(errand.page);
    if (std::holds_alternative<PageSaves>(errand.what))
      sayTo(errand.page, "saved", mWorld.files.save(mSession.ended(clock::nowMs())).string());
    if (std::holds_alternative<PageWantsReport>(errand.what))
      mWorld.files.startReport(mSession.ended(clock::nowMs()));
  } catch (const InputError& error) {
    sayTo(errand.page, "error", error.what());
  }
}

void LiveSession::perform(const UserAction& action, const std::string& line) {
  mSession.add(clock::nowMs(), line);
  try {
    workbench::perform(TimedUserAction{clock::nowMs(), 0, action}, mPlace, mSurroundings);
  } catch (const InputError&) {
    // The host has refused it, and a session that holds it would end there.
    mSession.removeLast();
    throw;
  }
}

void LiveSession::open(std::size_t index) {
  if (index >= mWorld.drawings.size())
    throw InputError({"page"}, "one of the drawings that were named at the start", std::to_string(index));
  // The first is open from the start, under the host's name for it.
  const std::string name = index == 0 ? "Drawing1.dwg" : mWorld.drawings[index].u8string();
  const auto names = host::documentNames();
  const bool isOpen = std::find(names.begin(), names.end(), toWide(name)) != names.end();
  perform(SetDocument{isOpen ? SetDocument::Kind::kSwitch : SetDocument::Kind::kOpen, name},
          (isOpen ? "document " : "document open ") + name);
}

void LiveSession::changeSettings(const PageChangesSettings& change) {
  const SteadyClock::time_point begin = SteadyClock::now();
  const auto& current = settingLines(textOf(mWorld.profile.settingsFile()));
  for (const auto& [key, value] : change.values) {
    const bool isKnown = std::any_of(current.begin(), current.end(),
                                     [&key = key](const SettingLine& line) { return line.key == key; });
    if (!isKnown) throw InputError({"page"}, "a setting of the module", inQuotes(key));
  }
  for (const auto& [key, value] : change.values)
    perform(ChangeSetting{key, value}, "setting " + key + " " + value);
  // The module waits for its threads when it is unloaded; that is virtual time.
  {
    const Hurry hurry(mPacer);
    perform(LoadAgain{}, "reload");
  }
  loaded();
  const auto took = std::chrono::duration_cast<std::chrono::milliseconds>(SteadyClock::now() - begin);
  mWorld.server.sendAll({dumped({{"t", "loaded"}, {"ms", took.count()}})});
}

void LiveSession::loaded() {
  const std::string settings = textOf(mWorld.profile.settingsFile());
  mLog.follow(mWorld.profile.settings(), settings);
  mToggles.loaded(settings);
  mSettings = Json::array();
  for (const SettingLine& line : settingLines(settings))
    mSettings.push_back(Json::array({line.section, line.key, toUtf8(line.value), toUtf8(line.comment)}));
}

void LiveSession::welcome(PageId page) {
  Json drawings = Json::array(), functions = Json::array(), toggles = Json::array();
  for (const auto& file : mWorld.drawings) drawings.push_back(file.filename().u8string());
  for (const ReportFunction& function : menuFunctions(mWorld.profile.menu()))
    functions.push_back(Json::array({function.label, function.macro}));
  for (const auto& toggle : Toggles::kToggles) toggles.push_back(toggle.command);
  mWorld.server.send(page, {dumped({{"t", "hello"},
                                    {"page", page},
                                    {"drawings", std::move(drawings)},
                                    {"functions", std::move(functions)},
                                    {"toggles", std::move(toggles)},
                                    {"lines", mLines},
                                    {"breaches", mBreaches},
                                    {"log", mLog.end()}})});
  mWorld.server.send(page, {dumped(mState)});
  if (!mScene.isOfAnotherDrawing()) mWorld.server.send(page, {mScene.whole(drawingName()), true});
}

void LiveSession::sayTo(PageId page, const std::string& kind, const std::string& text) {
  mWorld.server.send(page, {dumped({{"t", kind}, {"text", text}})});
}

void LiveSession::showPicture() {
  // What has moved comes before the picture in which it is seen.
  showChanges();
  Json picture = pictureJson();
  picture["done"] = mDone;
  if (picture == mPicture) return;
  mPicture = std::move(picture);
  Json numbered = mPicture;
  numbered["n"] = ++mPictureNumber;
  numbered["time"] = clock::nowMs();
  mWorld.server.show(dumped(numbered));
}

void LiveSession::showChanges() {
  const SteadyClock::time_point now = SteadyClock::now();
  if (now < mNextChanges && !mIsEverythingDue) return;
  const std::string changes = mScene.changes(std::exchange(mIsEverythingDue, false));
  // Comparing thousands of selected entities takes its time; the module gets three quarters of it.
  mNextChanges = now + 3 * (SteadyClock::now() - now);
  if (!changes.empty()) mWorld.server.sendAll({changes});
}

void LiveSession::showScene() {
  if (mScene.isOfAnotherDrawing()) mWorld.server.sendAll({mScene.whole(drawingName()), true});
}

void LiveSession::showState() {
  if (!std::exchange(mIsStateDue, false)) return;
  Json state = stateJson();
  if (state == mState) return;
  mState = std::move(state);
  mWorld.server.sendAll({dumped(mState)});
}

Json LiveSession::stateJson() const {
  Json state = hostJson();
  state["t"] = "state";
  state["driver"] = mWorld.hub.driver();
  state["rotation"] = mDaemon.rotationMode;
  state["zoom"] = mDaemon.isZoomAfterView;
  state["device"] = !mIsDeviceDown;
  Json toggles = Json::array();
  for (std::size_t i = 0; i < Toggles::kToggles.size(); ++i) toggles.push_back(mToggles.isOn(i));
  state["toggles"] = std::move(toggles);
  state["settings"] = mSettings;
  return state;
}

void LiveSession::showNews() {
  LiveListener::News news = mListener.take();
  Json lines = Json::array();
  for (const CommandLineEntry& line : news.lines) {
    if (line.kind == LineKind::kPrint) mToggles.printed(line.text);
    mIsStateDue = true;
    lines.push_back({line.timeMs, kindName(line.kind), line.text});
  }
  mMeters.passed(news.passes);
  if (!lines.empty()) {
    mWorld.server.sendAll({dumped({{"t", "lines"}, {"lines", lines}})});
    for (Json& line : lines) mLines.push_back(std::move(line));
    if (mLines.size() > kMostLinesKept)
      mLines.erase(mLines.begin(), mLines.end() - static_cast<std::ptrdiff_t>(kMostLinesKept));
  }
  Json breaches = Json::array();
  for (const std::string& breach : news.breaches) breaches.push_back(breach);
  for (; mProblemsShown < mProblems.size(); ++mProblemsShown) breaches.push_back(mProblems[mProblemsShown]);
  if (!breaches.empty()) mWorld.server.sendAll({dumped({{"t", "breaches"}, {"texts", breaches}})});
  for (Json& breach : breaches) mBreaches.push_back(std::move(breach));
  const std::string log = mLog.take();
  if (!log.empty()) mWorld.server.sendAll({dumped({{"t", "log"}, {"text", log}})});
  const SteadyClock::time_point now = SteadyClock::now();
  if (!mMeters.isDue(now)) return;
  const Meters::Reading reading = mMeters.read(now);
  // One reading says that it is at rest, and then there is nothing to say until it moves.
  if (std::exchange(mWasAtRest, reading.isAtRest()) && reading.isAtRest()) return;
  mWorld.server.sendAll({dumped({{"t", "meters"},
                                 {"passes", reading.passesPerSecond},
                                 {"pass", reading.passMs},
                                 {"tick", reading.tickMs}})});
}

std::string LiveSession::drawingName() const {
  const auto names = host::documentNames();
  if (names.empty()) return {};
  if (names.back() == L"Drawing1.dwg") return mWorld.drawings.front().filename().u8string();
  return std::filesystem::u8path(toUtf8(std::wstring_view(names.back()))).filename().u8string();
}

}  // namespace workbench
