#include "sim/Faults.h"

#include "SimTest.h"

namespace kestrane {
namespace {

// Answers every call with the same bytes.
class Parrot : public Instrument {
public:
    Reply answer(std::string_view) override { return {{{"0123456789"}}}; }
};

FaultyInstrument faulty(const char* fault) {
    return {std::make_unique<Parrot>(), *parseFault(fault)};
}

TEST(Faults, AreToldInWords) {
    for (const char* text : {"silence", "silence=2", "error", "error=1", "echo", "split", "noise", "cut=0", "hangup=9"})
        EXPECT_TRUE(parseFault(text)) << text;
    for (const char* text : {"", "cut=", "cut=-1", "cut=x", "cut=1x", "echo=1", "Silence", "=1"})
        EXPECT_FALSE(parseFault(text)) << text;
}

TEST(Faults, ComeAtTheirTime) {
    struct Case {
        const char* fault;
        std::array<const char*, 3> replies;
    };

    for (const Case& c : {Case{"silence", {"", "", ""}}, Case{"silence=2", {"0123456789", "0123456789", ""}},
                          Case{"error=1", {"0123456789", "ERROR", "ERROR"}}, Case{"echo", {"abc", "abc", "abc"}},
                          Case{"cut=12", {"0123456789", "01", ""}}, Case{"cut", {"", "", ""}},
                          Case{"hangup=20", {"0123456789", "0123456789", ""}}}) {
        FaultyInstrument instrument = faulty(c.fault);
        for (const char* expected : c.replies)
            EXPECT_EQ(joined(instrument.answer("abc")), expected) << c.fault;
    }
}

TEST(Faults, TheLineIsClosedWhereToldAndNotBefore) {
    FaultyInstrument instrument = faulty("hangup=15");
    EXPECT_FALSE(instrument.answer("a").hangsUp);
    EXPECT_TRUE(instrument.answer("a").hangsUp);
    EXPECT_FALSE(faulty("cut=5").answer("a").hangsUp);
}

TEST(Faults, SplitRepliesAreWholeAndNoisyOnesAreLonger) {
    FaultyInstrument split = faulty("split");
    const Reply reply = split.answer("a");
    EXPECT_EQ(joined(reply), "0123456789");
    ASSERT_GT(reply.pieces.size(), 2U);
    EXPECT_GT(reply.pieces[1].pause.count(), 0);

    FaultyInstrument noisy = faulty("noise");
    std::size_t added = 0;
    for (int i = 0; i < 100; ++i)
        added += joined(noisy.answer("a")).size() - 10;
    EXPECT_GT(added, 10U);
}

} // namespace
} // namespace kestrane
