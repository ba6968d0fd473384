#include "platform/Files.h"

#include "ErrorOf.h"
#include "platform/RuntimeError.h"
#include "platform/Sha256.h"
#include "platform/TemporaryFolder.h"
#include "platform/Utf8.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace kestrane {
namespace {

TEST(ReadFile, GivesTheBytesOrTheSystemsError) {
    const TemporaryFolder folder;
    const std::string text("one\0two\r\n\xFF", 10);
    writeText(folder.file("data"), text);
    writeText(folder.file("empty"), "");
    EXPECT_EQ(readFile(folder.file("data"))->view(), text);
    EXPECT_EQ(readFile(folder.file("empty"))->size(), 0U);

    const auto refusal = [](const std::string& path) { return errorOf([&] { readFile(path); }); };
    EXPECT_EQ(refusal(folder.path()), EISDIR);
    EXPECT_EQ(refusal(folder.file("none")), ENOENT);
    EXPECT_EQ(refusal(""), ENOENT);

    EXPECT_TRUE(fileExists(folder.file("empty")));
    EXPECT_FALSE(fileExists(folder.path()));
    EXPECT_FALSE(fileExists(folder.file("none")));
}

// What is long is read and looked over by several threads, piece by piece.
TEST(ReadFile, ALongFileIsReadWholeAndALetterMayLieAcrossPieces) {
    const TemporaryFolder folder;
    std::string text;
    while (text.size() < 2 * kReadAtOnce + 7)
        text += "\u20AC"; // of three bytes, which no piece is a multiple of
    writeText(folder.file("long"), text);
    EXPECT_EQ(readFile(folder.file("long"))->view(), text);
    EXPECT_TRUE(isValidUtf8(text));
    const std::string cut = text.substr(0, text.size() - 1);
    EXPECT_FALSE(isValidUtf8(cut));
    text[kReadAtOnce + 1 - kReadAtOnce % 3] = 'a';
    EXPECT_FALSE(isValidUtf8(text));

    int calls = 0;
    const auto givesUp = [&calls] {
        if (++calls == 1) raiseSystemError(ECANCELED);
    };
    EXPECT_EQ(errorOf([&] { readFile(folder.file("long"), givesUp); }), ECANCELED);
    EXPECT_EQ(calls, 1);
}

TEST(ReadPieces, ALongFileHasTheHashOfItsText) {
    const TemporaryFolder folder;
    std::string text;
    for (int i = 0; text.size() < 2'500'000; ++i)
        text += std::to_string(i);
    writeText(folder.file("long"), text);
    EXPECT_EQ(sha256OfFile(folder.file("long")), sha256Of(text));
}

} // namespace
} // namespace kestrane
