#include "analyses/PairwiseForm.h"

#include <cmath>

#include "analyses/FormParts.h"
#include "core/Formatters.h"
#include "core/Language.h"
#include "core/Study.h"
#include "core/Text.h"

namespace kestrow {

PairwiseForm::PairwiseForm(Study& study, const Statistics& stats) : study_(study) {
  rvList = FillRVList(study, stats, 8);
  rvIndex = ChosenRV(rvList, study.PAIRWISE_sRVkey);
  alphaList = AlphaChoices(study.PAIRWISE_fAlpha);
  cmbAlpha = IsTabledAlpha(study.PAIRWISE_fAlpha) ? FormatDecimals(2, study.PAIRWISE_fAlpha)
                                                  : ShortestText(study.PAIRWISE_fAlpha);
  optAlgorithm = study.PAIRWISE_iAlgorithm == 1 ? 1 : 0;
  rvBefore_ = rvIndex;
  algorithmBefore_ = optAlgorithm;
  alphaBefore_ = cmbAlpha;
}

bool PairwiseForm::Edited() const {
  return rvIndex != rvBefore_ || optAlgorithm != algorithmBefore_ || Trim(cmbAlpha) != alphaBefore_;
}

FormOutcome PairwiseForm::OK(std::string& message) {
  message.clear();
  float alpha = 0;
  message = ResponseAndAlphaComplaint(rvIndex, rvList.size(), cmbAlpha, alpha);
  if (!message.empty()) return FormOutcome::Refused;
  // Duncan's ranges are tabled at 1 and 5 percent.
  if (optAlgorithm == 1 && alpha != 0.01f && alpha != 0.05f) {
    message = GetText("FXerr2");
    return FormOutcome::Refused;
  }
  const std::string& key = rvList[static_cast<std::size_t>(rvIndex)].key;
  stored = key != study_.PAIRWISE_sRVkey || alpha != study_.PAIRWISE_fAlpha || optAlgorithm != study_.PAIRWISE_iAlgorithm;
  study_.PAIRWISE_sRVkey = key;
  study_.PAIRWISE_fAlpha = alpha;
  study_.PAIRWISE_iAlgorithm = static_cast<std::int16_t>(optAlgorithm);
  return FormOutcome::Accepted;
}

}  // namespace kestrow
