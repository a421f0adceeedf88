// Builds the statistical tables database TABLES.MDB from the mathematics.
//
//   mktables OUT.MDB
//
// Nothing here is copied from a printed table: every figure is computed in
// double precision from its definition and then rounded to the digits the
// classical printed tables give, so that a report can be checked against them.
// In every table the first field is the key, and a table with number-named
// columns has them in ascending order of their numbers: the readers walk the
// fields in that order.
//
// Building blocks
//   - Normal distribution: Phi(x) = erfc(-x / sqrt 2) / 2.
//   - Regularised incomplete beta I_x(a, b): the continued fraction evaluated
//     by the modified Lentz method (Press et al., Numerical Recipes, 6.4),
//     with the symmetry I_x(a, b) = 1 - I_(1-x)(b, a) where the fraction
//     converges slowly. Regularised incomplete gamma P(a, x): series below
//     x < a + 1, Lentz continued fraction above (Numerical Recipes, 6.2).
//   - Range of p standard normals: P(W <= w) = p * integral phi(x)
//     (Phi(x + w) - Phi(x))^(p - 1) dx (Pearson and Hartley, Biometrika Tables
//     for Statisticians I, table 23). It is integrated by Simpson's rule on
//     x in [-9, 9] with step 0.02 and tabulated for w = 0, 0.02, ... 16;
//     between the points a cubic (Catmull-Rom) interpolation is used.
//   - Quantiles are found by bisection to a relative 1e-10.
//
// TableF01, TableF05, TableF10 (key v2; columns v1 = 1..10, 12, 15, 20, 24,
//   30, 40, 60, 120): the upper-alpha point F with P(F(v1, v2) > F) = alpha,
//   from I_x(v1/2, v2/2) = 1 - alpha and F = v2 x / (v1 (1 - x)). Rows v2 =
//   1..30, 40, 60, 120 and 10000, which stands for infinity and holds the
//   limit chi-square(v1) / v1 (chi-square from P(a, x)). Two decimals.
//
// tPercent (key v; columns 1, 5, 10, 25, 50, 100, 250 = alpha * 1000): the
//   upper-tail point t with P(T(v) > t) = alpha, the convention of callers
//   that ask for alpha / 2 to get a two-sided critical value. t^2 is the
//   upper 2 alpha point of F(1, v). Rows v = 1..30, then 35, 40, 45, 50, 60,
//   70, 80, 90, 100, 120, 150, 200, 300, 500, 1000 so that the linear
//   interpolation in v of the reader stays close for large error degrees of
//   freedom, and 10000 standing for infinity (the normal point). Three
//   decimals.
//
// TableC (key n = 2..30, the subgroup size): the Shewhart chart constants
//   (ASTM STP 15D; Montgomery, Introduction to Statistical Quality Control,
//   appendix VI). d2 = E(W) and d3 = sd(W) for the range W of n standard
//   normals, from the range distribution above (E W = integral (1 - F),
//   E W^2 = 2 integral w (1 - F)); c4 = sqrt(2 / (n - 1)) Gamma(n / 2) /
//   Gamma((n - 1) / 2); A2 = 3 / (d2 sqrt n), A3 = 3 / (c4 sqrt n),
//   B3, B4 = 1 -+ 3 sqrt(1 - c4^2) / c4, D3, D4 = 1 -+ 3 d3 / d2. A lower
//   factor (B3, D3) that comes out negative is stored as 0: there is no lower
//   limit (D3 for n <= 6, B3 for n <= 5). c4 four decimals, the others three.
//   Column names are not case-sensitive in the store, so d3 (used for D3 and
//   D4 and in TableB) has no column of its own beside D3.
//
// TableB (keys n = 2..30 subgroup size, k = 1..30 number of subgroups, then
//   the closing row): Duncan's d2* and degrees of freedom for sigma estimated
//   by the average range (Duncan, Quality Control and Industrial Statistics,
//   table D3; Patnaik, Biometrika 37 (1950) 78-87). Patnaik takes the mean
//   range of k subgroups as d2* sigma chi_v / sqrt v. Matching its mean d2
//   sigma and its variance d3^2 sigma^2 / k gives
//       d2*^2 = d2^2 + d3^2 / k,
//       a(v)^2 = d2^2 / d2*^2 with a(v) = E(chi_v / sqrt v)
//              = sqrt(2 / v) Gamma((v + 1) / 2) / Gamma(v / 2),
//   solved for v. For many subgroups v grows by d2^2 / (2 d3^2) per
//   subgroup (1 - a(v)^2 ~ 1 / (2 v)) and d2* tends to d2. The closing row
//   of each n holds that increment in v and the limiting d2 in d2; its k is
//   32767, above any count a study can have, so that a reader walking k
//   forward reaches it only for a count beyond k = 30 and then extrapolates
//   from the row before it. d2* three decimals, v two.
//
// Duncan01, Duncan05 (key f; columns p = 2..14): Duncan's significant
//   studentized ranges (Duncan, Biometrics 11 (1955) 1-42; Harter,
//   Biometrics 16 (1960) 671-685): the point q of the studentized range of p
//   means with f degrees of freedom at the level (1 - alpha)^(p - 1).
//   P(Q <= q) = integral P(W <= q s) g_f(s) ds with s = chi_f / sqrt f,
//   integrated by the trapezoidal rule in u = ln s (smooth and fast decaying,
//   so the rule converges geometrically) where the density of u is within
//   e^-40 of its top. As in Duncan's tables a range is
//   never less than the one for fewer means: each value is raised to the one
//   before it where it falls below. Rows f = 1..20, 22, 24, 26, 28, 30, 40,
//   60, 100 and 10000 for infinity (the range itself). Two decimals.
//
// TableD (keys Alphax100 = 1, 5, 10, v; columns k = 2..50, 55..100 by 5,
//   110..200 by 10, 225..500 by 25): the analysis-of-means decision factors
//   h of Ott (Ott, Process Quality Control, table A.14; Nelson, Journal of
//   Quality Technology 15 (1983) 40-44, whose factors are these divided by
//   sqrt((k - 1) / k)). With k averages of unit standard error and s their
//   standard error estimated on v degrees of freedom, h is the point with
//   P(max |x_i - xbar| <= h s) = 1 - alpha: the decision lines are
//   xbar +- h s. The probability with s = 1 comes from the joint density of
//   k standard normals z = m + u_i (m their mean, sum u_i = 0), which factors
//   as exp(-k m^2 / 2) exp(-sum u_i^2 / 2); integrating m out leaves
//       P(c) = sqrt(2 pi k) g*k(0),
//   g*k the k-fold convolution of g(u) = phi(u) [|u| <= c]. By Fourier
//   inversion g*k(0) = (1 / pi) integral_0^inf Q(t)^k dt, where
//   Q(t) = integral_-c^c phi(u) cos(tu) du solves Q' = -t Q + 2 phi(c)
//   sin(ct) with Q(0) = erf(c / sqrt 2); the equation is integrated by
//   Runge-Kutta with step 0.005 and the powers summed by the trapezoidal
//   rule. For k = 2, P(c) = erf(c) and h is t(alpha / 2, v) / sqrt 2. P is
//   tabulated for c = 0, 0.01, ... 8 and studentized like the ranges above.
//   Rows v = 1..30, 35, 40, 45, 50, 60, 70, 80, 90, 100, 120, 150, 200, 300,
//   500, 1000, 2000, 5000, 10000 and 32767, above any degrees of freedom a
//   study's range estimate can have. Two decimals.
#include <sqlite3.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <iostream>
#include <numbers>
#include <string>
#include <vector>

