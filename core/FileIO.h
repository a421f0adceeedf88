// The one binary channel of problem files: a sequential stream of typed
// little-endian values. Reading works on the whole file held in memory; writing
// gathers the bytes in memory and commits them through a temporary file in the
// target's folder, flushed and renamed over the target, so a failed save never
// damages the file that was there.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kestrow {

class FileIO {
 public:
  enum class Mode { Read, Write };

  // Opens a file: for reading it is read whole; for writing an empty stream is
  // started. False on failure, with the reason in LastError().
  bool OpenIO(const std::string& path, Mode mode);
  // Ends the use of the file; a write is committed here. False if the commit
  // failed or a value could not be written.
  bool CloseIO();

  // The next position, counting from 1.
  std::int32_t fSeek() const { return static_cast<std::int32_t>(pos_ + 1); }

  bool PutByte(std::uint8_t x);
  bool PutInt(std::int16_t x);
  bool PutBool(bool x);
  bool PutFloat(float x);
  bool PutString(const std::string& utf8);   // text: Windows-1252 on disk
  bool PutBytes(const std::string& bytes);   // a byte string: written as it is

  // A read past the end yields 0 (false) and marks the stream as run out.
  std::uint8_t GetByte();
  std::int16_t GetInt();
  bool GetBool();
  float GetFloat();
  // A failed read returns the read-failure signal, one NUL character.
  std::string GetString();
  std::string GetBytes();

  // True once a read went past the end of the file or a count was refused.
  bool Failed() const { return failed_; }
  // Bytes left to read.
  std::size_t Remaining() const { return pos_ < data_.size() ? data_.size() - pos_ : 0; }
  // True if count entries of at least minBytes each can still be in the file;
  // otherwise the stream is marked as failed.
  bool CanHold(long long count, std::size_t minBytes) {
    if (count >= 0 && static_cast<unsigned long long>(count) * minBytes <= Remaining()) return true;
    failed_ = true;
    return false;
  }

  const std::string& LastError() const { return error_; }
  bool IsOpen() const { return open_; }

  // The bytes of the stream (for reading: the file; for writing: so far).
  const std::vector<std::uint8_t>& Bytes() const { return data_; }

 private:
  bool Take(void* out, std::size_t n);
  bool PutRaw(const void* p, std::size_t n);
  bool PutCounted(const std::string& bytes);

  std::string path_;
  Mode mode_ = Mode::Read;
  bool open_ = false;
  bool failed_ = false;
  bool writeFailed_ = false;
  std::size_t pos_ = 0;
  std::vector<std::uint8_t> data_;
  std::string error_;
};

// The read-failure signal of GetString.
inline bool IsReadFailure(const std::string& s) { return s.size() == 1 && s[0] == '\0'; }

}  // namespace kestrow
