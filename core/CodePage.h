// Windows-1252, the 8-bit code page of problem files and cue cards. Texts are
// UTF-8 in memory.
#pragma once

#include <string>
#include <string_view>

namespace kestrow {

// A character with no Windows-1252 code becomes "?". The five codes that
// Windows-1252 leaves undefined (0x81, 0x8D, 0x8F, 0x90, 0x9D) travel as the
// control characters U+0081 and so on, so any byte read comes back unchanged.
std::string Utf8ToCp1252(std::string_view utf8);
std::string Cp1252ToUtf8(std::string_view bytes);

// Byte strings (packed contrast levels) seen as text: byte b is U+00bb.
std::string BytesToUtf8(std::string_view bytes);
// The reverse; false if a character lies above U+00FF.
bool Utf8ToBytes(std::string_view utf8, std::string& bytes);

// Decodes one UTF-8 sequence at text[i], advancing i; an invalid byte gives
// U+FFFD and advances by one.
char32_t NextCodePoint(std::string_view text, std::size_t& i);
void AppendUtf8(std::string& out, char32_t cp);

}  // namespace kestrow
