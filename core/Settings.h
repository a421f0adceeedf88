// The user's settings, read once at start and written at exit. The defaults
// here are what a first run, or a missing key, gives.
#pragma once

#include <cstdint>
#include <string>

namespace kestrow {

struct Settings {
  std::int16_t iDefaultReps = 2;  // replications of a new study
  std::int16_t iNumSF = 4;        // significant figures of statistics
  bool bConfirmCancel = false;    // confirm a dialog's Cancel if something has changed
  bool bSortLevels = true;        // sort the levels of numeric factors
  std::string sDataDir;           // folder of the file dialogs; empty: the samples folder
  std::string sLanguage = "English";
};

inline Settings gSettings;

// The folder of the file dialogs: the setting, or the program's SAMPDATA.
std::string DataDir();

}  // namespace kestrow
