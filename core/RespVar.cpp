#include "core/RespVar.h"

#include "core/FileIO.h"
#include "core/Text.h"

namespace kestrow {

bool RespVar::fRead(FileIO& io) {
  bool ok = true;
  for (std::string* field : {&sKey, &sName, &sAbbr, &sDesc, &sUnits}) {
    *field = io.GetString();
    if (IsReadFailure(*field)) ok = false;
  }
  fTarget = io.GetFloat();
  return ok;
}

void RespVar::fWrite(FileIO& io) const {
  for (const std::string* field : {&sKey, &sName, &sAbbr, &sDesc, &sUnits}) io.PutString(*field);
  io.PutFloat(fTarget);
}

void RespVar::Export(std::ostream& out, int i) const {
  out << "  **Resp Var " << i << "\n";
  out << "    Name: " << sName << "\n";
  out << "    Abbreviation: " << sAbbr << "\n";
  out << "    Description: " << sDesc << "\n";
  out << "    Units: " << sUnits << "\n";
  out << "    Target: " << TargetToText(fTarget) << "\n";
}

}  // namespace kestrow
