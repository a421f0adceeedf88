// A problem made to order for the design tests: factors of given level
// counts, one response variable, and a study using them all; the program
// folder is the build's, so the design catalogue and the texts are there.
#pragma once

#include <gtest/gtest.h>

#include "core/Language.h"
#include "core/Paths.h"
#include "core/TestSupport.h"

namespace kestrow::test {

class DesignFixture : public ::testing::Test {
 protected:
  void SetUp() override {
    SetProgramFolder(KESTROW_BIN);
    OpenLanguage(std::string(KESTROW_BIN) + "/KSTlang.MDB", "English");
    gProblem->Clear();
    RespVar rv;
    rv.sKey = "v1";
    rv.sName = "Y";
    gProblem->RespVars.Add(rv, "v1");
  }
  void TearDown() override {
    CloseLanguage();
    SetProgramFolder("");
  }

  // A factor of the problem with levels 10, 20, ...; flags as the factor dialog sets them.
  std::string AddFactor(int levels, std::int16_t flags = 0, const std::string& name = "") {
    Factor f;
    f.sKey = gProblem->GetNextNode("f");
    f.sName = name.empty() ? "Factor " + f.sKey : name;
    f.sAbbr = std::string(1, static_cast<char>('A' + gProblem->Factors.Count()));
    f.iFlag = flags;
    for (int l = 1; l <= levels; ++l) f.Levels.Add(Level{std::to_string(10 * l), "", 0});
    std::string key = f.sKey;
    gProblem->Factors.Add(std::move(f), key);
    return key;
  }

  // A study of the given problem factors and the response.
  Study& MakeStudy(const std::vector<std::string>& keys) {
    Study s;
    s.sKey = "s" + std::to_string(gProblem->Studies.Count() + 1);
    s.sName = "Study " + s.sKey;
    for (const std::string& k : keys) s.Factors.Add(Item{k});
    s.StudyRespVars.Add(StudyRespVar{"v1", 0, 0, 0});
    return *gProblem->AddStudy(std::move(s));
  }

  // A study of n new factors of L levels each.
  Study& StudyOf(int n, int levels, std::int16_t flags = 0) {
    std::vector<std::string> keys;
    for (int i = 0; i < n; ++i) keys.push_back(AddFactor(levels, flags));
    return MakeStudy(keys);
  }

  ScopedUi ui;
};

}  // namespace kestrow::test
