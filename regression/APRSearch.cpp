#include "regression/APRSearch.h"

#include <bit>

#include "core/Study.h"
#include "core/Ui.h"
#include "regression/NormalEquations.h"
#include "regression/Regress.h"

namespace kestrow {


std::vector<APRTerm> APRSearch::TermTable(const std::vector<std::pair<std::string, std::string>>& textAndTerm) {
  std::vector<APRTerm> table;
  for (std::size_t i = 0; i < textAndTerm.size(); ++i) {
    APRTerm t;
    t.sText = textAndTerm[i].first;
    t.sTerm = textAndTerm[i].second;
    t.lBit = i == 0 || i > 32 ? 0 : std::uint32_t{1} << (i - 1);
    table.push_back(t);
  }
  // A term needs the single-factor term of each of its factors.
  for (APRTerm& t : table)
    for (int f : TermFactors(t.sTerm))
      for (const APRTerm& other : table)
        if (other.sTerm == std::to_string(f)) t.lNeeds |= other.lBit;
  return table;
}

bool APRSearch::Prepare(Study& study, const std::string& rvKey, int iFlag, const std::vector<APRTerm>& terms) {
  terms_ = terms;
  rows_.clear();
  finished_ = false;
  best_ = -1;
  numRuns_ = study.iNumRuns;
  Regress fit;
  fit.Init(study);
  fit.SetFlag(iFlag);
  fit.ZapTerms();
  for (const APRTerm& t : terms_) {
    Rterm r;
    InitRterm(r);
    r.sTerm = t.sTerm;
    fit.AddTerm(r);
  }
  if (!fit.PrepareColumns(rvKey)) return false;
  columns_ = fit.Columns();
  y_ = fit.Observations();
  n_ = static_cast<int>(y_.size());
  sst_ = TotalSS(y_.data(), n_);
  yScale_ = LargestSize(y_.data(), n_);
  if (n_ > 0 && sst_ == 0) {
    ReportError("The response does not vary: there is nothing to fit", "StartAPR");
    return false;
  }
  const int T = NumTerms();
  std::vector<const double*> cols(static_cast<std::size_t>(T));
  for (int j = 0; j < T; ++j) cols[static_cast<std::size_t>(j)] = columns_[static_cast<std::size_t>(j)].data();
  xtx_.assign(static_cast<std::size_t>(T * T), 0.0);
  xty_.assign(static_cast<std::size_t>(T), 0.0);
  CrossProducts(cols.data(), T, y_.data(), n_, xtx_.data(), xty_.data());
  diagonal_.resize(static_cast<std::size_t>(T));
  for (int j = 0; j < T; ++j) diagonal_[static_cast<std::size_t>(j)] = xtx_[static_cast<std::size_t>(j * T + j)];
  return true;
}

bool APRSearch::Run(bool hierarchy, const std::function<bool()>& keepGoing) {
  rows_.clear();
  finished_ = stopped_ = false;
  best_ = -1;
  tooFewDF_ = collinear_ = exact_ = 0;
  hierarchy_ = hierarchy;
  keepGoing_ = keepGoing;
  look_.Reset();
  const int T = NumTerms();
  if (T < 2 || T > MAX_TERMS) return false;
  const auto size = static_cast<std::size_t>(T);
  levels_.assign(size + 1, Node{});
  for (Node& node : levels_) {
    node.live.reserve(size);
    node.pick.reserve(size);
    node.m.resize(size * size);
  }
  const auto width = static_cast<std::size_t>(n_);
  beta_.resize(size);
  pred_.resize(width);
  xtyOf_.resize(size);
  diagOf_.resize(size);
  colsOf_.resize(size);
  // The constant is always in: every subset starts from its pivot.
  Node& root = levels_[0];
  root.live.clear();
  for (int j = 0; j < T; ++j) root.live.push_back(j);
  root.pick = root.live;
  PivotStep(xtx_.data(), T, root.pick.data(), T, 0, root.m.data());
  root.chosen = 1;
  Visit(0, 0, 0);
  SortByMask();
  finished_ = !stopped_;
  if (finished_) FindBest();
  keepGoing_ = nullptr;
  return finished_;
}

void APRSearch::Visit(int depth, std::uint32_t mask, std::uint32_t pending) {
  const Node& parent = levels_[static_cast<std::size_t>(depth)];
  Node& child = levels_[static_cast<std::size_t>(depth) + 1];
  const int size = static_cast<int>(parent.live.size()), s = parent.chosen;
  for (int q = s; q < size && !stopped_; ++q) {
    const int c = parent.live[static_cast<std::size_t>(q)];
    const APRTerm& term = terms_[static_cast<std::size_t>(c)];
    const std::uint32_t bit = term.lBit, upTo = bit | (bit - 1);
    std::uint32_t needs = pending;
    if (hierarchy_ && term.lNeeds != 0) {
      // A needed term before this one had to be chosen already; one after it
      // may still come.
      const std::uint32_t before = term.lNeeds & upTo;
      if ((before & (mask | bit)) != before) continue;
      needs |= term.lNeeds & ~upTo;
    }
    child.pick.clear();
    for (int u = 0; u < s; ++u) child.pick.push_back(u);
    for (int u = q; u < size; ++u) child.pick.push_back(u);
    child.live.clear();
    for (int u : child.pick) child.live.push_back(parent.live[static_cast<std::size_t>(u)]);
    const int childSize = static_cast<int>(child.pick.size());
    PivotStep(parent.m.data(), size, child.pick.data(), childSize, s, child.m.data());
    child.chosen = s + 1;
    const std::uint32_t childMask = mask | bit;
    if ((needs & ~childMask) == 0) Record(child.m.data(), childSize, child.live.data(), s + 1, childMask);
    if (q + 1 < size) Visit(depth + 1, childMask, needs);
    if (look_.Due() && keepGoing_ && !keepGoing_()) stopped_ = true;
  }
}

// The fit of one subset from its pivoted matrix, with the checks and in the
// order of the fit of a model.
void APRSearch::Record(const double* inverse, int stride, const int* live, int p, std::uint32_t mask) {
  if (static_cast<std::int16_t>(n_ - p) <= 1) {
    ++tooFewDF_;
    return;
  }
  for (int j = 0; j < p; ++j) {
    const auto t = static_cast<std::size_t>(live[j]);
    diagOf_[static_cast<std::size_t>(j)] = diagonal_[t];
    xtyOf_[static_cast<std::size_t>(j)] = xty_[t];
    colsOf_[static_cast<std::size_t>(j)] = columns_[t].data();
  }
  if (Inflation(inverse, stride, p, diagOf_.data()) >= MAX_INFLATION) {
    ++collinear_;
    return;
  }
  Solve(inverse, stride, p, xtyOf_.data(), beta_.data());
  const double sse = ResidualSS(colsOf_.data(), beta_.data(), p, y_.data(), n_, pred_.data());
  const FitFigures fig = Figures(sse, sst_, yScale_, n_, p);
  if (fig.verdict != FitFigures::FITTED) {
    ++exact_;
    return;
  }
  rows_.push_back(APRRow{mask, fig.fSSE, fig.fMSE, fig.fRSquared, fig.fRSquaredAdj});
  if (rows_.size() >= MAX_ROWS) stopped_ = true;
}

// The rows come depth first; the list is in ascending order of the masks.
// Two passes of a radix sort on the halves of the mask.
void APRSearch::SortByMask() {
  std::vector<APRRow> other(rows_.size());
  for (int shift : {0, 16}) {
    std::vector<std::size_t> start(65537, 0);
    for (const APRRow& r : rows_) ++start[((r.mask >> shift) & 0xFFFF) + 1];
    for (std::size_t b = 1; b < start.size(); ++b) start[b] += start[b - 1];
    for (const APRRow& r : rows_) other[start[(r.mask >> shift) & 0xFFFF]++] = r;
    rows_.swap(other);
  }
}

int APRSearch::RowTerms(const APRRow& row) { return std::popcount(row.mask) + 1; }

std::string APRSearch::RowText(const APRRow& row) const {
  std::string text;
  for (std::size_t j = 1; j < terms_.size(); ++j)
    if (row.mask & terms_[j].lBit) text += (text.empty() ? "" : ", ") + terms_[j].sText;
  return text;
}

float APRSearch::Cp(const APRRow& row) const {
  return static_cast<float>(static_cast<double>(row.fSSE) / msFull_ - numRuns_ + 2 * RowTerms(row));
}

// Cp against the last row, the full model when it fitted; the first row of
// the smallest Cp is the best.
void APRSearch::FindBest() {
  best_ = -1;
  if (rows_.empty()) return;
  msFull_ = rows_.back().fMSE;
  double lowest = 1e9;
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    double cp = Cp(rows_[i]);
    if (cp < lowest) {
      lowest = cp;
      best_ = static_cast<int>(i);
    }
  }
}

}  // namespace kestrow
