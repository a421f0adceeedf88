#include "core/ProblemJson.h"

#include <cmath>
#include <cstdint>
#include <functional>
#include <set>
#include <sstream>
#include <variant>
#include <vector>

#include "core/CodePage.h"
#include "core/Json.h"
#include "core/JsonReader.h"
#include "core/Problem.h"
#include "core/Text.h"

namespace kestrow {

namespace {

// ---- the fields of a study, in file order ----------------------------------

enum class Special { Factors, StudyRespVars, Rterms, Treatments, Contrasts, Data, Notes, MyFactors, MyRespVars };

using Member = std::variant<std::string Study::*, std::int16_t Study::*, float Study::*, bool Study::*, Special>;

struct StudyField {
  const char* name;
  Member member;
};

const std::vector<StudyField>& StudyFields() {
  static const std::vector<StudyField> fields = {
      {"sKey", &Study::sKey},
      {"sName", &Study::sName},
      {"sDesc", &Study::sDesc},
      {"iFlag", &Study::iFlag},
      {"iReps", &Study::iReps},
      {"sPartial", &Study::sPartial},
      {"iSequence", &Study::iSequence},
      {"sMultiChart", &Study::sMultiChart},
      {"Factors", Special::Factors},
      {"StudyRespVars", Special::StudyRespVars},
      {"ANOM_sRVkey", &Study::ANOM_sRVkey},
      {"ANOM_fAlpha", &Study::ANOM_fAlpha},
      {"ANOM_sCharts", &Study::ANOM_sCharts},
      {"ANOM_iSubgrouping", &Study::ANOM_iSubgrouping},
      {"ANOM_flags", &Study::ANOM_flags},
      {"RESPONSE_sRVkey", &Study::RESPONSE_sRVkey},
      {"RESPONSE_sF1Key", &Study::RESPONSE_sF1Key},
      {"RESPONSE_sF2Key", &Study::RESPONSE_sF2Key},
      {"RESPONSE_sF3Key", &Study::RESPONSE_sF3Key},
      {"RESPONSE_iVariable", &Study::RESPONSE_iVariable},
      {"RESPONSE_iFlag", &Study::RESPONSE_iFlag},
      {"FXPLOT_sRVkey", &Study::FXPLOT_sRVkey},
      {"FXPLOT_sF1Key", &Study::FXPLOT_sF1Key},
      {"FXPLOT_sF2Key", &Study::FXPLOT_sF2Key},
      {"FXPLOT_sFilter", &Study::FXPLOT_sFilter},
      {"ANOVA_sRVkey", &Study::ANOVA_sRVkey},
      {"ANOVA_fAlpha", &Study::ANOVA_fAlpha},
      {"ANOVA_iVariable", &Study::ANOVA_iVariable},
      {"ANOVA_flags", &Study::ANOVA_flags},
      {"ANOVA_sCharts", &Study::ANOVA_sCharts},
      {"MMP_bStdDevChart", &Study::MMP_bStdDevChart},
      {"MMP_sRVkey", &Study::MMP_sRVkey},
      {"MMP_flags", &Study::MMP_flags},
      {"REGRESS_sRVkey", &Study::REGRESS_sRVkey},
      {"REGRESS_iFlag", &Study::REGRESS_iFlag},
      {"REGRESS_iModelType", &Study::REGRESS_iModelType},
      {"REGRESS_RES_sCharts", &Study::REGRESS_RES_sCharts},
      {"REGRESS_Rterms", Special::Rterms},
      {"REGRESS_RSM_iAlpha", &Study::REGRESS_RSM_iAlpha},
      {"REGRESS_RSM_iBeta", &Study::REGRESS_RSM_iBeta},
      {"REGRESS_RSM_iNetSize", &Study::REGRESS_RSM_iNetSize},
      {"REGRESS_RSM_flags", &Study::REGRESS_RSM_flags},
      {"CONTOUR_flags", &Study::CONTOUR_flags},
      {"CONTOUR_KeyFactor", &Study::CONTOUR_KeyFactor},
      {"CONTOUR_KeyValues", &Study::CONTOUR_KeyValues},
      {"CONTOUR_sFilter", &Study::CONTOUR_sFilter},
      {"RESIDUAL_sRVkey", &Study::RESIDUAL_sRVkey},
      {"RESIDUAL_sCharts", &Study::RESIDUAL_sCharts},
      {"RESIDUAL_iModel", &Study::RESIDUAL_iModel},
      {"PAIRWISE_sRVkey", &Study::PAIRWISE_sRVkey},
      {"PAIRWISE_fAlpha", &Study::PAIRWISE_fAlpha},
      {"PAIRWISE_iAlgorithm", &Study::PAIRWISE_iAlgorithm},
      {"RUN_flags", &Study::RUN_flags},
      {"RUN_iScaling", &Study::RUN_iScaling},
      {"sDesignName", &Study::sDesignName},
      {"iDesFlag", &Study::iDesFlag},
      {"iNumRuns", &Study::iNumRuns},
      {"Treatments", Special::Treatments},
      {"Contrasts", Special::Contrasts},
      {"Data", Special::Data},
      {"Notes", Special::Notes},
      {"MyFactors", Special::MyFactors},
      {"MyRespVars", Special::MyRespVars},
  };
  return fields;
}

// ---- writing ----------------------------------------------------------------

std::string Num(float x) { return JsonFloat(x); }
std::string Num(int x) { return std::to_string(x); }
std::string Bool(bool b) { return b ? "true" : "false"; }
std::string Q(const std::string& s) { return JsonQuote(s); }

std::string RespVarJson(const RespVar& rv) {
  return "{\"sKey\": " + Q(rv.sKey) + ", \"sName\": " + Q(rv.sName) + ", \"sAbbr\": " + Q(rv.sAbbr) +
         ", \"sDesc\": " + Q(rv.sDesc) + ", \"sUnits\": " + Q(rv.sUnits) + ", \"fTarget\": " + Num(rv.fTarget) + "}";
}

std::string FactorJson(const Factor& f) {
  std::string out = "{\"sKey\": " + Q(f.sKey) + ", \"sName\": " + Q(f.sName) + ", \"sAbbr\": " + Q(f.sAbbr) +
                    ", \"sDesc\": " + Q(f.sDesc) + ", \"iFlag\": " + Num(f.iFlag) + ", \"Levels\": [";
  bool first = true;
  for (const Level& l : f.Levels) {
    out += first ? "" : ", ";
    first = false;
    out += "{\"sName\": " + Q(l.sName) + ", \"sDesc\": " + Q(l.sDesc) + ", \"fCode\": " + Num(l.fCode) + "}";
  }
  return out + "]}";
}

template <class C, class F>
std::string List(const C& items, const std::string& indent, F each) {
  std::string out = "[";
  bool first = true;
  for (const auto& item : items) {
    out += first ? "\n" : ",\n";
    first = false;
    out += indent + "  " + each(item);
  }
  return out + (first ? "]" : "\n" + indent + "]");
}

std::string SpecialJson(const Study& s, Special which, const std::string& indent) {
  switch (which) {
    case Special::Factors: {
      std::string out = "[";
      for (int i = 1; i <= s.Factors.Count(); ++i) out += (i > 1 ? ", " : "") + Q(s.Factors(i).sKey);
      return out + "]";
    }
    case Special::StudyRespVars:
      return List(s.StudyRespVars, indent, [](const StudyRespVar& r) {
        return "{\"sKey\": " + Q(r.sKey) + ", \"iType\": " + Num(r.iType) + ", \"fParam1\": " + Num(r.fParam1) +
               ", \"fParam2\": " + Num(r.fParam2) + "}";
      });
    case Special::Rterms:
      return List(s.REGRESS_Rterms, indent, [](const Rterm& t) {
        return "{\"sTerm\": " + Q(t.sTerm) + ", \"fBeta\": " + Num(t.fBeta) + ", \"fValue\": " + Num(t.fValue) + "}";
      });
    case Special::Treatments:
      return List(s.Treatments, indent, [](const Treatment& t) { return Q(t.sTlist); });
    case Special::Contrasts:
      return List(s.Contrasts, indent, [](const Contrast& c) {
        return "{\"sName\": " + Q(c.sName) + ", \"sMain\": " + Q(c.sMain) + ", \"iMain\": " + Num(c.iMain) +
               ", \"sLevels\": " + Q(BytesToUtf8(c.sLevels)) + ", \"sAliases\": " + Q(c.sAliases) +
               ", \"bPooled\": " + Bool(c.bPooled) + "}";
      });
    case Special::Data: {
      // Cells as the file holds them: the run order is that of response 1.
      std::vector<int> rvs;
      for (int rv = 1; rv <= s.StudyRespVars.Count(); ++rv) rvs.push_back(rv);
      return List(rvs, indent, [&](int rv) {
        std::string runs = "[";
        for (int run = 1; run <= s.iNumRuns; ++run) {
          runs += run > 1 ? ",\n" + indent + "    [" : "\n" + indent + "    [";
          for (int rep = 1; rep <= s.iReps; ++rep) {
            runs += (rep > 1 ? ", [" : "[") + Num(s.GetData(rv, run, rep)) + ", " +
                    Num(s.GetFlag(rv, run, rep)) + ", " + Num(s.GetSeq(run, rep)) + "]";
          }
          runs += "]";
        }
        return runs + (s.iNumRuns > 0 ? "\n" + indent + "  ]" : "]");
      });
    }
    case Special::Notes:
      return List(s.Notes, indent, [](const Note& n) {
        return "{\"iRun\": " + Num(n.iRun) + ", \"iRep\": " + Num(n.iRep) + ", \"sText\": " + Q(n.sText) + "}";
      });
    case Special::MyFactors:
      return List(s.MyFactors, indent, FactorJson);
    case Special::MyRespVars:
      return List(s.MyRespVars, indent, RespVarJson);
  }
  return "null";
}

std::string StudyJson(const Study& s) {
  const std::string indent = "    ";
  std::string out = "{";
  bool first = true;
  for (const StudyField& field : StudyFields()) {
    out += first ? "\n" : ",\n";
    first = false;
    out += indent + "  " + Q(field.name) + ": ";
    std::visit(
        [&](auto&& m) {
          using M = std::decay_t<decltype(m)>;
          if constexpr (std::is_same_v<M, std::string Study::*>) out += Q(s.*m);
          else if constexpr (std::is_same_v<M, std::int16_t Study::*>) out += Num(s.*m);
          else if constexpr (std::is_same_v<M, float Study::*>) out += Num(s.*m);
          else if constexpr (std::is_same_v<M, bool Study::*>) out += Bool(s.*m);
          else out += SpecialJson(s, m, indent + "  ");
        },
        field.member);
  }
  return out + "\n" + indent + "}";
}

// ---- reading ----------------------------------------------------------------

class Reader : public JsonReader {
 public:
  // An array field, each element read by the function given.
  bool Array(const JsonValue& obj, const std::string& path, const char* name,
             const std::function<bool(const JsonValue&, const std::string&)>& each) {
    const JsonValue* v = Field(obj, path, name);
    if (!v) return false;
    std::string here = path.empty() ? name : path + "." + name;
    if (!Expect(*v, JsonValue::Type::Array, here)) return false;
    if (v->items.size() > 32767) return Fail(here, "at most 32767 entries can be stored");
    for (std::size_t i = 0; i < v->items.size(); ++i)
      if (!each(v->items[i], here + "[" + std::to_string(i) + "]")) return false;
    return true;
  }

