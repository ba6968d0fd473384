#include <gtest/gtest.h>

#include "resources/basSoftwareByFirm.h"

namespace kestrane {
namespace {

TEST(Brand, FollowsTheFirmWordInTheCompanyName) {
    for (const auto& [company, index] : {std::pair("Ordwyn Acoustics", 0),
                                         {"The BRENNOCK Company Ltd", 1},
                                         {"Brennock and Ordwyn", 0},
                                         {"Somebody Else", 0},
                                         {"", 0}}) {
        const Brand brand = LoadSoftwareByFirm(company);
        EXPECT_EQ(brand.FirmIndex, index) << company;
        EXPECT_EQ(brand.CompanyName, company);
        EXPECT_EQ(brand.ProductTitle, index == 0 ? "Kestrane" : "Kestrane Pro") << company;
    }
    EXPECT_EQ(LoadSoftwareByFirm("Ordwyn").SettingsAppName, "Velmora");
    EXPECT_EQ(LoadSoftwareByFirm("Brennock").SettingsAppName, "Kestrane");
    EXPECT_EQ(LoadSoftwareByFirm("Somebody Else").SettingsAppName, "") << "no firm of ours";
}

TEST(Brand, TellsTheBrevikVariantsApart) {
    for (const auto& [name, variant] : {std::pair("Brevik S", "S"),
                                        {" brevik  s ", "S"},
                                        {"AURAVOXESSENTIALS", "S"},
                                        {"Brevik E", "E"},
                                        {"auravox essential e", "E"},
                                        {"BrevikSE", "SE"},
                                        {"Auravox Essential S E", "SE"},
                                        {"Brevik", ""},
                                        {"Brevik SE 2", ""},
                                        {"", ""}}) {
        const std::string_view is = variant;
        EXPECT_EQ(IsBrevikS(name), is == "S") << name;
        EXPECT_EQ(IsBrevikE(name), is == "E") << name;
        EXPECT_EQ(IsBrevikSE(name), is == "SE") << name;
        EXPECT_EQ(IsBrevikMeter(name), !is.empty()) << name;
    }
    EXPECT_EQ(InstrumentNameByIndex(-1), "");
}

} // namespace
} // namespace kestrane
