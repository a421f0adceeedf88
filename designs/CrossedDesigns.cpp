// The builders that need no recipe: the full factorial of any factor set, the
// one-factor design, the randomised block, the Latin square and the
// unstructured study.
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cmath>
#include <vector>

#include "core/Globals.h"
#include "core/Language.h"
#include "core/Problem.h"
#include "core/Settings.h"
#include "core/Startup.h"
#include "core/Study.h"
#include "core/Text.h"
#include "core/Ui.h"
#include "designs/Builders.h"
#include "designs/Design.h"
#include "designs/DesignsDb.h"

namespace kestrow {

namespace {

// The orthogonal contrasts of a factor of L levels: name and coefficients.
struct OrthoRow {
  std::string name;
  std::vector<float> coefficients;  // by level, from 1
};

bool ReadOrthoCon(DesignsDb& db, int levels, std::vector<OrthoRow>& out) {
  std::vector<DesignsDb::Row> rows;
  std::string error;
  if (!db.Query("SELECT * FROM OrthoCon WHERE Levels =" + std::to_string(levels) + " ORDER BY [Index]", rows, error))
    return false;
  out.clear();
  for (const auto& r : rows) {
    OrthoRow o;
    o.name = r.Text("ConName");
    std::string list = r.Text("ConList");
    while (!list.empty()) o.coefficients.push_back(static_cast<float>(Val(PopToken(list))));
    out.push_back(std::move(o));
  }
  return static_cast<int>(out.size()) >= levels - 1;
}

// Every combination of the level counts, the last factor varying fastest.
void Odometer(Study& s, const std::vector<int>& counts) {
  int n = static_cast<int>(counts.size());
  Treatment previous;
  previous.SetZero(n);  // 1, ..., 1, 0: the first step gives 1, ..., 1
  int count = 0;
  for (;;) {
    Treatment t;
    t.SetZero(n);
    int carry = 1;
    for (int f = n; f >= 1; --f) {
      int level = previous.GetLevel(f) + carry;
      if (level > counts[static_cast<std::size_t>(f - 1)]) {
        level = 1;
        carry = 1;
      } else {
        carry = 0;
      }
      t.SetLevel(f, level);
    }
    ++count;
    previous = t;
    s.Treatments.Add(std::move(t), std::to_string(count));
    if (carry == 1) break;
  }
  // The last one wrapped round to all ones again.
  s.Treatments.Remove(s.Treatments.Count());
}

// True if every coefficient of the column is a whole number within +-99.
bool SmallWhole(const Contrast& c, int runs) {
  const auto* p = reinterpret_cast<const unsigned char*>(c.sLevels.data());
  for (int r = 0; r < runs; ++r) {
    int v = p[2 * r] + p[2 * r + 1] * 128 - 8192;
    if (v <= -100 || v >= 100) return false;
  }
  return true;
}

// target = a x b, run by run, for two columns of small whole numbers (the
// usual case): the products are made on the packed codes directly, without
// a branch. Returns whether the product column is itself small and whole;
// when it is not, what it wrote is not the product and must be made again
// by PackProduct. The columns hold every run.
bool MultiplySmall(const Contrast& a, const Contrast& b, Contrast& target, int runs) {
  const auto* pa = reinterpret_cast<const unsigned char*>(a.sLevels.data());
  const auto* pb = reinterpret_cast<const unsigned char*>(b.sLevels.data());
  // Made in a buffer that stays in the cache, then written to the column once.
  static thread_local std::string buffer;
  buffer.resize(static_cast<std::size_t>(2 * runs));
  char* pt = buffer.data();
  int small = 1;
  for (int r = 0; r < runs; ++r) {
    int product = (pa[2 * r] + pa[2 * r + 1] * 128 - 8192) * (pb[2 * r] + pb[2 * r + 1] * 128 - 8192);
    int code = product + 8192;
    pt[2 * r] = static_cast<char>(code & 127);
    pt[2 * r + 1] = static_cast<char>(code / 128);
    small &= (product > -100) & (product < 100);
  }
  target.sLevels.assign(buffer);
  return small != 0;
}

// The distinct magnitudes of a main contrast's coefficients.
std::vector<std::int64_t> Magnitudes(const Contrast& c, int runs) {
  std::vector<std::int64_t> out;
  for (int run = 1; run <= runs; ++run) {
    auto v = static_cast<std::int64_t>(std::fabs(c.fGetLevel(run)));
    if (std::find(out.begin(), out.end(), v) == out.end()) out.push_back(v);
  }
  return out;
}

// The number of whole steps k (1 to 99) that the largest coefficient M is to
// become when the column is divided by M / k: every magnitude v then becomes
// v k / M, to be packed as a whole number within 99 or as a fraction of
// three decimals from 0.1 to 8.192. The first k (from 99 down) under which
// every magnitude packs exactly, else the one under which each rounds to
// its three decimals with the smallest largest error; 0 when none does (the
// magnitudes span too wide a range, as 1 and 35 x 35 do) or there are too
// many magnitudes to try.
int StepsToLargest(const std::vector<std::int64_t>& magnitudes, std::int64_t largest) {
  if (magnitudes.size() > 1024) return 0;
  int best = 0;
  double bestError = 1;
  for (int k = 99; k >= 1; --k) {
    double worst = 0;
    for (std::int64_t v : magnitudes) {
      if (v == 0) continue;
      std::int64_t scaled = v * k * 1000;
      double t = static_cast<double>(scaled) / static_cast<double>(largest);  // thousandths
      bool whole = scaled % (largest * 1000) == 0 && scaled / (largest * 1000) <= 99;
      if (whole) continue;
      if (t < 99.5 || t > 8192.5) {
        worst = 1;
        break;
      }
      worst = std::max(worst, std::fabs(t - std::nearbyint(t)) / 1000);
    }
    if (worst == 0) return k;
    if (worst < bestError) {
      bestError = worst;
      best = k;
    }
  }
  return best;
}

// Packs into target the product of the main contrasts named in parts. A
// product within +-99 is packed as it stands; a larger one is divided by a
// common factor, chosen by StepsToLargest, or where none serves so that the
// largest coefficient is 8.192 and the rest are the nearest that pack (what
// lies below 0.1 cannot be held), and target.ProductOf then names the parts,
// from which the study gives the exact column.
void PackProduct(const Study& s, const std::vector<int>& parts,
                 const std::vector<std::vector<std::int64_t>>& magnitudes, Contrast& target, int runs) {
  static thread_local std::vector<std::int64_t> exact;
  exact.assign(static_cast<std::size_t>(runs), 1);
  for (int m : parts) {
    const auto* p = reinterpret_cast<const unsigned char*>(s.Contrasts(m).sLevels.data());
    for (int r = 0; r < runs; ++r) exact[static_cast<std::size_t>(r)] *= p[2 * r] + p[2 * r + 1] * 128 - 8192;
  }
  std::int64_t largest = 0;
  for (std::int64_t e : exact) largest = std::max(largest, e < 0 ? -e : e);

  target.sLevels.resize(static_cast<std::size_t>(2 * runs));
  auto put = [&](int r, int code) {
    target.sLevels[static_cast<std::size_t>(2 * r)] = static_cast<char>(code & 127);
    target.sLevels[static_cast<std::size_t>(2 * r + 1)] = static_cast<char>(code / 128);
  };
  target.ProductOf.clear();
  if (largest < 100) {
    for (int r = 0; r < runs; ++r) put(r, static_cast<int>(exact[static_cast<std::size_t>(r)]) + 8192);
    return;
  }
  target.ProductOf = parts;

  // The column's distinct magnitudes are the products of its parts'.
  std::vector<std::int64_t> products{1};
  bool complete = true;
  for (int m : parts) {
    std::vector<std::int64_t> next;
    for (std::int64_t a : products)
      for (std::int64_t b : magnitudes[static_cast<std::size_t>(m)]) {
        std::int64_t v = a * b;
        if (std::find(next.begin(), next.end(), v) == next.end()) next.push_back(v);
      }
    products.swap(next);
    if (products.size() > 1024) {
      complete = false;
      break;
    }
  }
  int k = StepsToLargest(products, largest);
  double largestScaled = k > 0 ? k : 8.192;
  auto codeOf = [&](std::int64_t e) {
    double x = largestScaled * static_cast<double>(e) / static_cast<double>(largest);
    float packed = Contrast::NearestPackable(x);
    return (packed == std::trunc(packed) ? static_cast<int>(packed) : static_cast<int>(std::nearbyint(packed * 1000.0))) +
           8192;
  };
  // A column of thousands of runs holds a few hundred distinct coefficients
  // at most: each is packed once, into a table by value, and the runs read
  // their codes from it.
  if (complete && largest <= (1 << 22)) {
    static thread_local std::vector<std::uint16_t> codes;
    codes.resize(static_cast<std::size_t>(2 * largest + 1));
    const std::uint16_t* zero = codes.data() + largest;
    codes[static_cast<std::size_t>(largest)] = static_cast<std::uint16_t>(codeOf(0));
    for (std::int64_t v : products) {
      codes[static_cast<std::size_t>(largest + v)] = static_cast<std::uint16_t>(codeOf(v));
      codes[static_cast<std::size_t>(largest - v)] = static_cast<std::uint16_t>(codeOf(-v));
    }
    for (int r = 0; r < runs; ++r) put(r, zero[exact[static_cast<std::size_t>(r)]]);
    return;
  }
  for (int r = 0; r < runs; ++r) put(r, codeOf(exact[static_cast<std::size_t>(r)]));
}

std::vector<int> StudyLevelCounts(const Study& s) {
  std::vector<int> counts;
  for (int f = 1; f <= s.Factors.Count(); ++f) counts.push_back(s.GetNumLevels(f));
  return counts;
}

}  // namespace

std::int16_t GetFullyCrossed(Study& s, const Design&) {
  Odometer(s, StudyLevelCounts(s));
  s.iNumRuns = static_cast<std::int16_t>(s.Treatments.Count());
  int runs = s.iNumRuns;

  DesignsDb db;
  if (!db.Open()) {
    ErrorBox(GetText("MNerrg"));
    return 0;
  }
  int letter = 1;
  for (int f = 1; f <= s.Factors.Count(); ++f) {
    int levels = s.GetNumLevels(f);
    std::vector<OrthoRow> rows;
    if (!ReadOrthoCon(db, levels, rows)) {
      ReportError("No orthogonal contrasts for " + std::to_string(levels) + " levels", "GetFullyCrossed");
      return 0;
    }
    for (int r = 0; r < levels - 1; ++r) {
      const OrthoRow& o = rows[static_cast<std::size_t>(r)];
      Contrast c;
      c.InitLevels(levels);
      c.SetName(letter++);
      c.sMain = o.name;
      c.iMain = static_cast<std::int16_t>(f);
      c.sLevels.reserve(static_cast<std::size_t>(2 * runs));
      for (int run = 1; run <= runs; ++run) {
        int level = s.GetTreatmentLevel(f, run);
        float coefficient = level >= 1 && level <= static_cast<int>(o.coefficients.size())
                                ? o.coefficients[static_cast<std::size_t>(level - 1)]
                                : 0.0f;
        c.fSetLevel(run, coefficient);
      }
      s.Contrasts.Add(std::move(c));
    }
  }
  db.Close();
  int mains = s.Contrasts.Count();

  // The interaction contrasts, reserved first: any full factorial has one
  // contrast fewer than runs. 99 sorts after any factor while the passes run.
  for (int position = mains + 1; position <= runs - 1; ++position) {
    Contrast c;
    c.SetName(letter++);
    c.iMain = 99;
    s.Contrasts.Add(std::move(c));
  }

  // Each pass multiplies the main contrasts into the terms of the last pass;
  // iMain holds the factor of a term's first letter meanwhile, which keeps the
  // letters in order and makes each term arise once. Each term is the
  // product of the main contrasts that parts names.
  std::vector<bool> small(static_cast<std::size_t>(runs + 1), false);
  std::vector<std::vector<int>> parts(static_cast<std::size_t>(runs + 1));
  std::vector<std::vector<std::int64_t>> magnitudes(static_cast<std::size_t>(mains + 1));
  for (int c = 1; c <= mains; ++c) {
    small[static_cast<std::size_t>(c)] = SmallWhole(s.Contrasts(c), runs);
    parts[static_cast<std::size_t>(c)] = {c};
    magnitudes[static_cast<std::size_t>(c)] = Magnitudes(s.Contrasts(c), runs);
  }
  int next = mains + 1, first = 1;
  for (int pass = 1; pass < s.Factors.Count(); ++pass) {
    int last = next - 1;
    for (int i = 1; i <= mains; ++i)
      for (int j = first; j <= last && next <= runs - 1; ++j) {
        const Contrast& ci = s.Contrasts(i);
        const Contrast& cj = s.Contrasts(j);
        if (ci.iMain >= cj.iMain) continue;
        Contrast& target = s.Contrasts(next);
        target.iMain = ci.iMain;
        target.sName = ci.sName + cj.sName;
        auto at = static_cast<std::size_t>(next);
        parts[at] = parts[static_cast<std::size_t>(j)];
        parts[at].insert(parts[at].begin(), i);
        small[at] = small[static_cast<std::size_t>(i)] && small[static_cast<std::size_t>(j)] &&
                    MultiplySmall(ci, cj, target, runs);
        if (!small[at]) PackProduct(s, parts[at], magnitudes, target, runs);
        ++next;
      }
    first = last + 1;
  }
  for (int c = mains + 1; c <= runs - 1; ++c) s.Contrasts(c).iMain = 0;
  return -1;
}

std::int16_t GetSingleFactorDesign(Study& s, const Design&) {
  int levels = s.GetNumLevels(1);
  s.iNumRuns = static_cast<std::int16_t>(levels);
  for (int l = 1; l <= levels; ++l) {
    Treatment t;
    t.SetZero(1);
    t.SetLevel(1, l);
    s.Treatments.Add(std::move(t), std::to_string(l));
  }
  DesignsDb db;
  if (!db.Open()) {
    ErrorBox(GetText("MNerrg"));
    return 0;
  }
  std::vector<OrthoRow> rows;
  if (!ReadOrthoCon(db, levels, rows)) {
    ReportError("No orthogonal contrasts for " + std::to_string(levels) + " levels", "GetSingleFactorDesign");
    return 0;
  }
  for (int c = 1; c <= levels - 1; ++c) {
    const OrthoRow& o = rows[static_cast<std::size_t>(c - 1)];
    Contrast con;
    con.InitLevels(levels);
    con.SetName(c);
    con.sMain = o.name;
    con.iMain = 1;
    for (int l = 1; l <= levels && l <= static_cast<int>(o.coefficients.size()); ++l)
      con.fSetLevel(l, o.coefficients[static_cast<std::size_t>(l - 1)]);
    s.Contrasts.Add(std::move(con));
  }
  return -1;
}

std::int16_t GetBlocked1(Study& s, const Design& row) {
  s.iNumRuns = static_cast<std::int16_t>(Val(row.sRuns));
  s.Factors.Add(Item{row.sTag2});
  // The level counts come from the problem's factors; the block factor need
  // not be in the study.
  const Problem& p = s.pProblem ? *s.pProblem : *gProblem;
  std::vector<int> counts;
  for (int f = 1; f <= 2; ++f) {
    const Factor* factor = p.Factors.Find(s.GetFactorKey(f));
    counts.push_back(factor ? factor->Levels.Count() : 1);
  }
  Odometer(s, counts);
  return -1;
}

std::int16_t GetLatinSquare(Study& s, const Design& row) {
  s.iNumRuns = static_cast<std::int16_t>(Val(row.sRuns));
  std::string keys = row.sTag2;
  s.Factors.Add(Item{PopBar(keys)});
  s.Factors.Add(Item{keys});
  int L = s.GetNumLevels(1);
  if (L < 1) return 0;
  // The cyclic standard square; index 0 of each dimension is not read.
  std::vector<std::vector<int>> sq(static_cast<std::size_t>(L + 1), std::vector<int>(static_cast<std::size_t>(L + 1), 0));
  for (int i = 1; i <= L; ++i)
    for (int j = 1; j <= L; ++j) sq[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)] = ((i + j - 2) % L) + 1;

