// The run order of a study, kept as Seq(position, rep) in the data array, and
// the Yates order of its treatments.
#include <string>
#include <utility>

#include "core/Startup.h"
#include "core/Study.h"

namespace kestrow {

// Each replication is shuffled on its own: position i takes its treatment from
// a place j drawn uniformly from i to iNumRuns. The product of a count below
// 32768 and a 24-bit fraction is exact in double, so j never passes iNumRuns.
void Study::Randomise() {
  for (int rep = 1; rep <= iReps; ++rep) {
    for (int t = 1; t <= iNumRuns; ++t) SetSeq(t, rep, static_cast<std::int16_t>(t));
    for (int i = 1; i <= iNumRuns - 1; ++i) {
      double u = static_cast<double>(PlatformRnd());
      int j = static_cast<int>(static_cast<double>(iNumRuns - i + 1) * u + 1.0) + i - 1;
      std::int16_t at = GetSeq(i, rep);
      SetSeq(i, rep, GetSeq(j, rep));
      SetSeq(j, rep, at);
    }
  }
}

void Study::UnRandomise() {
  for (int rep = 1; rep <= iReps; ++rep)
    for (int t = 1; t <= iNumRuns; ++t) SetSeq(t, rep, static_cast<std::int16_t>(t));
}

// The key of a treatment holds its level numbers with the last factor first,
// so that sorting the keys makes the first factor vary fastest. Levels are
// single digits (at most 8 levels, 0 for a centre point), so comparing the
// keys as text compares them as numbers, and a centre point comes first.
// A taken key becomes "ZZZ", which sorts after any digits.
void Study::SetYatesOrder() {
  int runs = iNumRuns < 0 ? 0 : iNumRuns;
  std::vector<std::string> keys(static_cast<std::size_t>(runs) + 1);
  for (int t = 1; t <= runs; ++t) {
    std::string key;
    for (int f = 1; f <= Factors.Count(); ++f) key = std::to_string(GetTreatmentLevel(f, t)) + key;
    keys[static_cast<std::size_t>(t)] = std::move(key);
  }
  yatesOrder_.assign(static_cast<std::size_t>(runs) + 1, 0);
  for (int p = 1; p <= runs; ++p) {
    int best = 1;
    for (int t = 2; t <= runs; ++t)  // strictly smaller: ties go to the earliest
      if (keys[static_cast<std::size_t>(t)] < keys[static_cast<std::size_t>(best)]) best = t;
    yatesOrder_[static_cast<std::size_t>(p)] = static_cast<std::int16_t>(best);
    keys[static_cast<std::size_t>(best)] = "ZZZ";
  }
}

std::int16_t Study::GetYatesRun(int i) const {
  if (i < 1 || static_cast<std::size_t>(i) >= yatesOrder_.size()) return 0;
  return yatesOrder_[static_cast<std::size_t>(i)];
}

}  // namespace kestrow
