// Any bytes as the words of a call of kestrane-cli, one a line: they are taken, or there is a message that says what is
// wrong. No verb runs.
#include "cli/CommandLine.h"
#include "Target.h"

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

namespace kestrane::fuzz {

namespace {

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
    std::ranges::reverse(words); // as the parser wants them
    Call call;
    CLI::App app("", "kestrane-cli");
    declare(app, call);
    try {
        app.parse(words);
        require(call.run != nullptr, "a call that is taken has a verb");
    } catch (const CLI::ParseError& error) {
        require(error.get_exit_code() == 0 || !hintOf(app, error).empty(), "a refusal says what is wrong");
    }
    return 0;
}
