#include "charts/ChartJson.h"

#include <variant>
#include <vector>

#include "core/Json.h"
#include "core/JsonReader.h"

namespace kestrow {

namespace {

using Member = std::variant<std::string Chart::*, float Chart::*, std::int16_t Chart::*, bool Chart::*>;
struct ChartField {
  const char* name;
  Member member;
};

// The fields of a chart in the order of the JSON form.
const std::vector<ChartField>& ChartFields() {
  static const std::vector<ChartField> FIELDS = {
      {"sTitle", &Chart::sTitle},       {"sXlabel", &Chart::sXlabel},       {"sYlabel", &Chart::sYlabel},
      {"sText1", &Chart::sText1},       {"sText2", &Chart::sText2},         {"sText3", &Chart::sText3},
      {"fValue", &Chart::fValue},       {"sTextType", &Chart::sTextType},   {"xAxisCount", &Chart::xAxisCount},
      {"yAxisCount", &Chart::yAxisCount}, {"zAxisCount", &Chart::zAxisCount}, {"ox", &Chart::ox},
      {"oy", &Chart::oy},               {"bVisible", &Chart::bVisible},     {"LowLimit", &Chart::LowLimit},
      {"MeanLimit", &Chart::MeanLimit}, {"HighLimit", &Chart::HighLimit},   {"xMin", &Chart::xMin},
      {"xMax", &Chart::xMax},           {"yMin", &Chart::yMin},             {"yMax", &Chart::yMax},
      {"xMajor", &Chart::xMajor},       {"xMinor", &Chart::xMinor},         {"yMajor", &Chart::yMajor},
      {"yMinor", &Chart::yMinor},       {"sXformat", &Chart::sXformat},     {"sYformat", &Chart::sYformat},
      {"fAlphaRad", &Chart::fAlphaRad}, {"fBetaRad", &Chart::fBetaRad},     {"iNet", &Chart::iNet},
      {"bShade", &Chart::bShade},       {"bFilled", &Chart::bFilled},       {"bRainbow", &Chart::bRainbow},
      {"bHideNet", &Chart::bHideNet},   {"Width", &Chart::Width},           {"Height", &Chart::Height},
      {"PlotLeft", &Chart::PlotLeft},   {"PlotTop", &Chart::PlotTop},       {"PlotRight", &Chart::PlotRight},
      {"PlotBottom", &Chart::PlotBottom}, {"fLOBFAtBottom", &Chart::fLOBFAtBottom}, {"fLOBFAtTop", &Chart::fLOBFAtTop},
  };
  return FIELDS;
}

const std::vector<std::string> POINT_FIELDS = {"sId",     "sId2",    "idf",     "fX",       "fY",      "fZ",
                                               "iWhereX", "iWhereY", "iSeqPtr", "iDotType", "bJoined"};
const std::vector<std::string> LINE_FIELDS = {"fX", "fY", "fZ", "iTag", "bJoined"};

std::string Bool(bool b) { return b ? "true" : "false"; }

std::string PointJson(const DataPoint& p) {
  return "{\"sId\": " + JsonQuote(p.sId) + ", \"sId2\": " + JsonQuote(p.sId2) + ", \"idf\": " + std::to_string(p.idf) +
         ", \"fX\": " + JsonFloat(p.fX) + ", \"fY\": " + JsonFloat(p.fY) + ", \"fZ\": " + JsonFloat(p.fZ) +
         ", \"iWhereX\": " + std::to_string(p.iWhereX) + ", \"iWhereY\": " + std::to_string(p.iWhereY) +
         ", \"iSeqPtr\": " + std::to_string(p.iSeqPtr) + ", \"iDotType\": " + std::to_string(p.iDotType) +
         ", \"bJoined\": " + Bool(p.bJoined) + "}";
}

std::string LineJson(const LinePoint& p) {
  return "{\"fX\": " + JsonFloat(p.fX) + ", \"fY\": " + JsonFloat(p.fY) + ", \"fZ\": " + JsonFloat(p.fZ) +
         ", \"iTag\": " + std::to_string(p.iTag) + ", \"bJoined\": " + Bool(p.bJoined) + "}";
}

class ChartReader : public JsonReader {
 public:
  bool ChartFrom(const JsonValue& v, const std::string& path, Chart& c) {
    if (!Expect(v, JsonValue::Type::Object, path)) return false;
    std::vector<std::string> names = {"chtType", "DataPoints", "LinePoints"};
    for (const ChartField& f : ChartFields()) names.push_back(f.name);
    if (!OnlyFields(v, path, names)) return false;
    const JsonValue* type = Field(v, path, "chtType");
    long t = 0;
    if (!type || !Int(*type, path + ".chtType", 0, CHART_TYPES - 1, t)) return false;
    c.Init(static_cast<std::int16_t>(t));
    for (const ChartField& f : ChartFields()) {
      const JsonValue* value = v.Member(f.name);
      if (!value) continue;
      std::string here = path + "." + f.name;
      bool ok = std::visit(
          [&](auto m) -> bool {
            using M = decltype(m);
            if constexpr (std::is_same_v<M, std::string Chart::*>) return Text(*value, here, c.*m);
            else if constexpr (std::is_same_v<M, float Chart::*>) return Float(*value, here, c.*m);
            else if constexpr (std::is_same_v<M, std::int16_t Chart::*>) return Int16(*value, here, c.*m);
            else return Boolean(*value, here, c.*m);
          },
          f.member);
      if (!ok) return false;
    }
    if (const JsonValue* points = v.Member("DataPoints")) {
      std::string here = path + ".DataPoints";
      if (!Expect(*points, JsonValue::Type::Array, here)) return false;
      for (std::size_t i = 0; i < points->items.size(); ++i) {
        DataPoint p;
        if (!PointFrom(points->items[i], here + "[" + std::to_string(i) + "]", p)) return false;
        c.AddData(p);
      }
    }
    if (const JsonValue* lines = v.Member("LinePoints")) {
      std::string here = path + ".LinePoints";
      if (!Expect(*lines, JsonValue::Type::Array, here)) return false;
      for (std::size_t i = 0; i < lines->items.size(); ++i) {
        LinePoint p;
        if (!LineFrom(lines->items[i], here + "[" + std::to_string(i) + "]", p)) return false;
        c.AddLinePoint(p.fX, p.fY, p.fZ, p.iTag, p.bJoined);
      }
    }
    return true;
  }