  bool RespVarFrom(const JsonValue& v, const std::string& path, RespVar& rv) {
    if (!Expect(v, JsonValue::Type::Object, path)) return false;
    if (!OnlyFields(v, path, {"sKey", "sName", "sAbbr", "sDesc", "sUnits", "fTarget"})) return false;
    const JsonValue* f;
    for (auto [name, field] : {std::pair{"sKey", &rv.sKey}, {"sName", &rv.sName}, {"sAbbr", &rv.sAbbr},
                               {"sDesc", &rv.sDesc}, {"sUnits", &rv.sUnits}})
      if (!(f = Field(v, path, name)) || !Text(*f, path + "." + name, *field)) return false;
    return (f = Field(v, path, "fTarget")) && Float(*f, path + ".fTarget", rv.fTarget);
  }

  bool FactorFrom(const JsonValue& v, const std::string& path, Factor& factor) {
    if (!Expect(v, JsonValue::Type::Object, path)) return false;
    if (!OnlyFields(v, path, {"sKey", "sName", "sAbbr", "sDesc", "iFlag", "Levels"})) return false;
    const JsonValue* f;
    for (auto [name, field] : {std::pair{"sKey", &factor.sKey}, {"sName", &factor.sName},
                               {"sAbbr", &factor.sAbbr}, {"sDesc", &factor.sDesc}})
      if (!(f = Field(v, path, name)) || !Text(*f, path + "." + name, *field)) return false;
    if (!(f = Field(v, path, "iFlag")) || !Int16(*f, path + ".iFlag", factor.iFlag)) return false;
    return Array(v, path, "Levels", [&](const JsonValue& lv, const std::string& here) {
      Level level;
      const JsonValue* g;
      if (!Expect(lv, JsonValue::Type::Object, here) || !OnlyFields(lv, here, {"sName", "sDesc", "fCode"}))
        return false;
      if (!(g = Field(lv, here, "sName")) || !Text(*g, here + ".sName", level.sName)) return false;
      if (!(g = Field(lv, here, "sDesc")) || !Text(*g, here + ".sDesc", level.sDesc)) return false;
      if (!(g = Field(lv, here, "fCode")) || !Float(*g, here + ".fCode", level.fCode)) return false;
      factor.Levels.Add(std::move(level));
      return true;
    });
  }

