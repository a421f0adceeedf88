// The engine's text, UTF-8 in std::string, as Qt text.
#pragma once

#include <QString>
#include <string>

namespace kestrow {

inline QString Q(const std::string& s) { return QString::fromStdString(s); }

}  // namespace kestrow
