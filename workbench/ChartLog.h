// A page of charts in the print log: for each chart on show its title, its
// texts and limits, and a table of its points (label, second label, x, y),
// so that the figures behind a picture go on record.
#pragma once

namespace kestrow {

class ChartPage;

// Writes the visible charts of the page; the log must be open (OpenLog).
void LogCharts(const ChartPage& page);

}  // namespace kestrow