  template <class T>
  bool AddKeyed(Collection<T>& c, T item, const std::string& path) {
    std::string key = item.sKey;
    if (!c.Add(std::move(item), key)) return Fail(path, "the key \"" + key + "\" is used twice");
    return true;
  }

  bool DataFrom(const JsonValue& v, const std::string& path, Study& s) {
    int nRV = s.StudyRespVars.Count();
    if (!Expect(v, JsonValue::Type::Array, path)) return false;
    if (static_cast<int>(v.items.size()) != nRV)
      return Fail(path, "expected one array for each of the " + std::to_string(nRV) + " response variables");
    s.SetDataArray();
    s.bDataFull = true;
    // Cells go in as the file reads them: replication, run, response.
    for (int rv = 1; rv <= nRV; ++rv) {
      const JsonValue& runs = v.items[static_cast<std::size_t>(rv - 1)];
      std::string rvPath = path + "[" + std::to_string(rv - 1) + "]";
      if (!Expect(runs, JsonValue::Type::Array, rvPath)) return false;
      if (static_cast<int>(runs.items.size()) != s.iNumRuns)
        return Fail(rvPath, "expected one array for each of the " + std::to_string(s.iNumRuns) + " runs");
      for (int run = 1; run <= s.iNumRuns; ++run) {
        const JsonValue& reps = runs.items[static_cast<std::size_t>(run - 1)];
        std::string runPath = rvPath + "[" + std::to_string(run - 1) + "]";
        if (!Expect(reps, JsonValue::Type::Array, runPath)) return false;
        if (static_cast<int>(reps.items.size()) != s.iReps)
          return Fail(runPath, "expected one cell for each of the " + std::to_string(s.iReps) + " replications");
        for (int rep = 1; rep <= s.iReps; ++rep) {
          const JsonValue& cell = reps.items[static_cast<std::size_t>(rep - 1)];
          std::string cellPath = runPath + "[" + std::to_string(rep - 1) + "]";
          if (cell.type != JsonValue::Type::Array || cell.items.size() != 3)
            return Fail(cellPath, "expected a cell [value, flag, seq]");
          float value;
          long flag, seq;
          if (!Float(cell.items[0], cellPath + "[0]", value) || !Int(cell.items[1], cellPath + "[1]", 0, 255, flag) ||
              !Int(cell.items[2], cellPath + "[2]", -32768, 32767, seq))
            return false;
          s.SetData(rv, run, rep, value);
          s.SetFlag(rv, run, rep, static_cast<std::uint8_t>(flag));
          // The run order is held by response variable 1.
          if (rv == 1) s.SetSeq(run, rep, static_cast<std::int16_t>(seq));
        }
      }
    }
    return true;
  }

