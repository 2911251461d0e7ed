/// A live session from the moment when the module is loaded: takes what the pages send, runs the host, shows
/// what happens. Main thread only.
#ifndef WORKBENCH_LIVE_SESSION_H
#define WORKBENCH_LIVE_SESSION_H

#include "workbench/live/hub.h"
#include "workbench/live/inbox.h"
#include "workbench/live/live_files.h"
#include "workbench/live/live_listener.h"
#include "workbench/live/live_log.h"
#include "workbench/live/live_scene.h"
#include "workbench/live/meters.h"
#include "workbench/live/pacer.h"
#include "workbench/live/server.h"
#include "workbench/live/session_text.h"
#include "workbench/live/toggles.h"
#include "workbench/running/module_run.h"
#include "workbench/running/profile.h"
#include "workbench/running/reloading.h"
#include "workbench/sessions/session_player.h"

#include <nlohmann/json.hpp>

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace workbench {

/// What a live session needs, made before it.
struct LiveWorld {
  Server& server;
  Hub& hub;
  Inbox& inbox;
  Module& module;
  const Profile& profile;
  std::vector<std::filesystem::path> drawings;  ///< absolute
  LiveFiles& files;
};

class LiveSession {
 public:
  LiveSession(LiveWorld world, std::unique_ptr<standin::Drawing> drawing);

  /// Runs until the program is interrupted, then unloads the module.
  void run();

  /// After run(): what was done, as a session file.
  const std::string& text() const { return mText; }
  const std::vector<std::string>& problems() const { return mProblems; }

 private:
  void startWorld(std::unique_ptr<standin::Drawing> drawing);
  void pace(std::int64_t timeMs);
  void loop();
  bool runQueuedText();
  bool runTimer();
  bool runErrand();
  void waitForSomething();
  void takeDeviceActions();
  void tidyUp();

  void carryOut(const Errand& errand);
  void perform(const UserAction& action, const std::string& line);
  void open(std::size_t index);
  void changeSettings(const PageChangesSettings& change);
  void welcome(PageId page);
  void loaded();
  void sayTo(PageId page, const std::string& kind, const std::string& text);

  void showPicture();
  void showChanges();
  void showScene();
  void showState();
  void showNews();
  nlohmann::json stateJson() const;
  std::string drawingName() const;

  LiveWorld mWorld;
  Pacer mPacer;
  std::vector<std::string> mProblems;
  std::size_t mProblemsShown = 0;
  LiveListener mListener;
  ModuleRun mModuleRun;
  Reloading mReloading;
  Surroundings mSurroundings;
  LiveScene mScene;
  LiveLog mLog;
  Meters mMeters;
  Toggles mToggles;
  SessionText mSession;
  Session mPlace;  ///< for messages about actions, and for paths
  std::string mText;
  AdvancedSettings mDaemon;
  bool mIsDeviceDown = false;
  std::uint32_t mDone = 0;  ///< number of the page's last deflection that the module has been given
  std::uint32_t mPictureNumber = 0;
  nlohmann::json mPicture;
  nlohmann::json mState;
  nlohmann::json mSettings;
  nlohmann::json mLines = nlohmann::json::array();  ///< the last ones, for pages that come later
  nlohmann::json mBreaches = nlohmann::json::array();
  bool mIsEverythingDue = true;  ///< something ran that may have changed any entity
  bool mIsStateDue = true;       ///< something ran that may have changed what showState() shows
  bool mWasAtRest = false;
  bool mIsInTick = false;
  std::chrono::steady_clock::time_point mWaitEnd;
  std::chrono::steady_clock::time_point mNextChanges;
};

}  // namespace workbench

#endif
