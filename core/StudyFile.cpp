// A study in the problem file: its block, field for field, and its text export.
#include <cstring>

#include "core/FileIO.h"
#include "core/Problem.h"
#include "core/Study.h"
#include "core/Text.h"

namespace kestrow {

namespace {

// The cells of the data block, seven bytes each: the value, the flag, and the
// run order, little-endian.
void PutCell(std::uint8_t* at, float value, std::uint8_t flag, std::int16_t seq) {
  std::uint32_t u;
  std::memcpy(&u, &value, 4);
  at[0] = static_cast<std::uint8_t>(u);
  at[1] = static_cast<std::uint8_t>(u >> 8);
  at[2] = static_cast<std::uint8_t>(u >> 16);
  at[3] = static_cast<std::uint8_t>(u >> 24);
  at[4] = flag;
  at[5] = static_cast<std::uint8_t>(static_cast<std::uint16_t>(seq));
  at[6] = static_cast<std::uint8_t>(static_cast<std::uint16_t>(seq) >> 8);
}

void GetCell(const std::uint8_t* at, float& value, std::uint8_t& flag, std::int16_t& seq) {
  std::uint32_t u = static_cast<std::uint32_t>(at[0]) | (static_cast<std::uint32_t>(at[1]) << 8) |
                    (static_cast<std::uint32_t>(at[2]) << 16) | (static_cast<std::uint32_t>(at[3]) << 24);
  std::memcpy(&value, &u, 4);
  flag = at[4];
  seq = static_cast<std::int16_t>(static_cast<std::uint16_t>(at[5] | (at[6] << 8)));
}

// Smallest number of bytes an entry of each collection takes in the file; a
// count that the rest of the file cannot hold is refused before anything is
// allocated.
constexpr std::size_t MIN_ITEM = 2;            // one string
constexpr std::size_t MIN_STUDY_RV = 2 + 2 + 4 + 4;
constexpr std::size_t MIN_RTERM = 4 + 4 + 2;
constexpr std::size_t MIN_TREATMENT = 2;
constexpr std::size_t MIN_CONTRAST = 5 * 2 + 1;
constexpr std::size_t CONTRAST_TAIL = 1;       // bPooled, behind the last string
constexpr std::size_t MIN_NOTE = 2 + 2 + 2;
constexpr std::size_t CELL_BYTES = 4 + 1 + 2;

}  // namespace

bool Study::fRead(FileIO& io) {
  bool ok = true;
  // Items 1 to 8: a failed string marks the study, and reading goes on.
  auto checked = [&](std::string& field) {
    field = io.GetString();
    if (IsReadFailure(field) && io.Failed()) ok = false;
  };
  checked(sKey);
  checked(sName);
  checked(sDesc);
  iFlag = io.GetInt();
  iReps = io.GetInt();
  checked(sPartial);
  iSequence = io.GetInt();
  checked(sMultiChart);

  std::int16_t count = io.GetInt();
  if (!io.CanHold(count, MIN_ITEM)) return false;
  for (int i = 0; i < count; ++i) Factors.Add(Item{io.GetString()});

  count = io.GetInt();
  if (!io.CanHold(count, MIN_STUDY_RV)) return false;
  for (int i = 0; i < count; ++i) {
    StudyRespVar srv;
    srv.sKey = io.GetString();
    srv.iType = io.GetInt();
    srv.fParam1 = io.GetFloat();
    srv.fParam2 = io.GetFloat();
    StudyRespVars.Add(std::move(srv));
  }

  ANOM_sRVkey = io.GetString();
  ANOM_fAlpha = io.GetFloat();
  ANOM_sCharts = io.GetString();
  ANOM_iSubgrouping = io.GetInt();
  ANOM_flags = io.GetInt();

  RESPONSE_sRVkey = io.GetString();
  RESPONSE_sF1Key = io.GetString();
  RESPONSE_sF2Key = io.GetString();
  RESPONSE_sF3Key = io.GetString();
  RESPONSE_iVariable = io.GetInt();
  RESPONSE_iFlag = io.GetInt();

  FXPLOT_sRVkey = io.GetString();
  FXPLOT_sF1Key = io.GetString();
  FXPLOT_sF2Key = io.GetString();
  FXPLOT_sFilter = io.GetString();

  ANOVA_sRVkey = io.GetString();
  ANOVA_fAlpha = io.GetFloat();
  ANOVA_iVariable = io.GetInt();
  ANOVA_flags = io.GetInt();
  ANOVA_sCharts = io.GetString();

  MMP_bStdDevChart = io.GetBool();
  MMP_sRVkey = io.GetString();
  MMP_flags = io.GetInt();

  REGRESS_sRVkey = io.GetString();
  REGRESS_iFlag = io.GetInt();
  REGRESS_iModelType = io.GetInt();
  REGRESS_RES_sCharts = io.GetString();

  count = io.GetInt();
  if (!io.CanHold(count, MIN_RTERM)) return false;
  for (int i = 0; i < count; ++i) {
    Rterm term;
    term.fBeta = io.GetFloat();
    term.fValue = io.GetFloat();
    term.sTerm = io.GetString();
    REGRESS_Rterms.Add(std::move(term));
  }

  // Not the order of the declarations: this is the file's order.
  REGRESS_RSM_iAlpha = io.GetInt();
  REGRESS_RSM_iBeta = io.GetInt();
  REGRESS_RSM_iNetSize = io.GetInt();
  REGRESS_RSM_flags = io.GetInt();
  CONTOUR_flags = io.GetInt();

  CONTOUR_KeyFactor = io.GetString();
  CONTOUR_KeyValues = io.GetString();
  CONTOUR_sFilter = io.GetString();

  RESIDUAL_sRVkey = io.GetString();
  RESIDUAL_sCharts = io.GetString();
  RESIDUAL_iModel = io.GetInt();

  PAIRWISE_sRVkey = io.GetString();
  PAIRWISE_fAlpha = io.GetFloat();
  PAIRWISE_iAlgorithm = io.GetInt();

  RUN_flags = io.GetInt();
  RUN_iScaling = io.GetInt();

  lDesnPtr = io.fSeek();
  sDesignName = io.GetString();
  if (io.Failed()) return false;

  if (!sDesignName.empty()) {
    iDesFlag = io.GetInt();
    iNumRuns = io.GetInt();
    count = io.GetInt();
    if (!io.CanHold(count, MIN_TREATMENT)) return false;
    for (int i = 0; i < count; ++i) {
      Treatment t;
      t.sTlist = io.GetString();
      Treatments.Add(std::move(t));
    }
    count = io.GetInt();
    if (!io.CanHold(count, MIN_CONTRAST, CONTRAST_TAIL)) return false;
    for (int i = 0; i < count; ++i) {
      Contrast c;
      c.sName = io.GetString();
      c.sMain = io.GetString();
      c.iMain = io.GetInt();
      c.sLevels = io.GetBytes();
      c.sAliases = io.GetString();
      c.bPooled = io.GetBool();
      Contrasts.Add(std::move(c));
    }
    LinkProductContrasts();
  }

  // The data block has no count of its own: its size follows from the fields
  // read so far, and it must fit in what is left of the file.
  lDataPtr = io.fSeek();
  if (iNumRuns < 0 || iReps < 0) return false;
  int nRV = StudyRespVars.Count();
  long long cells = static_cast<long long>(iReps) * iNumRuns * nRV;
  if (!io.CanHold(cells, CELL_BYTES)) return false;
  const std::uint8_t* at = io.GetBlock(static_cast<std::size_t>(cells) * CELL_BYTES);
  if (!at) return false;
  SetDataArray();
  bDataFull = true;
  for (int rep = 1; rep <= iReps; ++rep)
    for (int run = 1; run <= iNumRuns; ++run)
      for (int rv = 1; rv <= nRV; ++rv, at += CELL_BYTES) {
        DataCell& cell = data_[CellIndex(rv, run, rep)];
        std::int16_t seq;
        GetCell(at, cell.value, cell.flag, seq);
        if (cell.value == MISSING_VALUE) bDataFull = false;
        // Every cell carries the run order, and it is kept in response 1.
        data_[CellIndex(1, run, rep)].seq = seq;
      }

  count = io.GetInt();
  if (!io.CanHold(count, MIN_NOTE)) return false;
  for (int i = 0; i < count; ++i) {
    Note note;
    note.iRep = io.GetInt();  // the replication comes first in the file
    note.iRun = io.GetInt();
    note.sText = io.GetString();
    Notes.Add(std::move(note));
  }

  // The results of the last copies read replace the result so far: an early
  // failure can be hidden by a later success. Files have always been read so,
  // and a stricter reader would refuse damaged files that load.
  count = io.GetInt();
  if (!io.CanHold(count, Factor::MIN_FILE_BYTES, Factor::TAIL_BYTES)) return false;
  for (int i = 0; i < count; ++i) {
    Factor f;
    ok = f.fRead(io);
    std::string key = f.sKey;
    if (!MyFactors.Add(std::move(f), key)) return false;
  }
  count = io.GetInt();
  if (!io.CanHold(count, RespVar::MIN_FILE_BYTES, RespVar::TAIL_BYTES)) return false;
  for (int i = 0; i < count; ++i) {
    RespVar rv;
    ok = rv.fRead(io);
    std::string key = rv.sKey;
    if (!MyRespVars.Add(std::move(rv), key)) return false;
  }
  return ok;
}

void Study::fWrite(FileIO& io) const {
  io.PutString(sKey);
  io.PutString(sName);
  io.PutString(sDesc);
  io.PutInt(iFlag);
  io.PutInt(iReps);
  io.PutString(sPartial);
  io.PutInt(iSequence);
  io.PutString(sMultiChart);

  io.PutInt(static_cast<std::int16_t>(Factors.Count()));
  for (const Item& item : Factors) io.PutString(item.sKey);

  io.PutInt(static_cast<std::int16_t>(StudyRespVars.Count()));
  for (const StudyRespVar& srv : StudyRespVars) {
    io.PutString(srv.sKey);
    io.PutInt(srv.iType);
    io.PutFloat(srv.fParam1);
    io.PutFloat(srv.fParam2);
  }

  io.PutString(ANOM_sRVkey);
  io.PutFloat(ANOM_fAlpha);
  io.PutString(ANOM_sCharts);
  io.PutInt(ANOM_iSubgrouping);
  io.PutInt(ANOM_flags);

  io.PutString(RESPONSE_sRVkey);
  io.PutString(RESPONSE_sF1Key);
  io.PutString(RESPONSE_sF2Key);
  io.PutString(RESPONSE_sF3Key);
  io.PutInt(RESPONSE_iVariable);
  io.PutInt(RESPONSE_iFlag);

  io.PutString(FXPLOT_sRVkey);
  io.PutString(FXPLOT_sF1Key);
  io.PutString(FXPLOT_sF2Key);
  io.PutString(FXPLOT_sFilter);

  io.PutString(ANOVA_sRVkey);
  io.PutFloat(ANOVA_fAlpha);
  io.PutInt(ANOVA_iVariable);
  io.PutInt(ANOVA_flags);
  io.PutString(ANOVA_sCharts);

  io.PutBool(MMP_bStdDevChart);
  io.PutString(MMP_sRVkey);
  io.PutInt(MMP_flags);

  io.PutString(REGRESS_sRVkey);
  io.PutInt(REGRESS_iFlag);
  io.PutInt(REGRESS_iModelType);
  io.PutString(REGRESS_RES_sCharts);

  io.PutInt(static_cast<std::int16_t>(REGRESS_Rterms.Count()));
  for (const Rterm& term : REGRESS_Rterms) {
    io.PutFloat(term.fBeta);
    io.PutFloat(term.fValue);
    io.PutString(term.sTerm);
  }

  io.PutInt(REGRESS_RSM_iAlpha);
  io.PutInt(REGRESS_RSM_iBeta);
  io.PutInt(REGRESS_RSM_iNetSize);
  io.PutInt(REGRESS_RSM_flags);
  io.PutInt(CONTOUR_flags);

  io.PutString(CONTOUR_KeyFactor);
  io.PutString(CONTOUR_KeyValues);
  io.PutString(CONTOUR_sFilter);

  io.PutString(RESIDUAL_sRVkey);
  io.PutString(RESIDUAL_sCharts);
  io.PutInt(RESIDUAL_iModel);

  io.PutString(PAIRWISE_sRVkey);
  io.PutFloat(PAIRWISE_fAlpha);
  io.PutInt(PAIRWISE_iAlgorithm);

  io.PutInt(RUN_flags);
  io.PutInt(RUN_iScaling);

  io.PutString(sDesignName);
  if (!sDesignName.empty()) {
    io.PutInt(iDesFlag);
    io.PutInt(iNumRuns);
    io.PutInt(static_cast<std::int16_t>(Treatments.Count()));
    for (const Treatment& t : Treatments) io.PutString(t.sTlist);
    io.PutInt(static_cast<std::int16_t>(Contrasts.Count()));
    for (const Contrast& c : Contrasts) {
      io.PutString(c.sName);
      io.PutString(c.sMain);
      io.PutInt(c.iMain);
      io.PutBytes(c.sLevels);
      io.PutString(c.sAliases);
      io.PutBool(c.bPooled);
    }
  }

  // The value goes through GetData, so an excluded observation is saved as
  // missing; its flag stays. The run order is that of response variable 1.
  int nRV = StudyRespVars.Count();
  std::size_t cells = static_cast<std::size_t>(iReps > 0 ? iReps : 0) * static_cast<std::size_t>(iNumRuns > 0 ? iNumRuns : 0) *
                      static_cast<std::size_t>(nRV);
  std::uint8_t* at = io.PutBlock(cells * CELL_BYTES);
  bool whole = nRV_ == nRV && nRuns_ == iNumRuns && nReps_ == iReps;
  for (int rep = 1; rep <= iReps; ++rep)
    for (int run = 1; run <= iNumRuns; ++run) {
      if (!whole) {  // an array that does not match the design: through the checked readers
        for (int rv = 1; rv <= nRV; ++rv, at += CELL_BYTES)
          PutCell(at, GetData(rv, run, rep), GetFlag(rv, run, rep), GetSeq(run, rep));
        continue;
      }
      std::int16_t seq = nRV >= 1 ? data_[CellIndex(1, run, rep)].seq : 0;
      for (int rv = 1; rv <= nRV; ++rv, at += CELL_BYTES) {
        const DataCell& cell = data_[CellIndex(rv, run, rep)];
        PutCell(at, (cell.flag & CELL_EXCLUDED) ? MISSING_VALUE : cell.value, cell.flag, seq);
      }
    }

  io.PutInt(static_cast<std::int16_t>(Notes.Count()));
  for (const Note& note : Notes) {
    io.PutInt(note.iRep);
    io.PutInt(note.iRun);
    io.PutString(note.sText);
  }
  io.PutInt(static_cast<std::int16_t>(MyFactors.Count()));
  for (const Factor& f : MyFactors) f.fWrite(io);
  io.PutInt(static_cast<std::int16_t>(MyRespVars.Count()));
  for (const RespVar& rv : MyRespVars) rv.fWrite(io);
}

void Study::Export(std::ostream& out, int i) const {
  out << "  **Study " << i << "\n";
  out << "    Name: " << sName << "\n";
  out << "    Description: " << sDesc << "\n";
  out << "    Factors: ";
  for (int f = 1; f <= Factors.Count(); ++f) out << (f > 1 ? ", " : "") << GetFactorName(f);
  out << "\n";
  out << "    Response variables: ";
  for (int r = 1; r <= StudyRespVars.Count(); ++r)
    out << (r > 1 ? ", " : "") << GetPRVName(StudyRespVars(r).sKey);
  out << "\n";
  out << "    Design: " << sDesignName << "\n";
  out << "    Number of runs: " << iNumRuns << "\n";
  out << "    Number of replications: " << iReps << "\n";
  out << "    Partial reflection: " << sPartial << "\n";
  out << "    Randomize run order: " << (iSequence != 0 ? "No" : "Yes") << "\n";
  out << "    Treatments: \n";
  for (int run = 1; run <= iNumRuns; ++run) {
    out << "    " << PadRight(std::to_string(run), 5);
    for (int f = 1; f <= Factors.Count(); ++f) out << PadRight(GetTreatmentLevelName(f, run), 18);
    out << "\n";
  }
  out << "    Contrasts: \n";
  for (int i = 1; i <= Contrasts.Count(); ++i) {
    const Contrast& c = Contrasts(i);
    out << "    " << PadRight(c.sName, 6);
    out << (c.iMain > 0 ? PadRight(GetFactorName(c.iMain), 18) : std::string(" "));
    for (int run = 1; run <= iNumRuns; ++run) out << PadLeft(ShortestText(GetContrastEntry(i, run)), 7);
    out << "\n";
  }
}

}  // namespace kestrow
