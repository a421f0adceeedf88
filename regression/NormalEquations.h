// The arithmetic of one least-squares fit, shared by the fit of a model and
// by the search over the subsets of a model, so that the two reach the same
// figures bit for bit.
//
// The normal equations are solved by Gauss-Jordan elimination in the natural
// order of the terms, with no pivot search: a pivot of exactly 0 is taken as
// 0.0001, which is the whole provision for a singular matrix. The matrix is
// kept in compact form: a column that has been pivoted holds its column of
// the inverse, a column not yet pivoted its column of the reduced matrix; the
// columns that the plain elimination would carry besides (the unit columns
// of both halves) never change a figure and are left out.
#pragma once

#include <cstdint>
#include <vector>

namespace kestrow {

// X'X and X'y of p columns of n rows, each sum over the rows in their order.
void CrossProducts(const double* const* columns, int p, const double* y, int n, double* xtx, double* xty);

// One elimination step. The result (size by size, row by row) is the matrix
// `from` (fromSize square) restricted to the positions pick[0..size), with the
// term at result position k pivoted. The same step serves the whole
// inversion (pick the identity, every position in turn) and the search,
// which drops the terms left out of a subset as it goes.
void PivotStep(const double* from, int fromSize, const int* pick, int size, int k, double* to);

// The largest variance inflation of the terms: the diagonal of the inverse
// against the diagonal of the cross products. A fit whose inflation reaches
// MAX_INFLATION has lost too many digits to print its coefficients.
double Inflation(const double* inverse, int stride, int size, const double* diagonal);
inline constexpr double MAX_INFLATION = 1e8;

// The coefficients: the inverse (p square, rows stride apart) times X'y.
void Solve(const double* inverse, int stride, int p, const double* xty, double* beta);

// Row i of the fitted values and of the residuals, the terms' columns taken
// in order; the sum of squared residuals. pred is work space of n values.
double ResidualSS(const double* const* columns, const double* beta, int p, const double* y, int n, double* pred);

// The sum of squares of y about its mean; the largest size of a y.
double TotalSS(const double* y, int n);
double LargestSize(const double* y, int n);

// The figures of a fit as the program shows them, from its sums of squares.
struct FitFigures {
  enum Verdict { FITTED, TOO_FEW_DF, NO_VARIATION, EXACT_FIT } verdict = FITTED;
  float fSSE = 0, fMSE = 0, fRSquared = 0, fRSquaredAdj = 0;
  double mse = 0;  // the error variance, unrounded, for the standard errors
};
// n observations, p terms; yScale the largest size of an observation, by
// which a residual sum of squares that is only rounding tells an exact fit.
FitFigures Figures(double sse, double sst, double yScale, int n, int p);

}  // namespace kestrow
