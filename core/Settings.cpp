#include "core/Settings.h"

#include <cstdio>
#include <functional>
#include <vector>

#include "core/Clock.h"
#include "core/Globals.h"
#include "core/IniFile.h"
#include "core/Paths.h"
#include "core/Sentinels.h"
#include "core/Text.h"

namespace kestrow {

namespace {

// One key of the file: where it lives, how it reads and writes.
struct Key {
  const char* section;
  std::string name;
  std::function<void(Settings&, const std::string&)> read;  // from the file's text
  std::function<std::string(const Settings&)> write;        // to the file's text
};

std::int16_t ToInt16(const std::string& text) {
  double v = Val(text);
  if (v > 32767) return 32767;
  if (v < -32768) return -32768;
  return static_cast<std::int16_t>(v);
}

// A 16-bit key; outside [lo, hi] it becomes `otherwise`.
Key Int16Key(const char* section, const char* name, std::int16_t Settings::*field, int lo = -32768,
             int hi = 32767, int otherwise = 0) {
  return {section, name,
          [=](Settings& s, const std::string& t) {
            std::int16_t v = ToInt16(t);
            s.*field = static_cast<std::int16_t>(v < lo || v > hi ? otherwise : v);
          },
          [=](const Settings& s) { return std::to_string(s.*field); }};
}

// A flag: written as 0 or 1; any value but 0 reads as on.
Key FlagKey(const char* section, const char* name, bool Settings::*field) {
  return {section, name, [=](Settings& s, const std::string& t) { s.*field = Val(t) != 0.0; },
          [=](const Settings& s) { return std::string(s.*field ? "1" : "0"); }};
}

Key TextKey(const char* section, const char* name, std::string Settings::*field) {
  return {section, name, [=](Settings& s, const std::string& t) { s.*field = t; },
          [=](const Settings& s) { return s.*field; }};
}

Key FloatKey(const char* section, const char* name, float Settings::*field, float lo, float hi, float otherwise) {
  return {section, name,
          [=](Settings& s, const std::string& t) {
            float v = static_cast<float>(Val(t));
            s.*field = v < lo || v > hi ? otherwise : v;
          },
          [=](const Settings& s) { return ShortestText(s.*field); }};
}

// Colours are written "&H" and hexadecimal digits; text that is no such
// number keeps the default.
Colour ParseColour(const std::string& text, Colour otherwise) {
  std::string t = UCase(Trim(text));
  if (t.rfind("&H", 0) == 0) t = t.substr(2);
  if (t.empty() || t.size() > 8 || t.find_first_not_of("0123456789ABCDEF") != std::string::npos) return otherwise;
  return static_cast<Colour>(std::stoul(t, nullptr, 16));
}

std::string ColourText(Colour c) {
  char buf[16];
  std::snprintf(buf, sizeof buf, "&H%X", c);
  return buf;
}

Key ColourKey(const char* name, Colour Settings::*field) {
  return {"Colors", name, [=](Settings& s, const std::string& t) { s.*field = ParseColour(t, s.*field); },
          [=](const Settings& s) { return ColourText(s.*field); }};
}

const std::vector<Key>& Keys() {
  static const std::vector<Key> keys = [] {
    using S = Settings;
    std::vector<Key> k = {
        Int16Key("General", "SplitX", &S::SplitX),
        Int16Key("General", "GridMode", &S::GridMode, 0, 2, 0),
        FlagKey("General", "TreeIcons", &S::TreeIcons),
        FlagKey("General", "SoloStudy", &S::SoloStudy),
        FlagKey("General", "ClipAcknowledge", &S::ClipAcknowledge),
        FlagKey("General", "CtrlCLevels", &S::CtrlCLevels),
        FlagKey("General", "SortLevels", &S::SortLevels),
        FlagKey("General", "AllowMissing", &S::AllowMissing),
        FlagKey("General", "ContourProgress", &S::ContourProgress),
        Int16Key("General", "DefaultReps", &S::DefaultReps, 1, 30, 2),
        {"General", "ReportNumber",
         [](S& s, const std::string& t) {
           std::int16_t v = ToInt16(t);
           s.ReportNumber = v > 999 ? 1 : v;
         },
         [](const S& s) { return std::to_string(s.ReportNumber); }},
        Int16Key("General", "NumSF", &S::NumSF, 2, 7, 4),
        Int16Key("General", "MainX", &S::MainX),
        Int16Key("General", "MainY", &S::MainY),
        Int16Key("General", "MainState", &S::MainState, 0, 2, 0),
        Int16Key("General", "MainWidth", &S::MainWidth),
        Int16Key("General", "MainHeight", &S::MainHeight),
        TextKey("General", "TextEd", &S::TextEd),
        TextKey("General", "DataDir", &S::DataDir),
        TextKey("General", "PrintLog", &S::PrintLog),
        TextKey("General", "ReportFile", &S::ReportFile),
        Int16Key("General", "ReportMode", &S::ReportMode, 0, 2, 2),
        Int16Key("General", "ReportColWidth", &S::ReportColWidth, 8, 32, 10),
        FlagKey("General", "ConfirmCancel", &S::ConfirmCancel),
        FlagKey("General", "AllowNear", &S::AllowNear),
        FlagKey("General", "YkMlabels", &S::YkMlabels),
        FlagKey("General", "ConShowPlus", &S::ConShowPlus),
        TextKey("General", "CompanyName", &S::CompanyName),
        Int16Key("General", "TreeFontSize", &S::TreeFontSize, 0, 2, 0),
        Int16Key("General", "MainFontSize", &S::MainFontSize, 0, 2, 0),
        Int16Key("General", "CardFontSize", &S::CardFontSize, 0, 2, 0),
        FlagKey("General", "StandardLatinSquare", &S::StandardLatinSquare),
        {"General", "Navigation", [](S& s, const std::string& t) { s.Navigation = ToInt16(t) != 0 ? 1 : 0; },
         [](const S& s) { return std::to_string(s.Navigation); }},
        TextKey("General", "Language", &S::Language),

        ColourKey("DataWindow", &S::DataWindow),
        ColourKey("DataGrid", &S::DataGrid),
        ColourKey("DesTreatments", &S::DesTreatments),
        ColourKey("DesContrasts", &S::DesContrasts),
        ColourKey("DesAliases", &S::DesAliases),
        ColourKey("ANOVATitles", &S::ANOVATitles),
        ColourKey("ANOVAHighlights", &S::ANOVAHighlights),
        ColourKey("TransformedData", &S::TransformedData),
        // Read under this spelling and written under the right one, so a colour
        // chosen in the preferences does not come back at the next start. Users
        // have always seen it so.
        {"Colors", "ExtraoplatedData",
         [](S& s, const std::string& t) { s.ExtrapolatedData = ParseColour(t, s.ExtrapolatedData); }, nullptr},
        {"Colors", "ExtrapolatedData", nullptr, [](const S& s) { return ColourText(s.ExtrapolatedData); }},
        ColourKey("HeaderText", &S::HeaderText),
        ColourKey("HeaderBackground", &S::HeaderBackground),
        ColourKey("ChartBackground", &S::ChartBackground),
        ColourKey("ChartArea", &S::ChartArea),
        ColourKey("ChartAxes", &S::ChartAxes),
        ColourKey("ChartAxisText", &S::ChartAxisText),
        ColourKey("ChartTitles", &S::ChartTitles),
        ColourKey("ChartLimits", &S::ChartLimits),
        ColourKey("ChartMeanLine", &S::ChartMeanLine),
        ColourKey("ChartDataLine", &S::ChartDataLine),
        ColourKey("ChartDataBlobs", &S::ChartDataBlobs),
        ColourKey("LabelText", &S::LabelText),
        ColourKey("LabelBackground", &S::LabelBackground),

        TextKey("Graphs", "GraphFont", &S::GraphFont),
        TextKey("Graphs", "KSTprinter", &S::KSTprinter),
        Int16Key("Graphs", "PrinterOrientation", &S::PrinterOrientation),
        FlagKey("Graphs", "RetainAspect", &S::RetainAspect),
        FloatKey("Graphs", "PageHeaders", &S::PageHeaders, 2.0f, 4.0f, 4.0f),
        FloatKey("Graphs", "HdrLinePercent", &S::HdrLinePercent, 1.0f, 10.0f, 2.0f),
        // Out of range gives 4, deliberately not the default of 5.
        FloatKey("Graphs", "PrinterMargins", &S::PrinterMargins, 0.0f, 20.0f, 4.0f),
        Int16Key("Graphs", "ParetoCutoff", &S::ParetoCutoff, 4, 32, 10),
        Int16Key("Graphs", "RainbowScheme", &S::RainbowScheme, 0, 1, 0),
        Int16Key("Graphs", "HeadersFlag", &S::HeadersFlag, 0, 32767, 0),
        Int16Key("Graphs", "ContourCellSize", &S::ContourCellSize),
        Int16Key("Graphs", "JPGSize", &S::JPGSize, 0, 3, 0),
        {"Graphs", "JPGQuality",
         [](S& s, const std::string& t) {
           double v = Val(t);
           s.JPGQuality = v < 10 || v > 99 ? 90 : static_cast<std::int32_t>(v);
         },
         [](const S& s) { return std::to_string(s.JPGQuality); }},

        TextKey("Printing", "TextFont", &S::TextFont),
        Int16Key("Printing", "TextSize", &S::TextSize, 6, 32, 10),
        FlagKey("Printing", "ForcePortrait", &S::ForcePortrait),
        TextKey("Devices", "LastDevice", &S::LastDevice),
        Int16Key("Extras", "OptNetSize", &S::OptNetSize, 5, 50, 20),
    };
    for (int i = 1; i <= 4; ++i) {
      k.push_back({"Graphs", std::to_string(i) + "Header",
                   [i](S& s, const std::string& t) { s.Header[static_cast<std::size_t>(i)] = t; },
                   [i](const S& s) { return s.Header[static_cast<std::size_t>(i)]; }});
      k.push_back({"RecentList", std::to_string(i) + "File",
                   [i](S& s, const std::string& t) { s.RecentFile[static_cast<std::size_t>(i)] = t; },
                   [i](const S& s) { return s.RecentFile[static_cast<std::size_t>(i)]; }});
    }
    return k;
  }();
  return keys;
}

// A sentinel default that no file holds, to tell a missing key from an empty one.
const char* ABSENT = "\x01" "absent";

}  // namespace

std::string SettingsFile() { return JoinPath(ConfigFolder(), "KestWin.INI"); }

Settings DefaultSettings() {
  Settings s;
  s.TextEd = FileExists("/usr/bin/xdg-open") ? "/usr/bin/xdg-open" : "";
  s.DataDir = JoinPath(ProgramFolder(), "SAMPDATA");
  s.PrintLog = JoinPath(ConfigFolder(), "KSTWPLOG.TXT");
  s.ReportFile = JoinPath(ConfigFolder(), "KSTREP.TXT");
  return s;
}

void LoadSettings(const std::string& file) {
  Settings s = DefaultSettings();
  const IniText ini(file);
  for (const Key& key : Keys()) {
    if (!key.read) continue;
    std::string text = ini.Get(key.section, key.name, ABSENT);
    if (text != ABSENT) key.read(s, text);
  }
  gSettings = s;
}

bool SaveSettings(const std::string& file, std::string* error) {
  IniText ini(file);
  for (const Key& key : Keys())
    if (key.write) ini.Set(key.section, key.name, key.write(gSettings));
  return ini.Save(error);
}

std::string DataDir() {
  if (!gSettings.DataDir.empty()) return gSettings.DataDir;
  return JoinPath(ProgramFolder(), "SAMPDATA");
}

void AddToRecentList(const std::string& path) {
  auto& list = gSettings.RecentFile;
  int at = 0;
  for (int i = 1; i <= 4; ++i)
    if (list[static_cast<std::size_t>(i)] == path) at = i;
  int last = at ? at : 4;
  for (int i = last; i > 1; --i) list[static_cast<std::size_t>(i)] = list[static_cast<std::size_t>(i - 1)];
  list[1] = path;
}

std::string RecentMenuCaption(int i) {
  if (i < 1 || i > 4 || gSettings.RecentFile[static_cast<std::size_t>(i)].empty()) return "";
  return "&" + std::to_string(i) + "  " + gSettings.RecentFile[static_cast<std::size_t>(i)];
}

std::string RecentFileFromCaption(const std::string& caption) {
  std::size_t blank = caption.find(' ');
  if (blank == std::string::npos) return "";
  return caption.substr(std::min(caption.size(), blank + 2));
}

std::string ExpandTitleMacros(const std::string& text, const TitleContext& c) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '@' || i + 1 >= text.size()) {
      out += text[i];
      continue;
    }
    char letter = text[i + 1];
    switch (letter) {
      case 'D': case 'd': out += c.date; break;
      case 'C': case 'c': out += gSettings.CompanyName; break;
      case 'F': case 'f': out += GetFName(c.problemPath); break;
      case 'G': case 'g': out += c.designName; break;
      case 'N': case 'n': out += c.problemPath; break;
      case 'P': case 'p': out += c.problemName; break;
      case 'S': case 's': out += c.studyName; break;
      case 'V': case 'v':
        out += std::string(PROGRAM_TITLE) + " Version " + std::to_string(KESTROW_VERSION_MAJOR) + "." +
               std::to_string(KESTROW_VERSION_MINOR) + "." + std::to_string(KESTROW_VERSION_PATCH);
        break;
      default:
        out += '@';
        continue;  // the letter is copied as it stands
    }
    ++i;
  }
  return out;
}

TitleContext CurrentTitleContext() {
  TitleContext c;
  c.date = ShortDate();
  if (gProblem) {
    c.problemPath = gProblem->sPathFileName;
    c.problemName = gProblem->sName;
  }
  if (gStudy) {
    c.designName = gStudy->sDesignName;
    c.studyName = gStudy->sName;
  }
  return c;
}

}  // namespace kestrow