  bool StudyFrom(const JsonValue& v, const std::string& path, Study& s) {
    if (!Expect(v, JsonValue::Type::Object, path)) return false;
    std::vector<std::string> names;
    for (const StudyField& field : StudyFields()) names.push_back(field.name);
    if (!OnlyFields(v, path, names)) return false;
    const JsonValue* data = nullptr;
    for (const StudyField& field : StudyFields()) {
      const JsonValue* f = Field(v, path, field.name);
      if (!f) return false;
      std::string here = path + "." + field.name;
      bool ok = std::visit(
          [&](auto&& m) -> bool {
            using M = std::decay_t<decltype(m)>;
            if constexpr (std::is_same_v<M, std::string Study::*>) return Text(*f, here, s.*m);
            else if constexpr (std::is_same_v<M, std::int16_t Study::*>) return Int16(*f, here, s.*m);
            else if constexpr (std::is_same_v<M, float Study::*>) return Float(*f, here, s.*m);
            else if constexpr (std::is_same_v<M, bool Study::*>) return Boolean(*f, here, s.*m);
            else {
              if (m == Special::Data) {  // read once the bounds are known
                data = f;
                return true;
              }
              return SpecialFrom(v, path, m, s);
            }
          },
          field.member);
      if (!ok) return false;
    }
    // The file holds the design fields only for a study with a design, so a
    // study without one must not carry them.
    if (s.sDesignName.empty() && (s.iDesFlag != 0 || s.iNumRuns != 0 || !s.Treatments.Empty() || !s.Contrasts.Empty()))
      return Fail(path, "a study without a design (empty sDesignName) has iDesFlag 0, iNumRuns 0 and no treatments or contrasts");
    if (s.iNumRuns < 0) return Fail(path + ".iNumRuns", "expected a whole number from 0 to 32767");
    if (s.iReps < 0) return Fail(path + ".iReps", "expected a whole number from 0 to 32767");
    s.LinkProductContrasts();
    return DataFrom(*data, path + ".Data", s);
  }

