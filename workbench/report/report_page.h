/// The sources of the report page, embedded at build time from the folder `page`.
#ifndef WORKBENCH_REPORT_PAGE_H
#define WORKBENCH_REPORT_PAGE_H

namespace workbench {

/// The page's frame; `@@TITLE@@`, `@@STYLE@@`, `@@SCRIPT@@` and `@@DATA@@` mark where these go.
extern const char* const kReportFrame;
extern const char* const kReportStyle;
extern const char* const kReportScript;

}  // namespace workbench

#endif
