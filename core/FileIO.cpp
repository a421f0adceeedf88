#include "core/FileIO.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <limits>
#include <new>
#include <vector>

#include "core/AtomicFile.h"
#include "core/CodePage.h"
#include "core/Paths.h"

namespace kestrow {

namespace {

std::string SystemError(int err) { return std::strerror(err); }

// Reads a problem file into a buffer. A file that does not begin with the
// magic string is read no further than the magic's bytes, which is enough for
// the reader to refuse it (an endless stream such as /dev/zero included); a
// file beyond the largest one the format can address is refused.
bool ReadProblemBytes(const std::string& path, std::unique_ptr<std::uint8_t[]>& buffer, std::size_t& size,
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
  auto tooLarge = [&] {
    error = "The file is larger than a problem file can be (" + std::to_string(FileIO::MAX_FILE_BYTES) + " bytes)";
    ::close(fd);
    return false;
  };
  if (S_ISREG(st.st_mode) && static_cast<unsigned long long>(st.st_size) > FileIO::MAX_FILE_BYTES) return tooLarge();
  // Memory may give out before the largest file is reached: that is a
  // failure like any other, not the end of the program.
  auto noMemory = [&] {
    error = "There is not enough memory to read the file";
    buffer.reset();
    ::close(fd);
    return false;
  };
  std::size_t capacity = S_ISREG(st.st_mode) ? static_cast<std::size_t>(st.st_size) : 65536;
  buffer.reset(new (std::nothrow) std::uint8_t[capacity + 1]);
  if (!buffer) return noMemory();
  size = 0;
  static const std::uint8_t MAGIC[] = {4, 0, 'K', 'S', 'T', 'W'};
  std::size_t limit = sizeof MAGIC;  // first the magic, then the rest
  for (;;) {
    if (size == limit) {
      if (limit == sizeof MAGIC) {
        if (std::memcmp(buffer.get(), MAGIC, sizeof MAGIC) != 0) break;
        limit = FileIO::MAX_FILE_BYTES + 1;
        continue;
      }
      return tooLarge();
    }
    if (size == capacity + 1) {  // the file grew while it was read, or is a stream
      std::size_t bigger = std::min<std::size_t>(capacity * 2 + 2, FileIO::MAX_FILE_BYTES + 1);
      std::unique_ptr<std::uint8_t[]> grown(new (std::nothrow) std::uint8_t[bigger + 1]);
      if (!grown) return noMemory();
      std::memcpy(grown.get(), buffer.get(), size);
      buffer = std::move(grown);
      capacity = bigger;
    }
    std::size_t room = std::min(capacity + 1, limit) - size;
    ssize_t n = ::read(fd, buffer.get() + size, room);
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
    if (!ReadProblemBytes(path, buffer_, size_, error_)) return false;
    capacity_ = size_;
  } else {
    // Refuse at once a target that cannot be written, before any work is done.
    if (!CanWriteFile(path, error_)) return false;
  }
  open_ = true;
  return true;
}

bool FileIO::CloseIO() {
  if (!open_) return false;
  open_ = false;
  bool ok = true;
  if (mode_ == Mode::Write) {
    if (!writeFailed_ && size_ > MAX_FILE_BYTES) {
      writeFailed_ = true;
      error_ = "The problem is too large to be saved: a problem file holds at most " +
               std::to_string(MAX_FILE_BYTES) + " bytes";
    }
    ok = !writeFailed_ && WriteFileAtomically(path_, buffer_.get(), size_, error_);
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

// Numbers read past the end of the file are 0, and only the strings and
// the counts notice the end: a file cut in its trailing numbers loads.
bool FileIO::Take(void* out, std::size_t n) {
  if (!open_ || Remaining() < n) {
    std::memset(out, 0, n);
    pos_ = size_;
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
  // A string notices the end of the file, its count included.
  bool counted = Remaining() >= 2;
  auto n = static_cast<std::uint16_t>(GetInt());
  if (!counted || failed_ || static_cast<std::size_t>(n) > Remaining()) {
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
