// A study: some factors and response variables of the problem, one design
// (treatments, contrasts, aliases), a three-dimensional array of observations,
// notes, and the last-used settings of every analysis.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "core/Collection.h"
#include "core/Contrast.h"
#include "core/Factor.h"
#include "core/RespVar.h"
#include "core/Sentinels.h"
#include "core/StudyParts.h"
#include "core/Treatment.h"

namespace kestrow {

class FileIO;
class Problem;

// Bits of Study::iFlag.
inline constexpr std::int16_t STUDY_LOCKED = 1;

// Bits of Study::iDesFlag.
inline constexpr std::int16_t DES_FULLY_CROSSED = 1;
inline constexpr std::int16_t DES_REFLECTABLE = 2;
inline constexpr std::int16_t DES_UNSTRUCTURED = 4;
inline constexpr std::int16_t DES_TWO_LEVEL_NUMERIC = 8;
inline constexpr std::int16_t DES_CENTRE_POINTS = 16;
inline constexpr std::int16_t DES_BLOCKED = 32;
inline constexpr std::int16_t DES_SECOND_NOISE = 64;
inline constexpr std::int16_t DES_CODED = 128;
inline constexpr std::int16_t DES_AXIAL_POINTS = 256;

// Bits of DataCell::flag.
inline constexpr std::uint8_t CELL_EXCLUDED = 1;
inline constexpr std::uint8_t CELL_EXTRAPOLATED = 2;

// One observation. A missing one is told apart only by its value.
struct DataCell {
  float value = MISSING_VALUE;
  std::uint8_t flag = 0;  // bit 0 excluded (reads as missing), bit 1 extrapolated
  std::int16_t seq = 0;   // position in the run order; kept in response variable 1 only
};

class Study {
 public:
  // ---- fields, in their declared order -----------------------------------
  std::string sKey;
  std::string sName;
  std::string sDesc;
  std::int16_t iFlag = 0;                 // bit 0: locked
  Collection<Item> Factors;               // the factors used, in design order
  Collection<StudyRespVar> StudyRespVars; // the response variables used, in column order
  std::int16_t iReps = 2;                 // replications per run
  std::string sPartial;                   // text of the partial reflection
  std::string sNoiseM;                    // working text of the noise-factor setup
  std::string sNoiseFactors;              // working list of noise factors
  std::int16_t iSequence = 0;             // 0: randomised run order; other: by run within rep
  std::string sMultiChart;                // last multi-chart selection
  std::string sDesignName;                // empty: no design yet
  std::int16_t iDesFlag = 0;              // kind of design
  std::string sDesignParam;               // working parameter of the design builder
  std::int16_t iNumRuns = 0;              // number of treatments (runs)
  Collection<Treatment> Treatments;       // one per run, in standard order
  Collection<Contrast> Contrasts;         // one per estimable column
  Collection<Note> Notes;                 // notes on data cells
  Collection<Factor> MyFactors;           // a locked study's own copies
  Collection<RespVar> MyRespVars;

  std::string ANOM_sRVkey;
  float ANOM_fAlpha = 0.1f;
  std::string ANOM_sCharts;
  std::int16_t ANOM_iSubgrouping = 0;
  std::int16_t ANOM_flags = 0;
  std::string ANOVA_sRVkey;
  float ANOVA_fAlpha = 0.1f;
  std::int16_t ANOVA_iVariable = 0;
  std::int16_t ANOVA_flags = 0;
  std::string ANOVA_sCharts;
  std::string FXPLOT_sRVkey, FXPLOT_sF1Key, FXPLOT_sF2Key, FXPLOT_sFilter = "0;0";
  std::string RESPONSE_sRVkey, RESPONSE_sF1Key, RESPONSE_sF2Key, RESPONSE_sF3Key;
  std::int16_t RESPONSE_iVariable = 0, RESPONSE_iFlag = 0;
  std::string MMP_sRVkey;
  std::int16_t MMP_flags = 1;
  bool MMP_bStdDevChart = false;
  std::string REGRESS_sRVkey;
  std::int16_t REGRESS_iFlag = 0, REGRESS_iModelType = 0;
  std::string REGRESS_RES_sCharts;
  Collection<Rterm> REGRESS_Rterms;
  std::int16_t REGRESS_RSM_iAlpha = 40, REGRESS_RSM_iBeta = 25, REGRESS_RSM_flags = 3,
               REGRESS_RSM_iNetSize = 10;
  std::int16_t CONTOUR_flags = 1;
  std::string CONTOUR_KeyFactor, CONTOUR_KeyValues, CONTOUR_sFilter = "0;0";
  std::string RESIDUAL_sRVkey, RESIDUAL_sCharts;
  std::int16_t RESIDUAL_iModel = 0;
  std::string PAIRWISE_sRVkey;
  float PAIRWISE_fAlpha = 0.05f;
  std::int16_t PAIRWISE_iAlgorithm = 0;   // 0 least significant difference, 1 Duncan
  std::int16_t RUN_flags = 0, RUN_iScaling = 0;
  bool bTag = false;                      // marked for deletion
  std::int32_t lDesnPtr = 0;              // file position of the design block last read
  std::int32_t lDataPtr = 0;              // file position of the data block last read
  std::string sRSM_f1Key, sRSM_f2Key;     // factors of the last response surface
  bool bDataFull = false;                 // every cell holds a value