  bool SpecialFrom(const JsonValue& obj, const std::string& path, Special which, Study& s) {
    switch (which) {
      case Special::Factors:
        return Array(obj, path, "Factors", [&](const JsonValue& v, const std::string& here) {
          Item item;
          if (!Text(v, here, item.sKey)) return false;
          s.Factors.Add(std::move(item));
          return true;
        });
      case Special::StudyRespVars:
        return Array(obj, path, "StudyRespVars", [&](const JsonValue& v, const std::string& here) {
          StudyRespVar r;
          const JsonValue* f;
          if (!Expect(v, JsonValue::Type::Object, here) ||
              !OnlyFields(v, here, {"sKey", "iType", "fParam1", "fParam2"}))
            return false;
          if (!(f = Field(v, here, "sKey")) || !Text(*f, here + ".sKey", r.sKey)) return false;
          if (!(f = Field(v, here, "iType")) || !Int16(*f, here + ".iType", r.iType)) return false;
          if (!(f = Field(v, here, "fParam1")) || !Float(*f, here + ".fParam1", r.fParam1)) return false;
          if (!(f = Field(v, here, "fParam2")) || !Float(*f, here + ".fParam2", r.fParam2)) return false;
          s.StudyRespVars.Add(std::move(r));
          return true;
        });
      case Special::Rterms:
        return Array(obj, path, "REGRESS_Rterms", [&](const JsonValue& v, const std::string& here) {
          Rterm t;
          const JsonValue* f;
          if (!Expect(v, JsonValue::Type::Object, here) || !OnlyFields(v, here, {"sTerm", "fBeta", "fValue"}))
            return false;
          if (!(f = Field(v, here, "sTerm")) || !Text(*f, here + ".sTerm", t.sTerm)) return false;
          if (!(f = Field(v, here, "fBeta")) || !Float(*f, here + ".fBeta", t.fBeta)) return false;
          if (!(f = Field(v, here, "fValue")) || !Float(*f, here + ".fValue", t.fValue)) return false;
          s.REGRESS_Rterms.Add(std::move(t));
          return true;
        });
      case Special::Treatments:
        return Array(obj, path, "Treatments", [&](const JsonValue& v, const std::string& here) {
          Treatment t;
          if (!Text(v, here, t.sTlist)) return false;
          s.Treatments.Add(std::move(t));
          return true;
        });
      case Special::Contrasts:
        return Array(obj, path, "Contrasts", [&](const JsonValue& v, const std::string& here) {
          Contrast c;
          const JsonValue* f;
          if (!Expect(v, JsonValue::Type::Object, here) ||
              !OnlyFields(v, here, {"sName", "sMain", "iMain", "sLevels", "sAliases", "bPooled"}))
            return false;
          if (!(f = Field(v, here, "sName")) || !Text(*f, here + ".sName", c.sName)) return false;
          if (!(f = Field(v, here, "sMain")) || !Text(*f, here + ".sMain", c.sMain)) return false;
          if (!(f = Field(v, here, "iMain")) || !Int16(*f, here + ".iMain", c.iMain)) return false;
          if (!(f = Field(v, here, "sLevels")) || !Bytes(*f, here + ".sLevels", c.sLevels)) return false;
          if (!(f = Field(v, here, "sAliases")) || !Text(*f, here + ".sAliases", c.sAliases)) return false;
          if (!(f = Field(v, here, "bPooled")) || !Boolean(*f, here + ".bPooled", c.bPooled)) return false;
          s.Contrasts.Add(std::move(c));
          return true;
        });
      case Special::Notes:
        return Array(obj, path, "Notes", [&](const JsonValue& v, const std::string& here) {
          Note n;
          const JsonValue* f;
          if (!Expect(v, JsonValue::Type::Object, here) || !OnlyFields(v, here, {"iRun", "iRep", "sText"}))
            return false;
          if (!(f = Field(v, here, "iRun")) || !Int16(*f, here + ".iRun", n.iRun)) return false;
          if (!(f = Field(v, here, "iRep")) || !Int16(*f, here + ".iRep", n.iRep)) return false;
          if (!(f = Field(v, here, "sText")) || !Text(*f, here + ".sText", n.sText)) return false;
          s.Notes.Add(std::move(n));
          return true;
        });
      case Special::MyFactors:
        return Array(obj, path, "MyFactors", [&](const JsonValue& v, const std::string& here) {
          Factor f;
          return FactorFrom(v, here, f) && AddKeyed(s.MyFactors, std::move(f), here);
        });
      case Special::MyRespVars:
        return Array(obj, path, "MyRespVars", [&](const JsonValue& v, const std::string& here) {
          RespVar rv;
          return RespVarFrom(v, here, rv) && AddKeyed(s.MyRespVars, std::move(rv), here);
        });
      case Special::Data:
        break;
    }
    return true;
  }

