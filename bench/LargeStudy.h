// A problem of one study with three two-level factors and every data cell
// filled, for the benchmarks of the data grid and its commands. Every second
// response variable is transformed, so that the grid shows its second column.
#pragma once

#include <memory>
#include <string>

#include "core/Problem.h"

namespace kestrow {

inline std::unique_ptr<Problem> LargeStudy(int runs, int reps, int rvs) {
  auto p = std::make_unique<Problem>();
  for (int f = 1; f <= 3; ++f) {
    Factor factor;
    factor.sKey = "f" + std::to_string(f);
    factor.sName = "Factor " + std::to_string(f);
    factor.Levels.Add(Level{"10", "", 0});
    factor.Levels.Add(Level{"20", "", 0});
    p->Factors.Add(factor, factor.sKey);
  }
  Study s;
  s.sKey = "s1";
  s.sDesignName = std::to_string(runs) + " runs";
  s.iNumRuns = static_cast<std::int16_t>(runs);
  s.iReps = static_cast<std::int16_t>(reps);
  for (int f = 1; f <= 3; ++f) s.Factors.Add(Item{"f" + std::to_string(f)});
  for (int v = 1; v <= rvs; ++v) {
    RespVar rv;
    rv.sKey = "v" + std::to_string(v);
    rv.sName = "Response " + std::to_string(v);
    p->RespVars.Add(rv, rv.sKey);
    std::int16_t type = v % 2 == 0 ? 1 : 0;
    s.StudyRespVars.Add(StudyRespVar{rv.sKey, type, static_cast<float>(type), 0});
  }
  for (int r = 0; r < runs; ++r) {
    Treatment t;
    t.SetZero(3);
    for (int f = 1; f <= 3; ++f) t.SetLevel(f, ((r >> f) & 1) + 1);
    s.Treatments.Add(t);
  }
  s.SetDataArray();
  for (int rv = 1; rv <= rvs; ++rv)
    for (int run = 1; run <= runs; ++run)
      for (int rep = 1; rep <= reps; ++rep) s.SetData(rv, run, rep, static_cast<float>(run) + rep * 0.25f + rv);
  p->AddStudy(std::move(s));
  return p;
}

}  // namespace kestrow
