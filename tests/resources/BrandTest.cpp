#include <gtest/gtest.h>

#include "resources/basSoftwareByFirm.h"

namespace kestrane {
namespace {

TEST(Brand, FollowsTheFirmWordInTheCompanyName) {
    struct Case {
        const char* company;
        int index;
        const char* settings;
        const char* firm;
        const char* key;
        const char* title;
        const char* manual;
    };

    const Case cases[] = {
        {"Ordwyn Acoustics", 0, "Velmora", "Ordwyn", "ordwyn", "Kestrane", "Kestrane.pdf"},
        {"The BRENNOCK Company Ltd", 1, "Kestrane", "Brennock", "brennock", "Kestrane Pro", "Velmora.pdf"},
        {"Brennock and Ordwyn", 0, "Velmora", "Ordwyn", "ordwyn", "Kestrane", "Kestrane.pdf"},
        {"Somebody Else", 0, "", "Ordwyn", "ordwyn", "Kestrane", "Kestrane.pdf"},
        {"", 0, "", "Ordwyn", "ordwyn", "Kestrane", "Kestrane.pdf"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.company);
        const Brand brand = LoadSoftwareByFirm(c.company);
        EXPECT_EQ(brand.FirmIndex, c.index);
        EXPECT_EQ(brand.CompanyName, c.company);
        EXPECT_EQ(brand.SettingsAppName, c.settings);
        EXPECT_EQ(brand.FirmName, c.firm);
        EXPECT_EQ(brand.FirmKey, c.key);
        EXPECT_EQ(brand.ProductTitle, c.title);
        EXPECT_EQ(brand.ProductName, c.title);
        EXPECT_EQ(brand.ManualFile, c.manual);
    }
}

TEST(Brand, TellsTheBrevikVariantsApart) {
    struct Case {
        const char* name;
        bool s, e, se;
    };

    const Case cases[] = {
        {"Brevik S", true, false, false},
        {" brevik  s ", true, false, false},
        {"AURAVOXESSENTIALS", true, false, false},
        {"Brevik E", false, true, false},
        {"auravox essential e", false, true, false},
        {"Brevik SE", false, false, true},
        {"BrevikSE", false, false, true},
        {"Auravox Essential S E", false, false, true},
        {"Brevik", false, false, false},
        {"Brevik SE 2", false, false, false},
        {"", false, false, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(IsBrevikS(c.name), c.s);
        EXPECT_EQ(IsBrevikE(c.name), c.e);
        EXPECT_EQ(IsBrevikSE(c.name), c.se);
        EXPECT_EQ(IsBrevikMeter(c.name), c.s || c.e || c.se);
    }
    EXPECT_EQ(InstrumentNameByIndex(0), "Brevik SE");
    EXPECT_EQ(InstrumentNameByIndex(5), "Auravox Essential S");
    EXPECT_EQ(InstrumentNameByIndex(6), "");
    EXPECT_EQ(InstrumentNameByIndex(-1), "");
}

} // namespace
} // namespace kestrane