  bool ProblemFrom(const JsonValue& v, Problem& p) {
    if (!Expect(v, JsonValue::Type::Object, "")) return false;
    if (!OnlyFields(v, "", {"sName", "sDesc", "RespVars", "Factors", "Studies"})) return false;
    const JsonValue* f;
    if (!(f = Field(v, "", "sName")) || !Text(*f, "sName", p.sName)) return false;
    if (!(f = Field(v, "", "sDesc")) || !Text(*f, "sDesc", p.sDesc)) return false;
    if (!Array(v, "", "RespVars", [&](const JsonValue& x, const std::string& here) {
          RespVar rv;
          return RespVarFrom(x, here, rv) && AddKeyed(p.RespVars, std::move(rv), here);
        }))
      return false;
    if (!Array(v, "", "Factors", [&](const JsonValue& x, const std::string& here) {
          Factor factor;
          return FactorFrom(x, here, factor) && AddKeyed(p.Factors, std::move(factor), here);
        }))
      return false;
    return Array(v, "", "Studies", [&](const JsonValue& x, const std::string& here) {
      Study s;
      s.pProblem = &p;
      if (!StudyFrom(x, here, s)) return false;
      std::string key = s.sKey;
      if (!p.AddStudy(std::move(s))) return Fail(here, "the key \"" + key + "\" is used twice");
      return true;
    });
  }
};

}  // namespace

std::string ProblemToJson(const Problem& p) {
  std::string out = "{\n";
  out += "  \"sName\": " + Q(p.sName) + ",\n";
  out += "  \"sDesc\": " + Q(p.sDesc) + ",\n";
  out += "  \"RespVars\": " + List(p.RespVars, "  ", RespVarJson) + ",\n";
  out += "  \"Factors\": " + List(p.Factors, "  ", FactorJson) + ",\n";
  out += "  \"Studies\": " + List(p.Studies, "  ", StudyJson) + "\n";
  return out + "}\n";
}

bool ProblemFromJson(const std::string& json, Problem& problem, std::string& error) {
  JsonValue doc;
  if (!ParseJson(json, doc, error)) return false;
  Reader reader;
  if (!reader.ProblemFrom(doc, problem)) {
    error = reader.error;
    return false;
  }
  return true;
}

}  // namespace kestrow
