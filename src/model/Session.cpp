#include "model/Session.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <utility>

namespace kestrane {

namespace {

constexpr int kVersion[] = {KESTRANE_VERSION};

// The words of a text, which are as many as there is room for.
template <std::size_t Count>
std::array<std::string, Count> wordsOf(const std::string& text) {
    std::array<std::string, Count> words;
    std::istringstream in(text);
    for (std::string& word : words)
        in >> word;
    return words;
}

DateWords dateWordsOf(const Texts& texts) {
    return {wordsOf<12>(texts.LoadText(Text::MonthNames)), wordsOf<7>(texts.LoadText(Text::WeekdayNames)),
            texts.LoadText(Text::LongDate)};
}

} // namespace

LabelTexts::LabelTexts(const Texts& texts) :
    YesMark(texts.LoadText(Text::YesMark)),
    NoMark(texts.LoadText(Text::NoMark)),
    Yes(texts.LoadText(Text::Yes)),
    No(texts.LoadText(Text::No)),
    Leq(texts.LoadText(Text::Leq)),
    Lmin(texts.LoadText(Text::Lmin)),
    Lmax(texts.LoadText(Text::Lmax)),
    Peak(texts.LoadText(Text::Peak)),
    WeightedLeq(texts.LoadText(Text::WeightedLeq)),
    WeightedLmin(texts.LoadText(Text::WeightedLmin)),
    WeightedLmax(texts.LoadText(Text::WeightedLmax)),
    WeightedPeak(texts.LoadText(Text::WeightedPeak)),
    Lepd(texts.LoadText(Text::Lepd)),
    LepdET(Lepd + texts.LoadText(Text::OfExposureTime)),
    LepdMT(Lepd + texts.LoadText(Text::OfMeasurementTime)),
    Dose(texts.LoadText(Text::DosePercent)),
    DoseET(Dose + texts.LoadText(Text::OfExposureTime)),
    DoseMT(Dose + texts.LoadText(Text::OfMeasurementTime)),
    DoseHour(texts.LoadText(Text::DosePerHour)),
    DoseHourShort(texts.LoadText(Text::DosePerHourShort)),
    ExchangeRate(texts.LoadText(Text::ExchangeRateShort)),
    SEL(texts.LoadText(Text::SoundExposureLevel)),
    LAvg(texts.LoadText(Text::LAvg)),
    TWA(texts.LoadText(Text::TWA)),
    Ltm3(texts.LoadText(Text::Ltm3)),
    Ltm5(texts.LoadText(Text::Ltm5)),
    Pa2h(texts.LoadText(Text::Pa2Hr)),
    Overload(texts.LoadText(Text::OverloadColumn)) {}

Session::Session(const std::string& companyName, Locale itsLocale, SettingsStore& itsSettings,
                 MessageInterface& itsMessages, EventPump& itsPump, Clock& itsClock, const Wording& wording) :
    brand(LoadSoftwareByFirm(companyName)),
    texts(brand, kVersion[0], kVersion[1], kVersion[2], wording),
    labels(texts),
    dateWords(dateWordsOf(texts)),
    locale(std::move(itsLocale)),
    settings(itsSettings),
    state(&itsSettings),
    messages(itsMessages),
    pump(itsPump),
    clock(itsClock),
    frame(&windowless_) {
    Options.HomePage = LoadText(Text::ContactHomePage);
    Options.HPDAddress = LoadText(Text::ContactProtectorDatabase);
}

Session::~Session() = default;

void Session::Show(const Language& language) {
    texts.Show(language);
    labels = LabelTexts(texts);
    dateWords = dateWordsOf(texts);
}

Button Session::ShowMessage(const std::string& prompt, MessageFlags flags, const std::string& title) {
    return messages.show(prompt, IsIdle() ? flags : flags | kSystemModal,
                         title.empty() ? std::string(kApplicationTitle) : title);
}

bool Session::IsIdle() const {
    bool isIdle = true;
    forEachLog(*this,
               [&](const clsLog& log) { isIdle = isIdle && !log.IntervalsLoading && !log.IntervalsRecalculating; });
    return isIdle;
}

clsFile* Session::fileById(int fileId) const {
    const auto found =
        std::find_if(OpenFiles.begin(), OpenFiles.end(), [&](const auto& file) { return file->FileId == fileId; });
    return found == OpenFiles.end() ? nullptr : found->get();
}

} // namespace kestrane
