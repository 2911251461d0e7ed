#include "tests/support/settings_text.h"

#include <algorithm>
#include <stdexcept>

namespace tests {
namespace {

/// Replaces the value of `key`, which is between "= " and the comment, at least 50 characters wide.
void setValue(std::string& text, const std::string& key, const std::string& value) {
  constexpr std::size_t kValueWidth = 50;
  const std::size_t line = text.find("\n\t" + key + " ");
  if (line == std::string::npos) throw std::invalid_argument("no key of the settings file: " + key);
  const std::size_t start = text.find("= ", line) + 2;
  std::string padded = value;
  padded.resize(std::max(value.size(), kValueWidth), ' ');
  text.replace(start, text.find('#', start) - start, padded);
}

}  // namespace

const std::string kDefaultSettings =
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

std::string settingsText(const SettingsChanges& changes) {
  std::string text = kDefaultSettings;
  for (const auto& [key, value] : changes) setValue(text, key, value);
  return text;
}

SettingsChanges everyLogLevel(const std::string& value) {
  SettingsChanges changes;
  for (const char* const level : {"warning", "creation", "trace", "devcom", "intcom", "info", "debug", "tmp"})
    changes[level] = value;
  return changes;
}

}  // namespace tests
