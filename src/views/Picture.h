// Pictures of charts: their formats by the endings of names, and how large they are. Charts are laid out in dots, of
// which 96 are an inch; a picture that consists of pixels has some for each dot.
#pragma once

#include <string>

namespace kestrane {

inline constexpr const char* kPictureEndings[] = {".png", ".svg", ".pdf"};

// The ending of a picture's name, in lower case; empty when the name does not end like that of a picture.
std::string pictureEnding(const std::string& path);

struct PictureSize {
    double Width = 1000; // dots
    double Height = 650;
    double PixelsOfDot = 1;
};

constexpr double kDotsOfInch = 96;
constexpr double kDotsOfCentimetre = kDotsOfInch / 2.54;
constexpr double kSmallestPicture = 50; // dots
constexpr double kLargestPicture = 20'000;
constexpr double kMostPixels = 20'000;
constexpr int kLowestResolution = 36; // pixels per inch
constexpr int kHighestResolution = 2'400;

// Whether a side of a picture can be so long.
constexpr bool isSideOfPicture(double dots) {
    return dots >= kSmallestPicture && dots <= kLargestPicture;
}

// Whether the picture would consist of more pixels than kMostPixels in a direction. A drawing has no pixels.
bool hasTooManyPixels(const std::string& path, const PictureSize& size);

} // namespace kestrane
