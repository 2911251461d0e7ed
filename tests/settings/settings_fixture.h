/// A user's profile of its own for each test, with the folders of the plug-in in it.
#ifndef TESTS_SETTINGS_SETTINGS_FIXTURE_H
#define TESTS_SETTINGS_SETTINGS_FIXTURE_H

#include "common_sources/settings.h"
#include "tests/support/system.h"
#include "tests/util/temp_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

inline const std::string kSettingsFile = "Lumetrapad/Applications/autocad_addin.ini";

/// What the plug-in writes when it finds no settings file.
inline const std::string kDefaultFile =
    R"(# Configuration file for Lumetrapad's AutoCAD plug-in

[PROGRAM]
	name                  = AutoCAD Plug-in                                   # program's name
	version               = 2.9.0                                             # program's version number
	transSensBase         = 20000                                             # base sensitivity divisor for translation
	rotSensBase           = 10000                                             # base sensitivity divisor for rotation
	minThreshold          = 0                                                 # minimal threshold (overrides setting in control panel)
	maxContMoveTime       = 500                                               # maximal time for continuous cap movement in milliseconds
	toggleRotationCenter  = on                                                # if true a selected object will define the rotation center
	toggleRotationAxis    = off                                               # if true a selected line will define the rotation axis
	scrollTreeAndList     = on                                                # scroll trees and lists within Catia if the mouse is above (on/off)
	useInt3dIntrfce       = off                                               # if true no rotations/translations are done by this plugin; the Pantavis Plug-in must be used instead.

[LOGGING]
	logFile               = autocad_addin_log.txt                             # name of log file
	maxSize               = 5000                                              # max. size of log file (kB)
	logToFile             = on                                                # log into log file:               off/on
	logToCnsl             = off                                               # log to console:                  off/on
	warning               = off                                               # log warnings:                    off/on
	creation              = on                                                # log creation etc.:               off/on
	trace                 = off                                               # log trace data:                  off/on
	devcom                = off                                               # not used in this plug-in
	intcom                = off                                               # log internal communication data: off/on
	info                  = on                                                # log info data:                   off/on
	debug                 = off                                               # log debug data:                  off/on
	tmp                   = off                                               # log data of temporal interest:   off/on
	fileToLog             =                                                   # name of the exclusively logged file
)";

/// `text` with the first `from` replaced by `to`, which must be there.
inline std::string replaced(std::string text, const std::string& from, const std::string& to) {
  const std::size_t start = text.find(from);
  EXPECT_NE(start, std::string::npos) << from;
  return start == std::string::npos ? text : text.replace(start, from.size(), to);
}

class SettingsTest : public testing::Test {
 protected:
  SettingsTest() {
    std::filesystem::create_directories(mProfile.root() / "Lumetrapad" / "Applications");
    tests::setEnvironment("USERPROFILE", profile());
  }

  std::string profile() const {
    const std::string path = mProfile.path("");
    return path.substr(0, path.size() - 1);
  }
  std::string file() const { return mProfile.read(kSettingsFile); }
  void write(const std::string& text) const { mProfile.write(kSettingsFile, text); }

  TempFolder mProfile;
};

#endif
