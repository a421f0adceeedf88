// The data array of a study and its readers and writers.
#include <cmath>

#include "core/Problem.h"
#include "core/Study.h"
#include "core/Text.h"

namespace kestrow {

// Sets the bounds from the study and allocates blank cells for them.
void Study::AllocateArray() {
  nRV_ = StudyRespVars.Count();
  nRuns_ = iNumRuns < 0 ? 0 : iNumRuns;
  nReps_ = iReps < 0 ? 0 : iReps;
  data_.assign(static_cast<std::size_t>(nRV_ + 1) * static_cast<std::size_t>(nRuns_ + 1) *
                   static_cast<std::size_t>(nReps_ + 1),
               DataCell());
}

// Allocates the array, discarding any old content, and blanks every cell: flag
// 0, seq the run number, value missing. bDataFull is left alone.
void Study::SetDataArray() {
  AllocateArray();
  for (int rv = 0; rv <= nRV_; ++rv)
    for (int run = 0; run <= nRuns_; ++run)
      for (int rep = 0; rep <= nReps_; ++rep) data_[CellIndex(rv, run, rep)].seq = static_cast<std::int16_t>(run);
}

// The same bounds, keeping what fits. The new cells hold the blank cell; the
// callers fill them as they need.
void Study::SetDataArrayPreserve() {
  if (nRV_ < 0) {
    SetDataArray();
    return;
  }
  Study old;
  old.data_ = std::move(data_);
  old.nRV_ = nRV_;
  old.nRuns_ = nRuns_;
  old.nReps_ = nReps_;
  AllocateArray();
  for (int rv = 0; rv <= nRV_; ++rv)
    for (int run = 0; run <= nRuns_; ++run)
      for (int rep = 0; rep <= nReps_; ++rep)
        if (old.InArray(rv, run, rep)) data_[CellIndex(rv, run, rep)] = old.data_[old.CellIndex(rv, run, rep)];
}

bool Study::DoesArrayExist() const { return nRV_ >= 1; }

// Scans the stored values, so an excluded value counts as data.
bool Study::IsArrayEmpty() const {
  for (int rv = 1; rv <= nRV_; ++rv)
    for (int run = 1; run <= nRuns_; ++run)
      for (int rep = 1; rep <= nReps_; ++rep)
        if (data_[CellIndex(rv, run, rep)].value > MISSING_VALUE) return false;
  return true;
}

bool Study::IsArrayFull() const {
  for (int rv = 1; rv <= nRV_; ++rv)
    for (int run = 1; run <= nRuns_; ++run)
      for (int rep = 1; rep <= nReps_; ++rep)
        if (data_[CellIndex(rv, run, rep)].value == MISSING_VALUE) return false;
  return true;
}

float Study::GetData(int rv, int run, int rep) const {
  if (!InArray(rv, run, rep)) return MISSING_VALUE;
  const DataCell& cell = data_[CellIndex(rv, run, rep)];
  return (cell.flag & CELL_EXCLUDED) ? MISSING_VALUE : cell.value;
}

float Study::GetStoredValue(int rv, int run, int rep) const {
  return InArray(rv, run, rep) ? data_[CellIndex(rv, run, rep)].value : MISSING_VALUE;
}

// Storing a missing value clears bDataFull; storing a value never sets it.
void Study::SetData(int rv, int run, int rep, float value) {
  if (!InArray(rv, run, rep)) return;
  data_[CellIndex(rv, run, rep)].value = value;
  if (value == MISSING_VALUE) bDataFull = false;
}

std::uint8_t Study::GetFlag(int rv, int run, int rep) const {
  return InArray(rv, run, rep) ? data_[CellIndex(rv, run, rep)].flag : 0;
}

void Study::SetFlag(int rv, int run, int rep, std::uint8_t flag) {
  if (InArray(rv, run, rep)) data_[CellIndex(rv, run, rep)].flag = flag;
}

// The run order is kept in the cells of response variable 1.
std::int16_t Study::GetSeq(int run, int rep) const {
  return InArray(1, run, rep) ? data_[CellIndex(1, run, rep)].seq : 0;
}

void Study::SetSeq(int run, int rep, std::int16_t seq) {
  if (InArray(1, run, rep)) data_[CellIndex(1, run, rep)].seq = seq;
}

void Study::ConfigureRV(const std::string& key) {
  std::string pure = PureKey(key);
  confTransformed_ = IsTransformedKey(key);
  confKey_ = pure;
  const RespVar* rv = ResolveRV(pure);
  confName_ = rv ? rv->sName : std::string();
  confAbbr_ = rv ? rv->sAbbr : std::string();
  if (confTransformed_) {
    confName_ = "*" + confName_;
    if (!confAbbr_.empty()) confAbbr_ = "*" + confAbbr_;
  }
  int at = GetRVnum(pure);
  iConfRV_ = at < 0 ? StudyRespVars.Count() + 1 : at;
}

float Study::GetDataRV(int run, int rep) const {
  float value = GetData(iConfRV_, run, rep);
  if (confTransformed_ && value != MISSING_VALUE) TransformByRV(value, iConfRV_);
  return value;
}

float Study::GetDataXformed(int rv, int run, int rep) const {
  float value = GetData(rv, run, rep);
  if (value != MISSING_VALUE) TransformByRV(value, rv);
  return value;
}

// A value that the transform cannot take (y + a at or below 0) becomes missing,
// so that it counts as missing in every statistic. Box-Cox with b = 0 is the
// base-10 logarithm, the limit of the family as this program writes it.
// Everything is worked in 32-bit floats, the power too: near b = 0 the
// subtraction of 1 then keeps what a float keeps, and the transformed
// figures are those users compare with earlier reports.
void Study::TransformByRV(float& value, int rv) const {
  if (rv < 1 || rv > StudyRespVars.Count()) return;
  const StudyRespVar& srv = StudyRespVars(rv);
  if (srv.iType != 1 && srv.iType != 2) return;
  float v = value + srv.fParam1;
  if (!(v > 0.0f)) {
    value = MISSING_VALUE;
    return;
  }
  if (srv.iType == 2 && srv.fParam2 != 0.0f) {
    float power = std::pow(v, srv.fParam2);
    value = (power - 1.0f) / srv.fParam2;
  } else if (srv.iType == 2) {
    value = std::log10(v);
  } else {
    float ln = std::log(v), ln10 = std::log(10.0f);
    value = ln / ln10;
  }
}

// The bracket of the Box-Cox text is unbalanced; that is the text as users
// have always seen it.
std::string Study::TransformText(const StudyRespVar& srv) const {
  std::string name = GetPRVName(srv.sKey);
  std::string a = ShortestText(srv.fParam1);
  std::string b = ShortestText(srv.fParam2);
  switch (srv.iType) {
    case 1:
      return "log10(" + (srv.fParam1 != 0.0f ? name + " + " + a : name) + ")";
    case 2: {
      std::string t = srv.fParam1 != 0.0f ? "(" + name + " + " + a + ")" : name;
      return t + " ^ " + b + " - 1)/ " + b;
    }
    default:
      return "None";
  }
}

}  // namespace kestrow
