// What a log and all of its rows have in common: mode, location type and octave type; and the bands of each mode. Band
// 0 is the overall figure; bands 1 to e("Last") are the frequency bands.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace kestrane {

enum LogMode : int { modeBroadband, modeFullOctave, modeThirdOctave };

inline constexpr std::array kLogModes = {modeBroadband, modeFullOctave, modeThirdOctave}; // in the order of the tree
LogMode toLogMode(int number); // raises kErrorApplication for anything but the three modes

constexpr int NumberOfLns = 10;
constexpr int kBandCount = 34; // the overall figure and the 33 bands of a third-octave log

constexpr std::string_view EnvironmentLocation = "ENV";
constexpr std::string_view NoiseAtWorkLocation = "IND";
constexpr std::string_view AutoOctave = "Auto";
constexpr std::string_view ManualOctave = "Manual";
constexpr std::string_view LeqOctave = "Leq";

// The last band of a mode: 0, 11 or 33.
int lastBand(LogMode mode);

// The band number of a label ("12.5" to "20k"), or the last band for "Last"; 0 for any other text, and always in a
// broadband log.
int e(LogMode mode, std::string_view bandText);

// The label of a band; empty for band 0 and for a band that the mode does not have.
std::string_view eStr(LogMode mode, int band);

class clsLogShared {
public:
    std::string LocationType; // EnvironmentLocation, NoiseAtWorkLocation or empty
    std::string OctaveType;   // AutoOctave, ManualOctave, LeqOctave or empty

    LogMode Mode() const { return mode_; }

    void Mode(LogMode mode) {
        mode_ = mode;
    } // raises kErrorApplication and keeps its value for anything but the three modes

    void Copy(const clsLogShared& objPrevLogShared) { *this = objPrevLogShared; }

    int e(std::string_view bandText) const { return kestrane::e(mode_, bandText); }

    std::string_view eStr(int band) const { return kestrane::eStr(mode_, band); }

private:
    LogMode mode_ = modeBroadband;
};

} // namespace kestrane
