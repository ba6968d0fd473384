// The pages of the help as plain text, and the search over them. The window of the help shows what is found here.
#pragma once

#include "model/Session.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kestrane {

// A page as a reader sees it, without its formatting.
struct HelpPage {
    std::string Path; // of its file
    std::string Title;
    std::vector<std::string> Sentences; // headings and cells of tables are sentences of their own
};

// The plain text of a page of HTML. What stands in its head (but the title) and in its lists of contents is left out.
HelpPage plainHelpPage(std::string path, std::string_view html);

// The pages of a folder, each in the language of the program when it is there, ordered by title. A page that cannot be
// read is left out.
std::vector<HelpPage> helpPages(const Session& session, const std::string& folder);

// A page that has what was looked for.
struct HelpMatch {
    const HelpPage* Page;
    std::string Sentence; // the one with most of the words
};

// The words of a question to the search, folded as the search compares them.
std::vector<std::string> helpWords(std::string_view question);

// The pages that have all words of a question. A word is found where a word of the page begins with it, in capitals or
// not, and with or without raised figures ("Pa2h" finds "Pa²h"). First come pages with all words in the title, then
// those with all in a sentence. A question without words finds nothing.
std::vector<HelpMatch> findInHelp(std::span<const HelpPage> pages, std::string_view question);

} // namespace kestrane
