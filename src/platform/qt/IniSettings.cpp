#include "platform/qt/IniSettings.h"

#include "platform/AtomicFile.h"
#include "platform/Files.h"

#include <QStandardPaths>

#include <algorithm>
#include <array>
#include <filesystem>
#include <system_error>

namespace kestrane {

namespace {

struct Escape {
    char character;
    char letter;
};

constexpr std::array<Escape, 5> kEscapes = {{{'\\', '\\'}, {'"', '"'}, {'\n', 'n'}, {'\r', 'r'}, {'\0', '0'}}};

// A text as the value of a line.
std::string valueOf(std::string_view text) {
    std::string out = "\"";
    for (const char c : text) {
        const auto* const found =
            std::find_if(kEscapes.begin(), kEscapes.end(), [&](Escape escape) { return escape.character == c; });
        if (found == kEscapes.end()) {
            out += c;
        } else {
            out.append({'\\', found->letter});
        }
    }
    return out + '"';
}

// The text of a value. One without quotes, as typed by hand, stands for itself.
std::string textOf(std::string_view value) {
    if (value.size() < 2 || value.front() != '"' || value.back() != '"') return std::string(value);
    value = value.substr(1, value.size() - 2);
    std::string out;
    for (std::size_t i = 0; i < value.size(); ++i) {
        const auto* const found = std::find_if(kEscapes.begin(), kEscapes.end(), [&](Escape escape) {
            return value[i] == '\\' && i + 1 < value.size() && escape.letter == value[i + 1];
        });
        if (found == kEscapes.end()) {
            out += value[i];
        } else {
            out += found->character;
            ++i;
        }
    }
    return out;
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r";
    const std::size_t first = text.find_first_not_of(kBlanks);
    return first == std::string_view::npos ? "" : text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

} // namespace

IniSettings IniSettings::ofApplication(const std::string& applicationName) {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    IniSettings settings(folder.toStdString() + '/' + applicationName + ".ini");
    settings.load();
    return settings;
}

IniSettings IniSettings::ofFile(const std::string& path) {
    IniSettings settings(path);
    if (!fileExists(path)) settings.save();
    settings.load();
    return settings;
}

std::string IniSettings::read(std::string_view section, std::string_view key, std::string_view defaultText) const {
    return values_.read(section, key, defaultText);
}

void IniSettings::write(std::string_view section, std::string_view key, std::string_view text) {
    const auto isThere = [&] {
        const auto found = values_.Values.find({std::string(section), std::string(key)});
        return found != values_.Values.end() && found->second == text;
    };
    load();
    if (isThere()) return;
    values_.write(section, key, text);
    save();
}

void IniSettings::load() {
    if (!fileExists(path_)) return;
    const auto bytes = readFile(path_);
    std::string_view rest = bytes->view();
    std::string section;
    while (!rest.empty()) {
        const std::size_t lineEnd = std::min(rest.find('\n'), rest.size());
        const std::string_view line = trimmed(rest.substr(0, lineEnd));
        rest.remove_prefix(std::min(lineEnd + 1, rest.size()));
        const std::size_t equals = line.find('=');
        if (line.starts_with('[') && line.ends_with(']')) {
            section = line.substr(1, line.size() - 2);
        } else if (equals != std::string_view::npos && !line.starts_with(';') && !line.starts_with('#')) {
            values_.write(section, trimmed(line.substr(0, equals)), textOf(trimmed(line.substr(equals + 1))));
        }
    }
}

void IniSettings::save() const {
    std::error_code ignored; // the write tells
    std::filesystem::create_directories(std::filesystem::path(path_).parent_path(), ignored);
    writeFileAtomically(path_, [&](const FileSink& sink) {
        const std::string* section = nullptr;
        for (const auto& [name, text] : values_.Values) {
            if (section == nullptr || *section != name.first) sink("[" + name.first + "]\n");
            section = &name.first;
            sink(name.second + '=' + valueOf(text) + '\n');
        }
    });
}

} // namespace kestrane
