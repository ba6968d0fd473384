#include "app/HelpSearch.h"

#include "app/Help.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <iterator>
#include <set>
#include <utility>

namespace kestrane {

namespace {

constexpr std::string_view kPageSuffix = ".html";

// Elements within a line. Every other tag ends a sentence.
constexpr std::string_view kInline[] = {"a", "b", "i", "code", "kbd", "sub", "sup", "span", "em", "strong"};

// Elements whose content is not part of the text.
constexpr std::string_view kSkipped[] = {"style", "nav"};

// The pages are written with these alone; everything else stands in them as it is.
constexpr std::pair<std::string_view, std::string_view> kEntities[] = {
    {"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&nbsp;", " "}, {"&amp;", "&"}};

bool isOneOf(std::span<const std::string_view> names, std::string_view name) {
    return std::ranges::find(names, name) != names.end();
}

// The name of an element in its tag, "/" in front of that of an end tag.
std::string_view nameOf(std::string_view tag) {
    return tag.substr(0, tag.find_first_of(" \n/>", tag.starts_with('/') ? 1 : 0));
}

std::string decoded(std::string text) {
    for (const auto& [entity, character] : kEntities)
        text = ReplaceText(std::move(text), entity, character);
    return ReplaceText(std::move(text), "\u00A0", " ");
}

bool isBlank(char c) {
    return std::isspace(static_cast<unsigned char>(c)) != 0;
}

// With a single blank between words, and none around them.
std::string simplified(std::string_view text) {
    std::string result;
    for (const char c : text) {
        if (!isBlank(c))
            result += c;
        else if (!result.empty() && result.back() != ' ')
            result += ' ';
    }
    if (!result.empty() && result.back() == ' ') result.pop_back();
    return result;
}

bool endsSentence(std::string_view text, std::size_t at) {
    return std::string_view(".?!").find(text[at]) != std::string_view::npos && at + 2 < text.size() &&
           text[at + 1] == ' ' && std::islower(static_cast<unsigned char>(text[at + 2])) == 0;
}

void addSentences(std::string_view text, std::vector<std::string>& sentences) {
    std::size_t from = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (!endsSentence(text, at)) continue;
        sentences.emplace_back(text.substr(from, at + 1 - from));
        from = at + 2;
    }
    if (from < text.size()) sentences.emplace_back(text.substr(from));
}

// A text as it is compared: in small letters, raised figures as usual ones.
std::string folded(std::string_view text) {
    std::string result;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        const char next = at + 1 < text.size() ? text[at + 1] : '\0';
        if (c == '\xC2' && (next == '\xB2' || next == '\xB3')) {
            result += next == '\xB2' ? '2' : '3';
            ++at;
        } else if (c == '\xC3' && static_cast<unsigned char>(next) <= 0x9E) { // letters with accents, U+00C0 to U+00DE
            result += c;
            result += static_cast<char>(static_cast<unsigned char>(next) + 0x20U);
            ++at;
        } else {
            result += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        }
    }
    return result;
}

bool isPartOfWord(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || static_cast<unsigned char>(c) >= 0x80;
}

bool hasWord(std::string_view text, std::string_view word) {
    for (std::size_t at = text.find(word); at != std::string_view::npos; at = text.find(word, at + 1))
        if (at == 0 || !isPartOfWord(text[at - 1])) return true;
    return false;
}

std::size_t countWords(std::string_view sentence, std::span<const std::string> words) {
    const std::string text = folded(sentence);
    return static_cast<std::size_t>(
        std::ranges::count_if(words, [&](const std::string& word) { return hasWord(text, word); }));
}

// How well a page answers: 0 best, 2 still an answer, kNoAnswer none.
constexpr int kNoAnswer = 3;

struct Rated {
    int rank = kNoAnswer;
    HelpMatch match{};
};

Rated rate(const HelpPage& page, std::span<const std::string> words) {
    std::string all = page.Title;
    std::size_t most = 0;
    const std::string* best = nullptr;
    for (const std::string& sentence : page.Sentences) {
        all += ' ' + sentence;
        const std::size_t count = countWords(sentence, words);
        if (count > most) best = &sentence;
        most = std::max(most, count);
    }
    Rated rated;
    rated.match = {&page, best == nullptr ? page.Title : *best};
    if (countWords(page.Title, words) == words.size())
        rated.rank = 0;
    else if (most == words.size())
        rated.rank = 1;
    else if (countWords(all, words) == words.size())
        rated.rank = 2;
    return rated;
}

} // namespace

HelpPage plainHelpPage(std::string path, std::string_view html) {
    HelpPage page{std::move(path), {}, {}};
    std::string text;
    bool isHead = true;
    while (!html.empty()) {
        const std::size_t tagAt = html.find('<');
        text += html.substr(0, tagAt);
        if (tagAt == std::string_view::npos) break;
        const std::size_t end = std::min(html.find('>', tagAt), html.size() - 1);
        const std::string_view name = nameOf(html.substr(tagAt + 1, end - tagAt - 1));
        html.remove_prefix(end + 1);
        if (isOneOf(kSkipped, name)) html.remove_prefix(std::min(html.find("</" + std::string(name)), html.size()));
        if (isOneOf(kInline, name.substr(name.starts_with('/') ? 1 : 0))) continue;
        const std::string plain = simplified(decoded(std::exchange(text, {})));
        if (name == "/title")
            page.Title = plain;
        else if (!isHead)
            addSentences(plain, page.Sentences);
        if (name == "body") isHead = false;
    }
    return page;
}

std::vector<HelpPage> helpPages(const Session& session, const std::string& folder) {
    std::set<std::string> topics;
    std::error_code failed; // then there are no pages
    for (const auto& entry : std::filesystem::directory_iterator(pathOf(folder), failed)) {
        const std::string name = entry.path().filename().string();
        if (name.ends_with(kPageSuffix)) topics.insert(name.substr(0, name.find('.')));
    }
    std::vector<HelpPage> pages;
    for (const std::string& topic : topics) {
        try {
            const std::string path = helpPage(session, folder, topic);
            pages.push_back(plainHelpPage(path, readFile(path)->view()));
        } catch (const RuntimeError&) { // the others can still be read
        }
    }
    std::ranges::sort(pages, {}, [](const HelpPage& page) { return folded(page.Title); });
    return pages;
}

std::vector<std::string> helpWords(std::string_view question) {
    std::vector<std::string> words;
    const std::string text = simplified(decoded(folded(question))) + ' ';
    for (std::size_t from = 0; from < text.size();) {
        const std::size_t to = text.find(' ', from);
        if (to > from) words.push_back(text.substr(from, to - from));
        from = to + 1;
    }
    return words;
}

std::vector<HelpMatch> findInHelp(std::span<const HelpPage> pages, std::string_view question) {
    const std::vector<std::string> words = helpWords(question);
    if (words.empty()) return {};
    std::vector<Rated> rated;
    for (const HelpPage& page : pages)
        if (const Rated one = rate(page, words); one.rank != kNoAnswer) rated.push_back(one);
    std::ranges::stable_sort(rated, {}, &Rated::rank);
    std::vector<HelpMatch> matches;
    std::ranges::transform(rated, std::back_inserter(matches), &Rated::match);
    return matches;
}

} // namespace kestrane
