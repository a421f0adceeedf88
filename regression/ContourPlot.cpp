#include "regression/ContourPlot.h"

#include <algorithm>
#include <cmath>
#include <tuple>
#include <vector>

#include "charts/ChartPage.h"
#include "charts/GetScale.h"
#include "core/Language.h"
#include "core/Sentinels.h"
#include "core/Settings.h"
#include "core/Study.h"
#include "core/Text.h"
#include "core/Ui.h"
#include "regression/Regress.h"

namespace kestrow {

namespace {

const char* TAG = "SetupContourPlot";

// A crossing of the walk, and the cell it was found in.
struct PathEntry {
  float fX, fY;
  int iCellX, iCellY;
};

// A seed of the rainbow fill: a point and the index of its colour band.
struct Seed {
  float x, y;
  int colour;
};

// The walk of one plot over an N by N grid of cells, cell (i, j) having its
// lower left corner at (xMin + i dx, yMin + j dy).
class Tracer {
 public:
  Tracer(Chart& chart, const ContourSurface& surface, int n, float xMin, float xMax, float yMin, float yMax)
      : c_(chart), s_(surface), n_(n), xMin_(xMin), xMax_(xMax), yMin_(yMin), yMax_(yMax),
        dx_((xMax - xMin) / static_cast<float>(n)), dy_((yMax - yMin) / static_cast<float>(n)),
        // A walk that goes through every cell twice has found all there is:
        // only a walk that would never end meets this limit.
        limit_(2 * static_cast<std::size_t>(n + 1) * static_cast<std::size_t>(n + 1)) {}

  // Traces level k (from 1) at L. False, with the complaint, when a walk
  // met its limit; stop() true ends the level early.
  template <class Stop>
  bool Level(int k, float L, bool target, bool rainbow, Stop stop, std::string& complaint);

  std::vector<Seed> seeds;

 private:
  float X(int i) const { return xMin_ + static_cast<float>(i) * dx_; }
  float Y(int j) const { return yMin_ + static_cast<float>(j) * dy_; }
  std::size_t Cell(int i, int j) const { return static_cast<std::size_t>(i) * static_cast<std::size_t>(n_ + 1) + static_cast<std::size_t>(j); }
  bool Visited(int i, int j) const { return visited_[Cell(i, j)]; }
  void Visit(int i, int j) {
    if (i >= 0 && j >= 0 && i <= n_ && j <= n_) visited_[Cell(i, j)] = true;
  }
  bool CellExits(int i, int j, int entry, float L, int& edge, float& x, float& y) const;
  static void Move(int exit, int& i, int& j, int& entry);
  bool Outside(int i, int j) const { return i < 0 || j < 0 || i >= n_ || j >= n_; }
  void AddPoint(float x, float y, bool first);
  void AddSeeds(int k, float L);

