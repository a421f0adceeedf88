// Small studies made to order for the analysis tests: a full two-level
// factorial with data given in standard order, centre runs, and a randomised
// block, each with its ANOVA settings on the response.
#pragma once

#include <vector>

#include "designs/Builders.h"
#include "designs/Design.h"
#include "designs/DesignFixture.h"

namespace kestrow::test {

class AnalysisFixture : public DesignFixture {
 protected:
  // A full factorial of k two-level factors, replicated reps times.
  Study& TwoLevel(int k, int reps) {
    Study& s = StudyOf(k, 2);
    EXPECT_EQ(GetFullyCrossed(s, Design{}), -1);
    s.iDesFlag = DES_FULLY_CROSSED | DES_TWO_LEVEL_NUMERIC;
    return Ready(s, reps);
  }
  // A randomised block: a treatment factor and a noise factor as the blocks.
  Study& Blocked(int treatments, int blocks, const std::string& treatmentName, const std::string& blockName) {
    std::string f = AddFactor(treatments, 0, treatmentName), noise = AddFactor(blocks, FACTOR_NOISE, blockName);
    Study& s = MakeStudy({f});
    EXPECT_EQ(GetBlocked1(s, Design{"", std::to_string(treatments * blocks), 32, 0, 0, "", "BLOCK1", noise, false}), -1);
    s.iDesFlag = DES_BLOCKED;
    return Ready(s, 1);
  }
  // The data array, and ANOVA of the response at alpha 0.1.
  static Study& Ready(Study& s, int reps) {
    s.iReps = static_cast<std::int16_t>(reps);
    s.SetDataArray();
    s.ANOVA_sRVkey = "v1";
    s.ANOVA_fAlpha = 0.1f;
    return s;
  }
  // Observations by run, one vector of replicates per run.
  static void Fill(Study& s, const std::vector<std::vector<float>>& byRun) {
    for (std::size_t run = 0; run < byRun.size(); ++run)
      for (std::size_t rep = 0; rep < byRun[run].size(); ++rep)
        s.SetData(1, static_cast<int>(run + 1), static_cast<int>(rep + 1), byRun[run][rep]);
  }
  // The same with the runs of a two-level design in standard (Yates) order:
  // (1), a, b, ab, c, ...
  static void FillYates(Study& s, const std::vector<std::vector<float>>& byYates) {
    for (int run = 1; run <= s.iNumRuns; ++run) {
      std::size_t at = 0;
      for (int f = 1; f <= s.Factors.Count(); ++f)
        at += static_cast<std::size_t>(s.GetTreatmentLevel(f, run) - 1) << (f - 1);
      for (std::size_t rep = 0; rep < byYates[at].size(); ++rep)
        s.SetData(1, run, static_cast<int>(rep + 1), byYates[at][rep]);
    }
  }
  // n centre runs behind the others: level 0 of every factor, coefficient 0
  // in every contrast; the data so far are kept.
  static void AddCentreRuns(Study& s, int n) {
    for (int i = 0; i < n; ++i) {
      Treatment t;
      t.Centralise(s.Factors.Count());
      s.Treatments.Add(t);
    }
    s.iNumRuns = static_cast<std::int16_t>(s.iNumRuns + n);
    s.SetDataArrayPreserve();
    s.iDesFlag |= DES_CENTRE_POINTS;
  }
};

}  // namespace kestrow::test
