// Helpers shared by the engine tests: a scripted Ui in force for one test, a
// scratch folder, whole-file reads, and the sample problems.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "core/Globals.h"
#include "core/Problem.h"
#include "core/ProblemJson.h"
#include "core/ScriptedUi.h"
#include "core/Settings.h"

namespace kestrow::test {

// Installs a ScriptedUi for the life of the object and resets the globals.
class ScopedUi {
 public:
  ScopedUi() {
    auto ui = std::make_unique<ScriptedUi>();
    ui_ = ui.get();
    old_ = InstallUi(std::move(ui));
    gSettings = Settings();
    ReplaceProblem(std::make_unique<Problem>());
  }
  ~ScopedUi() { InstallUi(std::move(old_)); }
  ScriptedUi& operator*() { return *ui_; }
  ScriptedUi* operator->() { return ui_; }

 private:
  ScriptedUi* ui_;
  std::unique_ptr<Ui> old_;
};

// A fresh folder under the system's temporary folder, removed afterwards.
class TempDir {
 public:
  TempDir() {
    path_ = std::filesystem::temp_directory_path() /
            ("kestrow-test-" + std::to_string(::getpid()) + "-" + std::to_string(counter_++));
    std::filesystem::remove_all(path_);
    std::filesystem::create_directories(path_);
  }
  ~TempDir() { std::filesystem::remove_all(path_); }
  std::string operator/(const std::string& name) const { return (path_ / name).string(); }
  std::string str() const { return path_.string(); }

 private:
  std::filesystem::path path_;
  static inline int counter_ = 0;
};

inline std::string ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::stringstream s;
  s << in.rdbuf();
  return s.str();
}

inline void WriteFile(const std::string& path, const std::string& bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out << bytes;
}

// A sample problem from its JSON source.
inline std::unique_ptr<Problem> Sample(const std::string& name) {
  auto p = std::make_unique<Problem>();
  std::string error;
  bool ok = ProblemFromJson(ReadFile(std::string(KESTROW_SAMPLES_DIR) + "/" + name + ".json"), *p, error);
  EXPECT_TRUE(ok) << error;
  p->sPathFileName = name + ".KSW";
  return p;
}

// The bytes a problem saves as.
inline std::string SavedBytes(Problem& p, const TempDir& dir, const std::string& name = "saved.KSW") {
  EXPECT_TRUE(p.Save(dir / name));
  return ReadFile(dir / name);
}

}  // namespace kestrow::test

// ---- The data grid of a sample study ----------------------------------------

#include <utility>

#include "core/Language.h"
#include "data/DataGrid.h"

namespace kestrow::test {

// The first study of a sample problem, laid out in a data grid, with the
// English texts open for the messages.
class SampleGridFixture : public ::testing::Test {
 protected:
  explicit SampleGridFixture(std::string sample) : sample_(std::move(sample)) {}
  void SetUp() override {
    OpenLanguage(std::string(KESTROW_BIN) + "/KSTlang.MDB", "English");
    problem = Sample(sample_);
  }
  void TearDown() override { CloseLanguage(); }
  Study& study() { return problem->Studies(1); }
  // Lays the grid out by the setting GridMode and loads the study's data.
  void Show(int mode) {
    gSettings.GridMode = static_cast<std::int16_t>(mode);
    dg.FixUpDataGrid(study());
    dg.LoadDataGrid(study());
  }
  // The row and column of a column response, run and replication.
  std::pair<int, int> Cell(int rv, int run, int rep) const {
    int row, col;
    dg.CellOf(rv, run, rep, row, col);
    return {row, col};
  }
  const std::string& TextAt(int rv, int run, int rep) const {
    auto [row, col] = Cell(rv, run, rep);
    return grid.Text(row, col);
  }

  ScopedUi ui;
  std::unique_ptr<Problem> problem;
  Grid grid;
  DataGrid dg{grid};

 private:
  std::string sample_;
};

}  // namespace kestrow::test

// ---- Problem files byte by byte ----------------------------------------------

namespace kestrow::test {

// A 16-bit integer as the problem file stores it, low byte first.
inline std::string Int16Bytes(int v) { return std::string{static_cast<char>(v & 0xFF), static_cast<char>((v >> 8) & 0xFF)}; }

// A counted string as the problem file stores it.
inline std::string Str(const std::string& s) { return Int16Bytes(static_cast<int>(s.size())) + s; }

// A study of the problem locked as a copy of study 1 under another key.
inline void AddLockedCopy(Problem& p, const std::string& key) {
  Study copy = p.Studies(1);
  copy.sKey = key;
  copy.LockMe();
  p.AddStudy(std::move(copy));
}

// A scripted Ui and a scratch folder for each test, with the file round trips.
class ScratchTest : public ::testing::Test {
 protected:
  // Writes the bytes as a problem file and loads it: the failure text, or
  // nothing when the file loads.
  std::string LoadFailureOf(const std::string& bytes) {
    WriteFile(dir / "load.KSW", bytes);
    Problem p;
    return p.Load(dir / "load.KSW") ? std::string() : p.LoadFailure();
  }
  // The problem saved and loaded back.
  std::unique_ptr<Problem> Reloaded(Problem& p) {
    EXPECT_TRUE(p.Save(dir / "reload.KSW"));
    auto q = std::make_unique<Problem>();
    EXPECT_TRUE(q->Load(dir / "reload.KSW"));
    return q;
  }

  ScopedUi ui;
  TempDir dir;
};

}  // namespace kestrow::test

// ---- kestrow-cli end to end --------------------------------------------------

#include <sys/wait.h>

#include <cstdlib>

namespace kestrow::test {

struct CliResult {
  int code;  // the exit code, or -1 when the program did not exit
  std::string out, err;
};

// Runs kestrow-cli with the words of args, its settings folder the scratch
// folder so that every run starts from the defaults.
inline CliResult RunCli(const TempDir& dir, const std::string& args) {
  std::string command = "KESTROW_CONFIG_DIR=" + dir.str() + " " + KESTROW_CLI + " " + args + " >" +
                        dir / "cli-out.txt" + " 2>" + dir / "cli-err.txt";
  int status = std::system(command.c_str());
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadFile(dir / "cli-out.txt"), ReadFile(dir / "cli-err.txt")};
}

}  // namespace kestrow::test
