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

std::string pageTitle(const ReportData& data) {
  // The bytes are an en dash. Source files are ASCII.
  return escapedForHtml(data.drawingName) + " \xE2\x80\x93 " + escapedForHtml(data.sessionName);
}

std::string valueOf(std::string_view name, const ReportData& data) {
  if (name == "TITLE") return pageTitle(data);
  if (name == "STYLE") return kReportStyle;
  if (name == "SCRIPT") return kReportScript;
  if (name == "DATA") return scriptJson(reportJson(data));
  // Only a new mark in the page's frame without a value here can lead to this.
  throw std::logic_error("report page: no value for " + std::string(name));
}

}  // namespace

std::string reportPage(const ReportData& data) {
  // One walk over the frame, so that a mark inside a value stays what it is: text.
  std::string page;
  std::string_view rest = kReportFrame;
  for (std::size_t mark = rest.find(kMark); mark != std::string_view::npos; mark = rest.find(kMark)) {
    page += rest.substr(0, mark);
    rest.remove_prefix(mark + kMark.size());
    const std::size_t end = rest.find(kMark);
    page += valueOf(rest.substr(0, end), data);
    rest.remove_prefix(end + kMark.size());
  }
  return page.append(rest);
}

}  // namespace workbench
