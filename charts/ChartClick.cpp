// What a click on a chart says about the point under the pointer, and the
// line of best fit through a box dragged on a probability plot.
#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include "charts/Chart.h"
#include "core/Formatters.h"
#include "core/Settings.h"
#include "core/Text.h"
#include "stats/Normal.h"

namespace kestrow {

namespace {

// The probit scale of the probability plots: the deviates of 0.001 and 0.999.
float ZLow() { return NormalValue(0.001f); }
float ZHigh() { return NormalValue(0.999f); }

bool Probability(int type) { return type == CHT_RES_NPP || type == CHT_NPP || type == CHT_REG_NPP; }

// The items of a comma list, each trimmed.
std::vector<std::string> Items(std::string list) {
  std::vector<std::string> items;
  while (!list.empty()) items.push_back(Trim(PopToken(list)));
  return items;
}

std::string Joined(const std::vector<std::string>& items) {
  std::string out;
  for (const std::string& item : items) out += (out.empty() ? "" : ", ") + item;
  return out;
}

// "run/rep" cut in two.
void RunRep(const std::string& id, std::string& run, std::string& rep) {
  std::size_t slash = id.find('/');
  run = id.substr(0, slash);
  rep = slash == std::string::npos ? "" : id.substr(slash + 1);
}

}  // namespace

// The factor lines of a run, which only the workbench knows; empty text when
// it is not told.
std::function<std::string(int run)> gRunLevelsText;

std::string Chart::Click(int X, int Y, bool bCtrl) {
  lastClickX = static_cast<std::int16_t>(X);
  lastClickY = static_cast<std::int16_t>(Y);
  if (chtType == CHT_FILLER) return "";
  if (chtType == CHT_CONTOUR) {
    if (X < PlotLeft || X > PlotRight || Y < PlotTop || Y > PlotBottom || PlotRight == PlotLeft || PlotBottom == PlotTop)
      return "";
    double u = static_cast<double>(X - PlotLeft) / (PlotRight - PlotLeft);
    double v = static_cast<double>(PlotBottom - Y) / (PlotBottom - PlotTop);
    auto x = static_cast<float>(xMin + u * (xMax - xMin)), y = static_cast<float>(yMin + v * (yMax - yMin));
    std::string text = sXlabel + " = " + FormatNumSF(x) + ", " + sYlabel + " = " + FormatNumSF(y);
    // The packed constants of the surface: a leading "1" means a model in
    // coded units, whose extremes are -1 and +1 on the plot's edges. Only
    // the quadratic part is summed, a cubic model's terms beyond it not.
    std::vector<std::string> k;
    for (std::string rest = sText3; !rest.empty();) k.push_back(Trim(PopBar(rest)));
    if (k.size() >= 7) {
      double px = x, py = y;
      if (Trim(k[0]) == "1") {
        px = 2 * u - 1;
        py = 2 * v - 1;
      }
      double K[6];
      for (int i = 0; i < 6; ++i) K[i] = Val(k[static_cast<std::size_t>(i + 1)]);
      double z = K[0] + K[1] * px + K[2] * py + K[3] * px * py + K[4] * px * px + K[5] * py * py;
      text += ", " + sText2 + " = " + FormatNumSF(static_cast<float>(z));
    }
    return text;
  }
  if (chtType == CHT_PARETO) {
    for (const DataPoint& p : DataPoints) {
      int half = std::max(1, (XToPixel(p.fX + 0.5f) - XToPixel(p.fX - 0.5f)) / 2);
      if (std::abs(X - p.iWhereX) <= half && Y >= p.iWhereY && Y <= PlotBottom) return p.sId;
    }
    return "";
  }
  int t = static_cast<int>(std::nearbyint(WidthPercent(1) / 2.0));
  if (gSettings.AllowNear) t *= 4;
  if (chtType == CHT_RESPONSE2 || chtType == CHT_RESPONSE3) t *= 4;
  const DataPoint* hit = nullptr;
  for (const DataPoint& p : DataPoints)
    if (p.fY != MISSING_VALUE && std::abs(X - p.iWhereX) <= t && std::abs(Y - p.iWhereY) <= t) {
      hit = &p;
      break;
    }
  if (!hit) return "";
  const DataPoint& p = *hit;
  // The value of a probability plot is its x (the plotting position is y).
  float value = Probability(chtType) || chtType == CHT_PAIRWISE || chtType == CHT_RES_VARIABLE ? p.fX : p.fY;
  if (!std::isfinite(value) || value == MISSING_VALUE) return "";
  std::string v = FormatNumSF(value), text;
  int run = 0;
  std::string runText, repText;
  switch (chtType) {
    case CHT_ANOM:
      if (sTextType == "Main") {
        text = p.sId + " " + sYlabel + " (Mean) = " + v;
      } else if (!bCtrl) {
        // A point of the one-way charts is a run.
        text = sYlabel + " (" + p.sId + ") = " + v;
        runText = p.sId;
      }
      break;
    case CHT_MMP:
      // A level (or a contrast's coefficient) of its factor, and the mean there.
      text = (p.sId2.empty() ? p.sId : p.sId2 + " = " + p.sId) + " (" + sTextType + ") = " + v;
      break;
    case CHT_EFFECT:
      // A level's mean, or a run's average at the level.
      text = sXlabel + " = " + p.sId + ": " + TargetToText(value);
      if (!p.sId2.empty()) {
        text += ", Run = " + p.sId2;
        runText = p.sId2;
      }
      break;
    case CHT_INTERACTION:
      text = sXlabel + " = " + p.sId + ", " + sText2 + " = " + p.sId2 + ": " + TargetToText(value);
      break;
    case CHT_RES_RUN:
    case CHT_RES_FACTOR:
      text = v + ", Run/Rep = " + p.sId;
      RunRep(p.sId, runText, repText);
      break;
    case CHT_RES_FITTED:
    case CHT_REG_NPP:
      runText = p.sId;
      text = v + ", Run = " + p.sId + (p.sId2 != "0" && !p.sId2.empty() ? ", Rep = " + p.sId2 : "");
      break;
    case CHT_RES_NPP:
      RunRep(p.sId, runText, repText);
      if (!bCtrl) text = v + ", Run = " + runText + ", Rep = " + repText;
      break;
    case CHT_RESPONSE2:
    case CHT_RESPONSE3: text = Joined(Items(p.sId)) + " : " + v; break;
    case CHT_SCREE: text = TargetToText(value) + ", SS(C) = " + p.sId; break;
    case CHT_NPP: text = v + ", Effect = " + p.sId; break;
    case CHT_PAIRWISE:
      if (!bCtrl) text = v + " = " + p.sId;
      break;
    case CHT_RUN:
      if (!bCtrl) {
        text = p.sId + (sTextType == "Range" ? " (range) = " : " = ") + TargetToText(value);
        run = static_cast<int>(std::nearbyint(p.fX));
        text += ", Run = " + std::to_string(run);
      }
      break;
    case CHT_RES_VARIABLE:
      runText = p.sId;
      text = sXlabel + " = " + v + ", Run = " + p.sId;
      break;
    case CHT_SCATTER: text = sXlabel + " = " + FormatNumSF(p.fX) + ", " + sYlabel + " = " + FormatNumSF(p.fY); break;
    default: return "";
  }
  if (!runText.empty()) run = static_cast<int>(Val(runText));
  if (!text.empty() && run > 0 && gRunLevelsText) {
    std::string levels = gRunLevelsText(run);
    if (!levels.empty()) text += "\n" + levels;
  }
  return text;
}

bool Chart::ComputeLOBF(int xa, int ya, int xb, int yb) {
  if (DataPoints.size() < 4 || PlotRight == PlotLeft || PlotBottom == PlotTop || xMax == xMin) return false;
  if (xa > xb) std::swap(xa, xb);
  if (ya > yb) std::swap(ya, yb);
  float zLow = ZLow(), zHigh = ZHigh();
  auto dataX = [&](int px) { return xMin + (xMax - xMin) * static_cast<double>(px - PlotLeft) / (PlotRight - PlotLeft); };
  auto dataZ = [&](int py) { return zLow + (zHigh - zLow) * static_cast<double>(PlotBottom - py) / (PlotBottom - PlotTop); };
  double x1 = dataX(xa), x2 = dataX(xb), z1 = dataZ(yb), z2 = dataZ(ya);
  double n = 0, sx = 0, sy = 0, sxy = 0, sxx = 0;
  for (DataPoint& p : DataPoints) {
    p.iDotType = 2;
    if (p.fY == MISSING_VALUE || !std::isfinite(p.fY)) continue;
    double x = p.fX, z = NormalValue(p.fY);
    if (x < x1 || x > x2 || z < z1 || z > z2) continue;
    p.iDotType = 1;
    n += 1;
    sx += x;
    sy += z;
    sxy += x * z;
    sxx += x * x;
  }
  if (n < 4) return false;
  double d = n * sxx - sx * sx;
  if (d == 0) return false;
  double b = (n * sxy - sx * sy) / d;
  double a = sy / n - b * sx / n;
  if (b == 0 || !std::isfinite(b)) return false;
  fLOBFAtTop = static_cast<float>((zHigh - a) / b);
  fLOBFAtBottom = static_cast<float>((zLow - a) / b);
  return true;
}

}  // namespace kestrow
