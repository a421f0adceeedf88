#include "core/Problem.h"

#include <fstream>
#include <sstream>

#include "core/AtomicFile.h"
#include "core/Globals.h"
#include "core/Paths.h"
#include "core/Settings.h"
#include "core/Text.h"
#include "core/Ui.h"

namespace kestrow {

void Problem::Clear() {
  bChanged = false;
  sPathFileName = JoinPath(DataDir(), "untitled.KSW");
  sName = "New Problem";
  sDesc.clear();
  RespVars.Clear();
  Factors.Clear();
  Studies.Clear();
}

Study* Problem::AddStudy(Study study) {
  study.pProblem = this;
  std::string key = study.sKey;
  return Studies.Add(std::move(study), key);
}

bool Problem::Save(const std::string& path) {
  FileIO& io = gFileIO;
  if (!io.OpenIO(path, FileIO::Mode::Write)) {
    ReportError(io.LastError() + ": " + path, "Save");
    return false;
  }
  io.PutString("KSTW");
  io.PutInt(KSW_VERSION);
  io.PutInt(static_cast<std::int16_t>(RespVars.Count()));
  io.PutInt(static_cast<std::int16_t>(Factors.Count()));
  io.PutInt(static_cast<std::int16_t>(Studies.Count()));
  io.PutString(sName);
  io.PutString(sDesc);
  for (const RespVar& rv : RespVars) rv.fWrite(io);
  for (const Factor& f : Factors) f.fWrite(io);
  for (const Study& s : Studies) s.fWrite(io);
  if (!io.CloseIO()) {
    ReportError(io.LastError(), "Save");
    return false;
  }
  return true;
}

bool Problem::Load(const std::string& path) {
  FileIO& io = gFileIO;
  sPathFileName = path;
  bChanged = false;
  sFailure_.clear();

  auto fail = [&](const std::string& text) {
    sFailure_ = text;
    io.CloseIO();
    ErrorBox(text);
    return false;
  };

  if (!io.OpenIO(path, FileIO::Mode::Read)) return fail(io.LastError() + ": " + path);

  if (io.GetString() != "KSTW") return fail("This is not a valid .KSW file!");
  // A version past the end of the file reads as 0, like every number there:
  // the notice, then the stage that meets the end.
  float version = static_cast<float>(io.GetInt()) / 100.0f;
  if (version < 1.0f) {
    // An older file is read with the same field order; it is converted when saved.
    InfoBox(std::string("This file was written by an earlier version of ") + PROGRAM_TITLE +
            "\nWhen you save it, it will be converted to the current version");
  } else if (version > 1.0f) {
    return fail("File version is not recognised by this program");
  }

  const char* stage = "Error reading problem parameters";
  std::int16_t nRV = io.GetInt();
  std::int16_t nFactors = io.GetInt();
  std::int16_t nStudies = io.GetInt();
  sName = io.GetString();
  if (io.Failed()) return fail(stage);
  sDesc = io.GetString();
  if (io.Failed()) return fail(stage);

  stage = "Error reading Response Variables";
  if (!io.CanHold(nRV, RespVar::MIN_FILE_BYTES, RespVar::TAIL_BYTES)) return fail(stage);
  for (int i = 0; i < nRV; ++i) {
    RespVar rv;
    if (!rv.fRead(io) || io.Failed()) return fail(stage);
    std::string key = rv.sKey;
    if (!RespVars.Add(std::move(rv), key)) return fail(stage);
  }

  stage = "Error reading factors";
  if (!io.CanHold(nFactors, Factor::MIN_FILE_BYTES, Factor::TAIL_BYTES)) return fail(stage);
  for (int i = 0; i < nFactors; ++i) {
    Factor f;
    if (!f.fRead(io) || io.Failed()) return fail(stage);
    std::string key = f.sKey;
    if (!Factors.Add(std::move(f), key)) return fail(stage);
  }

  stage = "Error reading studies";
  if (!io.CanHold(nStudies, Study::MIN_FILE_BYTES, Study::TAIL_BYTES)) return fail(stage);
  for (int i = 0; i < nStudies; ++i) {
    Study s;
    s.pProblem = this;
    if (!s.fRead(io) || io.Failed()) return fail(stage);
    if (!AddStudy(std::move(s))) return fail(stage);
  }

  // Whatever stands behind the last study (the tail of a longer file that was
  // once saved over) is never read.
  io.CloseIO();
  return true;
}

void Problem::Export(std::ostream& out) const {
  out << "Problem name: " << sName << "\n";
  out << "Problem description: " << sDesc << "\n";
  out << "Number of factors: " << Factors.Count() << "\n";
  for (int i = 1; i <= Factors.Count(); ++i) Factors(i).Export(out, i);
  out << "Number of response variables: " << RespVars.Count() << "\n";
  for (int i = 1; i <= RespVars.Count(); ++i) RespVars(i).Export(out, i);
  out << "Number of studies: " << Studies.Count() << "\n";
  for (int i = 1; i <= Studies.Count(); ++i) Studies(i).Export(out, i);
}

bool Problem::Export(const std::string& path) const {
  // Through a temporary file and a rename, like a save: a failed export
  // leaves the old file whole.
  std::ostringstream out;
  Export(out);
  std::string error;
  if (!WriteFileAtomically(path, out.str(), error)) {
    ReportError(error + ": " + path, "Export");
    return false;
  }
  return true;
}

std::string Problem::FactorNameToKey(const std::string& name) const {
  for (const Factor& f : Factors)
    if (f.sName == name) return f.sKey;
  return std::string();
}

std::string Problem::FactorKeyToName(const std::string& key) const {
  for (const Factor& f : Factors)
    if (f.sKey == key) return f.sName;
  return std::string();
}

std::string Problem::RVKeyToName(const std::string& key) const {
  const RespVar* rv = RespVars.Find(PureKey(key));
  return rv ? rv->sName : std::string();
}

std::string Problem::RVKeyToDisplayName(const std::string& key) const {
  return (IsTransformedKey(key) ? "*" : "") + RVKeyToName(key);
}

std::string Problem::RVNameToPureKey(const std::string& name) const {
  std::string pure = PureKey(name);
  for (const RespVar& rv : RespVars)
    if (rv.sName == pure) return rv.sKey;
  return std::string();
}

std::string Problem::RVNameToKey(const std::string& name) const {
  std::string key = RVNameToPureKey(name);
  return IsTransformedKey(name) && !key.empty() ? key + "*" : key;
}

std::string Problem::GetFactorLevelName(const std::string& studyKey, int factor, int level) const {
  const Study* s = Studies.Find(studyKey);
  if (!s) return std::string();
  return s->GetPFactorLevelName(s->GetFactorKey(factor), level);
}

int Problem::CountNoiseFactors() const {
  int n = 0;
  for (const Factor& f : Factors)
    if (f.iFlag & FACTOR_NOISE) ++n;
  return n;
}

std::string Problem::GetNextNode(const std::string& prefix) const {
  long highest = 0;
  auto consider = [&](const std::string& key) {
    if (key.size() >= prefix.size() && key.compare(0, prefix.size(), prefix) == 0) {
      long n = static_cast<long>(Val(key.substr(prefix.size())));
      if (n > highest) highest = n;
    }
  };
  for (const Factor& f : Factors) consider(f.sKey);
  for (const RespVar& rv : RespVars) consider(rv.sKey);
  for (const Study& s : Studies) consider(s.sKey);
  return prefix + std::to_string(highest + 1);
}

}  // namespace kestrow
