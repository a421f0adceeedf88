// The icons of the tree and the toolbar, drawn by the program.
#pragma once

#include <QIcon>
#include <string>

namespace kestrow {

// A tree icon by its name: "problem", "factor", "respvar", "study", "lock",
// "data", "graph", "report".
QIcon TreeIcon(const std::string& name);
// A toolbar icon by the button's key.
QIcon ToolIcon(const std::string& key);

}  // namespace kestrow
