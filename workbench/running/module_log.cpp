#include "workbench/running/module_log.h"

#include "workbench/text_input.h"

#include <algorithm>
#include <fstream>
#include <optional>
#include <system_error>
#include <utility>

namespace workbench {
namespace {

namespace fs = std::filesystem;

// Two or three entries: enough to distinguish a log, by their times, from the one before it.
constexpr std::size_t kTailBytes = 256;
/// A larger log is rotated so seldom that looking at each step of the host would only cost time.
constexpr std::int64_t kSmallLimit = 1000 * 1000;
constexpr std::uint32_t kStepsPerLook = 1024;

std::uintmax_t sizeOf(const fs::path& file) {
  std::error_code error;
  const std::uintmax_t size = fs::file_size(file, error);
  // A log that does not exist yet is an empty one.
  return error ? 0 : size;
}

fs::file_time_type timeOf(const fs::path& file) {
  std::error_code error;
  const auto time = fs::last_write_time(file, error);
  // Earlier than any real time, so the first backup counts as a rotation.
  return error ? fs::file_time_type::min() : time;
}

std::string bytesFrom(const fs::path& file, std::uintmax_t position, std::uintmax_t count) {
  std::ifstream stream(file, std::ios::binary);
  stream.seekg(static_cast<std::streamoff>(position));
  std::string bytes(count, '\0');
  stream.read(bytes.data(), static_cast<std::streamsize>(count));
  // The module may write or rotate between the size and the read, so fewer bytes may come than were there.
  bytes.resize(static_cast<std::size_t>(std::max<std::streamsize>(stream.gcount(), 0)));
  return bytes;
}

std::string tailOf(const std::string& text) {
  return text.size() <= kTailBytes ? text : text.substr(text.size() - kTailBytes);
}

/// Value of `key = value # comment`; none when the line is of another key.
std::optional<std::string_view> valueOf(std::string_view line, std::string_view key) {
  // What follows "#" is a comment, also after a value.
  line = trimmed(line.substr(0, line.find('#')));
  if (line.substr(0, key.size()) != key) return std::nullopt;
  line = trimmed(line.substr(key.size()));
  if (line.substr(0, 1) != "=") return std::nullopt;
  return trimmed(line.substr(1));
}

}  // namespace

LogSettings logSettings(std::string_view settingsFile) {
  LogSettings settings;
  bool isInSection = false;
  while (!settingsFile.empty()) {
    const std::size_t end = settingsFile.find('\n');
    std::string_view line = settingsFile.substr(0, end);
    settingsFile.remove_prefix(end == std::string_view::npos ? settingsFile.size() : end + 1);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    if (line.substr(0, 1) == "[") isInSection = line.substr(0, 9) == "[LOGGING]";
    if (!isInSection) continue;
    if (const auto name = valueOf(line, "logFile")) settings.file = *name;
    if (const auto isOn = valueOf(line, "logToFile")) settings.isToFile = *isOn == "on";
    // The setting counts kilobytes of 1000 bytes. A bad value gives 0, which only means looking at every
    // step.
    if (const auto limit = valueOf(line, "maxSize")) settings.limit = parseInteger(*limit).value_or(0) * 1000;
  }
  return settings;
}

fs::path logFile(const fs::path& folder, const LogSettings& settings) {
  // A backslash makes it a path, as for the module; otherwise it is a name in the settings folder.
  if (settings.file.find('\\') == std::string::npos) return folder / settings.file;
#ifdef _WIN32
  return fs::u8path(toUtf8(settings.file));
#else
  std::string path = settings.file;
  // The stand-in of Windows maps separators in the same way.
  std::replace(path.begin(), path.end(), '\\', '/');
  return path;
#endif
}

LogFollower::LogFollower(fs::path file) : mFile(std::move(file)), mBackup(mFile) {
  // The module renames its log to this when it is full; an older backup is replaced.
  mBackup.replace_extension(".bak");
  mBackupTime = timeOf(mBackup);
  mPosition = sizeOf(mFile);
  const std::uintmax_t tail = std::min<std::uintmax_t>(mPosition, kTailBytes);
  mTail = bytesFrom(mFile, mPosition - tail, tail);
}

void LogFollower::look() {
  const std::uintmax_t size = sizeOf(mFile);
  // The file may have grown past the old position again, so its size alone shows no rotation. The time of the
  // backup may change without one, so the tail is compared, too.
  const bool isRotated = timeOf(mBackup) != mBackupTime && (mPosition == 0 || !isContinuedBy(mFile));
  if (size == mPosition && !isRotated) return;
  if (isRotated) {
    mBackupTime = timeOf(mBackup);
    // More than one rotation leaves no file that goes on where the last look ended.
    const bool isWhole = isContinuedBy(mBackup);
    mHasGap = mHasGap || !isWhole;
    const std::uintmax_t from = isWhole ? mPosition : 0;
    // The end of the old file is in the backup now.
    mText += bytesFrom(mBackup, from, sizeOf(mBackup) - from);
    mPosition = 0;
    // An empty tail continues every file: the new log is read from its start.
    mTail.clear();
  }
  const std::string added = bytesFrom(mFile, mPosition, sizeOf(mFile) - std::min(mPosition, sizeOf(mFile)));
  mText += added;
  mPosition += added.size();
  mTail = tailOf(mTail + added);
}

bool LogFollower::isContinuedBy(const fs::path& file) const {
  return sizeOf(file) >= mPosition && bytesFrom(file, mPosition - mTail.size(), mTail.size()) == mTail;
}

ModuleLog::ModuleLog(fs::path settingsFolder) : mFolder(std::move(settingsFolder)) {
  const LogSettings settings = settingsInForce();
  // Both possible files are followed from the start, because what they hold before the run has to be left
  // out.
  mFollowers.emplace_back(logFile(mFolder, settings));
  // The module takes its defaults when it does not accept the settings file.
  if (settings.file != LogSettings().file) mFollowers.emplace_back(logFile(mFolder, LogSettings()));
  if (settings.limit >= kSmallLimit) mStepsPerLook = kStepsPerLook;
}

void ModuleLog::step() {
  // A look costs two system calls, a step of a replay little more.
  if (++mSteps % mStepsPerLook != 0) return;
  for (LogFollower& follower : mFollowers) follower.look();
}

ModuleLog::Result ModuleLog::finish() {
  // The module has rewritten its settings file, which now has the settings that were in force.
  const LogSettings settings = settingsInForce();
  if (!settings.isToFile) return {"", "The module wrote no log: logToFile is off in its settings."};
  for (LogFollower& follower : mFollowers) {
    follower.look();
    if (follower.file() != logFile(mFolder, settings)) continue;
    if (follower.text().empty()) return {"", "The module wrote no log."};
    return {toUtf8(follower.text()),
            follower.hasGap()
                ? "Entries are missing: the log reached its size limit (maxSize) several times at once."
                : ""};
  }
  return {"", "The module wrote no log that can be found: its settings changed during the run."};
}

LogSettings ModuleLog::settingsInForce() const {
  const fs::path file = mFolder / "Applications" / "autocad_addin.ini";
  return logSettings(fs::is_regular_file(file) ? readFile(file, "the module's settings") : "");
}

}  // namespace workbench