  // The problem whose factors and response variables an unlocked study sees;
  // null means the open problem.
  const Problem* pProblem = nullptr;

  // ---- life cycle ---------------------------------------------------------
  void Clear();
  void ZapDesign();
  void ZapAnalyses();
  void ZapAnalysisByRV(const std::string& key);
  void ZapNotes() { Notes.Clear(); }
  void AddNote(int run, int rep, const std::string& text);
  void LockMe();
  bool IsLocked() const { return (iFlag & STUDY_LOCKED) != 0; }

  // ---- the data array -----------------------------------------------------
  void SetDataArray();
  void SetDataArrayPreserve();
  bool DoesArrayExist() const;
  bool IsArrayEmpty() const;
  bool IsArrayFull() const;
  float GetData(int rv, int run, int rep) const;
  void SetData(int rv, int run, int rep, float value);
  std::uint8_t GetFlag(int rv, int run, int rep) const;
  void SetFlag(int rv, int run, int rep, std::uint8_t flag);
  std::int16_t GetSeq(int run, int rep) const;
  void SetSeq(int run, int rep, std::int16_t seq);
  // The stored value, not hidden by the excluded flag.
  float GetStoredValue(int rv, int run, int rep) const;

  // ---- run order ----------------------------------------------------------
  // A fresh random permutation of the treatments in every replication.
  void Randomise();
  // Every replication in treatment order.
  void UnRandomise();
  // The treatments sorted so that the first factor varies fastest.
  void SetYatesOrder();
  // Treatment at position i of the Yates order; 0 outside it.
  std::int16_t GetYatesRun(int i) const;

  // ---- the configured response variable -----------------------------------
  void ConfigureRV(const std::string& key);
  // The configured response's value, through its transform when the key had
  // the trailing "*".
  float GetDataRV(int run, int rep) const;
  // A response named by number, always through its transform.
  float GetDataXformed(int rv, int run, int rep) const;
  // Applies the transform of response rv to a value, in 32-bit arithmetic.
  void TransformByRV(float& value, int rv) const;
  std::string TransformText(const StudyRespVar& srv) const;
  std::string GetRVname() const { return confName_; }
  std::string GetRVname2() const { return confAbbr_.empty() ? confName_ : confAbbr_; }
  int ConfiguredRV() const { return iConfRV_; }

  // ---- counts and lookups -------------------------------------------------
  int CountDiscrete() const;
  int CountREFactors() const;
  int CountRVs() const;
  int GetRVnum(const std::string& key) const;
  int GetFactorNum(const std::string& key) const;
  int GetNumLevels(int i) const;
  std::string GetFactorKey(int i) const;
  std::string GetFactorAbbr(int i) const;
  std::string GetFactorName(int i) const;
  int GetLevelNumber(int i, const std::string& name) const;

