#include "views/Picture.h"

#include <algorithm>
#include <cctype>
#include <iterator>

namespace kestrane {

std::string pictureEnding(const std::string& path) {
    std::string ending = path.substr(std::min(path.rfind('.'), path.size()));
    std::ranges::transform(ending, ending.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return std::ranges::find(kPictureEndings, ending) == std::end(kPictureEndings) ? std::string() : ending;
}

bool hasTooManyPixels(const std::string& path, const PictureSize& size) {
    const std::string ending = pictureEnding(path);
    return ending != ".svg" && ending != ".pdf" && std::max(size.Width, size.Height) * size.PixelsOfDot > kMostPixels;
}

} // namespace kestrane
