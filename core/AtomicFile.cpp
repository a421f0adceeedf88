#include "core/AtomicFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <vector>

#include "core/Paths.h"

namespace kestrow {

namespace {

// Links deeper than this are a loop, as the system itself counts them.
constexpr int MAX_LINKS = 40;

std::string SystemError(int err) { return std::strerror(err); }

// The file that replaces another keeps its owner and group where the system
// lets it (root saving a user's file; a user keeping a group of his own);
// else it is the saver's, as a new file would be, and the save goes on.
void KeepOwner(int fd, const struct stat& old) {
  if (::fchown(fd, old.st_uid, old.st_gid) == 0) return;
  if (::fchown(fd, static_cast<uid_t>(-1), old.st_gid) != 0) {
    // the group is not the saver's to give: the saver's group stays
  }
}

}  // namespace

std::string FollowLinks(const std::string& path) {
  std::string at = path;
  for (int hop = 0; hop < MAX_LINKS; ++hop) {
    struct stat st {};
    if (::lstat(at.c_str(), &st) != 0 || !S_ISLNK(st.st_mode)) return at;
    std::vector<char> target(static_cast<std::size_t>(st.st_size > 0 ? st.st_size : 4096) + 1);
    ssize_t n = ::readlink(at.c_str(), target.data(), target.size() - 1);
    if (n < 0) return at;
    std::string next(target.data(), static_cast<std::size_t>(n));
    // A relative link is read from the folder of the link.
    if (next.empty() || next[0] != '/') {
      std::string folder = GetFPath(at);
      next = folder.empty() ? next : JoinPath(folder, next);
    }
    at = next;
  }
  return at;
}

bool CanWriteFile(const std::string& path, std::string& error) {
  std::string target = FollowLinks(path);
  std::string folder = GetFPath(target);
  struct stat st {};
  bool exists = ::stat(target.c_str(), &st) == 0;
  if (exists && S_ISDIR(st.st_mode)) {
    error = SystemError(EISDIR);
    return false;
  }
  // The rename would replace a file the user may not write, since only the
  // folder's permission counts for it: refuse that as writing it would be.
  if ((exists && ::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0) ||
      ::faccessat(AT_FDCWD, folder.empty() ? "." : folder.c_str(), W_OK, AT_EACCESS) != 0) {
    error = SystemError(errno);
    return false;
  }
  return true;
}

bool WriteFileAtomically(const std::string& path, const void* data, std::size_t size, std::string& error) {
  if (!CanWriteFile(path, error)) return false;
  std::string target = FollowLinks(path);
  std::string folder = GetFPath(target);
  if (folder.empty()) folder = ".";
  struct stat st {};
  bool exists = ::stat(target.c_str(), &st) == 0;
  std::string tmpl = JoinPath(folder, "." + GetFName(target) + ".XXXXXX");
  std::vector<char> name(tmpl.begin(), tmpl.end());
  name.push_back('\0');
  int fd = ::mkstemp(name.data());
  if (fd < 0) {
    error = SystemError(errno);
    return false;
  }
  std::string tmp(name.data());
  auto fail = [&](int err) {
    error = SystemError(err);
    ::close(fd);
    ::unlink(tmp.c_str());
    return false;
  };
  // A file saved over keeps its permissions; a new one gets the usual ones.
  mode_t mode = 0666;
  if (exists) {
    mode = st.st_mode & 07777;
  } else {
    mode_t mask = ::umask(0);
    ::umask(mask);
    mode &= ~mask;
  }
  if (exists && (st.st_uid != ::geteuid() || st.st_gid != ::getegid())) KeepOwner(fd, st);
  if (::fchmod(fd, mode) != 0) return fail(errno);
  const auto* bytes = static_cast<const unsigned char*>(data);
  std::size_t done = 0;
  while (done < size) {
    ssize_t n = ::write(fd, bytes + done, size - done);
    if (n < 0) {
      if (errno == EINTR) continue;
      return fail(errno);
    }
    done += static_cast<std::size_t>(n);
  }
  if (::fsync(fd) != 0) return fail(errno);
  if (::close(fd) != 0) {
    error = SystemError(errno);
    ::unlink(tmp.c_str());
    return false;
  }
  if (::rename(tmp.c_str(), target.c_str()) != 0) {
    error = SystemError(errno);
    ::unlink(tmp.c_str());
    return false;
  }
  return true;
}

}  // namespace kestrow
