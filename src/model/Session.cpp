#include "model/Session.h"

#include <algorithm>
#include <utility>

namespace kestrane {

namespace {

constexpr int kVersion[] = {KESTRANE_VERSION};

} // namespace

LabelTexts::LabelTexts(const Texts& texts) :
    YesMark(texts.LoadText(4557)),
    NoMark(texts.LoadText(4558)),
    Yes(texts.LoadText(9013)),
    No(texts.LoadText(9014)),
    Leq(texts.LoadText(9515)),
    Lmin(texts.LoadText(9516)),
    Lmax(texts.LoadText(9517)),
    Peak(texts.LoadText(9500)),
    WeightedLeq(texts.LoadText(9518)),
    WeightedLmin(texts.LoadText(9519)),
    WeightedLmax(texts.LoadText(9520)),
    WeightedPeak(texts.LoadText(9521)),
    Lepd(texts.LoadText(9501)),
    LepdET(Lepd + texts.LoadText(9502)),
    LepdMT(Lepd + texts.LoadText(9503)),
    Dose(texts.LoadText(9506)),
    DoseET(Dose + texts.LoadText(9502)),
    DoseMT(Dose + texts.LoadText(9503)),
    DoseHour(texts.LoadText(9509)),
    DoseHourShort(texts.LoadText(9510)),
    ExchangeRate(texts.LoadText(9504)),
    SEL(texts.LoadText(9505)),
    LAvg(texts.LoadText(9507)),
    TWA(texts.LoadText(9508)),
    Ltm3(texts.LoadText(9511)),
    Ltm5(texts.LoadText(9512)),
    Pa2h(texts.LoadText(9514)),
    Overload(texts.LoadText(4537)) {}

Session::Session(const std::string& companyName, Locale itsLocale, SettingsStore& itsSettings,
                 MessageInterface& itsMessages, EventPump& itsPump, Clock& itsClock) :
    brand(LoadSoftwareByFirm(companyName)),
    texts(brand, kVersion[0], kVersion[1], kVersion[2]),
    labels(texts),
    locale(std::move(itsLocale)),
    settings(itsSettings),
    messages(itsMessages),
    pump(itsPump),
    clock(itsClock),
    frame(&windowless_) {
    Options.HomePage = LoadText(10001);
    Options.HPDAddress = LoadText(10002);
}

Session::~Session() = default;

Button Session::ShowMessage(const std::string& prompt, int flags, const std::string& title) {
    return messages.show(prompt, IsIdle() ? flags : flags + kSystemModal,
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
