// The user's settings: read once at start from "KestWin.INI" in the config
// folder, changed by the preferences, and written whole at exit. Every value
// is a field here under its key's name.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace kestrow {

// Colours are held as the file writes them: 0x00BBGGRR.
using Colour = std::uint32_t;

struct Settings {
  // [General]
  std::int16_t SplitX = 3280;      // splitter position
  std::int16_t GridMode = 1;       // data grid layout: 0 vertical, 1 grouped, 2 sections
  bool TreeIcons = true;           // icons in the tree
  bool SoloStudy = true;           // opening a study's branch closes the others
  bool ClipAcknowledge = true;     // acknowledge a copy to the clipboard
  bool CtrlCLevels = false;        // a copy includes the factor levels
  bool SortLevels = true;          // sort the levels of numeric factors
  bool AllowMissing = true;        // allow an empty cell in the data grid
  bool ContourProgress = false;    // show the progress of contour plotting
  std::int16_t DefaultReps = 2;    // replications of a new study
  std::int16_t ReportNumber = -1;  // running number of report files; -1: one file overwritten
  std::int16_t NumSF = 4;          // significant figures of statistics
  std::int16_t MainX = 20, MainY = 20, MainState = 0, MainWidth = 600, MainHeight = 400;
  std::string TextEd;              // program that shows report files
  std::string DataDir;             // folder of the file dialogs
  std::string PrintLog;            // the print log
  std::string ReportFile;          // the report file
  std::int16_t ReportMode = 2;     // table format of reports
  std::int16_t ReportColWidth = 10;
  bool ConfirmCancel = false;      // confirm a dialog's Cancel if something changed
  bool AllowNear = false;          // nearby clicks trigger chart interaction
  bool YkMlabels = false;          // "k" and "M" on the y-axis
  bool ConShowPlus = false;        // "+" in front of positive contrast components
  std::string CompanyName;
  std::int16_t TreeFontSize = 0, MainFontSize = 0, CardFontSize = 0;  // small, medium, large
  bool StandardLatinSquare = false;
  std::int16_t Navigation = 0;     // after Enter in the grid: 0 down, 1 right
  std::string Language = "English";

  // [Colors]
  Colour DataWindow = 0x00C0C0C0, DataGrid = 0x00E0E0E0, DesTreatments = 0x00C0C0FF,
         DesContrasts = 0x00C0FFC0, DesAliases = 0x00FFC0C0, ANOVATitles = 0x00FFFF00,
         ANOVAHighlights = 0x0000FFFF, TransformedData = 0x00CCFFCC, ExtrapolatedData = 0x003030FF,
         HeaderText = 0x0, HeaderBackground = 0xFFFFFF, ChartBackground = 0x80FFFF, ChartArea = 0xFFFFFF,
         ChartAxes = 0xFF0000, ChartAxisText = 0x0, ChartTitles = 0xFF0000, ChartLimits = 0xFF,
         ChartMeanLine = 0x80, ChartDataLine = 0xFF0000, ChartDataBlobs = 0x8000FF, LabelText = 0x0,
         LabelBackground = 0xC0FFFF;

  // [Graphs]
  std::string GraphFont = "Arial";
  std::string KSTprinter;          // printing stays off while this is empty
  std::int16_t PrinterOrientation = 2;
  std::array<std::string, 5> Header = {"", "Date: @D||@C", "", "", ""};  // 1Header to 4Header
  bool RetainAspect = false;
  float PageHeaders = 4.0f;
  float HdrLinePercent = 2.0f;
  float PrinterMargins = 5.0f;
  std::int16_t ParetoCutoff = 10;
  std::int16_t RainbowScheme = 0;
  std::int16_t HeadersFlag = 2;
  std::int16_t ContourCellSize = 20;
  std::int16_t JPGSize = 0;
  std::int32_t JPGQuality = 90;

  // [Printing]
  std::string TextFont = "Arial";
  std::int16_t TextSize = 10;
  bool ForcePortrait = false;

  // [Devices]
  std::string LastDevice;

  // [RecentList]: entries 1 to 4; entry 0 is not used.
  std::array<std::string, 5> RecentFile;

  // [Extras]
  std::int16_t OptNetSize = 20;
};

inline Settings gSettings;

// The settings file: "KestWin.INI" in the config folder.
std::string SettingsFile();

// Reads every key, with its default when missing and its clamp when out of
// range; garbage never fails. Fills the defaults that depend on the machine
// (the text editor, the folders) first.
void LoadSettings(const std::string& file = SettingsFile());
// Writes every key.
bool SaveSettings(const std::string& file = SettingsFile(), std::string* error = nullptr);
// The defaults of this machine: Settings() with its folders and editor filled.
Settings DefaultSettings();

// The folder of the file dialogs: the setting, or the program's SAMPDATA.
std::string DataDir();

// Puts a path at the top of the recent list; a path already there moves up.
// The comparison is exact.
void AddToRecentList(const std::string& path);
// The caption of recent-list entry i (1 to 4): "&" i, two blanks, the path;
// empty for an empty entry.
std::string RecentMenuCaption(int i);
// The path of a recent-list caption: what follows the first blank plus one.
std::string RecentFileFromCaption(const std::string& caption);

// Context of the title macros.
struct TitleContext {
  std::string date;          // the date in the short date format
  std::string problemPath;   // the problem's full path
  std::string problemName;
  std::string designName;    // of the current study
  std::string studyName;
};
// Expands "@" and one letter, in either case: D date, C company, F file name,
// G design, N full path, P problem, S study, V program title and version. Any
// other letter keeps its "@".
std::string ExpandTitleMacros(const std::string& text, const TitleContext& context);
// The context of the open problem and the current study, with today's date.
TitleContext CurrentTitleContext();

}  // namespace kestrow
