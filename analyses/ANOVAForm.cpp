#include "analyses/ANOVAForm.h"

#include <cmath>

#include "core/Formatters.h"
#include "core/Language.h"
#include "core/Sentinels.h"
#include "core/Study.h"
#include "core/Text.h"
#include "core/Ui.h"

namespace kestrow {

ANOVAForm::ANOVAForm(Study& study, const Statistics& stats) : study_(study), stats_(stats) {
  rvList = FillRVList(study, stats, 2);
  for (const Contrast& c : study.Contrasts) pooledBefore_.push_back(c.bPooled);
  txtAlpha = ShortestText(study.ANOVA_fAlpha);
  option = study.ANOVA_iVariable;
  int chosen = rvList.empty() ? -1 : 0;
  for (std::size_t i = 0; i < rvList.size(); ++i)
    if (rvList[i].key == study.ANOVA_sRVkey) chosen = static_cast<int>(i);
  SelectRV(chosen);
  rvIndexBefore_ = rvIndex;
  optionBefore_ = option;
  alphaBefore_ = txtAlpha;
}

bool ANOVAForm::Edited() const {
  return changed || rvIndex != rvIndexBefore_ || option != optionBefore_ || Trim(txtAlpha) != alphaBefore_;
}

void ANOVAForm::Enable() {
  bool blocked = (study_.iDesFlag & DES_BLOCKED) != 0;
  poolingEnabled = rvIndex >= 0 && study_.iReps < 2 && !blocked;
  optionEnabled[0] = true;
  optionEnabled[1] = study_.iReps > 1 && !blocked;
  optionEnabled[2] = rvIndex >= 0 && !blocked &&
                     study_.GetPRVTarget(PureKey(rvList[static_cast<std::size_t>(rvIndex)].key)) != MISSING_VALUE;
  if (option < 0 || option > 2 || !optionEnabled[option]) option = 0;
}

void ANOVAForm::SelectRV(int index) {
  rvIndex = index >= 0 && index < static_cast<int>(rvList.size()) ? index : -1;
  Enable();
  if (option == 0) FillPool();
}

void ANOVAForm::SetOption(int value) {
  option = value;
  Enable();
  if (option == 0) FillPool();
}

// The contrasts with their sums of squares over the run averages of the
// chosen response; the coefficients are taken as whole numbers here.
void ANOVAForm::FillPool() {
  pool.clear();
  pooledCount_ = 0;
  errorSS_ = totalSS_ = 0;
  if (rvIndex < 0) return;
  study_.ConfigureRV(rvList[static_cast<std::size_t>(rvIndex)].key);
  stats_.ComputeRV(study_);
  for (int i = 1; i <= study_.Contrasts.Count(); ++i) {
    Contrast& c = study_.Contrasts(i);
    c.fChat = c.fCSum = 0;
    for (int run = 1; run <= study_.iNumRuns; ++run) {
      // Whole numbers, as a 16-bit integer holds them; a product column of
      // an 8 x 8 x 8 design passes that range and is kept whole as it is.
      float level = std::nearbyint(study_.GetContrastEntry(i, run));
      c.fCSum += level * level;
      c.fChat += level * stats_.SampAvgRV(run);
    }
    c.fCSS = c.fChat * c.fChat * study_.iReps / c.fCSum;
    pool.push_back({i, c.sName, FormatSF(4, c.fCSS), c.sAliases, c.bPooled});
    if (c.bPooled) {
      pooledCount_ += 1;
      errorSS_ += c.fCSS;
    }
    totalSS_ += c.fCSS;
  }
}

void ANOVAForm::TogglePool(int row) {
  if (row < 0 || row >= static_cast<int>(pool.size())) return;
  PoolRow& r = pool[static_cast<std::size_t>(row)];
  Contrast& c = study_.Contrasts(r.contrast);
  r.checked = !r.checked;
  c.bPooled = r.checked;
  pooledCount_ += r.checked ? 1 : -1;
  errorSS_ += r.checked ? c.fCSS : -c.fCSS;
  if (pooledCount_ == 0) errorSS_ = 0;  // no rounding residue
  changed = true;
}

std::string ANOVAForm::lblDF() const { return ShortestText(static_cast<float>(pooledCount_)); }
// The sums of squares in the format of the pool list beside them.
std::string ANOVAForm::lblErrorSS() const { return FormatSF(4, errorSS_); }
std::string ANOVAForm::lblTotalSS() const { return FormatSF(4, totalSS_); }

std::string ANOVAForm::lblPooling() const {
  std::string names;
  for (const PoolRow& r : pool)
    if (r.checked) names += (names.empty() ? "" : ", ") + r.name;
  return names;
}

ANOVAForm::Outcome ANOVAForm::OK(std::string& message) {
  message.clear();
  if (rvIndex < 0) {
    message = GetText("ANOMerr3");
    return Outcome::Refused;
  }
  float alpha = ParseFloat(Trim(txtAlpha));
  if (alpha == BAD_NUMBER || alpha == MISSING_VALUE || !(alpha > 0 && alpha < 1)) {
    message = GetText("ANOVAerr1");
    return Outcome::Refused;
  }
  if (study_.iReps < 2 && !(study_.iDesFlag & DES_BLOCKED)) {
    bool any = false;
    for (const PoolRow& r : pool) {
      study_.Contrasts(r.contrast).bPooled = r.checked;
      any = any || r.checked;
    }
    if (!any && !noticed_) {
      noticed_ = true;
      message = GetText("ANOVAmsg1");
      return Outcome::Noticed;
    }
  }
  const std::string& key = rvList[static_cast<std::size_t>(rvIndex)].key;
  stored = changed || key != study_.ANOVA_sRVkey || alpha != study_.ANOVA_fAlpha || option != study_.ANOVA_iVariable;
  study_.ANOVA_sRVkey = key;
  study_.ANOVA_fAlpha = alpha;
  study_.ANOVA_iVariable = static_cast<std::int16_t>(option);
  return Outcome::Accepted;
}

void ANOVAForm::Cancel() {
  for (int i = 1; i <= study_.Contrasts.Count() && i <= static_cast<int>(pooledBefore_.size()); ++i)
    study_.Contrasts(i).bPooled = pooledBefore_[static_cast<std::size_t>(i - 1)];
}

}  // namespace kestrow
