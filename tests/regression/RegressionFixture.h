// The regression tests' studies: a model stored by the texts of its terms,
// and the independent least-squares fit of that model from the study's
// stored values, in coded or actual units.
#pragma once

#include <string>
#include <vector>

#include "LeastSquares.h"
#include "analyses/ChartFixture.h"
#include "regression/Regress.h"

namespace kestrow::test {

class RegressionFixture : public ChartFixture {
 protected:
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
