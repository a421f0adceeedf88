#include "core/Paths.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace kestrow {

namespace {

bool IsSeparator(char c) { return c == '/' || c == '\\' || c == ':'; }

std::size_t LastSeparator(const std::string& path) {
  for (std::size_t i = path.size(); i > 0; --i)
    if (IsSeparator(path[i - 1])) return i - 1;
  return std::string::npos;
}

std::string& ProgramFolderOverride() {
  static std::string folder;
  return folder;
}

}  // namespace

std::string JoinPath(const std::string& folder, const std::string& name) {
  if (folder.empty()) return name;
  if (name.empty()) return folder;
  std::string base = folder;
  if (base.back() == '/' || base.back() == '\\') base.pop_back();
  if (name[0] == '/' || name[0] == '\\') return base + name;
  return base + "/" + name;
}

bool FileExists(const std::string& path) {
  if (path.empty()) return false;
  std::error_code ec;
  if (std::filesystem::is_directory(path, ec)) return false;
  std::ifstream in(path, std::ios::binary);
  return in.good();
}

std::string GetFPath(const std::string& path) {
  std::size_t at = LastSeparator(path);
  return at == std::string::npos ? std::string() : path.substr(0, at);
}

std::string GetFName(const std::string& path) {
  std::size_t at = LastSeparator(path);
  return at == std::string::npos ? path : path.substr(at + 1);
}

std::size_t ExtensionDot(const std::string& path) {
  std::size_t at = LastSeparator(path);
  std::size_t dot = path.rfind('.');
  return dot == std::string::npos || (at != std::string::npos && dot < at) ? path.size() : dot;
}

std::string GetFExt(const std::string& path) {
  std::size_t dot = ExtensionDot(path);
  return dot == path.size() ? std::string() : path.substr(dot + 1);
}

void SetProgramFolder(const std::string& folder) { ProgramFolderOverride() = folder; }

std::string ProgramFolder() {
  if (!ProgramFolderOverride().empty()) return ProgramFolderOverride();
  if (const char* home = std::getenv("KESTROW_HOME"); home && *home) return home;
  std::error_code ec;
  auto exe = std::filesystem::read_symlink("/proc/self/exe", ec);
  if (ec) return std::filesystem::current_path(ec).string();
  return exe.parent_path().string();
}

std::string ConfigFolder() {
  std::string folder;
  if (const char* dir = std::getenv("KESTROW_CONFIG_DIR"); dir && *dir) {
    folder = dir;
  } else if (const char* xdg = std::getenv("XDG_CONFIG_HOME"); xdg && *xdg) {
    folder = JoinPath(xdg, "kestrow");
  } else if (const char* home = std::getenv("HOME"); home && *home) {
    folder = JoinPath(JoinPath(home, ".config"), "kestrow");
  } else {
    folder = JoinPath(std::filesystem::temp_directory_path().string(), "kestrow");
  }
  std::error_code ec;
  std::filesystem::create_directories(folder, ec);
  return folder;
}

}  // namespace kestrow
