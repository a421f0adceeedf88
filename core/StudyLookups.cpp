// Counts and lookups of a study: factors and response variables as the study
// sees them.
#include "core/Problem.h"
#include "core/Study.h"
#include "core/Text.h"

namespace kestrow {

const Factor* Study::ResolveFactor(const std::string& key) const {
  return IsLocked() ? MyFactors.Find(key) : Owner().Factors.Find(key);
}

const RespVar* Study::ResolveRV(const std::string& key) const {
  std::string pure = PureKey(key);
  return IsLocked() ? MyRespVars.Find(pure) : Owner().RespVars.Find(pure);
}

int Study::CountDiscrete() const {
  int n = 0;
  for (const Item& item : Factors)
    if (GetPFactorFlag(item.sKey) & FACTOR_DISCRETE) ++n;
  return n;
}

int Study::CountREFactors() const {
  int n = 0;
  for (const Rterm& t : REGRESS_Rterms)
    if (t.fValue != RTERM_NOT_SET) ++n;
  return n;
}

int Study::CountRVs() const {
  int n = 0;
  for (const StudyRespVar& srv : StudyRespVars) n += srv.iType != 0 ? 2 : 1;
  return n;
}

int Study::GetRVnum(const std::string& key) const {
  std::string pure = PureKey(key);
  for (int i = 1; i <= StudyRespVars.Count(); ++i)
    if (StudyRespVars(i).sKey == pure) return i;
  return -1;
}

int Study::GetFactorNum(const std::string& key) const {
  for (int i = 1; i <= Factors.Count(); ++i)
    if (Factors(i).sKey == key) return i;
  return Factors.Count() + 1;
}

std::string Study::GetFactorKey(int i) const {
  return i >= 1 && i <= Factors.Count() ? Factors(i).sKey : std::string();
}

int Study::GetNumLevels(int i) const { return GetPFactorLevelsCount(GetFactorKey(i)); }
std::string Study::GetFactorAbbr(int i) const {
  const Factor* f = ResolveFactor(GetFactorKey(i));
  return f ? f->sAbbr : std::string();
}
std::string Study::GetFactorName(int i) const { return GetPFactorName(GetFactorKey(i)); }

int Study::GetLevelNumber(int i, const std::string& name) const {
  const Factor* f = ResolveFactor(GetFactorKey(i));
  if (!f) return 0;
  for (int j = 1; j <= f->Levels.Count(); ++j)
    if (f->Levels(j).sName == name) return j;
  return 0;
}

std::string Study::GetPFactorName(const std::string& key) const {
  const Factor* f = ResolveFactor(key);
  return f ? f->sName : std::string();
}

std::string Study::GetPFactorName2(const std::string& key) const {
  const Factor* f = ResolveFactor(key);
  if (!f) return std::string();
  return f->sAbbr.empty() ? f->sName : f->sAbbr;
}

std::string Study::GetPFactorDesc(const std::string& key) const {
  const Factor* f = ResolveFactor(key);
  return f ? f->sDesc : std::string();
}

std::int16_t Study::GetPFactorFlag(const std::string& key) const {
  const Factor* f = ResolveFactor(key);
  return f ? f->iFlag : 0;
}

int Study::GetPFactorLevelsCount(const std::string& key) const {
  const Factor* f = ResolveFactor(key);
  return f ? f->Levels.Count() : 0;
}

std::string Study::GetPFactorLevelName(const std::string& key, int level) const {
  const Factor* f = ResolveFactor(key);
  if (!f || level < 1 || level > f->Levels.Count()) return std::string();
  return f->Levels(level).sName;
}

std::string Study::GetPRVName(const std::string& key) const {
  const RespVar* rv = ResolveRV(key);
  return rv ? rv->sName : std::string();
}

std::string Study::GetPRVName2(const std::string& key) const {
  const RespVar* rv = ResolveRV(key);
  if (!rv) return std::string();
  return rv->sAbbr.empty() ? rv->sName : rv->sAbbr;
}

std::string Study::GetPRVAbbr(const std::string& key) const {
  const RespVar* rv = ResolveRV(key);
  return rv ? rv->sAbbr : std::string();
}

std::string Study::GetPRVDesc(const std::string& key) const {
  const RespVar* rv = ResolveRV(key);
  return rv ? rv->sDesc : std::string();
}

float Study::GetPRVTarget(const std::string& key) const {
  const RespVar* rv = ResolveRV(key);
  return rv ? rv->fTarget : MISSING_VALUE;
}

std::string Study::GetPRVUnits(const std::string& key) const {
  const RespVar* rv = ResolveRV(key);
  return rv ? rv->sUnits : std::string();
}

std::string Study::GetPRVDisplayName(const std::string& key) const {
  return (IsTransformedKey(key) ? "*" : "") + GetPRVName(key);
}

std::string Study::GetPRVDisplayAbbr(const std::string& key) const {
  return (IsTransformedKey(key) ? "*" : "") + GetPRVName2(key);
}

float Study::FGetCoded(const std::string& key, int i) const {
  const Factor* f = ResolveFactor(key);
  return f ? f->GetCoded(i) : MISSING_VALUE;
}

float Study::FValueToCode(const std::string& key, double x) const {
  const Factor* f = ResolveFactor(key);
  return f ? f->ValueToCode(x) : MISSING_VALUE;
}

double Study::FGetMinLevel(const std::string& key) const {
  const Factor* f = ResolveFactor(key);
  return f ? f->GetMinLevel() : 1.0e9;
}

double Study::FGetMaxLevel(const std::string& key) const {
  const Factor* f = ResolveFactor(key);
  return f ? f->GetMaxLevel() : -1.0e9;
}

std::string Study::SFactorNameToKey(const std::string& name) const {
  if (!IsLocked()) return Owner().FactorNameToKey(name);
  for (const Factor& f : MyFactors)
    if (f.sName == name) return f.sKey;
  return std::string();
}

std::string Study::SRVKeyToName(const std::string& key) const { return GetPRVName(key); }

std::string Study::SRVNameToPureKey(const std::string& name) const {
  if (!IsLocked()) return Owner().RVNameToPureKey(name);
  std::string pure = PureKey(name);
  for (const RespVar& rv : MyRespVars)
    if (rv.sName == pure) return rv.sKey;
  return std::string();
}

std::string Study::SRVNameToKey(const std::string& name) const {
  std::string key = SRVNameToPureKey(name);
  return IsTransformedKey(name) && !key.empty() ? key + "*" : key;
}

std::string Study::RVKeyToName(const std::string& key) const { return GetPRVName(key); }

}  // namespace kestrow
