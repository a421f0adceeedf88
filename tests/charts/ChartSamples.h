// The sample chart lists of the tests: four pages that hold every chart type
// (tests/charts/data/page_p1.json to page_p4.json), and a page of six
// scattergrams of many points.
#pragma once

#include <fstream>
#include <sstream>
#include <string>

#include "charts/ChartJson.h"
#include "charts/ChartPage.h"

namespace kestrow::test {

inline const char* const SAMPLE_PAGES[] = {"p1", "p2", "p3", "p4"};

// Reads a sample page into page; false with the reason on failure.
inline bool LoadSamplePage(const std::string& dir, const std::string& name, ChartPage& page, std::string& error) {
  std::ifstream in(dir + "/page_" + name + ".json", std::ios::binary);
  if (!in) {
    error = "cannot read page_" + name + ".json";
    return false;
  }
  std::stringstream text;
  text << in.rdbuf();
  return ChartsFromJson(text.str(), page, error);
}

// Six scattergrams of n points each, joined, with a fitted line.
inline void FillBusyPage(ChartPage& page, int n) {
  page.Start();
  for (int c = 0; c < 6; ++c) {
    Chart& chart = page.NewChart(CHT_SCATTER);
    chart.sTitle = "Chart " + std::to_string(c + 1);
    chart.sXlabel = "x";
    chart.sYlabel = "y";
    for (int i = 0; i < n; ++i) {
      DataPoint p;
      p.fX = static_cast<float>(i);
      p.fY = static_cast<float>((i * 37 + c * 11) % 101) - 50.0f;
      p.iDotType = static_cast<std::int16_t>(1 + (i + c) % 9);
      p.bJoined = i > 0;
      chart.AddData(p);
    }
    chart.AddLinePoint(0, -50, 0, 1, false);
    chart.AddLinePoint(static_cast<float>(n), 50, 0, 1, true);
  }
}

}  // namespace kestrow::test
