// The regression tests' studies: a model stored by the texts of its terms,
// and the independent least-squares fit of that model from the study's
// stored values, in coded or actual units.
#pragma once

#include <string>
#include <vector>

#include "LeastSquares.h"
#include "analyses/ChartFixture.h"
#include "core/Text.h"
#include "regression/Regress.h"

namespace kestrow::test {

class RegressionFixture : public ChartFixture {
 protected:
  // A study of two factors with the given level values, run at the given
  // coded points, reps replicates each.
  Study& Custom(const std::vector<std::string>& a, const std::vector<std::string>& b,
                const std::vector<std::pair<double, double>>& points, int reps) {
    std::string fa = AddFactor(static_cast<int>(a.size()), 0, "Speed"), fb = AddFactor(static_cast<int>(b.size()), 0, "Gap");
    gProblem->Factors.Find(fa)->sAbbr = "Speed";
    gProblem->Factors.Find(fb)->sAbbr = "Gap";
    for (std::size_t l = 0; l < a.size(); ++l) gProblem->Factors.Find(fa)->Levels(static_cast<int>(l) + 1).sName = a[l];
    for (std::size_t l = 0; l < b.size(); ++l) gProblem->Factors.Find(fb)->Levels(static_cast<int>(l) + 1).sName = b[l];
    Study& s = MakeStudy({fa, fb});
    for (auto [ca, cb] : points) {
      Treatment t;
      t.sTlist = "*|" + ShortestText(ca) + "|" + ShortestText(cb);
      s.Treatments.Add(t);
    }
    s.iNumRuns = static_cast<std::int16_t>(points.size());
    return Ready(s, reps);
  }
  // Observations from a function of the coded point, with a fixed pattern
  // of noise of the given size.
  template <class F>
  static void Respond(Study& s, const std::vector<std::pair<double, double>>& points, F f, double noise) {
    static const double pattern[] = {0.31, -0.77, 0.52, 0.08, -0.45, 0.93, -0.12, -0.66, 0.27, 0.71, -0.38, 0.15, -0.91, 0.44};
    int k = 0;
    for (int run = 1; run <= s.iNumRuns; ++run)
      for (int rep = 1; rep <= s.iReps; ++rep) {
        auto [a, b] = points[static_cast<std::size_t>(run - 1)];
        s.SetData(1, run, rep, static_cast<float>(f(a, b) + noise * pattern[k++ % 14]));
      }
  }
  // The model of a study: terms by their texts, the constant first.
  static void Model(Study& s, const std::vector<std::string>& terms, int flag = 2) {
    s.REGRESS_Rterms.Clear();
    for (const std::string& t : terms) {
      Rterm r;
      InitRterm(r);
      r.sTerm = t;
      if (t != "0" && t.find(',') == std::string::npos) r.fValue = FREE_AXIS;
      s.REGRESS_Rterms.Add(r);
    }
    s.REGRESS_sRVkey = "v1";
    s.REGRESS_iFlag = static_cast<std::int16_t>(flag);
  }
  // The independent fit of the same model, in coded or actual values.
  static Fit Independent(Study& s, bool coded) {
    std::vector<std::vector<double>> x(static_cast<std::size_t>(s.REGRESS_Rterms.Count()));
    std::vector<double> y;
    for (int run = 1; run <= s.iNumRuns; ++run)
      for (int rep = 1; rep <= s.iReps; ++rep) {
        float v = s.GetData(1, run, rep);
        if (v == MISSING_VALUE) continue;
        y.push_back(v);
        for (int j = 1; j <= s.REGRESS_Rterms.Count(); ++j) {
          double product = 1;
          const std::string& t = s.REGRESS_Rterms(j).sTerm;
          if (t != "0")
            for (int f : TermFactors(t)) {
              double level = s.GetTreatmentLevelValue(f, run);
              product *= coded ? s.FValueToCode(s.GetFactorKey(f), level) : level;
            }
          x[static_cast<std::size_t>(j - 1)].push_back(product);
        }
      }
    return LeastSquares(x, y);
  }
};

}  // namespace kestrow::test
