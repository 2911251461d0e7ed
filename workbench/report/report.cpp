#include "workbench/report/report.h"

#include "workbench/report/page_text.h"
#include "workbench/report/report_page.h"
#include "workbench/report/report_scene.h"

#include <nlohmann/json.hpp>

#include <stdexcept>
#include <string_view>

namespace workbench {
namespace {

constexpr std::string_view kMark = "@@";
constexpr std::string_view kDataMark = "@@DATA@@";

struct PageValues {
  const std::string& title;
  const std::string& dataJson;
};

std::string valueOf(std::string_view name, const PageValues& values) {
  if (name == "TITLE") return escapedForHtml(values.title);
  if (name == "STYLE") return kReportStyle;
  if (name == "SCRIPT") return kReportScript;
  if (name == "DATA") return values.dataJson;
  // Only a new mark in the page's frame without a value here can lead to this.
  throw std::logic_error("report page: no value for " + std::string(name));
}

/// The start tag of the element that holds the data.
std::string_view dataTag() {
  const std::string_view frame = kReportFrame;
  const std::size_t mark = frame.find(kDataMark);
  const std::size_t tag = frame.rfind('<', mark);
  return frame.substr(tag, mark - tag);
}

}  // namespace

std::string reportPage(const std::string& title, const std::string& dataJson) {
  // One walk over the frame, so that a mark inside a value stays what it is: text.
  std::string page;
  std::string_view rest = kReportFrame;
  for (std::size_t mark = rest.find(kMark); mark != std::string_view::npos; mark = rest.find(kMark)) {
    page += rest.substr(0, mark);
    rest.remove_prefix(mark + kMark.size());
    const std::size_t end = rest.find(kMark);
    page += valueOf(rest.substr(0, end), {title, dataJson});
    rest.remove_prefix(end + kMark.size());
  }
  return page.append(rest);
}

std::string reportPage(const ReportData& data) {
  // The bytes are an en dash. Source files are ASCII.
  return reportPage(data.drawingName + " \xE2\x80\x93 " + data.sessionName, scriptJson(reportJson(data)));
}

std::optional<std::string_view> reportPageData(std::string_view page) {
  const std::size_t tag = page.find(dataTag());
  if (tag == std::string_view::npos) return std::nullopt;
  page.remove_prefix(tag + dataTag().size());
  // The data has no "<" of its own, see scriptJson().
  const std::size_t end = page.find('<');
  return end == std::string_view::npos ? std::nullopt : std::optional(page.substr(0, end));
}

}  // namespace workbench