namespace {

constexpr double kInfinity = 10000;  // the key of the row that stands for infinity

double Phi(double x) { return 0.5 * std::erfc(-x / std::sqrt(2.0)); }

double Round(double x, int decimals) {
  double scale = std::pow(10.0, decimals);
  return std::round(x * scale) / scale;
}

// Solves f(x) = target for an increasing f on [lo, hi].
double Bisect(const std::function<double(double)>& f, double target, double lo, double hi) {
  for (int i = 0; i < 200 && hi - lo > 1e-10 * std::max(1.0, std::fabs(hi)); ++i) {
    double mid = 0.5 * (lo + hi);
    (f(mid) < target ? lo : hi) = mid;
  }
  return 0.5 * (lo + hi);
}

double BetaFraction(double a, double b, double x) {
  const double tiny = 1e-300;
  double qab = a + b, qap = a + 1, qam = a - 1;
  double c = 1, d = 1 - qab * x / qap;
  if (std::fabs(d) < tiny) d = tiny;
  d = 1 / d;
  double h = d;
  for (int m = 1; m <= 10000; ++m) {
    int m2 = 2 * m;
    double aa = m * (b - m) * x / ((qam + m2) * (a + m2));
    d = 1 + aa * d;
    if (std::fabs(d) < tiny) d = tiny;
    c = 1 + aa / c;
    if (std::fabs(c) < tiny) c = tiny;
    d = 1 / d;
    h *= d * c;
    aa = -(a + m) * (qab + m) * x / ((a + m2) * (qap + m2));
    d = 1 + aa * d;
    if (std::fabs(d) < tiny) d = tiny;
    c = 1 + aa / c;
    if (std::fabs(c) < tiny) c = tiny;
    d = 1 / d;
    double del = d * c;
    h *= del;
    if (std::fabs(del - 1) < 1e-15) break;
  }
  return h;
}

// Regularised incomplete beta I_x(a, b).
double IncBeta(double a, double b, double x) {
  if (x <= 0) return 0;
  if (x >= 1) return 1;
  double front = std::exp(std::lgamma(a + b) - std::lgamma(a) - std::lgamma(b) + a * std::log(x) +
                          b * std::log1p(-x));
  if (x < (a + 1) / (a + b + 2)) return front * BetaFraction(a, b, x) / a;
  return 1 - front * BetaFraction(b, a, 1 - x) / b;
}

// Regularised lower incomplete gamma P(a, x).
double IncGamma(double a, double x) {
  if (x <= 0) return 0;
  double lead = -x + a * std::log(x) - std::lgamma(a);
  if (x < a + 1) {
    double ap = a, del = 1 / a, sum = del;
    for (int n = 0; n < 10000 && std::fabs(del) > std::fabs(sum) * 1e-16; ++n) {
      ap += 1;
      del *= x / ap;
      sum += del;
    }
    return sum * std::exp(lead);
  }
  const double tiny = 1e-300;
  double b = x + 1 - a, c = 1 / tiny, d = 1 / b, h = d;
  for (int i = 1; i <= 10000; ++i) {
    double an = -i * (i - a);
    b += 2;
    d = an * d + b;
    if (std::fabs(d) < tiny) d = tiny;
    c = b + an / c;
    if (std::fabs(c) < tiny) c = tiny;
    d = 1 / d;
    double del = d * c;
    h *= del;
    if (std::fabs(del - 1) < 1e-16) break;
  }
  return 1 - std::exp(lead) * h;
}

// Upper-alpha point of F(v1, v2); v2 = kInfinity gives chi-square(v1) / v1.
double FUpper(double alpha, double v1, double v2) {
  if (v2 >= kInfinity) {
    double chi = Bisect([&](double x) { return IncGamma(v1 / 2, x / 2); }, 1 - alpha, 0, 1000);
    return chi / v1;
  }
  double x = Bisect([&](double x) { return IncBeta(v1 / 2, v2 / 2, x); }, 1 - alpha, 0, 1);
  return v2 * x / (v1 * (1 - x));
}

// Upper-tail point of Student's t.
double TUpper(double alpha, double v) {
  if (v >= kInfinity) return Bisect(Phi, 1 - alpha, 0, 40);
  return std::sqrt(FUpper(2 * alpha, 1, v));
}

// A distribution function of a non-negative variable, tabulated at 0, step,
// 2 step, ...; between the points a cubic (Catmull-Rom) interpolation, and 1
// from the last interval on.
class TabulatedCdf {
 public:
  TabulatedCdf(double step, std::vector<double> values) : step_(step), cdf_(std::move(values)) {}

