#include "ErrorOf.h"
#include "model/clsLogIntervals.h"

#include <gtest/gtest.h>

#include <string>

namespace kestrane {
namespace {

std::shared_ptr<clsLogShared> sharedOf(LogMode mode) {
    auto shared = std::make_shared<clsLogShared>();
    shared->Mode(mode);
    return shared;
}

clsLogIntervals storeOf(LogMode mode) {
    clsLogIntervals store;
    store.Initialize(sharedOf(mode));
    return store;
}

clsLogInterval rowOf(LogMode mode, float leq = 0) {
    clsLogInterval row;
    row.Initialize(sharedOf(mode));
    row.LeqA(0).Value(leq);
    return row;
}

// A row in which no two figures are alike.
clsLogInterval distinctRow(LogMode mode) {
    clsLogInterval row = rowOf(mode);
    float next = 0;
    const auto fill = [&](clsValue& value) {
        value.Value(next += 1);
        value.CalcValue(next += 1);
    };
    row.isExcluded = row.OverloadedA = row.OverloadedB = true;
    row.mLngInterval = 100000;
    row.mIntCriterion = 85;
    row.mIntExchange = 5;
    row.StartDate.setDate("26/11/2024", {});
    row.StartTime.setTimeFromSeconds(86399);
    row.LminTimeA.setTimeFromSeconds(1);
    row.LmaxTimeA.setTimeFromSeconds(2);
    row.PeakTimeA.setTimeFromSeconds(3);
    for (const RowMember& m : kRowMembers)
        fill(row.*m.member);
    for (int band = 0; band <= lastBand(mode); ++band) {
        for (BandValues* values : {&row.LeqA, &row.LminA, &row.LmaxA})
            fill((*values)(band));
        for (int ln = 1; ln <= NumberOfLns; ++ln)
            fill(row.LnA(ln, band));
    }
    return row;
}

void expectSame(const clsLogInterval& a, const clsLogInterval& b) {
    EXPECT_TRUE(a.StartDate == b.StartDate && a.StartTime == b.StartTime && a.LminTimeA == b.LminTimeA &&
                a.LmaxTimeA == b.LmaxTimeA && a.PeakTimeA == b.PeakTimeA);
    EXPECT_TRUE(a.isExcluded == b.isExcluded && a.OverloadedA == b.OverloadedA && a.OverloadedB == b.OverloadedB);
    EXPECT_TRUE(a.mLngInterval == b.mLngInterval && a.mIntCriterion == b.mIntCriterion &&
                a.mIntExchange == b.mIntExchange);
    for (const RowMember& m : kRowMembers)
        EXPECT_TRUE(a.*m.member == b.*m.member) << static_cast<int>(m.quantity);
    ASSERT_EQ(a.LeqA.last(), b.LeqA.last());
    for (int band = 0; band <= a.LeqA.last(); ++band) {
        EXPECT_TRUE(a.LeqA(band) == b.LeqA(band) && a.LminA(band) == b.LminA(band) && a.LmaxA(band) == b.LmaxA(band));
        for (int ln = 1; ln <= NumberOfLns; ++ln)
            EXPECT_TRUE(a.LnA(ln, band) == b.LnA(ln, band)) << ln << ' ' << band;
    }
}

TEST(Bands, AreNamedByMode) {
    for (const auto& [mode, last] : {std::pair(modeBroadband, 0), {modeFullOctave, 11}, {modeThirdOctave, 33}}) {
        EXPECT_EQ(e(mode, "Last"), last);
        for (int band = 1; band <= last; ++band)
            EXPECT_EQ(e(mode, eStr(mode, band)), band);
        for (const int outside : {-1, 0, last + 1})
            EXPECT_EQ(eStr(mode, outside), "");
        for (const char* unknown : {"", "1K", "1000", "last", "12"})
            EXPECT_EQ(e(mode, unknown), 0) << unknown;
    }

    EXPECT_EQ(e(modeFullOctave, "16") + e(modeFullOctave, "1k") + e(modeFullOctave, "16k"), 1 + 7 + 11);
    EXPECT_EQ(e(modeThirdOctave, "16") + e(modeThirdOctave, "1k") + e(modeThirdOctave, "16k"), 2 + 20 + 32);
    EXPECT_EQ(e(modeBroadband, "1k") + e(modeFullOctave, "1.25k"), 0);
    for (const int wrong : {-1, 3, 32767})
        EXPECT_EQ(errorOf([&] { static_cast<void>(toLogMode(wrong)); }), kErrorApplication);
    EXPECT_EQ(toLogMode(2), modeThirdOctave);
}

TEST(LogIntervals, GrowBy5000Rows) {
    clsLogIntervals store = storeOf(modeBroadband);
    for (int i = 1; i <= 5000; ++i)
        store.Add(rowOf(modeBroadband, static_cast<float>(i)));
    EXPECT_EQ(store.Capacity(), 5000);
    store.Add(rowOf(modeBroadband, 5001));
    EXPECT_EQ(store.Capacity(), 10000);
    EXPECT_EQ(store.Item(1).LeqA(0).Value(), 1);
    EXPECT_EQ(store.Item(5001).LeqA(0).Value(), 5001);

    store.Clear();
    EXPECT_EQ(store.Count(), 0);
    EXPECT_EQ(store.Capacity(), 10000);
    store.Add(rowOf(modeBroadband));
    EXPECT_EQ(store.Item(1).LeqA(0).Value(), 0) << "nothing is left of the row that was there";

    store.setArraySize(7);
    EXPECT_EQ(store.Count(), 7);
    EXPECT_EQ(store.Capacity(), 7);
    store.Add(rowOf(modeBroadband));
    EXPECT_EQ(store.Capacity(), 5007);
    for (const int outside : {-1, 0, 9}) {
        EXPECT_EQ(errorOf([&] { store.Item(outside); }), kErrorIndexOutOfRange);
        EXPECT_EQ(errorOf([&] { store.Commit(rowOf(modeBroadband), outside); }), kErrorIndexOutOfRange);
    }
}

TEST(LogIntervals, GiveRowsBackAsTheyWereCommitted) {
    for (const LogMode mode : {modeBroadband, modeFullOctave, modeThirdOctave}) {
        clsLogIntervals store = storeOf(mode);
        store.setArraySize(3);
        const clsLogInterval row = distinctRow(mode);
        store.Commit(row, 2);
        expectSame(store.Item(2), row);
        expectSame(store.Item(1), rowOf(mode));
        expectSame(store.Item(3), rowOf(mode));

        clsLogInterval item = store.Item(2);
        item.LeqA(0).Value(1);
        item.StartTime.Secs = 1;
        expectSame(store.Item(2), row);

        std::vector<tLogInterval> records;
        store.GetData(records);
        clsLogIntervals other = storeOf(mode);
        other.copyData(records, 0, 0);
        ASSERT_EQ(other.Count(), 3);
        expectSame(other.Item(3), rowOf(mode));
        clsLogInterval travelled = other.Item(2);
        EXPECT_FALSE(travelled.isExcluded) << "the record has no place for it";
        travelled.isExcluded = true;
        expectSame(travelled, row);
        store.Commit(rowOf(mode), 2);
        expectSame(store.Item(2), rowOf(mode));
    }

    clsLogIntervals store = storeOf(modeBroadband);
    clsLogInterval row = rowOf(modeBroadband);
    row.StartDate.setDate("1/6/29", {});
    store.Add(row);
    row.StartDate.setDate("31/2/2020", {});
    store.Add(row);
    EXPECT_EQ(store.Item(1).StartDate.Year, 2029);
    EXPECT_TRUE(store.Item(2).StartDate == clsDate());
}

TEST(LogIntervals, TakeRecordsAndColumnsIntoARange) {
    clsLogIntervals store = storeOf(modeThirdOctave);
    store.Add(distinctRow(modeThirdOctave));
    store.Add(rowOf(modeThirdOctave));
    std::vector<tLogInterval> records;
    store.GetData(records);
    ASSERT_EQ(records.size(), 2U);

    records[1] = records[0];
    records[1].StartTime = 7;
    store.setArraySize(4);
    store.copyData(records, 2, 3);
    EXPECT_EQ(store.Item(2).StartTime.getTimeAsSeconds(), 86399);
    EXPECT_EQ(store.Item(3).StartTime.getTimeAsSeconds(), 7);
    expectSame(store.Item(4), rowOf(modeThirdOctave));
    for (const auto& [from, to] : {std::pair(4, 5), {-1, 1}, {1, 3}})
        EXPECT_EQ(errorOf([&] { store.copyData(records, from, to); }), kErrorIndexOutOfRange) << from;

    IntervalColumns range;
    range.resize(2, 2);
    range.setLevel(Quantity::LeqA, 0, 1, {61, 62});
    store.copyData(range, 3, 4);
    EXPECT_EQ(store.Item(4).LeqA(0).Value(), 62);
    EXPECT_EQ(store.Item(3).StartTime.getTimeAsSeconds(), 0) << "an absent column clears what was there";
    EXPECT_EQ(store.Item(2).StartTime.getTimeAsSeconds(), 86399);
    EXPECT_EQ(errorOf([&] { store.copyData(range, 4, 5); }), kErrorIndexOutOfRange);
    EXPECT_EQ(errorOf([&] { store.copyData(range, 1, 1); }), kErrorIndexOutOfRange);
}

TEST(LogIntervals, ShareTheirColumnsUntilOneIsWrittenTo) {
    clsLogIntervals store = storeOf(modeBroadband);
    for (int i = 1; i <= 100; ++i)
        store.Add(rowOf(modeBroadband, static_cast<float>(i)));
    clsLogIntervals copy = storeOf(modeBroadband);
    copy.Copy(store, 0, 0);
    const auto leq = [](const clsLogIntervals& s) { return s.Columns().levels(Quantity::LeqA, 0); };
    EXPECT_EQ(leq(store).data(), leq(copy).data());
    EXPECT_TRUE(store.Columns().levels(Quantity::LeqA, 1).empty());
    EXPECT_EQ(store.Columns().bytes(), 5000 * sizeof(Level)) << "one column for one quantity";

    for (const int band : {33, 0, 5}) {
        copy.Columns().setLevel(lnQuantity(10), band, 1, {static_cast<float>(band + 1), 0});
        copy.Columns().setLevel(Quantity::LmaxA, 33 - band, 1, {1, 0});
    }
    for (const int band : {0, 4, 5, 33})
        EXPECT_EQ(copy.Columns().level(lnQuantity(10), band, 1).CalcValue, band == 4 ? 0 : band + 1);
    EXPECT_EQ(copy.Columns().levels(Quantity::LmaxA, 28).size(), 100U);
    copy.Columns().writeLevels(Quantity::LeqA, 0)[4] = {50, 50};
    store.Commit(rowOf(modeBroadband, 70), 7);
    store.Add(rowOf(modeBroadband, 101));
    EXPECT_EQ(store.Item(5).LeqA(0).Value(), 5);
    EXPECT_EQ(copy.Item(5).LeqA(0).Value(), 50);
    EXPECT_EQ(copy.Item(7).LeqA(0).Value(), 7);
    EXPECT_EQ(copy.Count(), 100);
}

TEST(Selection, MarksRowsByItsRanges) {
    struct Case {
        std::vector<std::string> ranges;
        const char *excluded, *included; // "-" a row left out
    };

    const Case cases[] = {{{}, "oooooo", "oooooo"},
                          {{"2~3"}, "o--ooo", "-oo---"},
                          {{"2~4", "3~5", "4~4"}, "o----o", "-oooo-"},
                          {{"0~1", "6~99999999999"}, "-oooo-", "o----o"},
                          {{"-5~0", "7~9", "5~3"}, "oooooo", "------"},
                          {{"2-3", "2", "~3", "2~3x", "", "99999999999999999999~3"}, "oooooo", "oooooo"}};
    for (const Case& c : cases) {
        for (const bool toBeIncluded : {false, true}) {
            std::string marks(6, 'o');
            const auto excluded = excludedRows(selectionRanges(c.ranges), toBeIncluded, 6);
            for (std::size_t row = 0; row < excluded.size(); ++row)
                marks[row] = excluded[row] != 0 ? '-' : 'o';
            EXPECT_EQ(marks, toBeIncluded ? c.included : c.excluded);
        }
    }
}

} // namespace
} // namespace kestrane
