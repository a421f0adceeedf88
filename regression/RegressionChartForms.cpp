#include "regression/RegressionChartForms.h"

#include "analyses/Residuals.h"
#include "core/Factor.h"
#include "core/Language.h"
#include "core/Study.h"
#include "core/Text.h"
#include "regression/Regress.h"

namespace kestrow {

Residuals2Form::Residuals2Form(Study& study, const Statistics&) : study_(study) {
  // The factors of the model: those with a term of their own.
  std::vector<std::pair<int, std::string>> factors;
  for (int i = 1; i <= study.REGRESS_Rterms.Count(); ++i) {
    const std::string& t = study.REGRESS_Rterms(i).sTerm;
    int f = static_cast<int>(Val(t));
    if (t.find(',') == std::string::npos && f >= 1 && f <= study.Factors.Count()) factors.emplace_back(f, study.GetFactorName(f));
  }
  // The run order serves a model of the observations only.
  rows = ResidualChartRows(study.REGRESS_RES_sCharts, !(study.REGRESS_iFlag & REGRESS_SD) && HasRunSequence(study), factors);
  chkStudent = (study.REGRESS_iFlag & REGRESS_STUDENTISED) != 0;
  before_ = Snapshot();
}

std::string Residuals2Form::Snapshot() const {
  std::string s = chkStudent ? "1|" : "0|";
  for (const ResidualChartRow& r : rows) s += r.checked ? "1" : "0";
  return s;
}

bool Residuals2Form::Edited() const { return Snapshot() != before_; }

FormOutcome Residuals2Form::OK(std::string& message) {
  std::string list = ResidualChartList(rows, message);
  if (!message.empty()) return FormOutcome::Refused;
  auto flag = static_cast<std::int16_t>((study_.REGRESS_iFlag & ~REGRESS_STUDENTISED) | (chkStudent ? REGRESS_STUDENTISED : 0));
  stored = list != study_.REGRESS_RES_sCharts || flag != study_.REGRESS_iFlag;
  study_.REGRESS_RES_sCharts = list;
  study_.REGRESS_iFlag = flag;
  return FormOutcome::Accepted;
}

ScattergramForm::ScattergramForm(Study& study, const Statistics& stats) {
  choice = DefaultScatterChoice(study, stats);
  rvList = FillRVList(study, stats, 18);
  rvIndex = ChosenRV(rvList, choice.rvKey);
  for (int f = 1; f <= study.Factors.Count(); ++f) {
    const std::string key = study.GetFactorKey(f);
    if (study.GetPFactorFlag(key) & FACTOR_DISCRETE) continue;
    if (key == choice.factorKey) factorIndex = static_cast<int>(factorList.size());
    factorList.emplace_back(key, study.GetFactorName(f));
  }
  optDegree = choice.degree - 1;
}

FormOutcome ScattergramForm::OK(std::string& message) {
  message = ResponseComplaint(rvIndex, rvList.size());
  if (message.empty() && (factorIndex < 0 || factorIndex >= static_cast<int>(factorList.size())))
    message = "Choose the factor of the x axis";
  if (!message.empty()) return FormOutcome::Refused;
  choice.rvKey = rvList[static_cast<std::size_t>(rvIndex)].key;
  choice.factorKey = factorList[static_cast<std::size_t>(factorIndex)].first;
  choice.degree = optDegree < 0 || optDegree > 2 ? 1 : optDegree + 1;
  return FormOutcome::Accepted;
}

}  // namespace kestrow
