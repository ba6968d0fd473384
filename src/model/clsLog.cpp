#include "model/clsLog.h"

#include "model/InstrumentFamilies.h"
#include "model/Session.h"
#include "platform/RuntimeError.h"

#include <cctype>

namespace kestrane {

namespace {

struct Word {
    std::string_view typed; // upper case
    std::string_view stored;
};

constexpr Word kFrequencyWeights[] = {{"A", "A"}, {"C", "C"}, {"Z", "Z"}, {"LIN", "Z"}, {"LINEAR", "Z"}};
constexpr Word kTimeWeights[] = {
    {"FAST", "Fast"}, {"SLOW", "Slow"}, {"IMPULSE", "Impulse"}, {"IMP", "Impulse"}, {"10MS", "10ms"}};

template <std::size_t N>
std::string storedWord(std::string_view text, const Word (&words)[N]) {
    std::string upper(text);
    for (char& c : upper)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    for (const Word& word : words) {
        if (word.typed == upper) return std::string(word.stored);
    }
    return {};
}

struct DurationWords {
    Text::Id singular;
    Text::Id plural;
};

constexpr DurationWords kHours = {Text::OneHour, Text::Hours};
constexpr DurationWords kMins = {Text::OneMinute, Text::Minutes};
constexpr DurationWords kSecs = {Text::OneSecond, Text::Seconds};

} // namespace

std::int16_t LogData::LnNumberA(int ln) const {
    if (ln < 1 || ln > NumberOfLns) raiseIndexOutOfRange();
    return lnNumbers_[static_cast<std::size_t>(ln) - 1];
}

void LogData::LnNumberA(int ln, std::int16_t number) {
    if (ln < 1 || ln > NumberOfLns) raiseIndexOutOfRange();
    lnNumbers_[static_cast<std::size_t>(ln) - 1] = number;
}

clsLog::clsLog(Session& session) : objLogShared(std::make_shared<clsLogShared>()), session_(session) {
    objLogOptions.Copy(session.Options.objLogOptions);
    LogIntervals.Initialize(objLogShared);
}

void clsLog::RaiseLogValuesChanged() const {
    session_.frame->LogValuesChanged(*this);
}

void clsLog::Mode(LogMode mode) {
    objLogShared->Mode(mode);
    lnNumbers_.fill(0);
    LeqCumA.setMode(mode);
    LminCumA.setMode(mode);
    LmaxCumA.setMode(mode);
    LnCumA.setMode(mode);
}

std::string clsLog::ModeText() const {
    constexpr Text::Id kIds[] = {Text::BroadbandMode, Text::FullOctaveMode, Text::ThirdOctaveMode};
    return session_.LoadText(kIds[Mode()]);
}

std::string clsLog::ModeWord() const {
    constexpr Text::Id kIds[] = {Text::FileWordBroadband, Text::FileWordFullOctave, Text::FileWordThirdOctave};
    return session_.LoadText(kIds[Mode()]);
}

std::string clsLog::LocationType() const {
    return has(Trait::LocationFollowsModel) ? std::string() : objLogShared->LocationType;
}

std::string clsLog::TestLocationType() const {
    if (!objLogShared->LocationType.empty()) return objLogShared->LocationType;
    if (!has(Trait::LocationFollowsModel)) return {};
    return std::string(has(Trait::WorkOnly) ? NoiseAtWorkLocation : EnvironmentLocation);
}

void clsLog::FreqWeightA(std::string_view text) {
    freqWeightA_ = storedWord(text, kFrequencyWeights);
}

void clsLog::FreqWeightB(std::string_view text) {
    freqWeightB_ = storedWord(text, kFrequencyWeights);
}

void clsLog::TimeWeightA(std::string_view text) {
    timeWeightA_ = storedWord(text, kTimeWeights);
}

void clsLog::TimeWeightB(std::string_view text) {
    timeWeightB_ = storedWord(text, kTimeWeights);
}

std::string clsLog::levelText(const std::string& weight, const std::string& pattern, const std::string& plain) const {
    return weight.empty() ? plain : ReplaceText(pattern, "^", weight);
}

std::string clsLog::LeqTextA() const {
    return levelText(freqWeightA_, session_.labels.WeightedLeq, session_.labels.Leq);
}

std::string clsLog::LminTextA() const {
    return levelText(freqWeightA_, session_.labels.WeightedLmin, session_.labels.Lmin);
}

std::string clsLog::LmaxTextA() const {
    return levelText(freqWeightA_, session_.labels.WeightedLmax, session_.labels.Lmax);
}

std::string clsLog::PeakTextA() const {
    return levelText(freqWeightA_, session_.labels.WeightedPeak, session_.labels.Peak);
}

std::string clsLog::LeqTextB() const {
    return IsChannelBOn ? levelText(freqWeightB_, session_.labels.WeightedLeq, session_.labels.Leq) : std::string();
}

std::string clsLog::LminTextB() const {
    return IsChannelBOn ? levelText(freqWeightB_, session_.labels.WeightedLmin, session_.labels.Lmin) : std::string();
}

std::string clsLog::LmaxTextB() const {
    return IsChannelBOn ? levelText(freqWeightB_, session_.labels.WeightedLmax, session_.labels.Lmax) : std::string();
}

std::string clsLog::PeakTextB() const {
    return IsChannelBOn ? levelText(freqWeightB_, session_.labels.WeightedPeak, session_.labels.Peak) : std::string();
}

std::string clsLog::IsLnNumbersOnText() const {
    return IsLnNumbersOn ? session_.labels.Yes : session_.labels.No;
}

std::string clsLog::IsLoggingOverLoadedText() const {
    return IsLoggingOverLoaded ? session_.labels.Yes : session_.labels.No;
}

std::string clsLog::IntervalText() const {
    const std::int64_t seconds = Interval > 0 ? Interval : 0;
    return DurationText(session_, seconds / 3600, seconds / 60 % 60, seconds % 60);
}

bool clsLog::IsBrevikMeter() const {
    return kestrane::IsBrevikMeter(InsName);
}

bool clsLog::IsBrevikEMeter() const {
    return kestrane::IsBrevikE(InsName);
}

bool clsLog::IsBrevikSMeter() const {
    return kestrane::IsBrevikS(InsName);
}

bool clsLog::IsBrevikSEMeter() const {
    return kestrane::IsBrevikSE(InsName);
}

bool clsLog::IsHalcyrMeter() const {
    return kestrane::IsHalcyrMeter(InsName);
}

bool clsLog::IsHalcyrMeter116E() const {
    return kestrane::IsHalcyrMeter116E(InsName);
}

bool clsLog::IsHalcyrDoseMeter() const {
    return kestrane::IsHalcyrDoseMeter(InsName);
}

bool clsLog::IsOldDoseMeter() const {
    return kestrane::IsOldDoseMeter(InsName);
}

void clsLog::Copy(const clsLog& objPrevLog, std::int64_t intStart, std::int64_t intEnd) {
    if (objPrevLog.IntervalsToLoad) throw RuntimeError(kErrorApplication, session_.LoadText(Text::StillLoading));
    static_cast<LogData&>(*this) = static_cast<const LogData&>(objPrevLog);
    objLogShared = std::make_shared<clsLogShared>(*objPrevLog.objLogShared);
    LogIntervals.Initialize(objLogShared);
    LogIntervals.Copy(objPrevLog.LogIntervals, intStart, intEnd);
    HasUnreadIntervals = objPrevLog.HasUnreadIntervals;
    RecalcMode = objPrevLog.RecalcMode;
    OverwriteStoredValues = objPrevLog.OverwriteStoredValues;
    DoseLogIntervals.clear();
    for (const clsDoseLogSample& row : objPrevLog.DoseLogIntervals)
        DoseLogIntervals.emplace_back().Copy(row);
    if (intStart == 0) return;
    const clsLogInterval first = objPrevLog.LogIntervals.Item(intStart);
    const clsLogInterval last = objPrevLog.LogIntervals.Item(intEnd);
    StartDate = first.StartDate;
    StartTime = first.StartTime;
    EndDate = last.StartDate;
    EndTime = last.StartTime;
    MeasurementTimeFromInstrument = 0;
    takeReportedFigures();
}

void clsLog::takeReportedFigures() {
    const auto take = [](clsValue& value) { value.Value(value.Value()); };
    for (BandValues* values : {&LeqCumA, &LminCumA, &LmaxCumA})
        values->forEach(take);
    LnCumA.forEach(take);
    for (clsValue* value :
         {&PeakCumA,   &DoseETCumA, &DoseMTCumA, &DoseHourA,  &LepdETCumA, &LepdMTCumA, &SELCumA,  &Pa2hCumA,
          &LAvgCumA,   &TWACumA,    &Ltm3CumA,   &Ltm5CumA,   &LeqCumB,    &LminCumB,   &LmaxCumB, &PeakCumB,
          &DoseETCumB, &DoseMTCumB, &LepdETCumB, &LepdMTCumB, &SELCumB,    &DoseHourB,  &Pa2hCumB}) {
        take(*value);
    }
}

bool clsLog::Warn() const {
    constexpr std::int64_t kRows[] = {1000, 500, 300};
    return LogIntervals.Count() > kRows[Mode()];
}

std::string LongDate(const Session& session, const clsDate& date) {
    return date.Format().empty() ? std::string() : formatDate(date.getDate(), "long date", session.dateWords);
}

std::string DurationText(const Session& session, std::int64_t hours, std::int64_t mins, std::int64_t secs) {
    std::string text;
    const auto add = [&](std::int64_t count, const DurationWords& words) {
        if (count <= 0) return;
        if (!text.empty()) text += ' ';
        text += count == 1 ? session.LoadText(words.singular)
                           : ReplaceText(session.LoadText(words.plural), "*", std::to_string(count));
    };
    add(hours, kHours);
    add(mins, kMins);
    add(secs, kSecs);
    return text;
}

} // namespace kestrane
