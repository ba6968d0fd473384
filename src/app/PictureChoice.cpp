#include "app/PictureChoice.h"

#include "app/Documents.h"
#include "model/SettingsText.h"

#include <algorithm>

namespace kestrane {

namespace {

constexpr std::string_view kSection = "Picture";
constexpr std::string_view kEnding = "Ending", kWidth = "Width", kHeight = "Height", kResolution = "Resolution";

// The number under a key; 0 when there is none.
float numberOf(const SettingsStore& store, std::string_view key) {
    float number = 0;
    try {
        fromSettingsText(store.read(kSection, key, {}), number);
    } catch (const RuntimeError&) {
        return 0;
    }
    return number;
}

} // namespace

PictureSize PictureChoice::Size() const {
    return {Width * kDotsOfCentimetre, Height * kDotsOfCentimetre, Resolution / kDotsOfInch};
}

bool PictureChoice::IsPossible() const {
    return !hasTooManyPixels(Ending, Size());
}

PictureChoice readPictureChoice(const SettingsStore& store) {
    PictureChoice choice;
    const std::string ending = store.read(kSection, kEnding, {});
    if (std::ranges::find(kPictureEndings, ending) != std::end(kPictureEndings)) choice.Ending = ending;
    for (const auto& [key, side] : {std::pair(kWidth, &choice.Width), std::pair(kHeight, &choice.Height)})
        if (const double length = numberOf(store, key); isSideOfPicture(length * kDotsOfCentimetre)) *side = length;
    if (const float dots = numberOf(store, kResolution); dots >= kLowestResolution && dots <= kHighestResolution)
        choice.Resolution = static_cast<int>(dots);
    return choice;
}

std::string pictureName(const Session& session, const std::string& title, const PictureChoice& choice) {
    return session.Options.DefaultDataDirectory + fileNameOf(title) + choice.Ending;
}

bool exportPicture(Session& session, const PictureChoice& choice, const std::string& path, const SavePicture& save) {
    try {
        save(path, choice.Size());
    } catch (const RuntimeError& error) {
        session.ShowMessage(saveErrorText(session, error, path), kIconExclamation);
        return false;
    }
    try {
        SettingsStore& store = *session.state;
        store.write(kSection, kEnding, choice.Ending);
        store.write(kSection, kWidth, settingsText(static_cast<float>(choice.Width)));
        store.write(kSection, kHeight, settingsText(static_cast<float>(choice.Height)));
        store.write(kSection, kResolution, std::to_string(choice.Resolution));
    } catch (const RuntimeError&) {
        // The picture is there; it is only not remembered.
    }
    return true;
}

} // namespace kestrane