  Chart& c_;
  const ContourSurface& s_;
  int n_;
  float xMin_, xMax_, yMin_, yMax_, dx_, dy_;
  std::size_t limit_;
  std::vector<bool> visited_;
  std::vector<PathEntry> path_;
  // The level being written, and the two points of its contour nearest the
  // plot's centre.
  float level_ = 0;
  bool target_ = false;
  int stored_ = 0;
  float near_[2][2] = {};
  float nearM_[2] = {};
};

// The edges in order bottom, right, top, left, each from its "from" corner
// to its "to" corner going round the cell; the first crossing other than
// the entry edge wins. The tests are asymmetric: a corner exactly on the
// level counts as below it.
bool Tracer::CellExits(int i, int j, int entry, float L, int& edge, float& x, float& y) const {
  const float xi = X(i), xi1 = X(i + 1), yj = Y(j), yj1 = Y(j + 1);
  for (int e = 0; e < 4; ++e) {
    if (e == entry) continue;
    float za, zb;
    switch (e) {
      case 0: za = s_.At(xi, yj), zb = s_.At(xi1, yj); break;
      case 1: za = s_.At(xi1, yj), zb = s_.At(xi1, yj1); break;
      case 2: za = s_.At(xi1, yj1), zb = s_.At(xi, yj1); break;
      default: za = s_.At(xi, yj1), zb = s_.At(xi, yj); break;
    }
    if (!((za > L && L >= zb) || (za <= L && L < zb))) continue;
    const float t = (L - zb) / (za - zb);
    switch (e) {
      case 0: x = xi1 - t * dx_, y = yj; break;
      case 1: x = xi1, y = yj1 - t * dy_; break;
      case 2: x = xi + t * dx_, y = yj1; break;
      default: x = xi, y = yj + t * dy_; break;
    }
    edge = e;
    return true;
  }
  return false;
}

// Into the neighbour across the exit edge, which is entered by its far side.
void Tracer::Move(int exit, int& i, int& j, int& entry) {
  switch (exit) {
    case 0: --j, entry = 2; break;
    case 1: ++i, entry = 3; break;
    case 2: ++j, entry = 0; break;
    default: --i, entry = 1; break;
  }
}

void Tracer::AddPoint(float x, float y, bool first) {
  DataPoint p;
  p.fX = x;
  p.fY = y;
  p.fZ = level_;
  p.sId = target_ ? "T" : "";
  p.bJoined = !first;
  if (first) {
    p.idf = 2;
    p.sId2 = ShortestText(level_);
  }
  c_.AddDataUnconsidered(p);
  const float m = std::max(std::fabs((x - xMin_) / (xMax_ - xMin_) - 0.5f), std::fabs((y - yMin_) / (yMax_ - yMin_) - 0.5f));
  if (stored_ == 0 || m < nearM_[0]) {
    if (stored_ > 0) {
      near_[1][0] = near_[0][0], near_[1][1] = near_[0][1], nearM_[1] = nearM_[0];
    }
    near_[0][0] = x, near_[0][1] = y, nearM_[0] = m;
    stored_ = std::min(stored_ + 1, 2);
  } else if (stored_ == 1 || m < nearM_[1]) {
    near_[1][0] = x, near_[1][1] = y, nearM_[1] = m;
    stored_ = 2;
  }
}

// Two seeds half a cell either side of the contour where it passes nearest
// the centre, across its direction there; the higher side takes the band
// above the level.
void Tracer::AddSeeds(int k, float L) {
  if (stored_ < 2) return;
  const float mx = (near_[0][0] + near_[1][0]) / 2, my = (near_[0][1] + near_[1][1]) / 2;
  const float dxp = near_[0][0] - near_[1][0], dyp = near_[0][1] - near_[1][1];
  float a[2], b[2];  // the two seeds
  if (std::fabs(dxp) / dx_ > std::fabs(dyp) / dy_) {
    float below = my - dy_ / 2, above = my + dy_ / 2;
    if (below < yMin_) below = (my + yMin_) / 2;
    if (above > yMax_) above = (my + yMax_) / 2;
    a[0] = mx, a[1] = below, b[0] = mx, b[1] = above;
  } else {
    float left = mx - dx_ / 2, right = mx + dx_ / 2;
    if (left < xMin_) left = (mx + xMin_) / 2;
    if (right > xMax_) right = (mx + xMax_) / 2;
    a[0] = left, a[1] = my, b[0] = right, b[1] = my;
  }
  for (const float* p : {a, b}) seeds.push_back({p[0], p[1], s_.At(p[0], p[1]) >= L ? k + 1 : k});
}

template <class Stop>
bool Tracer::Level(int k, float L, bool target, bool rainbow, Stop stop, std::string& complaint) {
  level_ = L;
  target_ = target;
  visited_.assign(Cell(n_ + 1, 0), false);
  for (int i = 1; i <= n_ - 1; ++i) {
    CurrentUi().DoEvents();
    if (stop()) return true;
    for (int j = 1; j <= n_ - 1; ++j) {
      if (Visited(i, j)) continue;
      int exit = -1;
      float px = 0, py = 0;
      if (!CellExits(i, j, -1, L, exit, px, py)) continue;
      const int startEdge = exit;
      int ci = i, cj = j, entry = -1;
      bool closed = false;
      path_.clear();
      stored_ = 0;
      for (;;) {
        if (path_.size() >= limit_) {
          complaint = "The contour at " + ShortestText(L) + " does not come to an end";
          return false;
        }
        path_.push_back({px, py, ci, cj});
        Move(exit, ci, cj, entry);
        if (Outside(ci, cj)) break;
        if (ci == i && cj == j) {
          closed = true;
          break;
        }
        int e;
        if (CellExits(ci, cj, entry, L, e, px, py)) exit = e;  // none: the previous exit again
      }
      // The path backwards, its last crossing first.
      for (std::size_t q = path_.size(); q-- > 0;) {
        AddPoint(path_[q].fX, path_[q].fY, q + 1 == path_.size());
        Visit(path_[q].iCellX, path_[q].iCellY);
      }
      if (closed) {
        AddPoint(path_.back().fX, path_.back().fY, false);
        Visit(path_.back().iCellX, path_.back().iCellY);
      } else {
        // The other way from the starting cell, written as it is found.
        ci = i, cj = j, entry = startEdge;
        for (std::size_t steps = 0; CellExits(ci, cj, entry, L, exit, px, py); ++steps) {
          if (steps >= limit_) {
            complaint = "The contour at " + ShortestText(L) + " does not come to an end";
            return false;
          }
          AddPoint(px, py, false);
          Visit(ci, cj);
          Move(exit, ci, cj, entry);
          if (Outside(ci, cj) || (ci == i && cj == j)) break;
        }
      }
      if (rainbow && !target) AddSeeds(k, L);
    }
  }
  return true;
}

}  // namespace

std::string ContourProgressText(float fContour, const std::string& sRV) {
  return GetText("CONPmsg1") + " " + sRV + " = " + ShortestText(fContour) + " ....";
}

float ContourSurface::At(float x, float y) const {
  const auto u = static_cast<float>(xSlope * x + xOffset), v = static_cast<float>(ySlope * y + yOffset);
  return swap ? fit->FastEvaluate(v, u) : fit->FastEvaluate(u, v);
}

bool ContourLevels(float zMin, float zMax, float target, std::vector<float>& levels, std::string& complaint) {
  levels.clear();
  const auto flat = [&] {
    complaint = "The surface is flat: it is " + ShortestText(zMin) + " all over the plot, and has no contours";
    levels.clear();
    return false;
  };
  // No 32-bit value lies strictly between: halving the step would never
  // find a level.
  if (!(zMax > zMin) || std::nextafter(zMin, zMax) >= zMax) return flat();
  float lo = zMin, hi = zMax, major = 0, minor = 0;
  GetScale(lo, hi, major, minor);
  while (levels.size() < 5) {
    if (!(major > 0) || lo + major == lo || hi + major == hi) return flat();
    // A level of a former round comes again: the same line is drawn twice.
    for (int q = 0;; ++q) {
      const auto z = static_cast<float>(lo + static_cast<double>(q) * major);
      if (z > hi) break;
      if (!(z > zMin && z < zMax)) continue;
      if (static_cast<int>(levels.size()) >= MAX_CONTOUR_LEVELS) {
        complaint = "More than " + std::to_string(MAX_CONTOUR_LEVELS) + " contour levels";
        return false;
      }
      levels.push_back(z);
    }
    major /= 2;
  }
  if (target != MISSING_VALUE) {
    if (static_cast<int>(levels.size()) >= MAX_CONTOUR_LEVELS) {
      complaint = "More than " + std::to_string(MAX_CONTOUR_LEVELS) + " contour levels";
      return false;
    }
    levels.push_back(target);
  }
  return true;
}

ContourSurface PlotSurface(const Study& study, const Regress& fit, int fx, int fy) {
  ContourSurface surface;
  surface.fit = &fit;
  // The fast polynomial takes the free factors in the order of their terms:
  // the plot's x may be its second.
  for (const Rterm& t : study.REGRESS_Rterms)
    if (t.fValue == FREE_AXIS && t.sTerm.find(',') == std::string::npos) {
      surface.swap = static_cast<int>(Val(t.sTerm)) == fy;
      break;
    }
  if (fit.Coded()) {
    const std::string xKey = study.GetFactorKey(fx), yKey = study.GetFactorKey(fy);
    CodingLine(study, xKey, surface.xSlope, surface.xOffset);
    CodingLine(study, yKey, surface.ySlope, surface.yOffset);
  }
  return surface;
}

bool PlottedFactors(const Study& study, int& fx, int& fy, std::string& complaint) {
  fx = study.GetFactorNum(study.sRSM_f1Key);
  fy = study.GetFactorNum(study.sRSM_f2Key);
  const int count = study.Factors.Count();
  if (fx < 1 || fx > count || fy < 1 || fy > count) {
    // The keys are not kept in the file: the terms' free marks tell the
    // factors, in the order of their terms.
    std::vector<int> free;
    for (const Rterm& t : study.REGRESS_Rterms)
      if (t.fValue == FREE_AXIS && t.sTerm != "0" && t.sTerm.find(',') == std::string::npos)
        free.push_back(static_cast<int>(Val(t.sTerm)));
    if (free.size() >= 2) fx = free[0], fy = free[1];
  }
  if (fx < 1 || fx > count || fy < 1 || fy > count || fx == fy) {
    complaint = "Choose the two factors to plot";
    return false;
  }
  bool xFree = false, yFree = false;
  for (const Rterm& t : study.REGRESS_Rterms) {
    if (t.sTerm == "0" || t.sTerm.find(',') != std::string::npos) continue;
    const int f = static_cast<int>(Val(t.sTerm));
    if (t.fValue == FREE_AXIS) {
      if (f == fx) xFree = true;
      else if (f == fy) yFree = true;
      else {
        complaint = "Give a value to hold " + study.GetFactorName(f) + " at";
        return false;
      }
    } else if (!(t.fValue > FREE_AXIS)) {
      complaint = "Give a value to hold " + study.GetFactorName(f) + " at";
      return false;
    }
  }
  if (!xFree || !yFree) {
    complaint = "The model has no term of its own for " + study.GetFactorName(xFree ? fy : fx) + ": it cannot be plotted";
    return false;
  }
  return true;
}

bool EnsureCoefficients(Study& study) {
  for (const Rterm& t : study.REGRESS_Rterms)
    if (t.fBeta == MISSING_VALUE) {
      Regress fit;
      fit.Init(study);
      return fit.Compute(study.REGRESS_sRVkey);
    }
  return true;
}

bool TraceContours(Chart& c, const ContourSurface& surface, const ContourGrid& grid, const std::vector<float>& levels,
                   int targetIndex, bool rainbow, ContourProgress* progress, const std::string& sRV,
                   std::string& complaint) {
  const auto stopped = [progress] { return (progress && progress->Stopped()) || CurrentUi().StopRequested(); };
  Tracer tracer(c, surface, std::max(2, grid.n), grid.xMin, grid.xMax, grid.yMin, grid.yMax);
  bool ok = true;
  if (progress) progress->Show();
  for (int k = 1; k <= static_cast<int>(levels.size()) && !stopped(); ++k) {
    if (progress) progress->Progress(levels[static_cast<std::size_t>(k - 1)], sRV);
    if (!tracer.Level(k, levels[static_cast<std::size_t>(k - 1)], k == targetIndex, rainbow, stopped, complaint)) {
      ok = false;
      break;
    }
  }
  if (progress) progress->Hide();
  // The target level makes no band of its own.
  const float step = 100.0f / static_cast<float>(targetIndex ? levels.size() : levels.size() + 1);
  for (const Seed& s : tracer.seeds) {
    DataPoint p;
    p.sId = "COL";
    p.fX = s.x;
    p.fY = s.y;
    p.fZ = static_cast<float>(s.colour) * step;
    c.AddDataUnconsidered(p);
  }
  return ok;
}

bool SetupContourPlot(Study& study, const std::string& sList) {
  int fx = 0, fy = 0;
  std::string complaint;
  if (!PlottedFactors(study, fx, fy, complaint)) {
    ErrorBox(complaint);
    return false;
  }
  if (!EnsureCoefficients(study)) return false;
  const std::string xKey = study.GetFactorKey(fx), yKey = study.GetFactorKey(fy);
  const auto xMin = static_cast<float>(study.FGetMinLevel(xKey)), xMax = static_cast<float>(study.FGetMaxLevel(xKey));
  const auto yMin = static_cast<float>(study.FGetMinLevel(yKey)), yMax = static_cast<float>(study.FGetMaxLevel(yKey));
  for (auto [key, low, high] : {std::tuple{xKey, xMin, xMax}, std::tuple{yKey, yMin, yMax}})
    if (!(high > low)) {
      ErrorBox(study.GetPFactorName(key) + " has no numeric range to plot over");
      return false;
    }
  int keyNum = 0;
  if (!study.CONTOUR_KeyFactor.empty()) {
    keyNum = study.GetFactorNum(study.CONTOUR_KeyFactor);
    if (keyNum > study.Factors.Count() || keyNum == fx || keyNum == fy) {
      ErrorBox("The key factor of the series is not a factor held in the model");
      return false;
    }
  }
  const std::string rvKey = study.REGRESS_sRVkey;
  study.ConfigureRV(rvKey);
  const std::string rvAbbr = study.GetRVname2();
  const int n = std::max<int>(2, gSettings.ContourCellSize);
  ContourProgress* progress = gSettings.ContourProgress ? gConProg : nullptr;
  const auto stopped = [progress] { return (progress && progress->Stopped()) || CurrentUi().StopRequested(); };

  std::string rest = sList;
  bool ok = true;
  do {
    const std::string label = Trim(PopBar(rest)), value = Trim(PopBar(rest));
    Regress fit;
    fit.Init(study);
    fit.StandInCoded();  // a model in actual units keeps its digits far from zero
    float target = (study.CONTOUR_flags & 2) ? study.GetPRVTarget(rvKey) : MISSING_VALUE;
    std::string conditions;
    bool fast;
    if (keyNum > 0 && !value.empty()) {
      if (!IsNumeric(value)) {
        ErrorBox("The value \"" + value + "\" of " + study.GetFactorName(keyNum) + " is not a number");
        return false;
      }
      const float before = fit.SetmRTerm(keyNum, ParseFloat(value));
      fast = fit.SetupFastConstants();
      conditions = fit.GetConditions(0);
      fit.SetmRTerm(keyNum, before);
    } else {
      fast = fit.SetupFastConstants();
      conditions = fit.GetConditions(0);
    }
    if (!fast) return false;

    Chart& c = gphNewChart(CHT_CONTOUR);
    c.sXlabel = study.GetPFactorName2(xKey);
    c.sYlabel = study.GetPFactorName2(yKey);
    c.sTitle = study.GetPRVDisplayAbbr(rvKey) + (fit.UseSD() ? " (SD)" : "") + " " + GetText("Chtg") +
               (label.empty() ? "" : ": " + label);
    c.sText1 = conditions;
    c.sText2 = rvAbbr;
    c.sText3 = fit.PackConstants();
    c.bRainbow = (study.CONTOUR_flags & 1) != 0;  // the drawing floods the bands from the seeds
    c.bVisible = true;

    const ContourSurface surface = PlotSurface(study, fit, fx, fy);
    c.SetupContourScales(xMin, xMax, yMin, yMax);

    // The range of the surface from a coarse scan, both ends included.
    float zMin = surface.At(xMin, yMin), zMax = zMin;
    for (int a = 0; a <= 20; ++a)
      for (int b = 0; b <= 20; ++b) {
        const float z = surface.At(xMin + static_cast<float>(a) * (xMax - xMin) / 20,
                                   yMin + static_cast<float>(b) * (yMax - yMin) / 20);
        zMin = std::min(zMin, z);
        zMax = std::max(zMax, z);
      }
    if (!std::isfinite(zMin) || !std::isfinite(zMax)) {
      ReportError("The fitted equation has no finite value over the whole plot", TAG);
      return false;
    }
    if (target != MISSING_VALUE && (target < zMin || target > zMax)) target = MISSING_VALUE;  // dropped silently
    std::vector<float> levels;
    if (!ContourLevels(zMin, zMax, target, levels, complaint)) {
      ReportError(complaint, TAG);
      return false;
    }
    const int targetIndex = target != MISSING_VALUE ? static_cast<int>(levels.size()) : 0;

    const ContourGrid grid{n, xMin, xMax, yMin, yMax};
    if (!TraceContours(c, surface, grid, levels, targetIndex, (study.CONTOUR_flags & 1) != 0, progress, rvAbbr, complaint)) {
      ReportError(complaint, TAG);
      ok = false;
    }
    if (!ok || stopped()) break;
  } while (!rest.empty());
  return ok;
}

}  // namespace kestrow
