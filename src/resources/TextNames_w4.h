#pragma once

// The names of the texts of the help window, the tour and the start page.

#include "resources/TextNames.h"

namespace kestrane::Text {

inline constexpr Id CommandTour = Id(9240);
inline constexpr Id TourTitle = Id(9241);
inline constexpr Id TourStep = Id(9242);
inline constexpr Id TourBack = Id(9243);
inline constexpr Id TourNext = Id(9244);
inline constexpr Id TourFinish = Id(9245);
inline constexpr Id TourOpen = Id(9246);
inline constexpr Id TourRange = Id(9247);
inline constexpr Id TourFigures = Id(9248);
inline constexpr Id TourReport = Id(9249);
inline constexpr Id SampleShift = Id(9250);
inline constexpr Id SampleSurvey = Id(9251);
inline constexpr Id SampleRoadworks = Id(9252);
inline constexpr Id SampleNight = Id(9253);
inline constexpr Id SampleProtector = Id(9254);
inline constexpr Id SampleThirdOctave = Id(9255);
inline constexpr Id SampleShortForm = Id(9256);
inline constexpr Id SampleWelder = Id(9257);
inline constexpr Id SampleFoundry = Id(9258);
inline constexpr Id SampleCompressor = Id(9259);
inline constexpr Id HelpTitle = Id(9260);
inline constexpr Id HelpSearch = Id(9261);
inline constexpr Id HelpPagesFound = Id(9262);
inline constexpr Id HelpPageShown = Id(9263);
inline constexpr Id HelpNothingFound = Id(9264);
inline constexpr Id HelpBack = Id(9265);
inline constexpr Id HelpForward = Id(9266);
inline constexpr Id HintLepd = Id(9267);
inline constexpr Id HintHPD = Id(9268);
inline constexpr Id LepdMeaning = Id(9269);

} // namespace kestrane::Text
