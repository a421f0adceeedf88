#include "analyses/ANOVA.h"

#include <cmath>
#include <string>
#include <vector>

#include "analyses/BlockStats.h"
#include "analyses/Cstat.h"
#include "analyses/RunFigures.h"
#include "core/Formatters.h"
#include "core/Grid.h"
#include "core/Language.h"
#include "core/Sentinels.h"
#include "core/Settings.h"
#include "core/Study.h"
#include "core/Text.h"
#include "core/Ui.h"
#include "data/Statistics.h"
#include "stats/FProbability.h"
#include "stats/FValue.h"

namespace kestrow {

namespace {

constexpr int COLS = 11;
constexpr const char* TAG = "DrawANOVA";

// Column of each figure.
enum Col { NAME = 0, SOURCE = 1, SS = 2, DF = 3, MS = 4, F = 5, STAR = 6, EFFECT = 7, P = 8, PERCENT = 9 };

class AnovaReport {
 public:
  AnovaReport(Study& study, Statistics& stats, Grid& grid) : s_(study), st_(stats), g_(grid) {}

  bool Draw() {
    g_.BeginBatch();
    bool ok = DrawAll();
    g_.EndBatch();
    return ok;
  }

 private:
  bool DrawAll();
  void Head(const std::string& captionsTag);
  int Section(const std::string& tag);
  int Line(const std::string& text, bool coloured);
  int Row(const std::string& source) {
    int row = g_.AddRow();
    g_.SetText(row, SOURCE, source);
    return row;
  }
  void Put(int row, Col col, std::string text) { g_.SetText(row, col, std::move(text)); }
  // F, its star and colour against fCrit, and p on df and the error's
  // degrees of freedom; p stands in column pCol (the blocked table has no
  // effect column).
  void Test(int row, float f, float fCrit, float df, float errorDF, int pCol = P) {
    Put(row, F, FormatNumSF(f));
    if (f > fCrit) {
      Put(row, STAR, "*");
      g_.SetBack(row, F, gSettings.ANOVAHighlights);
      g_.SetBack(row, STAR, gSettings.ANOVAHighlights);
    }
    g_.SetText(row, pCol, FormatP(3, 1 - FProbability(f, df, errorDF)));
  }
  bool HasF() const { return errorDF_ > 0 && variable_ == 0; }

  bool ErrorTerm();
  void OneWay();
  bool SingleDF();
  void PureQuad();
  void ErrorRow();
  void FactorTable();
  bool Blocked();
  // The per-run figure of the variable analysed and its weight; false for a
  // run without one.
  bool RunFigure(int run, float& y, float& w) const;

