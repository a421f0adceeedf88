#include "analyses/MMPForm.h"

#include "analyses/FormParts.h"
#include "core/Language.h"
#include "core/Study.h"

namespace kestrow {

MMPForm::MMPForm(Study& study, const Statistics& stats) : study_(study) {
  rvList = FillRVList(study, stats, 6);
  rvIndex = ChosenRV(rvList, study.MMP_sRVkey);
  optWhat = (study.MMP_flags & 1) ? 0 : 1;
  chkReduce = (study.MMP_flags & 8) != 0;
  incSDEnabled = study.iReps > 1;
  chkIncSD = incSDEnabled && study.MMP_bStdDevChart;
  before_ = Snapshot();
}

std::string MMPForm::Snapshot() const {
  return std::to_string(rvIndex) + "|" + std::to_string(optWhat) + (chkReduce ? "1" : "0") + (chkIncSD ? "1" : "0");
}

bool MMPForm::Edited() const { return Snapshot() != before_; }

FormOutcome MMPForm::OK(std::string& message) {
  message.clear();
  message = ResponseComplaint(rvIndex, rvList.size());
  if (!message.empty()) return FormOutcome::Refused;
  const std::string& key = rvList[static_cast<std::size_t>(rvIndex)].key;
  std::int16_t flags = static_cast<std::int16_t>((optWhat == 0 ? 1 : 0) | (chkReduce ? 8 : 0));
  bool sd = chkIncSD && incSDEnabled;
  stored = key != study_.MMP_sRVkey || flags != study_.MMP_flags || sd != study_.MMP_bStdDevChart;
  study_.MMP_sRVkey = key;
  study_.MMP_flags = flags;
  study_.MMP_bStdDevChart = sd;
  return FormOutcome::Accepted;
}

}  // namespace kestrow
