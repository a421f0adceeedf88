#include "core/Settings.h"

#include "core/Paths.h"

namespace kestrow {

std::string DataDir() {
  if (!gSettings.sDataDir.empty()) return gSettings.sDataDir;
  return JoinPath(ProgramFolder(), "SAMPDATA");
}

}  // namespace kestrow
