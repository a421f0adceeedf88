#include "workbench/ChartLog.h"

#include <set>

#include "charts/ChartPage.h"
#include "core/Formatters.h"
#include "core/Grid.h"
#include "core/Sentinels.h"
#include "core/Text.h"
#include "workbench/PrintLog.h"

namespace kestrow {

namespace {

std::string Figure(float v) { return v == MISSING_VALUE ? std::string("--") : FormatNumSF(v); }

// A chart's text, its line breaks as blanks.
std::string OneLine(const std::string& text) {
  std::string out;
  for (char ch : text) {
    if (ch == '\r') continue;
    out += ch == '\n' ? ' ' : ch;
  }
  return Trim(out);
}

}  // namespace

void LogCharts(const ChartPage& page) {
  for (const Chart& c : page.Charts) {
    if (!c.bVisible || c.chtType == CHT_FILLER) continue;
    LogLine(OneLine(c.sTitle));
    for (const std::string* text : {&c.sText1, &c.sText2})
      if (!text->empty()) LogLine(OneLine(*text));
    if (c.chtType == CHT_CONTOUR || c.chtType == CHT_SURFACE) {
      // A picture of the fitted equation: the lines' values, not the
      // thousands of points that trace them.
      std::set<float> levels;
      float target = MISSING_VALUE;
      for (const DataPoint& p : c.DataPoints)
        if (p.idf == 2 && p.sId == "T") target = p.fZ;
        else if (p.idf == 2 && p.sId != "COL") levels.insert(p.fZ);
      std::string text;
      for (float v : levels) text += (text.empty() ? "" : ", ") + ShortestText(v);
      if (!text.empty()) LogLine("Contours at " + text);
      if (target != MISSING_VALUE) LogLine("Target contour at " + ShortestText(target));
      LogLine(" ");
      continue;
    }
    if (c.LowLimit != MISSING_VALUE || c.MeanLimit != MISSING_VALUE || c.HighLimit != MISSING_VALUE)
      LogLine("LDL=" + Figure(c.LowLimit) + ", Mean=" + Figure(c.MeanLimit) + ", UDL=" + Figure(c.HighLimit));
    Grid table;
    table.SetSize(1, 4);
    table.FixedRows = 1;
    table.SetText(0, 0, "Point");
    table.SetText(0, 1, "Label");
    table.SetText(0, 2, c.sXlabel.empty() ? "x" : OneLine(c.sXlabel));
    table.SetText(0, 3, c.sYlabel.empty() ? "y" : OneLine(c.sYlabel));
    for (const DataPoint& p : c.DataPoints) {
      if (p.fY == MISSING_VALUE) continue;  // axis labels and captions carry no figure
      int row = table.AddRow();
      table.SetText(row, 0, OneLine(p.sId));
      table.SetText(row, 1, OneLine(p.sId2));
      table.SetText(row, 2, FormatNumSF(p.fX));
      table.SetText(row, 3, FormatNumSF(p.fY));
    }
    if (table.Rows() > 1) LogGrid(0, 3, table);
    LogLine(" ");
  }
}

}  // namespace kestrow
