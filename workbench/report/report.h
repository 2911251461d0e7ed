/// The report of a run: one self-contained HTML page that opens without a network. It shows the drawing as
/// vector graphics at the recorded moments (slider, play button), the camera's path, the command line and the
/// log.
#ifndef WORKBENCH_REPORT_H
#define WORKBENCH_REPORT_H

#include "workbench/report/report_data.h"

#include <optional>
#include <string>
#include <string_view>

namespace workbench {

/// The page as text: equal data give equal pages. Everything of `data` is escaped as its place in the page
/// needs; bytes that are not UTF-8 become U+FFFD, and a camera or outline with an infinite number is
/// reported, not drawn.
std::string reportPage(const ReportData& data);

/// A page of data that are JSON already, as scriptJson() gives it. `title` is plain text.
std::string reportPage(const std::string& title, const std::string& dataJson);

/// The data of a page that reportPage() has made, as JSON; none in any other text.
std::optional<std::string_view> reportPageData(std::string_view page);

}  // namespace workbench

#endif
