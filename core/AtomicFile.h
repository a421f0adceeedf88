// Writing a whole file so that a failure never damages the file that was
// there: the bytes go to a temporary file in the target's folder, which is
// flushed to disk and renamed over the target. A symbolic link is followed
// and the file it points to is replaced; a file the user may not write is
// refused; a file saved over keeps its permissions.
#pragma once

#include <cstddef>
#include <string>

namespace kestrow {

// False on failure, with the system's reason in error; the old file, if any,
// is then as it was.
bool WriteFileAtomically(const std::string& path, const void* bytes, std::size_t size, std::string& error);
inline bool WriteFileAtomically(const std::string& path, const std::string& bytes, std::string& error) {
  return WriteFileAtomically(path, bytes.data(), bytes.size(), error);
}

// Whether the file can be written or made: its folder writable, and the file
// itself when it exists; the system's reason in error otherwise.
bool CanWriteFile(const std::string& path, std::string& error);

// The file a path names once its symbolic links are followed (the path
// itself when it is no link); a link that points nowhere names the file it
// would create.
std::string FollowLinks(const std::string& path);

}  // namespace kestrow
