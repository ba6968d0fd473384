// A hearing protector record: name, type and the attenuation data that its maker published. Owned by the database.
// Figures are in dB; 0 means that the maker gave no figure.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace kestrane {

// The corrections of a result, by the numbers that the settings keep.
enum CorrectionKind : int {
    kCorrectionNone,
    kCorrectionTwoDeviations, // octave data only
    kCorrectionFourDecibels,
    kCorrectionOneDeviation // octave data only
};

inline constexpr std::array kCorrections = {kCorrectionNone, kCorrectionTwoDeviations, kCorrectionFourDecibels,
                                            kCorrectionOneDeviation};

constexpr int kProtectorBands = 8;

// The octave band of index i, 1..8: "63" to "8k".
std::string_view protectorBand(int i);

class clsHP {
public:
    int HPDId = 0; // running number in the database, from 1
    std::string Name;
    std::int16_t Tipe = 0; // 0 earplug, 1 earmuff
    float High = 0, Medium = 0, Low = 0;
    float SNR = 0;
    float NRR = 0;

    // Mean attenuation and standard deviation of band i (1..8), in European and in US data. They raise 9 for any other
    // i.
    float& Mean(int i) { return of(mean_, i); }

    float& SD(int i) { return of(sd_, i); }

    float& MeanUS(int i) { return of(meanUS_, i); }

    float& SDUS(int i) { return of(sdUS_, i); }

    float Mean(int i) const { return of(mean_, i); }

    float SD(int i) const { return of(sd_, i); }

    float MeanUS(int i) const { return of(meanUS_, i); }

    float SDUS(int i) const { return of(sdUS_, i); }

    std::string_view GetTipeStr() const;     // "Earplug" or "Earmuff"
    void SetTipeFromStr(std::string_view s); // exactly these; any other text is ignored

    bool HasOctaves() const;
    bool HasOctavesUS() const;

    bool HasHML() const { return High != 0 || Medium != 0 || Low != 0; }

    bool HasSNR() const { return SNR != 0; }

    bool HasNRR() const { return NRR != 0; }

private:
    using Bands = std::array<float, kProtectorBands>;

    static std::size_t index(int i);

    static float& of(Bands& bands, int i) { return bands[index(i)]; }

    static float of(const Bands& bands, int i) { return bands[index(i)]; }

    Bands mean_{}, sd_{}, meanUS_{}, sdUS_{};
};

} // namespace kestrane
