// The one binary channel of problem files: a sequential stream of typed
// little-endian values. Reading works on the whole file held in memory; writing
// gathers the bytes in memory and commits them through a temporary file in the
// target's folder, flushed and renamed over the target, so a failed save never
// damages the file that was there.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>

namespace kestrow {

class FileIO {
 public:
  enum class Mode { Read, Write };
  // The longest string the file can hold: its count is two bytes, unsigned.
  static constexpr std::size_t MAX_STRING = 65535;
  // The largest file: positions in it (lDesnPtr, lDataPtr) are signed 32-bit.
  static constexpr std::size_t MAX_FILE_BYTES = 2147483647;

  // Opens a file: for reading it is read whole; for writing an empty stream is
  // started. False on failure, with the reason in LastError().
  bool OpenIO(const std::string& path, Mode mode);
  // Ends the use of the file; a write is committed here. False if the commit
  // failed or a value could not be written.
  bool CloseIO();

  // The next position, counting from 1.
  std::int32_t fSeek() const { return static_cast<std::int32_t>(pos_ + 1); }

  // The writers are inline: a large study writes millions of values.
  bool PutByte(std::uint8_t x) {
    std::uint8_t* at = Room(1);
    at[0] = x;
    return true;
  }
  bool PutInt(std::int16_t x) {
    auto u = static_cast<std::uint16_t>(x);
    std::uint8_t* at = Room(2);
    at[0] = static_cast<std::uint8_t>(u);
    at[1] = static_cast<std::uint8_t>(u >> 8);
    return true;
  }
  bool PutBool(bool x) { return PutByte(x ? 'Y' : 'N'); }
  bool PutFloat(float x) {
    std::uint32_t u;
    std::memcpy(&u, &x, 4);
    std::uint8_t* at = Room(4);
    at[0] = static_cast<std::uint8_t>(u);
    at[1] = static_cast<std::uint8_t>(u >> 8);
    at[2] = static_cast<std::uint8_t>(u >> 16);
    at[3] = static_cast<std::uint8_t>(u >> 24);
    return true;
  }
  // Space for n bytes written directly by the caller (the data block).
  std::uint8_t* PutBlock(std::size_t n) { return Room(n); }
  bool PutString(const std::string& utf8);   // text: Windows-1252 on disk
  bool PutBytes(const std::string& bytes);   // a byte string: written as it is

  // A read past the end yields 0 (false); only strings and counts fail there.
  std::uint8_t GetByte();
  std::int16_t GetInt();
  bool GetBool();
  float GetFloat();
  // The next n bytes, read directly by the caller; null, with the stream
  // marked as failed, when the file does not hold them.
  const std::uint8_t* GetBlock(std::size_t n) {
    if (!open_ || Remaining() < n) {
      pos_ = size_;
      failed_ = true;
      return nullptr;
    }
    const std::uint8_t* at = buffer_.get() + pos_;
    pos_ += n;
    return at;
  }
  // A failed read returns the read-failure signal, one NUL character.
  std::string GetString();
  std::string GetBytes();

  // True once a string read went past the end of the file or a count was refused.
  bool Failed() const { return failed_; }
  // Bytes left to read.
  std::size_t Remaining() const { return pos_ < size_ ? size_ - pos_ : 0; }
  // True if count entries of at least minBytes each can still be in the file;
  // otherwise the stream is marked as failed. The last entry may lack its
  // trailing numbers (tail bytes of them), which read as 0 at the end of the
  // file: only a count that the bytes left cannot satisfy is refused.
  bool CanHold(long long count, std::size_t minBytes, std::size_t tail = 0) {
    if (count == 0) return true;
    if (count > 0 && static_cast<unsigned long long>(count) * minBytes - tail <= Remaining()) return true;
    failed_ = true;
    return false;
  }

  const std::string& LastError() const { return error_; }
  bool IsOpen() const { return open_; }


 private:
  bool Take(void* out, std::size_t n);
  bool PutRaw(const void* p, std::size_t n);
  // Space for n more bytes at the write position; the buffer grows by doubling.
  std::uint8_t* Room(std::size_t n) {
    if (capacity_ - pos_ < n) Grow(pos_ + n);
    std::uint8_t* at = buffer_.get() + pos_;
    pos_ += n;
    if (pos_ > size_) size_ = pos_;
    return at;
  }
  void Grow(std::size_t atLeast);
  bool PutCounted(const std::string& bytes);

  std::string path_;
  Mode mode_ = Mode::Read;
  bool open_ = false;
  bool failed_ = false;
  bool writeFailed_ = false;
  std::size_t pos_ = 0;
  // The bytes of the file: for reading all of it, for writing what is written
  // so far. Not cleared on allocation: only written bytes are ever read.
  std::unique_ptr<std::uint8_t[]> buffer_;
  std::size_t size_ = 0;
  std::size_t capacity_ = 0;
  std::string error_;
};

// The read-failure signal of GetString.
inline bool IsReadFailure(const std::string& s) { return s.size() == 1 && s[0] == '\0'; }

}  // namespace kestrow
