#include "core/Clock.h"

#include <ctime>

namespace kestrow {

namespace {

std::string Now(const char* format) {
  char buf[32];
  std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  std::strftime(buf, sizeof buf, format, &local);
  return buf;
}

}  // namespace

std::string ShortDate() { return Now("%Y-%m-%d"); }
std::string ShortTime() { return Now("%H:%M:%S"); }

}  // namespace kestrow
