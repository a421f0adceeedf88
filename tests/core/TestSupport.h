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