 private:
  // A field of a point, when it is there.
  template <class T, class Read>
  bool Optional(const JsonValue& v, const std::string& path, const char* name, T& out, Read read) {
    const JsonValue* f = v.Member(name);
    return !f || (this->*read)(*f, path + "." + name, out);
  }

  bool PointFrom(const JsonValue& v, const std::string& path, DataPoint& p) {
    return Expect(v, JsonValue::Type::Object, path) && OnlyFields(v, path, POINT_FIELDS) &&
           Optional(v, path, "sId", p.sId, &ChartReader::Text) && Optional(v, path, "sId2", p.sId2, &ChartReader::Text) &&
           Optional(v, path, "idf", p.idf, &ChartReader::Int16) && Optional(v, path, "fX", p.fX, &ChartReader::Float) &&
           Optional(v, path, "fY", p.fY, &ChartReader::Float) && Optional(v, path, "fZ", p.fZ, &ChartReader::Float) &&
           Optional(v, path, "iWhereX", p.iWhereX, &ChartReader::Int16) &&
           Optional(v, path, "iWhereY", p.iWhereY, &ChartReader::Int16) &&
           Optional(v, path, "iSeqPtr", p.iSeqPtr, &ChartReader::Int16) &&
           Optional(v, path, "iDotType", p.iDotType, &ChartReader::Int16) &&
           Optional(v, path, "bJoined", p.bJoined, &ChartReader::Boolean);
  }

  bool LineFrom(const JsonValue& v, const std::string& path, LinePoint& p) {
    return Expect(v, JsonValue::Type::Object, path) && OnlyFields(v, path, LINE_FIELDS) &&
           Optional(v, path, "fX", p.fX, &ChartReader::Float) && Optional(v, path, "fY", p.fY, &ChartReader::Float) &&
           Optional(v, path, "fZ", p.fZ, &ChartReader::Float) && Optional(v, path, "iTag", p.iTag, &ChartReader::Int16) &&
           Optional(v, path, "bJoined", p.bJoined, &ChartReader::Boolean);
  }
};

}  // namespace

std::string ChartsToJson(const ChartPage& page) {
  std::string out = "{\"Charts\": [";
  bool firstChart = true;
  for (const Chart& c : page.Charts) {
    out += firstChart ? "\n  {" : ",\n  {";
    firstChart = false;
    out += "\"chtType\": " + std::to_string(c.chtType);
    for (const ChartField& f : ChartFields()) {
      out += ", \"" + std::string(f.name) + "\": ";
      std::visit(
          [&](auto m) {
            using M = decltype(m);
            if constexpr (std::is_same_v<M, std::string Chart::*>) out += JsonQuote(c.*m);
            else if constexpr (std::is_same_v<M, float Chart::*>) out += JsonFloat(c.*m);
            else if constexpr (std::is_same_v<M, std::int16_t Chart::*>) out += std::to_string(c.*m);
            else out += Bool(c.*m);
          },
          f.member);
    }
    out += ",\n   \"DataPoints\": [";
    for (std::size_t i = 0; i < c.DataPoints.size(); ++i) out += (i ? ",\n    " : "\n    ") + PointJson(c.DataPoints[i]);
    out += c.DataPoints.empty() ? "]" : "\n   ]";
    out += ",\n   \"LinePoints\": [";
    for (std::size_t i = 0; i < c.LinePoints.size(); ++i) out += (i ? ",\n    " : "\n    ") + LineJson(c.LinePoints[i]);
    out += c.LinePoints.empty() ? "]}" : "\n   ]}";
  }
  out += firstChart ? "]}\n" : "\n]}\n";
  return out;
}

bool ChartsFromJson(const std::string& json, ChartPage& page, std::string& error) {
  JsonValue doc;
  if (!ParseJson(json, doc, error)) return false;
  ChartReader reader;
  std::deque<Chart> charts;
  auto fail = [&] {
    error = reader.error;
    return false;
  };
  if (!reader.Expect(doc, JsonValue::Type::Object, "") || !reader.OnlyFields(doc, "", {"Charts"})) return fail();
  const JsonValue* list = reader.Field(doc, "", "Charts");
  if (!list || !reader.Expect(*list, JsonValue::Type::Array, "Charts")) return fail();
  for (std::size_t i = 0; i < list->items.size(); ++i) {
    charts.emplace_back();
    if (!reader.ChartFrom(list->items[i], "Charts[" + std::to_string(i) + "]", charts.back())) return fail();
  }
  page.Start();
  page.Charts = std::move(charts);
  return true;
}

}  // namespace kestrow
