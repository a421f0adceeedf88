// Paths: joining, splitting, and the two folders the program resolves its
// files against.
#pragma once

#include <string>

namespace kestrow {

// Drops one trailing separator of the folder; an empty folder gives the name,
// an empty name the folder as given; a name that begins with "/" is appended
// as it is, otherwise one "/" goes between.
std::string JoinPath(const std::string& folder, const std::string& name);

// True if the file can be opened for reading.
bool FileExists(const std::string& path);

// Folder (up to the last separator, which is not included), name and extension
// (without its dot) of a path. "/", "\" and ":" all count as separators, so
// that paths read from old files split too.
std::string GetFPath(const std::string& path);
std::string GetFName(const std::string& path);
std::string GetFExt(const std::string& path);
// Where the extension's dot stands in the path, or the path's length when the
// name has none.
std::size_t ExtensionDot(const std::string& path);

// The program folder: $KESTROW_HOME when set, else the folder of the running
// executable.
std::string ProgramFolder();
void SetProgramFolder(const std::string& folder);  // --home of the command line

// The folder of the settings, the print log and the report file:
// $KESTROW_CONFIG_DIR, else $XDG_CONFIG_HOME/kestrow, else ~/.config/kestrow.
// Created on first use.
std::string ConfigFolder();

}  // namespace kestrow
