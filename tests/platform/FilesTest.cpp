#include "platform/Files.h"

#include "ErrorOf.h"
#include "platform/Sha256.h"
#include "platform/TemporaryFolder.h"

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
