// The rules of the ANOVA dialog: the response, alpha, what is analysed
// (averages, standard deviations or the mean-square deviation from target),
// and, for an unreplicated study, the contrasts pooled into error with their
// running totals.
#pragma once

#include <string>
#include <vector>

#include "data/FillRVList.h"
#include "data/Statistics.h"

namespace kestrow {

class Study;

class ANOVAForm {
 public:
  struct PoolRow {
    int contrast;         // from 1
    std::string name;     // the contrast's name
    std::string ss;       // its sum of squares, four digits
    std::string aliases;
    bool checked;
  };
  enum class Outcome { Accepted, Refused, Noticed };

  // stats must hold every response of the study (Compute).
  ANOVAForm(Study& study, const Statistics& stats);

  // A response of rvList (from 0), or -1 for none.
  void SelectRV(int index);
  // 0 averages, 1 standard deviations, 2 MSD; a disabled one falls back to 0.
  void SetOption(int option);
  // Flips the pooling of a row of the pool list.
  void TogglePool(int row);
  // Pooling totals as the labels show them.
  std::string lblDF() const;
  std::string lblErrorSS() const;
  std::string lblTotalSS() const;
  std::string lblPooling() const;

  // OK: Accepted (the settings are stored), or the message shown and the
  // dialog stays: Refused for an error, Noticed for the first OK without a
  // pooled contrast.
  Outcome OK(std::string& message);
  // Cancel: the pooling flags go back to what they were.
  void Cancel();
  // Whether anything was changed in the dialog, for the question of Cancel.
  bool Edited() const;

  std::vector<RVListEntry> rvList;
  int rvIndex = -1;
  std::string txtAlpha;
  int option = 0;
  bool optionEnabled[3] = {true, false, false};
  bool poolingEnabled = false;
  bool changed = false;  // the pool list was touched
  bool stored = false;   // OK changed what the study holds: the problem is changed
  std::vector<PoolRow> pool;

 private:
  void Enable();
  void FillPool();

  Study& study_;
  Statistics stats_;
  std::vector<bool> pooledBefore_;
  int pooledCount_ = 0;
  float errorSS_ = 0, totalSS_ = 0;
  bool noticed_ = false;
  int rvIndexBefore_ = -1, optionBefore_ = 0;
  std::string alphaBefore_;
};

}  // namespace kestrow