  double operator()(double x) const {
    if (x <= 0) return 0;
    double pos = x / step_;
    int last = static_cast<int>(cdf_.size()) - 1;
    if (pos >= last - 1) return 1;
    int j = static_cast<int>(pos);
    double t = pos - j;
    double y0 = j > 0 ? cdf_[j - 1] : -cdf_[1];  // odd about 0 to first order
    double y1 = cdf_[j], y2 = cdf_[j + 1], y3 = cdf_[j + 2];
    return y1 + 0.5 * t * (y2 - y0 + t * (2 * y0 - 5 * y1 + 4 * y2 - y3 + t * (3 * (y1 - y2) + y3 - y0)));
  }

  // E(X) and E(X^2) by Simpson's rule over the tabulated points.
  void Moments(double& mean, double& meanSquare) const {
    mean = meanSquare = 0;
    int n = static_cast<int>(cdf_.size()) - 1;
    for (int j = 0; j <= n; ++j) {
      double weight = (j == 0 || j == n) ? 1 : (j % 2 ? 4 : 2);
      double x = j * step_, tail = 1 - cdf_[j];
      mean += weight * tail;
      meanSquare += weight * 2 * x * tail;
    }
    mean *= step_ / 3;
    meanSquare *= step_ / 3;
  }

 private:
  double step_;
  std::vector<double> cdf_;
};

// The distribution of the range of p standard normals.
TabulatedCdf RangeCdf(int p) {
  const double step = 0.02, xMax = 9, wMax = 16;
  int nx = static_cast<int>(std::lround(2 * xMax / step));  // even: Simpson
  int nw = static_cast<int>(std::lround(wMax / step));
  std::vector<double> phi(nx + nw + 1), dens(nx + 1);
  for (int i = 0; i <= nx + nw; ++i) phi[i] = Phi(-xMax + i * step);
  for (int i = 0; i <= nx; ++i) {
    double x = -xMax + i * step;
    double weight = (i == 0 || i == nx) ? 1 : (i % 2 ? 4 : 2);
    dens[i] = weight * step / 3 * std::exp(-x * x / 2) / std::sqrt(2 * std::numbers::pi);
  }
  std::vector<double> cdf(nw + 1);
  for (int j = 0; j <= nw; ++j) {
    double sum = 0;
    for (int i = 0; i <= nx; ++i) {
      double d = phi[i + j] - phi[i], power = 1;
      for (int e = 1; e < p; ++e) power *= d;
      sum += dens[i] * power;
    }
    cdf[j] = std::min(1.0, p * sum);
  }
  return TabulatedCdf(step, std::move(cdf));
}

// How far in t the integral of Q(t)^k must run (see DeviationCdfs). Since
// |Q(t)| <= 2 phi(0) / t < 0.8 / t, the part beyond T is below
// 0.8^k T^(1-k) / (k - 1), which fixes T from k = 7 on. For k = 3 to 6 that
// bound is too slow; there Q(t) ~ 2 phi(c) sin(ct) / t, whose odd powers
// average out, and the reaches below keep the neglected part under 1e-8.
double DeviationReach(int k) {
  switch (k) {
    case 3: return 400;
    case 4: return 200;
    case 5: return 100;
    case 6: return 40;
    default: return std::min(40.0, std::pow(std::pow(0.8, k) / ((k - 1) * 1e-10), 1.0 / (k - 1)));
  }
}

// For each k of ks (ascending, from 2), the distribution of the largest
// absolute deviation of k standard normals from their mean,
// P(max |z_i - zbar| <= c), for c = 0, 0.01, ... 8.
std::vector<TabulatedCdf> DeviationCdfs(const std::vector<int>& ks) {
  const double cStep = 0.01, cMax = 8, h = 0.005;
  const int nc = static_cast<int>(std::lround(cMax / cStep));
  std::vector<double> reach;
  for (int k : ks) reach.push_back(k > 2 ? DeviationReach(k) : 0);
  const double tMax = *std::max_element(reach.begin(), reach.end());
  const int steps = static_cast<int>(std::ceil(tMax / h));
  std::vector<std::vector<double>> values(ks.size(), std::vector<double>(nc + 1, 0.0));
  std::vector<double> sum(ks.size());
  for (int j = 1; j <= nc; ++j) {
    const double c = j * cStep, amp = 2 * std::exp(-c * c / 2) / std::sqrt(2 * std::numbers::pi);
    // The trapezoidal rule in t: Q^k is even and analytic, and its transform
    // is negligible beyond the reach of the step, so the rule is very exact.
    auto accumulate = [&](double t, double q, double weight) {
      double q2 = q * q, q3 = q2 * q;
      for (std::size_t i = 0; i < ks.size(); ++i) {
        int k = ks[i];
        if (k == 2) continue;
        if (t > reach[i]) break;
        double power = k == 3 ? q3 : k == 4 ? q2 * q2 : k == 5 ? q3 * q2 : k == 6 ? q3 * q3 : std::pow(q, k);
        sum[i] += weight * power;
      }
    };
    std::fill(sum.begin(), sum.end(), 0.0);
    double q = std::erf(c / std::sqrt(2.0));
    accumulate(0, q, 0.5);
    // Runge-Kutta on Q' = -t Q + amp sin(ct); sin and cos of ct are turned
    // by half steps and set afresh now and then.
    const double turnC = std::cos(c * h / 2), turnS = std::sin(c * h / 2);
    double sn = 0, cs = 1;
    for (int n = 0; n < steps; ++n) {
      double t = n * h;
      if (n % 1024 == 0) sn = std::sin(c * t), cs = std::cos(c * t);
      double snMid = sn * turnC + cs * turnS, csMid = cs * turnC - sn * turnS;
      double snEnd = snMid * turnC + csMid * turnS, csEnd = csMid * turnC - snMid * turnS;
      double k1 = -t * q + amp * sn;
      double k2 = -(t + h / 2) * (q + h / 2 * k1) + amp * snMid;
      double k3 = -(t + h / 2) * (q + h / 2 * k2) + amp * snMid;
      double k4 = -(t + h) * (q + h * k3) + amp * snEnd;
      q += h / 6 * (k1 + 2 * k2 + 2 * k3 + k4);
      sn = snEnd, cs = csEnd;
      accumulate(t + h, q, 1);
    }
    for (std::size_t i = 0; i < ks.size(); ++i) {
      double p = ks[i] == 2 ? std::erf(c)
                            : std::sqrt(2 * std::numbers::pi * ks[i]) / std::numbers::pi * h * sum[i];
      values[i][j] = std::clamp(p, 0.0, 1.0);
    }
  }
  std::vector<TabulatedCdf> cdfs;
  for (auto& v : values) cdfs.emplace_back(cStep, std::move(v));
  return cdfs;
}

// The distribution of s = chi_f / sqrt f, the estimate of a unit sigma on f
// degrees of freedom, as the nodes and weights of the trapezoidal rule in
// u = ln s (smooth and fast decaying, so the rule converges geometrically).
// Expect(cdf, q) is P(X <= q s) for X independent of s with the given
// distribution; f = kInfinity means s = 1.
class SigmaEstimate {
 public:
  explicit SigmaEstimate(double f) {
    if (f >= kInfinity) {
      nodes_ = {{1, 1}};
      return;
    }
    // The density of u is exp(logC + f u - f e^(2u) / 2), at its top at u = 0;
    // the rule runs where it is within e^-40 of the top.
    double logC = (f / 2) * std::log(f) - (f / 2 - 1) * std::log(2.0) - std::lgamma(f / 2);
    double spread = 1 / std::sqrt(2 * f);
    auto drop = [f](double u) { return f * u - f * (std::exp(2 * u) - 1) / 2; };
    double lo = 0, hi = 0;
    while (drop(lo) > -40) lo -= spread;
    while (drop(hi) > -40) hi += spread;
    double h = std::min(0.02, spread / 4);
    for (double u = lo; u <= hi; u += h)
      nodes_.push_back({std::exp(u), h * std::exp(logC + f * u - f * std::exp(2 * u) / 2)});
  }

