// The studies the benchmarks of the regression share: five three-level
// factors run at 64 points scattered over the coded cube, with a response
// of curvature, interactions and noise, the same on every machine.
#pragma once

#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "core/Problem.h"
#include "core/Text.h"

namespace kestrow::bench {

// Five three-level factors run at 64 points scattered over the coded cube, and a response with
// curvature, interactions and noise.
inline std::unique_ptr<Problem> ScatteredStudy() {
  auto p = std::make_unique<Problem>();
  Study s;
  s.sKey = "s1";
  for (int f = 1; f <= 5; ++f) {
    Factor factor;
    factor.sKey = "f" + std::to_string(f);
    factor.sName = factor.sAbbr = std::string(1, static_cast<char>('A' + f - 1));
    for (const char* level : {"10", "20", "30"}) factor.Levels.Add(Level{level, "", 0});
    p->Factors.Add(factor, factor.sKey);
    s.Factors.Add(Item{factor.sKey});
  }
  RespVar rv;
  rv.sKey = "v1";
  rv.sName = "Yield";
  p->RespVars.Add(rv, rv.sKey);
  s.StudyRespVars.Add(StudyRespVar{"v1", 0, 0, 0});
  std::vector<std::vector<double>> x;
  std::uint32_t seed = 12345;  // a linear congruential sequence, the same on every machine
  const auto next = [&seed] {
    seed = seed * 1664525u + 1013904223u;
    return static_cast<double>(seed >> 8) / (1 << 23) - 1;
  };
  for (int run = 1; run <= 64; ++run) {
    Treatment t;
    t.sTlist = "*";
    std::vector<double> point;
    for (int f = 1; f <= 5; ++f) {
      point.push_back(std::round(next() * 1000) / 1000);
      t.sTlist += "|" + ShortestText(point.back());
    }
    x.push_back(point);
    s.Treatments.Add(t);
  }
  s.iNumRuns = 64;
  s.iReps = 1;
  s.SetDataArray();
  for (int run = 1; run <= 64; ++run) {
    const std::vector<double>& v = x[static_cast<std::size_t>(run - 1)];
    double y = 50 + 4 * v[0] - 3 * v[1] + 2 * v[2] + v[0] * v[1] - 2 * v[3] * v[3] + 0.3 * std::cos(run * 2.3);
    s.SetData(1, run, 1, static_cast<float>(y));
  }
  s.REGRESS_sRVkey = "v1";
  s.REGRESS_iFlag = 2;
  p->AddStudy(std::move(s));
  return p;
}

}  // namespace kestrow::bench
