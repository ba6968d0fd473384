// What File > Export Picture offers, without its dialog: the format, the size on paper and the resolution of a chart's
// picture. They are remembered for the next time.
#pragma once

#include "model/Session.h"
#include "views/Picture.h"

#include <functional>
#include <string>

namespace kestrane {

struct PictureChoice {
    std::string Ending = ".png"; // or ".svg" or ".pdf"
    double Width = 16;           // centimetres
    double Height = 9;
    int Resolution = 300; // pixels per inch; only a .png has pixels

    bool operator==(const PictureChoice&) const = default;

    PictureSize Size() const;
    bool IsPossible() const; // it has not too many pixels
};

// The remembered choice; what the store does not have, or has beyond the limits, stays as above.
PictureChoice readPictureChoice(const SettingsStore& store);

// The proposal for the name of a chart's picture.
std::string pictureName(const Session& session, const std::string& title, const PictureChoice& choice);

// Calls save with the name, which has the ending of the choice, and the size; then remembers the choice. Returns false,
// after a message, when the picture could not be written. The choice must be possible.
using SavePicture = std::function<void(const std::string& path, const PictureSize& size)>;
bool exportPicture(Session& session, const PictureChoice& choice, const std::string& path, const SavePicture& save);

} // namespace kestrane
