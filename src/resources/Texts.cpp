#include "resources/Texts.h"

#include <array>
#include <charconv>
#include <optional>
#include <utility>

#include "resources/TextTable.h"

namespace kestrane {

namespace {

constexpr int SecondBrandOffset = Text::SecondHomePage - Text::ContactHomePage;

constexpr int LargestId = 32767;

Text::Id IdForBrand(Text::Id id, int firmIndex) {
    if (firmIndex == 1 && id >= Text::ContactHomePage && id <= Text::ContactShop)
        return Text::Id{id + SecondBrandOffset};
    if (firmIndex != 0 && id == Text::OpenFilter) return Text::SaveFilter;
    return id;
}

std::optional<Text::Id> PlaceholderId(std::string_view caption) {
    const std::size_t dash = caption.find('-');
    if (dash == std::string_view::npos) return std::nullopt;
    std::string_view number = caption.substr(0, dash);
    const std::size_t first = number.find_first_not_of(' ');
    if (first == std::string_view::npos) return std::nullopt;
    number = number.substr(first, number.find_last_not_of(' ') - first + 1);

    int id = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), id);
    if (error != std::errc() || end != number.data() + number.size() || id > LargestId) return std::nullopt;
    return Text::Id{id};
}

} // namespace

std::string ReplaceText(std::string text, std::string_view find, std::string_view with) {
    if (find.empty()) return text;
    std::size_t position = text.find(find);
    if (position == std::string::npos) return text;
    std::string result;
    std::size_t from = 0;
    for (; position != std::string::npos; position = text.find(find, from)) {
        result.append(text, from, position - from);
        result += with;
        from = position + find.size();
    }
    result.append(text, from);
    return result;
}

std::string PlainCaption(std::string_view caption) {
    std::string plain;
    for (std::size_t i = 0; i < caption.size(); ++i) {
        if (caption[i] == '&' && ++i == caption.size()) break;
        plain += caption[i];
    }
    return plain;
}

Texts::Texts(Brand brand, int major, int minor, int revision, const Wording& wording) :
    brand_(std::move(brand)),
    version_(std::to_string(major) + "." + std::to_string(minor) + "." + std::to_string(revision)),
    wording_(wording) {}

std::string Texts::LoadText(Text::Id id) const {
    switch (UseOf(id)) {
    case TextUse::Data:
        return LoadData(id);
    case TextUse::Message:
        return load(id, wording_.Messages.Words);
    default:
        return load(id, wording_.Shown.Words);
    }
}

std::string Texts::LoadMessage(Text::Id id) const {
    return load(id, wording_.Messages.Words);
}

std::string Texts::load(Text::Id id, std::span<const TextEntry> words) const {
    const Text::Id mapped = IdForBrand(id, brand_.FirmIndex);
    std::optional<std::string_view> raw = FindText(words, mapped);
    if (!raw) raw = FindText(mapped);
    if (!raw) return std::to_string(mapped);

    // The longer tokens contain the shorter ones, so the order of replacement matters.
    const std::array<std::pair<std::string_view, std::string_view>, 7> tokens{{
        {"~", "\r\n"},
        {"{{}}", brand_.CompanyName},
        {"{}", brand_.FirmName},
        {"$$$", brand_.ProductTitle},
        {"$$", brand_.ProductName},
        {"$", ApplicationTitle},
        {"%.%", version_},
    }};
    std::string text(*raw);
    for (const auto& [token, word] : tokens)
        text = ReplaceText(std::move(text), token, word);
    return text;
}

std::string Texts::LocaliseCaption(std::string_view designCaption) const {
    const std::optional<Text::Id> id = PlaceholderId(designCaption);
    return id ? LoadText(*id) : std::string(designCaption);
}

} // namespace kestrane
