// The open document: factors, response variables and studies.
#pragma once

#include <ostream>
#include <string>

#include "core/Collection.h"
#include "core/Factor.h"
#include "core/RespVar.h"
#include "core/Study.h"

namespace kestrow {

class FileIO;

// The version this program writes, as the file holds it (the version times 100).
inline constexpr std::int16_t KSW_VERSION = 100;

class Problem {
 public:
  Problem() = default;
  Problem(const Problem&) = delete;
  Problem& operator=(const Problem&) = delete;

  bool bChanged = false;           // differs from its file
  std::string sPathFileName;       // full path
  std::string sName = "New Problem";
  std::string sDesc;
  Collection<RespVar> RespVars;    // keyed by sKey
  Collection<Factor> Factors;      // keyed by sKey
  Collection<Study> Studies;       // keyed by sKey

  // A new problem: "New Problem" in the data folder's "untitled.KSW".
  void Clear();

  // Writes the problem file. A failed save leaves the file that was there
  // whole and reports why.
  bool Save(const std::string& path);
  // Reads a problem file into this problem, which must be new and empty; the
  // caller swaps it in only on success. A failure is reported with the text
  // of the stage that failed, which LoadFailure() also gives.
  bool Load(const std::string& path);
  const std::string& LoadFailure() const { return sFailure_; }
  // The text export, to a file or to a stream.
  bool Export(const std::string& path) const;
  void Export(std::ostream& out) const;

  // Adds a study, which from then on sees this problem's factors.
  Study* AddStudy(Study study);

  std::string FactorNameToKey(const std::string& name) const;
  std::string FactorKeyToName(const std::string& key) const;
  std::string RVKeyToName(const std::string& key) const;
  std::string RVKeyToDisplayName(const std::string& key) const;
  std::string RVNameToKey(const std::string& name) const;
  std::string RVNameToPureKey(const std::string& name) const;
  std::string GetFactorLevelName(const std::string& studyKey, int factor, int level) const;
  int CountNoiseFactors() const;

  // The next free key with the prefix ("f", "v", "s"): one above the highest
  // number in use, so the number of a deleted object can return.
  std::string GetNextNode(const std::string& prefix) const;

 private:
  std::string sFailure_;
};

}  // namespace kestrow
