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

// The code point that begins at position, which moves behind it. A byte that begins none gives U+FFFD.
char32_t nextCodePoint(std::string_view utf8, std::size_t& position);

// The code point of a Windows-1252 byte; bytes that the code page leaves open stand for themselves.
char32_t fromWindows1252(unsigned char byte);

// Bytes of unknown encoding as text: UTF-8 when they are valid, else Windows-1252.
std::string toUtf8(std::string_view bytes);

// The beginning of a text that takes at most so many bytes, cut between characters.
std::string_view firstBytes(std::string_view utf8, std::size_t most);

// In upper case, letter by letter, whatever the language of the system.
std::string upperCase(std::string_view utf8);

} // namespace kestrane