  double Expect(const TabulatedCdf& cdf, double q) const {
    double sum = 0;
    for (const Node& n : nodes_) sum += cdf(q * n.s) * n.weight;
    return sum;
  }

 private:
  struct Node {
    double s, weight;
  };
  std::vector<Node> nodes_;
};

bool Exec(sqlite3* db, const std::string& sql) {
  char* message = nullptr;
  if (sqlite3_exec(db, sql.c_str(), nullptr, nullptr, &message) == SQLITE_OK) return true;
  std::cerr << "mktables: " << (message ? message : "?") << "\n";
  sqlite3_free(message);
  return false;
}

std::string Number(double x) {
  char buf[40];
  std::snprintf(buf, sizeof buf, "%.10g", x);
  return buf;
}

// A table with integer keys and real values; the rows as given.
bool WriteTable(sqlite3* db, const std::string& name, const std::vector<std::string>& keys,
                const std::vector<std::string>& values, const std::vector<std::vector<double>>& rows) {
  std::string create = "CREATE TABLE " + name + " (";
  for (const std::string& k : keys) create += "\"" + k + "\" INTEGER, ";
  for (std::size_t i = 0; i < values.size(); ++i)
    create += "\"" + values[i] + "\" REAL" + (i + 1 < values.size() ? ", " : ")");
  if (!Exec(db, create)) return false;
  for (const auto& row : rows) {
    std::string insert = "INSERT INTO " + name + " VALUES (";
    for (std::size_t i = 0; i < row.size(); ++i) insert += Number(row[i]) + (i + 1 < row.size() ? ", " : ")");
    if (!Exec(db, insert)) return false;
  }
  return true;
}

std::vector<std::string> Names(const std::vector<int>& numbers) {
  std::vector<std::string> names;
  for (int n : numbers) names.push_back(std::to_string(n));
  return names;
}

bool WriteF(sqlite3* db) {
  const std::vector<int> v1s = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 12, 15, 20, 24, 30, 40, 60, 120};
  std::vector<int> v2s;
  for (int v = 1; v <= 30; ++v) v2s.push_back(v);
  for (int v : {40, 60, 120, 10000}) v2s.push_back(v);
  const struct {
    const char* name;
    double alpha;
  } levels[] = {{"TableF01", 0.01}, {"TableF05", 0.05}, {"TableF10", 0.10}};
  for (const auto& level : levels) {
    std::vector<std::vector<double>> rows;
    for (int v2 : v2s) {
      std::vector<double> row = {static_cast<double>(v2)};
      for (int v1 : v1s) row.push_back(Round(FUpper(level.alpha, v1, v2), 2));
      rows.push_back(row);
    }
    if (!WriteTable(db, level.name, {"v2"}, Names(v1s), rows)) return false;
  }
  return true;
}

