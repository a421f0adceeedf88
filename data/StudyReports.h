// A study's two standing text reports: the data worksheet, a sheet to write
// observations on with the treatments in run order, and the statistics
// report, per run and overall and by factor level. Both go to a report file
// that the text editor of the setting TextEd shows.
#pragma once

#include <string>

namespace kestrow {

class Problem;
class Statistics;
class Study;

// Why the report cannot be made (the message to show), or empty. The
// statistics are computed on the way, for the report to use.
std::string WorksheetRefusal(const Study* study);
std::string StatsRefusal(const Study* study, Statistics& stats);

// Write the report into the file; false, with the message, if it cannot be
// written.
bool WriteWorksheet(const Problem& problem, const Study& study, const std::string& file);
bool WriteStats(const Problem& problem, const Study& study, const Statistics& stats, const std::string& file);

// The commands: check the study and the editor, write the next report file
// and show it.
void ShowWorksheet(const Problem& problem, const Study* study);
void ShowStats(const Problem& problem, const Study* study);

}  // namespace kestrow
