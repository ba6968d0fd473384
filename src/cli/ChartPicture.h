// The picture of a chart, drawn without a window.
#pragma once

#include "views/ChartData.h"

#include <string>

namespace kestrane {

struct PictureSize {
    int Width = 1000; // pixels
    int Height = 650;
};

// Whether a file's name ends like that of a picture: .png, .svg or .pdf.
bool isPictureName(const std::string& path);

// Raises an error when the file cannot be written.
void savePicture(const ChartData& chart, const Locale& locale, const std::string& path, PictureSize size);

} // namespace kestrane
