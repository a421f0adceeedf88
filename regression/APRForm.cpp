#include "regression/APRForm.h"

#include "core/Formatters.h"
#include "core/Grid.h"
#include "core/Language.h"
#include "core/Study.h"
#include "core/Text.h"
#include "core/Ui.h"

namespace kestrow {

APRForm::APRForm(Study& study, const std::string& rvKey, int flag,
                 const std::vector<std::pair<std::string, std::string>>& grid, const std::string& modelName)
    : lblModelType(modelName), study_(study), rvKey_(rvKey), flag_(flag), terms_(APRSearch::TermTable(grid)) {}

std::string APRForm::cmdStartCaption() const { return GetText(running_ ? "Stop" : "Start"); }

void APRForm::cmdStart_Click() {
  running_ = !running_;
  if (running_) Start();  // a click while running only lowers the flag: the search stops at its next look
}

void APRForm::Start() {
  const int T = static_cast<int>(terms_.size());
  if (T < 2 || T > APRSearch::MAX_TERMS) {
    ErrorBox(GetText("APRerr1"));
    running_ = false;
    return;
  }
  if (!search_.Prepare(study_, rvKey_, flag_, terms_)) {
    running_ = false;
    return;
  }
  search_.Run(chkHierarchy, [this] {
    CurrentUi().DoEvents();
    return running_;
  });
  running_ = false;
  // Each kind of subset left out is told once, not once for each.
  if (search_.TooFewDF() > 0) ErrorBox("Insufficent D.O.F. to compute this equation");
  if (search_.Collinear() > 0)
    ErrorBox(std::to_string(search_.Collinear()) +
             " subsets are not listed: their terms are too nearly collinear to be told apart");
  if (search_.ExactFits() > 0)
    ErrorBox(std::to_string(search_.ExactFits()) +
             " subsets are not listed: they fit every observation exactly, with no error left to test them");
  if (search_.Full())
    ErrorBox("The search stopped after " + std::to_string(search_.Rows().size()) +
             " models, as many as the list holds. Keep the model hierarchical, or take fewer terms");
}

std::uint32_t APRForm::cmdExit_Click() {
  running_ = false;
  if (!chkCopyBack || search_.BestRow() < 0) return 0;
  return search_.Rows()[static_cast<std::size_t>(search_.BestRow())].mask;
}

std::string APRForm::Heading(int col) const {
  switch (col) {
    case TERMS: return GetText("Terms");
    case MSRES: return GetText("MSres");
    case RSQ: return GetText("Rsq");
    case RSQADJ: return "Rsq(adj)";
    case BEST: return " ";
    case SS: return "SS";
    case NUMTERMS: return "NumTerms";
    case CP: return "Cp";
    default: return "";
  }
}

std::string APRForm::Cell(std::int64_t row, int col) const {
  if (row == 0) return Heading(col);
  if (row < 1 || row >= Rows()) return "";
  const APRRow& r = search_.Rows()[static_cast<std::size_t>(row - 1)];
  switch (col) {
    case TERMS: return search_.RowText(r);
    case MSRES: return ShortestText(r.fMSE);
    case RSQ: return FormatDecimals(4, r.fRSquared);
    case RSQADJ: return FormatDecimals(4, r.fRSquaredAdj);
    case BEST: return row == BestRow() ? "*" : " ";
    case SS: return ShortestText(r.fSSE);
    case NUMTERMS: return std::to_string(APRSearch::RowTerms(r));
    case CP: return search_.Finished() ? FormatSF(4, search_.Cp(r)) : "";
    default: return "";
  }
}

Colour APRForm::Back(std::int64_t row) const { return row > 0 && row == BestRow() ? BEST_COLOUR : DEFAULT_COLOUR; }

}  // namespace kestrow
