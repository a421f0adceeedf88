#include "analyses/FXPlotForm.h"

#include <cmath>

#include "analyses/FormParts.h"
#include "core/Language.h"
#include "core/Study.h"
#include "core/Text.h"
#include "data/Filter.h"

namespace kestrow {

FXPlotForm::FXPlotForm(Study& study, const Statistics& stats) : study_(study) {
  rvList = FillRVList(study, stats, 4);
  rvIndex = ChosenRV(rvList, study.FXPLOT_sRVkey);
  auto inStudy = [&](const std::string& key) { return !key.empty() && study.GetFactorNum(key) <= study.Factors.Count(); };
  if (inStudy(study.FXPLOT_sF1Key)) f1Key = study.FXPLOT_sF1Key;
  if (inStudy(study.FXPLOT_sF2Key) && study.FXPLOT_sF2Key != f1Key) f2Key = study.FXPLOT_sF2Key;
  if (f1Key.empty() && !f2Key.empty()) std::swap(f1Key, f2Key);
  sFilter = study.FXPLOT_sFilter.empty() ? "0;0" : study.FXPLOT_sFilter;
  before_ = Snapshot();
}

std::string FXPlotForm::Snapshot() const {
  return std::to_string(rvIndex) + "|" + f1Key + "|" + f2Key + "|" + sFilter;
}

bool FXPlotForm::Edited() const { return Snapshot() != before_; }

CheckList FXPlotForm::FactorList() const { return FactorChoices(study_, {f1Key, f2Key}, 1, 2, "FXerr1"); }

void FXPlotForm::TakeFactors(const CheckList& list) {
  std::vector<std::string> keys = ChosenFactors(list);
  f1Key = keys.size() > 0 ? keys[0] : std::string();
  f2Key = keys.size() > 1 ? keys[1] : std::string();
}

bool FXPlotForm::cmdBrowse_Click() {
  CheckList list = FactorList();
  if (!list.Show()) return false;
  TakeFactors(list);
  return true;
}

void FXPlotForm::cmdFlip_Click() {
  if (!f2Key.empty()) std::swap(f1Key, f2Key);
}

std::string FXPlotForm::ExcludeList() const {
  std::string out;
  for (const std::string& key : {f1Key, f2Key})
    if (!key.empty()) out += (out.empty() ? "" : ",") + std::to_string(study_.GetFactorNum(key));
  return out;
}

void FXPlotForm::TakeFilters(const std::string& filterList) { sFilter = filterList.empty() ? "0;0" : filterList; }

std::string FXPlotForm::FiltersWithoutChosen() const {
  int chosen[2] = {f1Key.empty() ? -1 : study_.GetFactorNum(f1Key), f2Key.empty() ? -1 : study_.GetFactorNum(f2Key)};
  std::string kept, rest = sFilter;
  while (!rest.empty()) {
    std::string token = Trim(PopToken(rest));
    if (token.empty()) continue;
    int factor = static_cast<int>(std::nearbyint(Val(token.substr(0, token.find(';')))));
    if (factor == chosen[0] || factor == chosen[1]) continue;
    kept += (kept.empty() ? "" : ",") + token;
  }
  return kept.empty() ? "0;0" : kept;
}

std::string FXPlotForm::lblFactors() const {
  std::string text;
  for (const std::string& key : {f1Key, f2Key})
    if (!key.empty()) text += (text.empty() ? "" : ", ") + study_.GetPFactorName(key);
  return text;
}

std::string FXPlotForm::lblFilter() const {
  std::string text, rest = FiltersWithoutChosen();
  while (!rest.empty()) {
    std::string token = Trim(PopToken(rest));
    if (!token.empty()) text += (text.empty() ? "" : ", ") + FilterToText(study_, token);
  }
  return text;
}

FormOutcome FXPlotForm::OK(std::string& message) {
  message.clear();
  message = ResponseComplaint(rvIndex, rvList.size());
  if (!message.empty()) return FormOutcome::Refused;
  if (f1Key.empty()) {
    message = GetText("ANOMerr1");
    return FormOutcome::Refused;
  }
  const std::string& key = rvList[static_cast<std::size_t>(rvIndex)].key;
  std::string filters = FiltersWithoutChosen();
  stored = key != study_.FXPLOT_sRVkey || f1Key != study_.FXPLOT_sF1Key || f2Key != study_.FXPLOT_sF2Key ||
           filters != study_.FXPLOT_sFilter;
  study_.FXPLOT_sRVkey = key;
  study_.FXPLOT_sF1Key = f1Key;
  study_.FXPLOT_sF2Key = f2Key;
  study_.FXPLOT_sFilter = sFilter = filters;
  return FormOutcome::Accepted;
}

}  // namespace kestrow
