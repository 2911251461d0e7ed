/// Runs made up for the tests of the report: a bundle of shapes, moments and lines whose places are known.
#ifndef TESTS_REPORT_SAMPLE_DATA_H
#define TESTS_REPORT_SAMPLE_DATA_H

#include "workbench/report/report.h"

#include <string>

namespace report_sample {

/// A flange seen from an orbiting camera. Time 0: parallel, from (10,-10,10) to the origin, Z up, field 40
/// x 30. 1000 ms: perspective, from (0,-20,0) to the origin, Z up, field 20 x 15. 1900 ms: a sheet, centre
/// (5,-2), 50 x 40. The layer PROBE holds one line from (3,4,5) to (3,4,6), handle 2A, which stands 2 higher
/// from 1500 ms on; the layer ACROSS one line along Y through all cameras' surroundings; the layer BEHIND one
/// that is behind the camera at 1000 ms.
workbench::ReportData bundle();

/// A run of an empty drawing: one moment, nothing printed, no log.
workbench::ReportData emptyRun();

/// A run whose every text tries to be markup.
workbench::ReportData hostileRun();

/// Lines of one layer, and moments that all select everything.
workbench::ReportData largeRun(int lines, int moments);

/// A run of 50 s with a line of the log each millisecond, in ten different texts.
workbench::ReportData longRun();

/// The page of bundle() compared with the same run whose camera has three quarters of the field.
std::string comparedPage();

}  // namespace report_sample

#endif
