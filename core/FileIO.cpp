#include "core/FileIO.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <limits>
#include <vector>

#include "core/CodePage.h"
#include "core/Paths.h"

namespace kestrow {

namespace {

std::string SystemError(int err) { return std::strerror(err); }

// Reads the whole file into a buffer of exactly its size.
bool ReadWholeFile(const std::string& path, std::unique_ptr<std::uint8_t[]>& buffer, std::size_t& size,
                   std::string& error) {
  int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) {
    error = SystemError(errno);
    return false;
  }
  struct stat st {};
  if (::fstat(fd, &st) != 0 || S_ISDIR(st.st_mode)) {
    error = S_ISDIR(st.st_mode) ? "Is a directory" : SystemError(errno);
    ::close(fd);
    return false;
  }
  std::size_t capacity = static_cast<std::size_t>(st.st_size);
  buffer.reset(new std::uint8_t[capacity + 1]);
  size = 0;
  for (;;) {
    if (size == capacity + 1) {  // the file grew while it was read
      std::unique_ptr<std::uint8_t[]> bigger(new std::uint8_t[capacity * 2 + 2]);
      std::memcpy(bigger.get(), buffer.get(), size);
      buffer = std::move(bigger);
      capacity = capacity * 2 + 1;
    }
    ssize_t n = ::read(fd, buffer.get() + size, capacity + 1 - size);
    if (n < 0) {
      if (errno == EINTR) continue;
      error = SystemError(errno);
      ::close(fd);
      return false;
    }
    if (n == 0) break;
    size += static_cast<std::size_t>(n);
  }
  ::close(fd);
  return true;
}

// Writes the bytes to a new file beside the target, flushes it to disk and
// renames it over the target.
bool CommitFile(const std::string& path, const std::uint8_t* bytes, std::size_t size, std::string& error) {
  std::string folder = GetFPath(path);
  std::string tmpl = JoinPath(folder.empty() ? "." : folder, "." + GetFName(path) + ".XXXXXX");
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
  struct stat st {};
  mode_t mode = 0666;
  if (::stat(path.c_str(), &st) == 0) {
    mode = st.st_mode & 07777;
  } else {
    mode_t mask = ::umask(0);
    ::umask(mask);
    mode &= ~mask;
  }
  if (::fchmod(fd, mode) != 0) return fail(errno);
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
  if (::rename(tmp.c_str(), path.c_str()) != 0) {
    error = SystemError(errno);
    ::unlink(tmp.c_str());
    return false;
  }
  return true;
}

}  // namespace

bool FileIO::OpenIO(const std::string& path, Mode mode) {
  path_ = path;
  mode_ = mode;
  pos_ = 0;
  failed_ = false;
  writeFailed_ = false;
  error_.clear();
  size_ = 0;
  open_ = false;
  if (mode == Mode::Read) {
    if (!ReadWholeFile(path, buffer_, size_, error_)) return false;
    capacity_ = size_;
  } else {
    // Refuse at once a target that cannot be written, before any work is done.
    std::string folder = GetFPath(path);
    if (::access(folder.empty() ? "." : folder.c_str(), W_OK) != 0) {
      error_ = SystemError(errno);
      return false;
    }
  }
  open_ = true;
  return true;
}

bool FileIO::CloseIO() {
  if (!open_) return false;
  open_ = false;
  bool ok = true;
  if (mode_ == Mode::Write) {
    ok = !writeFailed_ && CommitFile(path_, buffer_.get(), size_, error_);
  }
  buffer_.reset();
  size_ = capacity_ = pos_ = 0;
  return ok;
}

void FileIO::Grow(std::size_t atLeast) {
  std::size_t capacity = std::max(capacity_ * 2, atLeast + 4096);
  std::unique_ptr<std::uint8_t[]> bigger(new std::uint8_t[capacity]);
  if (size_) std::memcpy(bigger.get(), buffer_.get(), size_);
  buffer_ = std::move(bigger);
  capacity_ = capacity;
}

bool FileIO::PutRaw(const void* p, std::size_t n) {
  if (n) std::memcpy(Room(n), p, n);
  return true;
}

bool FileIO::PutCounted(const std::string& bytes) {
  // The length prefix is two bytes, read as an unsigned count: a contrast of
  // a full factorial of up to 32,767 runs, two characters a run, fits. Up to
  // 32,767 the bytes are those of a signed count, as files always had them.
  if (bytes.size() > MAX_STRING) {
    writeFailed_ = true;
    error_ = "A text of " + std::to_string(bytes.size()) + " characters is too long to be saved; the limit is " +
             std::to_string(MAX_STRING);
    return false;
  }
  PutInt(static_cast<std::int16_t>(static_cast<std::uint16_t>(bytes.size())));
  return PutRaw(bytes.data(), bytes.size());
}

bool FileIO::PutString(const std::string& utf8) { return PutCounted(Utf8ToCp1252(utf8)); }
bool FileIO::PutBytes(const std::string& bytes) { return PutCounted(bytes); }

bool FileIO::Take(void* out, std::size_t n) {
  if (!open_ || Remaining() < n) {
    std::memset(out, 0, n);
    pos_ = size_;
    failed_ = true;
    return false;
  }
  std::memcpy(out, buffer_.get() + pos_, n);
  pos_ += n;
  return true;
}

std::uint8_t FileIO::GetByte() {
  std::uint8_t b = 0;
  Take(&b, 1);
  return b;
}

std::int16_t FileIO::GetInt() {
  std::uint8_t b[2];
  Take(b, 2);
  return static_cast<std::int16_t>(static_cast<std::uint16_t>(b[0] | (b[1] << 8)));
}

bool FileIO::GetBool() { return GetByte() == 'Y'; }

float FileIO::GetFloat() {
  std::uint8_t b[4];
  Take(b, 4);
  std::uint32_t u = static_cast<std::uint32_t>(b[0]) | (static_cast<std::uint32_t>(b[1]) << 8) |
                    (static_cast<std::uint32_t>(b[2]) << 16) | (static_cast<std::uint32_t>(b[3]) << 24);
  float x;
  std::memcpy(&x, &u, 4);
  return x;
}

std::string FileIO::GetBytes() {
  auto n = static_cast<std::uint16_t>(GetInt());
  if (failed_ || static_cast<std::size_t>(n) > Remaining()) {
    pos_ = size_;
    failed_ = true;
    return std::string(1, '\0');
  }
  std::string s(reinterpret_cast<const char*>(buffer_.get() + pos_), static_cast<std::size_t>(n));
  pos_ += static_cast<std::size_t>(n);
  return s;
}

std::string FileIO::GetString() {
  std::string bytes = GetBytes();
  if (IsReadFailure(bytes) && failed_) return bytes;
  return Cp1252ToUtf8(bytes);
}

}  // namespace kestrow
