// Lookups in the statistical tables database "TABLES.MDB" in the program
// folder. Each call opens the database read-only, reads and closes it. A
// request outside the tabled range (beyond the last row or column) is a
// failure reported with the reader's tag; only TableB extrapolates, in k.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace kestrow {

// Duncan's sigma factor d2* and its degrees of freedom v for k subgroups of
// size n. Beyond the tabled counts of subgroups v grows by the increment of
// the closing row and d2 = D (1 + 1 / (4 v)) for its limiting D. Results are
// left untouched on failure.
void ReadTableB(std::int16_t n, std::int16_t k, float& v, float& d2);

// A chart constant ("D3", "D4", ...) for subgroup size n. A stored 0, which
// stands for "no such limit", and every failure give MISSING_VALUE.
float ReadTableC(std::int16_t n, const std::string& columnName);

// The analysis-of-means factor h for k means and v degrees of freedom,
// interpolated linearly in k first, then in v. alpha is 0.1, 0.05 or 0.01.
void ReadTableD(float alpha, float v, std::int16_t k, float& h);

// The upper-alpha F point, interpolated linearly in v1, then in v2. Only
// alpha 0.01, 0.05 and 0.1 have tables; any other shows "Invalid alpha level
// for ANOVA" and gives MISSING_VALUE.
float ReadTableF(float alpha, float v1, float v2);

// The t with upper tail alpha on v degrees of freedom, interpolated linearly
// in v. On a failure (reported with the tag) t is left untouched and the
// result is false; the one-value form then gives 0, its untouched result.
bool ReadtPercent(std::int16_t v, float alpha, float& t);
float ReadtPercent(std::int16_t v, float alpha);

// Duncan's significant studentized ranges for f degrees of freedom: alpha
// 0.01 reads the 1% table, anything else the 5% one. Row 0 holds the f of
// the row read in column 2; rows 1 to 13 hold p in column 1 and the range in
// column 2 (interpolated linearly in f between tabled rows). Column 3 is
// scratch: the row below, when there is one. Column 0 is unused.
using DuncanRows = std::array<std::array<float, 4>, 14>;
void ReadDuncanRow(std::int16_t f, float alpha, DuncanRows& table);

}  // namespace kestrow
