// Any bytes as a protector database, as a file and as a download. What is read is written as it was read.
#include "Target.h"
#include "platform/Numbers.h"
#include "platform/RuntimeError.h"
#include "protection/ProtectorDatabase.h"

#include <string_view>

namespace kestrane::fuzz {

namespace {

// The records up to the end, or up to the line that is none.
std::vector<clsHP> recordsOf(std::string_view text) {
    std::vector<clsHP> records;
    try {
        readProtectors(text, records);
    } catch (const RuntimeError& error) {
        require(error.Number == kErrorCorruptFile || error.Number == kErrorOverflow ||
                    error.Number == kErrorTypeMismatch,
                "a database that is none raises 109, 6 or 13");
    }
    return records;
}

void file(std::string_view text) {
    const std::vector<clsHP> records = recordsOf(text);
    const std::string written = protectorsText(records);
    const std::vector<clsHP> back = recordsOf(written);
    require(back.size() == records.size() && protectorsText(back) == written, "records read back");
}

void download(std::string_view body) {
    const std::string text = databaseText(body);
    require(text.empty() || (text.back() != '\r' && text.back() != '\n'), "a database does not end in line ends");
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isOfEnd = text[i] == '\r' ? text.substr(i, 2) == "\r\n" : text[i] == '\n' && text[i - 1] == '\r';
        require(static_cast<unsigned char>(text[i]) > 31 || isOfEnd, "a database has lines, and nothing unprintable");
    }
    file(text);
}

} // namespace

} // namespace kestrane::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    kestrane::fuzz::file(text);
    kestrane::fuzz::download(text);
    return 0;
}
