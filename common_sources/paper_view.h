/// Pans and zooms what a sheet shows, by changing the database object that holds it. The document is locked
/// for writing. Main thread; throws what the host throws.
#ifndef COMMON_SOURCES_PAPER_VIEW_H
#define COMMON_SOURCES_PAPER_VIEW_H

/// Why nothing was changed, if it was not.
enum class PaperChange { kDone, kNoTile, kNoViewport };

/// Moves the centre by dx, dy: fractions of the visible width and height.
PaperChange panPaper(double dx, double dy);

/// Multiplies the visible height by `factor`.
PaperChange zoomPaper(double factor);

/// The log's text for a change that failed.
const char* errorText(PaperChange change);

#endif
