// The date and time as reports and titles show them.
#pragma once

#include <string>

namespace kestrow {

std::string ShortDate();  // "2026-11-21"
std::string ShortTime();  // "14:05:09"

}  // namespace kestrow
