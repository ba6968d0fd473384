// Text encodings: inside the program text is UTF-8; files may bring single bytes of the Windows-1252 code page or
// UTF-16.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kestrane {

bool isValidUtf8(std::string_view text); // no overlong forms, surrogates or values past U+10FFFF

void appendUtf8(std::string& out, char32_t codePoint);

// Returns the code point that begins at position and moves position behind it. A byte that begins no code point gives
// U+FFFD.
char32_t nextCodePoint(std::string_view utf8, std::size_t& position);

// The code point of a Windows-1252 byte. Bytes that the code page does not define become the code point of the same
// number.
char32_t fromWindows1252(unsigned char byte);

// Bytes of unknown encoding as UTF-8: as they are when they are valid UTF-8, else converted from Windows-1252.
std::string toUtf8(std::string_view bytes);

// The text without the byte order mark that some editors write in front of UTF-8, or several, as tools add one each.
std::string_view behindMark(std::string_view text);

// The longest beginning of a text that takes at most most bytes and ends between two characters.
std::string_view firstBytes(std::string_view utf8, std::size_t most);

// The text in upper case, letter by letter, independent of the system's language.
std::string upperCase(std::string_view utf8);

} // namespace kestrane
