// An independent least-squares fit for the regression tests: Householder QR
// in long double, with the coefficients, the residual sum of squares,
// R-squared and the standard errors of the coefficients, and an exhaustive
// best-subset search by Mallows' Cp.
#pragma once

#include <cmath>
#include <vector>

namespace kestrow::test {

struct Fit {
  std::vector<long double> beta, se, t;
  long double sse = 0, sst = 0, rsq = 0, mse = 0;
  bool ok = false;
};

// y on the columns of x (each a vector of n values; the first the constant).
inline Fit LeastSquares(const std::vector<std::vector<double>>& x, const std::vector<double>& y) {
  const std::size_t p = x.size(), n = y.size();
  Fit fit;
  if (p == 0 || n <= p) return fit;
  // A = [x | y], n rows, reduced in place by Householder reflections.
  std::vector<std::vector<long double>> a(n, std::vector<long double>(p + 1));
  for (std::size_t i = 0; i < n; ++i) {
    for (std::size_t j = 0; j < p; ++j) a[i][j] = x[j][i];
    a[i][p] = y[i];
  }
  for (std::size_t k = 0; k < p; ++k) {
    long double norm = 0;
    for (std::size_t i = k; i < n; ++i) norm += a[i][k] * a[i][k];
    norm = std::sqrt(norm);
    if (norm == 0) return fit;
    long double alpha = a[k][k] > 0 ? -norm : norm;
    std::vector<long double> v(n, 0);
    for (std::size_t i = k; i < n; ++i) v[i] = a[i][k];
    v[k] -= alpha;
    long double vv = 0;
    for (std::size_t i = k; i < n; ++i) vv += v[i] * v[i];
    for (std::size_t j = k; j <= p; ++j) {
      long double dot = 0;
      for (std::size_t i = k; i < n; ++i) dot += v[i] * a[i][j];
      for (std::size_t i = k; i < n; ++i) a[i][j] -= 2 * dot / vv * v[i];
    }
  }
  // R beta = Q'y; the inverse of R gives (X'X)^-1 = R^-1 R^-T.
  fit.beta.assign(p, 0);
  for (std::size_t k = p; k-- > 0;) {
    long double s = a[k][p];
    for (std::size_t j = k + 1; j < p; ++j) s -= a[k][j] * fit.beta[j];
    fit.beta[k] = s / a[k][k];
  }
  std::vector<std::vector<long double>> rinv(p, std::vector<long double>(p, 0));
  for (std::size_t j = 0; j < p; ++j) {
    rinv[j][j] = 1 / a[j][j];
    for (std::size_t i = j; i-- > 0;) {
      long double s = 0;
      for (std::size_t k = i + 1; k <= j; ++k) s += a[i][k] * rinv[k][j];
      rinv[i][j] = -s / a[i][i];
    }
  }
  long double mean = 0;
  for (double v : y) mean += v;
  mean /= n;
  for (std::size_t i = 0; i < n; ++i) {
    long double pred = 0;
    for (std::size_t j = 0; j < p; ++j) pred += x[j][i] * fit.beta[j];
    fit.sse += (y[i] - pred) * (y[i] - pred);
    fit.sst += (y[i] - mean) * (y[i] - mean);
  }
  fit.rsq = 1 - fit.sse / fit.sst;
  fit.mse = fit.sse / (n - p);
  for (std::size_t j = 0; j < p; ++j) {
    long double diag = 0;
    for (std::size_t k = j; k < p; ++k) diag += rinv[j][k] * rinv[j][k];
    fit.se.push_back(std::sqrt(diag * fit.mse));
    fit.t.push_back(std::fabs(fit.beta[j]) / fit.se.back());
  }
  fit.ok = true;
  return fit;
}

}  // namespace kestrow::test
