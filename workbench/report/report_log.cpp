#include "workbench/report/report_log.h"

#include "workbench/report/columns.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace workbench {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t kTimeLength = 12;
constexpr std::uint32_t kDayMs = 24U * 3600 * 1000;

/// The time of day in ms of a line that begins with `hh:mm:ss.mmm|`.
std::optional<std::uint32_t> timeOf(std::string_view line) {
  static constexpr std::string_view kForm = "00:00:00.000|";
  if (line.size() < kForm.size()) return std::nullopt;
  for (std::size_t i = 0; i < kForm.size(); ++i)
    if (kForm[i] == '0' ? line[i] < '0' || line[i] > '9' : line[i] != kForm[i]) return std::nullopt;
  const auto digits = [line](std::size_t at, std::size_t count) {
    std::uint32_t value = 0;
    for (std::size_t i = at; i < at + count; ++i)
      value = value * 10 + static_cast<std::uint32_t>(line[i] - '0');
    return value;
  };
  return ((digits(0, 2) * 60 + digits(3, 2)) * 60 + digits(6, 2)) * 1000 + digits(9, 3);
}

std::vector<std::string_view> linesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    lines.push_back(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return lines;
}

class LogColumns {
 public:
  void note(std::string_view line) {
    const auto time = timeOf(line);
    mIsEntry = time.has_value();
    if (!time) return;
    // A time of day that is half a day earlier belongs to the next day. Threads log a little out of order.
    if (*time + mDay + kDayMs / 2 < mTime) mDay += kDayMs;
    mTime = *time + mDay;
  }

  void add(std::string_view line) {
    const std::string_view text = mIsEntry ? line.substr(kTimeLength) : line;
    const auto [place, isNew] = mNumbers.emplace(text, static_cast<std::uint32_t>(mTexts.size()));
    if (isNew) {
      mTexts.push_back(std::string(text));
      mSize += text.size();
    }
    mSize += 2 * sizeof(std::uint32_t) * 4 / 3;
    mTimes.push_back(mTime);
    mText.push_back(place->second);
  }

  /// Characters that the columns take, about.
  std::size_t size() const { return mSize; }

  Json json() const {
    return {{"count", mTimes.size()}, {"time", column(mTimes)}, {"text", column(mText)}, {"texts", mTexts}};
  }

 private:
  std::size_t mSize = 0;
  std::uint32_t mDay = 0;
  std::uint32_t mTime = 0;
  bool mIsEntry = false;
  std::unordered_map<std::string_view, std::uint32_t> mNumbers;
  Json mTexts = Json::array();
  std::vector<std::uint32_t> mTimes;
  std::vector<std::uint32_t> mText;
};

/// The lines without `leftOut` of them from `gap` on.
LogColumns columnsOf(const std::vector<std::string_view>& lines, std::size_t gap, std::size_t leftOut) {
  LogColumns columns;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    // Also of those that are left out: days are counted by the times that go back.
    columns.note(lines[i]);
    if (i < gap || i >= gap + leftOut) columns.add(lines[i]);
  }
  return columns;
}

}  // namespace

Json logJson(std::string_view log, std::size_t most) {
  const std::vector<std::string_view> lines = linesOf(log);
  std::size_t kept = lines.size();
  LogColumns columns = columnsOf(lines, kept, 0);
  while (columns.size() > most) {
    kept /= 2;
    // How a run begins and how it ends matters more than its middle.
    columns = columnsOf(lines, kept / 2, lines.size() - kept);
  }
  const std::size_t leftOut = lines.size() - kept;
  Json json = columns.json();
  json["gap"] = leftOut == 0 ? kept : kept / 2;
  json["left_out"] = leftOut;
  return json;
}

}  // namespace workbench
