// Any bytes as the words of a call of kestrane-cli, one a line: they are taken, or there is a message that says what is
// wrong. No verb runs. The parser is kept between inputs, since declaring all verbs takes longer than parsing.
#include "cli/CommandLine.h"
#include "Target.h"

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

namespace kestrane::fuzz {

namespace {

struct Parser {
    Call call;
    CLI::App app{"", "kestrane-cli"};

    Parser() { declare(app, call); }
};

std::vector<std::string> wordsOf(const std::string& text) {
    std::vector<std::string> words;
    std::istringstream lines(text.substr(0, text.find('\0')));
    for (std::string line; std::getline(lines, line);)
        words.push_back(line);
    return words;
}

} // namespace

} // namespace kestrane::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kestrane;
    using namespace kestrane::fuzz;
    std::vector<std::string> words = wordsOf({reinterpret_cast<const char*>(data), size});
    asksForJsonErrors(words);
    words = withEmptyValues(words);
    std::ranges::reverse(words); // as the parser wants them
    static Parser parser;
    parser.call = {};
    try {
        parser.app.parse(words);
        require(parser.call.run != nullptr, "a call that is taken has a verb");
    } catch (const CLI::ParseError& error) {
        require(error.get_exit_code() == 0 || !hintOf(parser.app, error).empty(), "a refusal says what is wrong");
    }
    return 0;
}