bool WriteT(sqlite3* db) {
  const std::vector<int> columns = {1, 5, 10, 25, 50, 100, 250};
  std::vector<int> vs;
  for (int v = 1; v <= 30; ++v) vs.push_back(v);
  for (int v : {35, 40, 45, 50, 60, 70, 80, 90, 100, 120, 150, 200, 300, 500, 1000, 10000}) vs.push_back(v);
  std::vector<std::vector<double>> rows;
  for (int v : vs) {
    std::vector<double> row = {static_cast<double>(v)};
    for (int c : columns) row.push_back(Round(TUpper(c / 1000.0, v), 3));
    rows.push_back(row);
  }
  return WriteTable(db, "tPercent", {"v"}, Names(columns), rows);
}

bool WriteBC(sqlite3* db, const std::vector<TabulatedCdf>& ranges) {
  std::vector<std::vector<double>> rowsC, rowsB;
  for (int n = 2; n <= 30; ++n) {
    double d2, m2;
    ranges[n - 2].Moments(d2, m2);
    double d3 = std::sqrt(m2 - d2 * d2);
    double c4 = std::sqrt(2.0 / (n - 1)) * std::exp(std::lgamma(n / 2.0) - std::lgamma((n - 1) / 2.0));
    double rn = std::sqrt(static_cast<double>(n));
    double b = 3 * std::sqrt(1 - c4 * c4) / c4, d = 3 * d3 / d2;
    rowsC.push_back({static_cast<double>(n), Round(d2, 3), Round(c4, 4), Round(3 / (d2 * rn), 3),
                     Round(3 / (c4 * rn), 3), Round(std::max(0.0, 1 - b), 3), Round(1 + b, 3),
                     Round(std::max(0.0, 1 - d), 3), Round(1 + d, 3)});
    auto a = [](double v) {
      return std::sqrt(2 / v) * std::exp(std::lgamma((v + 1) / 2) - std::lgamma(v / 2));
    };
    for (int k = 1; k <= 30; ++k) {
      double star2 = d2 * d2 + d3 * d3 / k;
      double target = std::sqrt(d2 * d2 / star2);
      double logV = Bisect([&](double lv) { return a(std::exp(lv)); }, target, std::log(0.01), std::log(1e7));
      rowsB.push_back({static_cast<double>(n), static_cast<double>(k), Round(std::exp(logV), 2),
                       Round(std::sqrt(star2), 3)});
    }
    rowsB.push_back({static_cast<double>(n), 32767, Round(d2 * d2 / (2 * d3 * d3), 3), Round(d2, 3)});
  }
  return WriteTable(db, "TableC", {"n"}, {"d2", "c4", "A2", "A3", "B3", "B4", "D3", "D4"}, rowsC) &&
         WriteTable(db, "TableB", {"n", "k"}, {"v", "d2"}, rowsB);
}

