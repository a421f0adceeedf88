// The global context of the program: the open problem, the current study,
// the scratch objects of the dialogs, and the state of the command line.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "core/FileIO.h"
#include "core/Problem.h"

namespace kestrow {

inline std::unique_ptr<Problem> gProblem = std::make_unique<Problem>();  // the open document
inline Study* gStudy = nullptr;      // the study shown; not an owner
inline Factor* gFactor = nullptr;    // factor last selected or made; not an owner
inline RespVar* gRespVar = nullptr;  // response variable last selected or made; not an owner
inline Study gStudyEdit;             // scratch study of the study dialogs and wizards
inline Factor gFactorEdit;           // scratch factor of the factor dialog
inline RespVar gRespVarEdit;         // scratch response variable of its dialog
inline FileIO gFileIO;               // the one binary file channel
inline std::string gsKey;            // key of the object selected or being edited
inline std::string gsNode;           // key of the tree node under the open context menu
inline std::int16_t giAnalysis = 0;  // code of the analysis shown
inline std::string gsCommandFile;    // file named on the command line, lower-cased
inline bool gbAdmin = false;         // administrator mode

// Puts a new problem in place of the open one; the references into the old
// one are dropped with it.
void ReplaceProblem(std::unique_ptr<Problem> problem);

}  // namespace kestrow