  if (!gSettings.StandardLatinSquare) {
    gPlatformRandom.seed(static_cast<std::mt19937::result_type>(
        std::chrono::system_clock::now().time_since_epoch().count()));
    // Not a textbook shuffle: r runs over 1 to L-i+2 from the start, so with
    // i = 1 it can come out as L+1, past the square, and then no design results.
    auto pick = [&](int i) {
      float u = PlatformRnd();
      return static_cast<int>(std::nearbyint(static_cast<float>(L - i + 1) * u + 1.0f));
    };
    for (int i = 1; i <= L - 1; ++i) {
      int r = pick(i);
      if (r > L) {
        ReportError("Subscript out of range", "GetLatinSquare");
        return 0;
      }
      std::swap(sq[static_cast<std::size_t>(i)], sq[static_cast<std::size_t>(r)]);
    }
    for (int i = 1; i <= L - 1; ++i) {
      int r = pick(i);
      if (r > L) {
        ReportError("Subscript out of range", "GetLatinSquare");
        return 0;
      }
      for (auto& line : sq) std::swap(line[static_cast<std::size_t>(i)], line[static_cast<std::size_t>(r)]);
    }
  }
  for (int i = 1; i <= L; ++i)
    for (int j = 1; j <= L; ++j) {
      Treatment t;
      t.SetZero(3);
      t.SetLevel(1, sq[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)]);
      t.SetLevel(2, i);
      t.SetLevel(3, j);
      s.Treatments.Add(std::move(t), std::to_string((i - 1) * L + j));
    }
  return -1;
}

std::int16_t GetUnstructuredDesign(Study& s, const Design&) {
  s.iNumRuns = 0;
  return -1;
}

}  // namespace kestrow
