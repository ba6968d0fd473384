#include "platform/IniFile.h"

#include "platform/AtomicFile.h"
#include "platform/Files.h"
#include "platform/RuntimeError.h"
#include "platform/Trimmed.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <optional>
#include <utility>

namespace kestrane {

namespace {

struct Escape {
    char letter, meaning;
};

constexpr Escape kEscapes[] = {{'a', '\a'}, {'b', '\b'}, {'f', '\f'}, {'n', '\n'}, {'r', '\r'},
                               {'t', '\t'}, {'v', '\v'}, {'"', '"'},  {'\\', '\\'}};

constexpr std::string_view kGeneral = "General"; // of keys without a section; a section of that name has a % before it

bool isHexDigit(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

// Takes hexadecimal digits, at most most of them, off the text from position on; nothing when there are none.
std::optional<char32_t> takeHex(std::string_view text, std::size_t& position, std::size_t most) {
    const std::string_view digits = text.substr(position, most);
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
    if (error != std::errc()) return std::nullopt;
    position += static_cast<std::size_t>(end - digits.data());
    return number;
}

std::string nameOf(std::string_view escaped) {
    std::string name;
    for (std::size_t at = 0; at < escaped.size();) {
        if (escaped[at] != '%') {
            name += escaped[at] == '\\' ? '/' : escaped[at];
            ++at;
            continue;
        }
        const bool isLong = escaped.substr(at + 1).starts_with('U');
        at += isLong ? 2 : 1;
        if (const auto letter = takeHex(escaped, at, isLong ? 4 : 2)) appendUtf8(name, *letter);
    }
    return name;
}

std::string escapedName(std::string_view name) {
    constexpr std::string_view kPlain = "_-.";
    std::string escaped;
    for (std::size_t at = 0; at < name.size();) {
        const char32_t letter = nextCodePoint(name, at);
        const char byte = letter < 0x80 ? static_cast<char>(letter) : '\0';
        const bool isPlain = isHexDigit(byte) || (byte >= 'g' && byte <= 'z') || (byte >= 'G' && byte <= 'Z') ||
                             (byte != '\0' && kPlain.find(byte) != std::string_view::npos);
        std::array<char, 16> code{};
        std::snprintf(code.data(), code.size(), letter > 0xFF ? "%%U%04X" : "%%%02X", static_cast<unsigned>(letter));
        escaped += isPlain ? std::string(1, byte) : byte == '/' ? "\\" : std::string(code.data());
    }
    return escaped;
}

// Appends what a backslash at position stands for, and moves position behind that.
void appendEscaped(std::string& text, std::string_view value, std::size_t& position) {
    if (++position == value.size()) return;
    const char letter = value[position++];
    if (letter == 'x') {
        if (const auto code = takeHex(value, position, 4)) appendUtf8(text, *code);
        return;
    }
    for (const Escape& escape : kEscapes)
        if (escape.letter == letter) text += escape.meaning;
}

// A value as it stands behind the "=". Blanks around it and outside quotes do not count, and a comma outside quotes
// divides a list, which becomes one text again.
std::string valueOf(std::string_view value) {
    std::string text;
    std::string blanks;
    bool isQuoted = false;
    for (std::size_t at = 0; at < value.size();) {
        const char c = value[at];
        if (c == '"') {
            isQuoted = !isQuoted;
            ++at;
        } else if (!isQuoted && (c == ' ' || c == '\t')) {
            blanks += text.empty() ? std::string() : std::string(1, c);
            ++at;
        } else if (!isQuoted && c == ',') {
            text += ", ";
            blanks.clear();
            at = std::min(value.find_first_not_of(" \t", at + 1), value.size());
        } else {
            text += std::exchange(blanks, {});
            if (c == '\\') {
                appendEscaped(text, value, at);
            } else {
                text += c;
                ++at;
            }
        }
    }
    return text.starts_with("@@") ? text.substr(1) : text;
}

std::string escapedValue(std::string_view text) {
    std::string escaped = text.starts_with('@') ? "@" : "";
    bool isAfterCode = false; // then a digit would be taken for one of the code
    for (const char c : text) {
        const Escape* found = nullptr;
        for (const Escape& escape : kEscapes)
            if (escape.meaning == c) found = &escape;
        const bool isCode =
            found == nullptr && (static_cast<unsigned char>(c) < 0x20 || (isAfterCode && isHexDigit(c)));
        std::array<char, 8> code{};
        std::snprintf(code.data(), code.size(), "\\x%x", static_cast<unsigned>(static_cast<unsigned char>(c)));
        escaped += found != nullptr ? std::string{'\\', found->letter}
                   : isCode         ? std::string(code.data())
                                    : std::string(1, c);
        isAfterCode = isCode;
    }
    const bool isToBeQuoted =
        escaped.find_first_of(";,=") != std::string::npos || escaped.starts_with(' ') || escaped.ends_with(' ');
    return isToBeQuoted ? '"' + escaped + '"' : escaped;
}

std::string sectionOf(std::string_view heading) {
    if (heading == kGeneral) return {};
    return nameOf(heading.starts_with('%') && heading.substr(1) == kGeneral ? heading.substr(1) : heading);
}

std::string headingOf(const std::string& section) {
    if (section.empty()) return std::string(kGeneral);
    return section == kGeneral ? '%' + section : escapedName(section);
}

} // namespace

std::unique_ptr<IniFile> IniFile::ofUser(const std::string& path) {
    std::unique_ptr<IniFile> file(new IniFile(path));
    try {
        file->load();
    } catch (const RuntimeError& error) {
        file->isWhole_ = error.Number == ENOENT;
    }
    return file;
}

std::unique_ptr<IniFile> IniFile::ofCaller(const std::string& path) {
    if (!fileExists(path)) writeFileAtomically(path, [](const FileSink&) {});
    std::unique_ptr<IniFile> file(new IniFile(path));
    file->load();
    if (!file->isWhole_) raiseSystemError(EINVAL);
    return file;
}

std::string IniFile::read(std::string_view section, std::string_view key, std::string_view defaultText) const {
    return settings_.read(section, key, defaultText);
}

void IniFile::write(std::string_view section, std::string_view key, std::string_view text) {
    const auto known = settings_.Values.find({std::string(section), std::string(key)});
    if (known == settings_.Values.end() || known->second != text)
        change({std::string(section), std::string(key), std::string(text)});
}

void IniFile::remove(std::string_view section, std::string_view key) {
    if (settings_.Values.contains({std::string(section), std::string(key)}))
        change({std::string(section), std::string(key), std::nullopt});
}

void IniFile::change(Change change) {
    unsaved_.push_back(std::move(change));
    apply();
    const bool wasWhole = isWhole_;
    try {
        isWhole_ = true;
        if (fileExists(path_)) load(); // another program may have changed something else
        apply();
        if (!isWhole_) raiseSystemError(EINVAL);
        save();
        unsaved_.clear();
    } catch (const RuntimeError&) {
        apply();
        isWhole_ = wasWhole;
        if (!wasWhole) return; // Unreadable() has said so
        if (!tell_) throw;
        std::exchange(tell_, [](const std::string&) {})(path_);
    }
}

void IniFile::apply() {
    for (const auto& [section, key, text] : unsaved_)
        text ? settings_.write(section, key, *text) : settings_.remove(section, key);
}

void IniFile::load() {
    const auto bytes = readFile(path_);
    std::string_view rest = behindMark(bytes->view());
    std::string section;
    settings_.Values.clear();
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find_first_of("\r\n"), rest.size());
        const std::string_view line = trimmed(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (line.empty() || line.starts_with(';')) continue;
        const std::size_t sign = line.find('=');
        if (line.starts_with('[') && line.ends_with(']')) {
            section = sectionOf(line.substr(1, line.size() - 2));
        } else if (sign == std::string_view::npos) {
            isWhole_ = false;
        } else {
            const std::string_view value = trimmed(line.substr(sign + 1));
            if (value != "@Invalid()") settings_.write(section, nameOf(trimmed(line.substr(0, sign))), valueOf(value));
        }
    }
}

void IniFile::save() const {
    makeFolderOf(path_);
    writeFileAtomically(path_, [&](const FileSink& sink) {
        const std::string* section = nullptr;
        for (const auto& [name, text] : settings_.Values) {
            if (section == nullptr || *section != name.first)
                sink((section == nullptr ? "[" : "\n[") + headingOf(name.first) + "]\n");
            section = &name.first;
            sink(escapedName(name.second) + "=" + escapedValue(text) + "\n");
        }
    });
}

} // namespace kestrane