  // ---- factors and response variables as the study sees them --------------
  // A locked study looks in its own copies, an unlocked one in the problem.
  // That single rule is what locking means.
  const Factor* ResolveFactor(const std::string& key) const;
  const RespVar* ResolveRV(const std::string& key) const;
  std::string GetPFactorName(const std::string& key) const;
  std::string GetPFactorName2(const std::string& key) const;
  std::string GetPFactorDesc(const std::string& key) const;
  std::int16_t GetPFactorFlag(const std::string& key) const;
  int GetPFactorLevelsCount(const std::string& key) const;
  std::string GetPFactorLevelName(const std::string& key, int level) const;
  std::string GetPRVName(const std::string& key) const;
  std::string GetPRVName2(const std::string& key) const;
  std::string GetPRVAbbr(const std::string& key) const;
  std::string GetPRVDesc(const std::string& key) const;
  float GetPRVTarget(const std::string& key) const;
  std::string GetPRVUnits(const std::string& key) const;
  std::string GetPRVDisplayName(const std::string& key) const;
  std::string GetPRVDisplayAbbr(const std::string& key) const;
  float FGetCoded(const std::string& key, int i) const;
  float FValueToCode(const std::string& key, double x) const;
  double FGetMinLevel(const std::string& key) const;
  double FGetMaxLevel(const std::string& key) const;
  std::string SFactorNameToKey(const std::string& name) const;
  std::string SRVKeyToName(const std::string& key) const;
  std::string SRVNameToKey(const std::string& name) const;
  std::string SRVNameToPureKey(const std::string& name) const;
  std::string RVKeyToName(const std::string& key) const;

  // ---- reading the design -------------------------------------------------
  int GetTreatmentLevel(int factor, int run) const;
  std::string GetTreatmentLevelName(int factor, int run) const;
  // The run's level of a factor as a number, for arithmetic: the level's
  // name read as a number (0 when it is none), the mean of the first two
  // levels for a centre run, and for an axial run its decoded value whole,
  // not rounded as the name shows it.
  double GetTreatmentLevelValue(int factor, int run) const;
  // The coefficient of a run, unscaled: a column packed divided by a common
  // factor is given as the product of its main contrasts.
  float GetContrastEntry(int contrast, int run) const;
  // Names, in each interaction of a fully crossed design whose coefficients
  // are too large to be packed as they stand, the main contrasts whose
  // product it is (Contrast::ProductOf). Run after a design is read.
  void LinkProductContrasts();
  std::string GetContrastSource(int contrast) const;
  bool bAliasIsOK(const std::string& alias) const;
  std::string GetFactorNameFromContrastLetter(const std::string& letter) const;
  std::string GetFactorAbbrFromContrastLetter(const std::string& letter) const;
  int GetFactorNumberFromContrastLetter(const std::string& letter) const;

  std::string sSequence() const { return iSequence == 0 ? "random" : "by run within rep"; }

  // Gives contrast c its meaning: with a factor number, classifies it against
  // that factor; with 0, tries the factors in order until one fits. A main
  // contrast gets iMain and sMain ("1v2", "13v2"); one that fits no factor is
  // an interaction, iMain 0.
  void SetContrastMeaning(int contrast, int factor);

  // ---- the file -----------------------------------------------------------
  // The fewest bytes a study's block can take: every fixed field, empty
  // strings and empty collections.
  static constexpr std::size_t MIN_FILE_BYTES = 121;
  // The counts of notes, own factors and own response variables: the numbers
  // behind the last string of such a block.
  static constexpr std::size_t TAIL_BYTES = 3 * 2;
  bool fRead(FileIO& io);
  void fWrite(FileIO& io) const;
  void Export(std::ostream& out, int i) const;

 private:
  const Problem& Owner() const;
  void AllocateArray();
  std::size_t CellIndex(int rv, int run, int rep) const {
    return (static_cast<std::size_t>(rv) * static_cast<std::size_t>(nRuns_ + 1) + static_cast<std::size_t>(run)) *
               static_cast<std::size_t>(nReps_ + 1) +
           static_cast<std::size_t>(rep);
  }
  bool InArray(int rv, int run, int rep) const {
    return nRV_ >= 0 && rv >= 0 && rv <= nRV_ && run >= 0 && run <= nRuns_ && rep >= 0 && rep <= nReps_;
  }
  const Contrast* ContrastByName(const std::string& letter) const;
  std::string TranslateWord(const std::string& word, int ownFactor) const;

  // The data array, index order (response variable, run, replication), each
  // from 0 to its bound; index 0 of each dimension is never read.
  std::vector<DataCell> data_;
  int nRV_ = -1;  // -1: never allocated
  int nRuns_ = 0;
  int nReps_ = 0;

  // The Yates order, yatesOrder_[1] to yatesOrder_[iNumRuns]; not saved.
  std::vector<std::int16_t> yatesOrder_;

  // State of ConfigureRV.
  int iConfRV_ = 0;
  std::string confKey_;
  std::string confName_;
  std::string confAbbr_;
  bool confTransformed_ = false;
};

}  // namespace kestrow
