// Fuzz target: the problem file reader. Whatever the bytes, Load returns, and
// what loads saves again.
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <fstream>
#include <memory>
#include <string>

#include "core/Problem.h"
#include "core/ScriptedUi.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kestrow;
  static bool quiet = (InstallUi(std::make_unique<ScriptedUi>()), true);
  (void)quiet;
  static const std::string dir = "/tmp/kestrow-fuzz-" + std::to_string(::getpid());
  static const bool made = (::mkdir(dir.c_str(), 0700), true);
  (void)made;
  std::string path = dir + "/in.KSW";
  {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  }
  Problem p;
  if (p.Load(path)) p.Save(dir + "/out.KSW");
  return 0;
}
