#include "regression/ResponseSurface.h"

#include <algorithm>

#include "charts/ChartPage.h"
#include "core/Language.h"
#include "core/Study.h"
#include "core/Ui.h"
#include "regression/ContourPlot.h"
#include "regression/Regress.h"

namespace kestrow {

bool FillSurfaceChart(Study& study, Chart& c, bool quiet) {
  int fx = 0, fy = 0;
  std::string complaint;
  if (!PlottedFactors(study, fx, fy, complaint)) {
    if (!quiet) ErrorBox(complaint);
    return false;
  }
  if (!EnsureCoefficients(study)) return false;
  const std::string xKey = study.GetFactorKey(fx), yKey = study.GetFactorKey(fy);
  const auto xMin = static_cast<float>(study.FGetMinLevel(xKey)), xMax = static_cast<float>(study.FGetMaxLevel(xKey));
  const auto yMin = static_cast<float>(study.FGetMinLevel(yKey)), yMax = static_cast<float>(study.FGetMaxLevel(yKey));
  if (!(xMax > xMin) || !(yMax > yMin)) {
    if (!quiet) ErrorBox(study.GetPFactorName(xMax > xMin ? yKey : xKey) + " has no numeric range to plot over");
    return false;
  }
  const std::string rvKey = study.REGRESS_sRVkey;
  study.ConfigureRV(rvKey);
  Regress fit;
  fit.Init(study);
  fit.StandInCoded();  // a model in actual units keeps its digits far from zero
  const std::string conditions = fit.GetConditions(0);
  if (!fit.SetupFastConstants()) return false;
  const ContourSurface surface = PlotSurface(study, fit, fx, fy);

  c.Init(CHT_SURFACE);
  c.RSMsettings(study.REGRESS_RSM_iAlpha, study.REGRESS_RSM_iBeta, study.REGRESS_RSM_iNetSize, study.REGRESS_RSM_flags);
  c.sTitle = study.GetPRVDisplayAbbr(rvKey) + (fit.UseSD() ? " (SD)" : "") + " " + GetText("Chth");
  c.sXlabel = study.GetPFactorName2(xKey);
  c.sYlabel = study.GetPFactorName2(yKey);
  c.sText1 = conditions;
  c.sText2 = study.GetRVname2();
  const int n = std::max<int>(1, study.REGRESS_RSM_iNetSize);
  const float dx = (xMax - xMin) / static_cast<float>(n), dy = (yMax - yMin) / static_cast<float>(n);
  // Strips from the back (the largest y) to the front, each zigzagging
  // between its two edges so that every pair of points and the pair after
  // it bound one cell; the pair at the far end closes the strip.
  for (int s = 1; s <= n; ++s) {
    const float y = yMax - static_cast<float>(s) * dy;
    float a = 0, b = dy;
    for (int q = 0; q < n; ++q) {
      const float x = xMin + static_cast<float>(q) * dx;
      c.AddLinePoint(x, y + a, surface.At(x, y + a), 1, true);
      c.AddLinePoint(x, y + b, surface.At(x, y + b), 1, true);
      std::swap(a, b);
    }
    c.AddLinePoint(xMax, y + a, surface.At(xMax, y + a), 1, false);
    c.AddLinePoint(xMax, y + b, surface.At(xMax, y + b), 1, false);
  }
  return true;
}

bool SetupRSM(Study& study) {
  Chart chart;
  if (!FillSurfaceChart(study, chart, false)) return false;
  gphNewChart(CHT_SURFACE) = std::move(chart);
  return true;
}

}  // namespace kestrow
