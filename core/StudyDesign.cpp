// Reading a study's design: the level of a factor in a run, and the words and
// source texts of contrasts.
#include <algorithm>
#include <cmath>
#include <map>

#include "core/Formatters.h"
#include "core/Problem.h"
#include "core/Settings.h"
#include "core/Study.h"
#include "core/Text.h"

namespace kestrow {

int Study::GetTreatmentLevel(int factor, int run) const {
  if (run < 1 || run > Treatments.Count()) return 0;
  return Treatments(run).GetLevel(factor);
}

std::string Study::GetTreatmentLevelName(int factor, int run) const {
  if (run < 1 || run > Treatments.Count()) return std::string();
  std::string list = Treatments(run).sTlist;

  if (iDesFlag & DES_UNSTRUCTURED) {  // text form: a "|" list of level texts
    std::string token;
    for (int i = 1; i <= factor; ++i) token = PopBar(list);
    return token;
  }

  if (list.empty() || list[0] != '*') {  // level form
    int level = GetTreatmentLevel(factor, run);
    std::string key = GetFactorKey(factor);
    if (level != 0) return GetPFactorLevelName(key, level);
    // A centre point stands midway between levels 1 and 2.
    double mid = (Val(GetPFactorLevelName(key, 1)) + Val(GetPFactorLevelName(key, 2))) / 2.0;
    return ShortestText(static_cast<float>(mid));
  }

  // Axial form: the coded value is decoded by the problem's factor as it now
  // stands; a locked study's copy is not consulted here.
  PopBar(list);
  std::string token;
  for (int i = 1; i <= factor; ++i) token = PopBar(list);
  const Factor* f = Owner().Factors.Find(GetFactorKey(factor));
  if (!f) return std::string();
  return FormatSF(gSettings.NumSF, f->GetDeCoded(Val(token)));
}

double Study::GetTreatmentLevelValue(int factor, int run) const {
  if (run < 1 || run > Treatments.Count()) return 0;
  std::string list = Treatments(run).sTlist;
  if ((iDesFlag & DES_UNSTRUCTURED) || list.empty() || list[0] != '*') return Val(GetTreatmentLevelName(factor, run));
  PopBar(list);
  std::string token;
  for (int i = 1; i <= factor; ++i) token = PopBar(list);
  const Factor* f = Owner().Factors.Find(GetFactorKey(factor));
  if (!f) return 0;
  return f->DeCodedValue(Val(token));
}

float Study::GetContrastEntry(int contrast, int run) const {
  if (contrast < 1 || contrast > Contrasts.Count()) return 0.0f;
  const Contrast& c = Contrasts(contrast);
  if (c.ProductOf.empty()) return c.fGetLevel(run);
  // Main contrasts hold small whole numbers, so the product is exact in a
  // float for any design the program builds (35^4 x 7 at most).
  float product = 1.0f;
  for (int m : c.ProductOf) product *= m >= 1 && m <= Contrasts.Count() ? Contrasts(m).fGetLevel(run) : 0.0f;
  return product;
}

void Study::LinkProductContrasts() {
  for (Contrast& c : Contrasts) c.ProductOf.clear();
  if (!(iDesFlag & DES_FULLY_CROSSED)) return;
  // The main contrasts by letter, with the largest coefficient of each.
  std::map<char, std::pair<int, float>> mains;
  for (int i = 1; i <= Contrasts.Count(); ++i) {
    const Contrast& c = Contrasts(i);
    if (c.iMain < 1 || c.sName.size() != 1) continue;
    float largest = 0;
    for (int run = 1; run <= iNumRuns; ++run) largest = std::max(largest, std::fabs(c.fGetLevel(run)));
    mains[c.sName[0]] = {i, largest};
  }
  for (Contrast& c : Contrasts) {
    if (c.iMain > 0 || c.sName.size() < 2) continue;
    std::vector<int> parts;
    float bound = 1;
    for (char letter : c.sName) {
      auto at = mains.find(letter);
      if (at == mains.end()) {
        parts.clear();
        break;
      }
      parts.push_back(at->second.first);
      bound *= at->second.second;
    }
    // A product that stays within the packing was stored as it is.
    if (!parts.empty() && bound >= 100) c.ProductOf = std::move(parts);
  }
}

const Contrast* Study::ContrastByName(const std::string& letter) const {
  for (const Contrast& c : Contrasts)
    if (c.sName == letter) return &c;
  return nullptr;
}

// A word translates to nothing when one of its letters has no contrast, when
// that contrast's factor is out of range, or when a letter belongs to the
// contrast's own factor. A leading "-" is kept.
std::string Study::TranslateWord(const std::string& word, int ownFactor) const {
  std::string w = word;
  std::string sign;
  if (!w.empty() && w[0] == '-') {
    sign = "-";
    w.erase(0, 1);
  }
  if (w.empty()) return std::string();
  std::string out;
  for (char letter : w) {
    const Contrast* c = ContrastByName(std::string(1, letter));
    if (!c || c->iMain < 1 || c->iMain > Factors.Count() || c->iMain == ownFactor) return std::string();
    if (!out.empty()) out += " x ";
    out += GetFactorAbbr(c->iMain);
  }
  return sign + out;
}

std::string Study::GetContrastSource(int contrast) const {
  if (contrast < 1 || contrast > Contrasts.Count()) return std::string();
  const Contrast& c = Contrasts(contrast);
  // An interaction has no factor of its own: -99 matches no letter.
  int own = c.iMain > 0 ? c.iMain : -99;
  std::string out;
  if (c.iMain > 0) {
    out = GetFactorAbbr(c.iMain) + " (" + c.GetMainInteraction(*this) + ")";
  } else {
    out = TranslateWord(c.sName, own);
  }
  std::string aliases = c.sAliases;
  while (!aliases.empty()) {
    std::string t = TranslateWord(Trim(PopToken(aliases)), own);
    if (!t.empty()) out += ", " + t;
  }
  return out;
}

bool Study::bAliasIsOK(const std::string& alias) const {
  std::string w = alias;
  if (!w.empty() && w[0] == '-') w.erase(0, 1);
  for (char letter : w)
    if (GetFactorAbbrFromContrastLetter(std::string(1, letter)).empty()) return false;
  return true;
}

std::string Study::GetFactorNameFromContrastLetter(const std::string& letter) const {
  const Contrast* c = ContrastByName(letter);
  return c ? GetFactorName(c->iMain) : std::string();
}

std::string Study::GetFactorAbbrFromContrastLetter(const std::string& letter) const {
  const Contrast* c = ContrastByName(letter);
  return c ? GetFactorAbbr(c->iMain) : std::string();
}

int Study::GetFactorNumberFromContrastLetter(const std::string& letter) const {
  const Contrast* c = ContrastByName(letter);
  return c ? c->iMain : 0;
}

}  // namespace kestrow
