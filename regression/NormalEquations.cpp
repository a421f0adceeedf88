#include "regression/NormalEquations.h"

#include <algorithm>
#include <cmath>

namespace kestrow {

void CrossProducts(const double* const* columns, int p, const double* y, int n, double* xtx, double* xty) {
  for (int a = 0; a < p; ++a) {
    for (int b = 0; b < p; ++b) {
      double sum = 0;
      for (int i = 0; i < n; ++i) sum = sum + columns[a][i] * columns[b][i];
      xtx[static_cast<std::ptrdiff_t>(a) * p + b] = sum;
    }
    double sum = 0;
    for (int i = 0; i < n; ++i) sum = sum + columns[a][i] * y[i];
    xty[a] = sum;
  }
}

void PivotStep(const double* from, int fromSize, const int* pick, int size, int k, double* to) {
  const auto at = [](const double* m, int stride, int i, int j) { return m[static_cast<std::ptrdiff_t>(i) * stride + j]; };
  const int q = pick[k];
  double d = at(from, fromSize, q, q);
  if (d == 0) d = 0.0001;
  // The pivot row divided by the pivot; its own place takes the inverse's 1/d.
  double* rowK = to + static_cast<std::ptrdiff_t>(k) * size;
  const double* src = from + static_cast<std::ptrdiff_t>(q) * fromSize;
  for (int u = 0; u < size; ++u) rowK[u] = u == k ? 1.0 / d : src[pick[u]] / d;
  // Every other row gains f times the pivot row, f being minus its element in
  // the pivot column before the step.
  for (int v = 0; v < size; ++v) {
    if (v == k) continue;
    const double* in = from + static_cast<std::ptrdiff_t>(pick[v]) * fromSize;
    double* out = to + static_cast<std::ptrdiff_t>(v) * size;
    const double f = -in[q];
    for (int u = 0; u < size; ++u) out[u] = in[pick[u]] + f * rowK[u];
    out[k] = f * rowK[k];
  }
}

double Inflation(const double* inverse, int stride, int size, const double* diagonal) {
  double worst = 0;
  for (int j = 0; j < size; ++j) {
    double v = std::fabs(inverse[static_cast<std::ptrdiff_t>(j) * stride + j]) * diagonal[j];
    if (!(v < worst)) worst = v;  // a NaN counts as the worst
  }
  return worst;
}

void Solve(const double* inverse, int stride, int p, const double* xty, double* beta) {
  for (int j = 0; j < p; ++j) {
    const double* row = inverse + static_cast<std::ptrdiff_t>(j) * stride;
    double sum = 0;
    for (int k = 0; k < p; ++k) sum = sum + row[k] * xty[k];
    beta[j] = sum;
  }
}

double ResidualSS(const double* const* columns, const double* beta, int p, const double* y, int n, double* pred) {
  // Rows eight at a time, each fitted value summed over the terms in order;
  // the squared residual of row i goes to running sum i mod 4.
  double part[4] = {0, 0, 0, 0};
  constexpr int BLOCK = 8;
  for (int i = 0; i < n; i += BLOCK) {
    const int m = n - i < BLOCK ? n - i : BLOCK;
    double acc[BLOCK] = {0, 0, 0, 0, 0, 0, 0, 0};
    if (m == BLOCK) {
      for (int j = 0; j < p; ++j) {
        const double b = beta[j];
        const double* x = columns[j] + i;
        for (int k = 0; k < BLOCK; ++k) acc[k] = acc[k] + b * x[k];
      }
    } else {
      for (int j = 0; j < p; ++j)
        for (int k = 0; k < m; ++k) acc[k] = acc[k] + beta[j] * columns[j][i + k];
    }
    for (int k = 0; k < m; ++k) {
      pred[i + k] = acc[k];
      const double r = y[i + k] - acc[k];
      part[(i + k) % 4] = part[(i + k) % 4] + r * r;
    }
  }
  return (part[0] + part[1]) + (part[2] + part[3]);
}

double TotalSS(const double* y, int n) {
  double sum = 0;
  for (int i = 0; i < n; ++i) sum = sum + y[i];
  const double mean = n > 0 ? sum / n : 0;
  double sst = 0;
  for (int i = 0; i < n; ++i) sst = sst + (y[i] - mean) * (y[i] - mean);
  return sst;
}

double LargestSize(const double* y, int n) {
  double big = 0;
  for (int i = 0; i < n; ++i) big = std::max(big, std::fabs(y[i]));
  return big;
}

FitFigures Figures(double sse, double sst, double yScale, int n, int p) {
  FitFigures out;
  // The residual degrees of freedom, counted in 16 bits as the model's sizes are.
  const auto df = static_cast<std::int16_t>(n - p);
  if (df <= 1) {
    out.verdict = FitFigures::TOO_FEW_DF;
    return out;
  }
  if (sst == 0) {
    out.verdict = FitFigures::NO_VARIATION;
    return out;
  }
  // Observations are single-precision numbers: a residual below a millionth
  // of their last digit is the rounding of the fit, not the data's.
  const double floor = 1e-12 * yScale;
  if (sse <= n * floor * floor) {
    out.verdict = FitFigures::EXACT_FIT;
    return out;
  }
  const double unexplained = sse / sst;
  out.mse = sse / df;
  out.fSSE = static_cast<float>(sse);
  out.fMSE = static_cast<float>(out.mse);
  out.fRSquared = static_cast<float>(1 - unexplained);
  out.fRSquaredAdj = static_cast<float>(1 - unexplained * (n - 1) / (n - p));
  return out;
}

}  // namespace kestrow
