#include "calc/NoiseRating.h"

#include "calc/BandLevels.h"
#include "platform/Numbers.h"

#include <algorithm>
#include <iterator>

namespace kestrane {

namespace {

struct BandConstants {
    std::string_view frequency;
    float multiplier;
    float constantNumber;
};

constexpr BandConstants kBandConstants[] = {
    {"31.5", 0.681F, 55.4F}, {"63", 0.79F, 35.4F},  {"125", 0.87F, 22.0F}, {"250", 0.93F, 12.0F}, {"500", 0.93F, 4.8F},
    {"1k", 1.0F, 0.0F},      {"2k", 1.015F, -3.5F}, {"4k", 1.025F, -6.1F}, {"8k", 1.03F, -8.0F},
};

// a and b of the bands from 31.5 Hz to 8 kHz.
constexpr double kCurves[][2] = {{55.4, 0.681}, {35.4, 0.790}, {22.0, 0.870}, {12.0, 0.930}, {4.8, 0.974},
                                 {0.0, 1.000},  {-3.5, 1.015}, {-6.1, 1.025}, {-8.0, 1.030}};

constexpr int kHighestCurve = 120;
constexpr int kCurveStep = 5;

void addLevels(clsNoiseRating& row, float level) {
    for (int curve = 0; curve <= kHighestCurve; curve += kCurveStep) {
        clsNoiseRatingLevel point;
        point.Parent = &row;
        point.NoiseRatingLevel = static_cast<std::int16_t>(curve);
        row.Levels.push_back(point);
    }
    row.Levels.emplace_back().SoundLevel(level);
}

std::int32_t roundedUp(float rating) {
    const std::int32_t whole = roundToLong(rating);
    return static_cast<float>(whole) < rating ? whole + 1 : whole;
}

} // namespace

float clsNoiseRatingLevel::SoundLevel() const {
    if (Parent == nullptr) return soundLevel_;
    return Parent->Multiplier * static_cast<float>(NoiseRatingLevel) + Parent->ConstantNumber;
}

void clsNoiseRating::Frequency(std::string_view label) {
    frequency_ = label;
    const auto* found = std::find_if(std::begin(kBandConstants), std::end(kBandConstants),
                                     [&](const BandConstants& band) { return band.frequency == label; });
    const bool hasConstants = found != std::end(kBandConstants);
    Multiplier = hasConstants ? found->multiplier : 0;
    ConstantNumber = hasConstants ? found->constantNumber : 0;
}

float clsNoiseRating::Rating(float level) const {
    return static_cast<float>(level - static_cast<double>(ConstantNumber) / Multiplier);
}

std::optional<double> ratingByCurves(const clsLog& log) {
    const auto levels = linearOctaves(log);
    std::optional<double> highest;
    for (std::size_t octave = 0; octave < std::size(kCurves); ++octave) {
        if (!levels[octave]) continue;
        const auto& [a, b] = kCurves[octave];
        const double rating = (*levels[octave] - a) / b;
        if (!highest || rating > *highest) highest = rating;
    }
    return highest;
}

NoiseRating noiseRating(const clsLog& log) {
    NoiseRating rating;
    float highest = 0;
    for (int band = 1; band <= lastBand(log.Mode()); ++band) {
        clsNoiseRating& row = rating.Rows.emplace_back();
        row.Frequency(log.eStr(band));
        if (row.Multiplier == 0) {
            rating.Rows.pop_back();
            continue;
        }
        const float level = log.LeqCumA(band).CalcValue();
        addLevels(row, level);
        highest = std::max(highest, row.Rating(level));
    }
    rating.Level = roundedUp(highest);
    return rating;
}

} // namespace kestrane