  Study& s_;
  Statistics& st_;
  Grid& g_;
  int rv_ = 0;
  int variable_ = 0;
  float alpha_ = 0;
  float target_ = MISSING_VALUE;
  std::string title_;
  float errorMS_ = 0, errorDF_ = 0, totalSS_ = 0, totalDF_ = 0, fCrit_ = 0;
  bool usedPooling_ = false;
};

void AnovaReport::Head(const std::string& captionsTag) {
  g_.Clear();
  g_.SetSize(1, COLS);
  g_.FixedRows = 1;
  std::string captions = GetText(captionsTag);
  for (int col = 0; col < COLS; ++col) g_.SetText(0, col, PopBar(captions));
  Line(GetText("Design") + ": " + s_.sDesignName, true);
  Line(SubstituteCopy(GetText("ANOVAmsg"), title_) + " " + TargetToText(alpha_), false);
}

int AnovaReport::Line(const std::string& text, bool coloured) {
  int row = g_.AddRow();
  g_.SetText(row, NAME, text);
  g_.Merges.push_back({row, 0, 1, COLS});
  if (coloured)
    for (int col = 0; col < COLS; ++col) g_.SetBack(row, col, gSettings.ANOVATitles);
  return row;
}

int AnovaReport::Section(const std::string& tag) { return Line(GetText(tag), true); }

bool AnovaReport::RunFigure(int run, float& y, float& w) const {
  if (variable_ < 0 || variable_ > 2) {  // a variable with a title only: no figure and no weight
    y = 0;
    w = 0;
    return true;
  }
  y = RunVariable(s_, st_, run, variable_, target_);
  w = variable_ == 0 ? st_.ObsGoodPerRunRV(run) : 1;
  return y > MISSING_VALUE;
}

bool AnovaReport::ErrorTerm() {
  if (variable_ != 0) return true;
  float errorSS = 0;
  if (s_.iReps < 2) {
    for (int i = 1; i <= s_.Contrasts.Count(); ++i) {
      Contrast& c = s_.Contrasts(i);
      if (!c.bPooled) continue;
      c.fChat = c.fCSum = 0;
      for (int run = 1; run <= s_.iNumRuns; ++run) {
        float level = s_.GetContrastEntry(i, run);
        c.fCSum += level * level;
        c.fChat += level * st_.SampAvgRV(run);
      }
      c.fCSS = c.fChat * c.fChat * s_.iReps / c.fCSum;
      errorSS += c.fCSS;
      errorDF_ += 1;
      usedPooling_ = true;
    }
    // An error of exactly 0 would star every contrast with any sum of
    // squares and print p "<0.001" even where it has none: the report stops
    // and says why, as for equal replicates.
    if (errorDF_ > 0) {
      errorMS_ = errorSS / errorDF_;
      if (errorMS_ == 0) {
        std::string pooled;
        for (const Contrast& c : s_.Contrasts)
          if (c.bPooled) pooled += (pooled.empty() ? "" : ", ") + c.sName;
        ErrorBox(SubstituteCopy(GetText("ANOVAerr2"), pooled));
        return false;
      }
    } else if (s_.iDesFlag & DES_CENTRE_POINTS) {
      Cstat centre;
      if (centre.Compute(s_, st_, rv_)) {
        errorDF_ = centre.fCnum - 1;
        errorMS_ = centre.fCvar;
        if (errorDF_ > 0 && errorMS_ == 0) {
          ErrorBox(GetText("ANOVAerr3"));
          return false;
        }
      }
    }
    return true;
  }
  for (int run = 1; run <= s_.iNumRuns; ++run) {
    float sig = st_.SampSigRV(run);
    if (sig == MISSING_VALUE) continue;
    float n = st_.ObsGoodPerRunRV(run);
    errorSS += sig * sig * (n - 1);
    errorDF_ += n - 1;
  }
  // Replications without a run of two observations give no error at all;
  // that is not the same as replicates that agree.
  if (errorDF_ == 0) {
    InfoBox(GetText("ANOVAerr4"));
    return true;
  }
  errorMS_ = errorSS / errorDF_;
  if (errorMS_ == 0) {
    ErrorBox(GetText("MNerrc"));
    return false;
  }
  return true;
}

void AnovaReport::OneWay() {
  if (s_.iReps < 2 || variable_ != 0 || errorDF_ == 0) return;
  float grand = st_.AvgAvgRV(), between = 0;
  for (int run = 1; run <= s_.iNumRuns; ++run) {
    float n = st_.ObsGoodPerRunRV(run);
    if (n == 0) continue;
    float d = st_.SampAvgRV(run) - grand;
    between += d * d * n;
  }
  float df = static_cast<float>(s_.iNumRuns - 1);
  between = between / df;
  float fCrit = FValue(1 - alpha_, df, errorDF_);
  Section("1WANOVA");
  int row = Row(GetText("Between"));
  Put(row, SS, FormatSF(4, between * df));
  Put(row, DF, ShortestText(df));
  Put(row, MS, FormatSF(4, between));
  Test(row, between / errorMS_, fCrit, df, errorDF_);
  row = Row(GetText("WithinE"));
  Put(row, SS, FormatSF(4, errorMS_ * errorDF_));
  Put(row, DF, ShortestText(errorDF_));
  Put(row, MS, FormatSF(4, errorMS_));
  row = Row(GetText("TOTAL"));
  Put(row, SS, FormatSF(4, between * df + errorMS_ * errorDF_));
  Put(row, DF, ShortestText(df + errorDF_));
  g_.AddRow();
  g_.AddRow();
}

bool AnovaReport::SingleDF() {
  if (s_.Contrasts.Count() == 0) return true;
  Section("SdofANOVA");
  if (HasF()) fCrit_ = FValue(1 - alpha_, 1, errorDF_);
  std::vector<int> rows;
  for (int i = 1; i <= s_.Contrasts.Count(); ++i) {
    const Contrast& c = s_.Contrasts(i);
    if (c.bPooled) continue;
    float sumCY = 0, sumW = 0, sumAbsC = 0;
    for (int run = 1; run <= s_.iNumRuns; ++run) {
      float y, w;
      if (!RunFigure(run, y, w)) continue;
      float level = s_.GetContrastEntry(i, run);
      if (w == 0) {
        ReportError("Division by zero", TAG);
        return false;
      }
      sumCY += level * y;
      sumW += level * level / w;
      sumAbsC += std::fabs(level);
    }
    if (sumW == 0) {
      ReportError("Division by zero", TAG);
      return false;
    }
    float ss = sumCY * sumCY / sumW;
    totalSS_ += ss;
    totalDF_ += 1;
    int row = Row(s_.GetContrastSource(i));
    rows.push_back(row);
    Put(row, NAME, c.sName);
    Put(row, SS, FormatNumSF(ss));
    Put(row, DF, "1");
    Put(row, MS, FormatNumSF(ss));
    if (HasF()) Test(row, ss / errorMS_, fCrit_, 1, errorDF_);
    Put(row, EFFECT, FormatNumSF(2 * sumCY / sumAbsC));
  }
  PureQuad();
  if (HasF()) {
    ErrorRow();
    totalDF_ += errorDF_;
    totalSS_ += errorMS_ * errorDF_;
  }
  // The shares of the figures as printed, so that they add up as read.
  if (totalSS_ != 0)
    for (int row : rows)
      Put(row, PERCENT, FormatDecimals(1, static_cast<float>(100 * Val(g_.Text(row, SS))) / totalSS_));
  int row = Row(GetText("TOTAL"));
  Put(row, SS, FormatSF(4, totalSS_));
  Put(row, DF, ShortestText(totalDF_));
  return true;
}

// Curvature: factorial runs against centre points. It stays out of the total.
void AnovaReport::PureQuad() {
  if (!(s_.iDesFlag & DES_CENTRE_POINTS) || variable_ != 0) return;
  Cstat centre;
  if (!centre.Compute(s_, st_, rv_)) return;
  float d = centre.fFmean - centre.fCmean;
  float ss = centre.fFnum * centre.fCnum * d * d / (centre.fFnum + centre.fCnum);
  int row = Row(GetText("PureQuad"));
  Put(row, SS, FormatNumSF(ss));
  Put(row, DF, "1");
  Put(row, MS, FormatNumSF(ss));
  if (errorDF_ > 0) Test(row, ss / errorMS_, fCrit_, 1, errorDF_);
}

void AnovaReport::ErrorRow() {
  int row = Row(GetText(usedPooling_ ? "Pooled" : "WithinE"));
  Put(row, SS, FormatNumSF(errorMS_ * errorDF_));
  Put(row, DF, ShortestText(errorDF_));
  Put(row, MS, FormatNumSF(errorMS_));
}

void AnovaReport::FactorTable() {
  if (!(st_.FlagRV() & STATS_COMPLETE) || !(s_.iDesFlag & DES_FULLY_CROSSED)) return;
  bool wide = false;
  for (int f = 1; f <= s_.Factors.Count(); ++f) wide = wide || s_.GetNumLevels(f) > 2;
  if (!wide) return;
  Section("FacANOVA");
  struct Record {
    std::string sSource;
    float fSS, fDF, fSum;
  };
  std::vector<Record> records;
  for (int i = 1; i <= s_.Contrasts.Count(); ++i) {
    const Contrast& c = s_.Contrasts(i);
    if (c.bPooled) continue;
    float sumCY = 0, sumCC = 0;
    for (int run = 1; run <= s_.iNumRuns; ++run) {
      // The MSD figure here has no variance term and no larger-is-better form.
      float avg = st_.SampAvgRV(run);
      float y = variable_ == 0 ? avg : variable_ == 1 ? st_.SampSigRV(run) : (target_ - avg) * (target_ - avg);
      float level = s_.GetContrastEntry(i, run);
      sumCY += level * y;
      sumCC += level * level;
    }
    sumCC = sumCC / s_.iReps;
    float ss = sumCY * sumCY / sumCC;
    std::string source = c.iMain < 1 ? s_.GetContrastSource(i) : s_.GetFactorName(c.iMain);
    bool found = false;
    for (Record& r : records) {
      if (r.sSource != source) continue;
      r.fDF += 1;
      r.fSS += ss;
      r.fSum += sumCY;
      found = true;
      break;
    }
    if (!found) records.push_back({source, ss, 1, sumCY});
  }
  totalSS_ = totalDF_ = 0;
  for (const Record& r : records) {
    totalSS_ += r.fSS;
    totalDF_ += r.fDF;
    int row = Row(r.sSource);
    float ms = r.fSS / r.fDF;
    Put(row, SS, FormatNumSF(r.fSS));
    Put(row, DF, ShortestText(r.fDF));
    Put(row, MS, FormatNumSF(ms));
    if (HasF()) Test(row, ms / errorMS_, FValue(1 - alpha_, r.fDF, errorDF_), r.fDF, errorDF_);
  }
  if (HasF()) ErrorRow();
  int row = Row(GetText("TOTAL"));
  Put(row, SS, FormatSF(4, totalSS_ + errorMS_ * errorDF_));
  Put(row, DF, ShortestText(totalDF_ + errorDF_));
}

bool AnovaReport::Blocked() {
  Head("BlockHdr");
  BlockStats b;
  bool latin = (s_.iDesFlag & DES_SECOND_NOISE) != 0;
  if (!(latin ? b.Compute2(s_, st_) : b.Compute1(s_, st_))) {
    ReportError("A blocked design can have at most 8 levels in a factor, and needs data", TAG);
    return false;
  }
  auto put = [&](const std::string& source, float ss, float df, bool ms) {
    int row = Row(source);
    Put(row, SS, FormatSF(4, ss));
    Put(row, DF, ShortestText(df));
    if (ms) Put(row, MS, FormatSF(4, ss / df));
    return row;
  };
  int row = put(s_.GetFactorName(1) + " (" + GetText("Treatments") + ")", b.fTreatSS, b.fTreatDF, true);
  if (b.fErrorSS > 0 && b.fErrorDF > 0) {
    float f = (b.fTreatSS * b.fErrorDF) / (b.fTreatDF * b.fErrorSS);
    Test(row, f, FValue(1 - alpha_, b.fTreatDF, b.fErrorDF), b.fTreatDF, b.fErrorDF, EFFECT);
  }
  put(s_.GetFactorName(2) + " (" + GetText("Blocks") + ")", b.fBlockSS, b.fBlockDF, true);
  if (latin) put(s_.GetFactorName(3), b.fColmnSS, b.fColmnDF, true);
  put(GetText("Error"), b.fErrorSS, b.fErrorDF, true);
  put(GetText("TOTAL"), b.fTotalSS, b.fTotalDF, false);
  return true;
}

bool AnovaReport::DrawAll() {
  rv_ = s_.GetRVnum(s_.ANOVA_sRVkey);
  s_.ConfigureRV(s_.ANOVA_sRVkey);
  if (rv_ < 1 || !st_.ComputeRV(s_)) {
    ReportError("The response variable of this analysis is not in the study", TAG);
    return false;
  }
  alpha_ = s_.ANOVA_fAlpha;
  variable_ = s_.ANOVA_iVariable;
  std::string name = s_.GetRVname();
  if (s_.iDesFlag & DES_BLOCKED) {
    title_ = GetText("RespAvgs") + " (" + name + ")";
    return Blocked();
  }
  static const char* const TITLES[] = {"RespAvgs", "StdDevs", "MSD", "snR"};
  if (variable_ == 2) {
    if (!name.empty() && name.back() == '*') name.pop_back();
    target_ = s_.GetPRVTarget(PureKey(s_.ANOVA_sRVkey));
  }
  title_ = GetText(TITLES[variable_ >= 0 && variable_ <= 3 ? variable_ : 0]) + " (" + name + ")";
  g_.Clear();
  if (!ErrorTerm()) return false;
  Head("ANOVAhdr");
  OneWay();
  if (s_.Contrasts.Count() == 0) return true;
  if (!SingleDF()) return false;
  FactorTable();
  return true;
}

}  // namespace

bool DrawANOVA(Study& study, Statistics& stats, Grid& grid) { return AnovaReport(study, stats, grid).Draw(); }

}  // namespace kestrow