bool WriteDuncan(sqlite3* db, const std::vector<TabulatedCdf>& ranges) {
  std::vector<int> fs;
  for (int f = 1; f <= 20; ++f) fs.push_back(f);
  for (int f : {22, 24, 26, 28, 30, 40, 60, 100, 10000}) fs.push_back(f);
  std::vector<int> ps;
  for (int p = 2; p <= 14; ++p) ps.push_back(p);
  const struct {
    const char* name;
    double alpha;
  } levels[] = {{"Duncan01", 0.01}, {"Duncan05", 0.05}};
  for (const auto& level : levels) {
    std::vector<std::vector<double>> rows;
    for (int f : fs) {
      SigmaEstimate sigma(f);
      std::vector<double> row = {static_cast<double>(f)};
      double before = 0;
      for (int p : ps) {
        double target = std::pow(1 - level.alpha, p - 1);
        double q = Bisect([&](double x) { return sigma.Expect(ranges[p - 2], x); }, target, 0, 400);
        q = std::max(before, Round(q, 2));
        row.push_back(q);
        before = q;
      }
      rows.push_back(row);
    }
    if (!WriteTable(db, level.name, {"f"}, Names(ps), rows)) return false;
  }
  return true;
}

bool WriteD(sqlite3* db) {
  std::vector<int> ks;
  for (int k = 2; k <= 50; ++k) ks.push_back(k);
  for (int k = 55; k <= 100; k += 5) ks.push_back(k);
  for (int k = 110; k <= 200; k += 10) ks.push_back(k);
  for (int k = 225; k <= 500; k += 25) ks.push_back(k);
  std::vector<int> vs;
  for (int v = 1; v <= 30; ++v) vs.push_back(v);
  for (int v : {35, 40, 45, 50, 60, 70, 80, 90, 100, 120, 150, 200, 300, 500, 1000, 2000, 5000, 10000, 32767})
    vs.push_back(v);
  std::vector<TabulatedCdf> deviations = DeviationCdfs(ks);
  std::vector<std::vector<double>> rows;
  for (int alphax100 : {1, 5, 10}) {
    double target = 1 - alphax100 / 100.0;
    for (int v : vs) {
      SigmaEstimate sigma(v);
      std::vector<double> row = {static_cast<double>(alphax100), static_cast<double>(v)};
      for (std::size_t i = 0; i < ks.size(); ++i) {
        double h = Bisect([&](double x) { return sigma.Expect(deviations[i], x); }, target, 0, 2000);
        row.push_back(Round(h, 2));
      }
      rows.push_back(row);
    }
  }
  return WriteTable(db, "TableD", {"Alphax100", "v"}, Names(ks), rows);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: mktables OUT.MDB\n";
    return 2;
  }
  std::string path = argv[1];
  std::remove(path.c_str());
  sqlite3* db = nullptr;
  if (sqlite3_open(path.c_str(), &db) != SQLITE_OK) {
    std::cerr << "mktables: cannot create " << path << "\n";
    sqlite3_close(db);
    return 1;
  }
  std::vector<TabulatedCdf> ranges;  // ranges[p - 2] for p = 2..30
  for (int p = 2; p <= 30; ++p) ranges.push_back(RangeCdf(p));
  bool ok = Exec(db, "BEGIN") && WriteF(db) && WriteT(db) && WriteBC(db, ranges) && WriteDuncan(db, ranges) &&
            WriteD(db) && Exec(db, "COMMIT");
  sqlite3_close(db);
  if (!ok) std::remove(path.c_str());
  return ok ? 0 : 1;
}
