#include "files/SoundFiles.h"

#include "files/DelimitedText.h"
#include "files/FaultPlace.h"
#include "files/RowRecord.h"
#include "model/InstrumentFamilies.h"
#include "model/LogTime.h"
#include "model/Session.h"
#include "platform/Numbers.h"
#include "platform/RuntimeError.h"
#include "platform/Trimmed.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <cctype>
#include <string>

namespace kestrane {

namespace {

const Locale kPoint; // figures have a decimal point whatever the user's locale

constexpr int kFirstBand = 2; // "31.5"; these files have no lower band
constexpr int kLastBand = 11; // "16k"

enum Kind : unsigned { NoiseAtWork = 1, Environmental = 2, Octave = 4, OldTallix = 8 };

struct FoundKind {
    Kind kind;
    std::string_view insName;
};

// The count characters from position on, which is counted from 1; fewer or none when the text ends earlier.
std::string_view characters(std::string_view text, std::size_t position, std::size_t count = std::string_view::npos) {
    return position > text.size() ? std::string_view() : text.substr(position - 1, count);
}

Kind kindOfMode(std::string_view line) {
    constexpr std::size_t kPlace = 8;
    std::string word(characters(line, kPlace, 3));
    for (char& c : word)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return word == "IND" ? NoiseAtWork : word == "ENV" ? Environmental : Octave;
}

// Raises kErrorApplication when no line states the kind.
FoundKind kindOf(std::string_view text) {
    constexpr std::size_t kModel = 5;
    std::string_view insName;
    while (const auto line = takeLine(text)) {
        const std::size_t colon = line->find(':');
        if (colon != std::string_view::npos && line->find("Instrument") != std::string_view::npos)
            return {Octave, characters(*line, colon + 3, kModel)};
        if (const std::size_t model = line->find("TR"); model != std::string_view::npos) {
            insName = line->substr(model, kModel);
            if (hasTrait(insName, Trait::NoModeLine)) return {OldTallix, insName};
            continue;
        }
        if (line->find("Mode:") != std::string_view::npos) return {kindOfMode(*line), insName};
    }
    throw RuntimeError(kErrorApplication, "No kind of sound file");
}

// Reads a level or dose, with or without its unit: "dB", or with the weighting, "dB(A)".
float level(std::string_view text) {
    text = trimmed(text);
    const std::size_t unit = text.find("dB");
    if (unit == std::string_view::npos) return figureOf(text);
    const std::string_view weighting = trimmed(text.substr(unit + 2));
    const bool isUnit = weighting.empty() || (weighting.size() == 3 && weighting[0] == '(' && weighting[2] == ')');
    if (!isUnit) raiseTypeMismatch();
    return figureOf(trimmed(text.substr(0, unit)));
}

std::int16_t digits(std::string_view text) {
    if (text.empty() || text.find_first_not_of("0123456789") != std::string_view::npos) raiseTypeMismatch();
    return toInteger(text, kPoint);
}

std::int32_t clockPart(std::string_view text, std::int16_t limit) {
    const std::int16_t part = digits(text);
    if (part >= limit) raiseTypeMismatch();
    return part;
}

// Hours are at position 8 of the token and minutes at 11; day, month and year are at 17, 20 and 23.
void takeMoment(std::string_view token, clsDate& date, clsTime& time) {
    date = {digits(characters(token, 17, 2)), digits(characters(token, 20, 2)), digits(characters(token, 23, 4))};
    if (!date.IsDate()) raiseTypeMismatch();
    time = {clockPart(characters(token, 8, 2), 24), clockPart(characters(token, 11, 2), 60), 0};
}

// The last five characters of the token are dropped. What is left is the name; its last five characters are also the
// serial number. That is meant.
void takeInstrument(clsInsData& data, std::string_view token) {
    constexpr std::size_t kSerial = 5;
    token = trimmed(token);
    if (token.size() > kSerial) token.remove_suffix(kSerial);
    data.NameX = toUtf8(token);
    data.InsName(data.NameX);
    data.InsSerial = toUtf8(token.substr(token.size() - std::min(token.size(), kSerial)));
}

// Takes the dose in front of "%"; a token without "%" states no dose.
void takeDose(clsValue& dose, std::string_view token) {
    const std::size_t percent = token.find('%');
    if (percent != std::string_view::npos) dose.Value(level(characters(token.substr(0, percent), 6)));
}

struct HeadToken {
    int number;
    unsigned kinds;
    void (*take)(clsInsData& data, clsLog& log, std::string_view token);
};

template <auto member, std::size_t position>
void takeLevel(clsInsData&, clsLog& log, std::string_view token) {
    (log.*member).Value(level(characters(token, position)));
}

template <auto member, std::size_t position>
void takeOverall(clsInsData&, clsLog& log, std::string_view token) {
    (log.*member)(0).Value(level(characters(token, position)));
}

template <int ln>
void takeLn(clsInsData&, clsLog& log, std::string_view token) {
    log.LnCumA(ln, 0).Value(level(characters(token, 5)));
}

// The tokens of the head, in the order of their numbers. Tokens at other places are not kept.
constexpr HeadToken kHead[] = {
    {3, NoiseAtWork | Environmental,
     [](clsInsData& data, clsLog&, std::string_view token) { takeInstrument(data, token); }},
    {5, NoiseAtWork | Environmental,
     [](clsInsData&, clsLog& log, std::string_view token) { log.Exchange = digits(characters(token, 12, 1)); }},
    {7, NoiseAtWork | Environmental,
     [](clsInsData&, clsLog& log, std::string_view token) { log.Criterion = digits(characters(token, 11, 2)); }},
    {11, NoiseAtWork | Environmental,
     [](clsInsData&, clsLog& log, std::string_view token) { log.Name = toUtf8(token); }},
    {17, NoiseAtWork | Environmental,
     [](clsInsData&, clsLog& log, std::string_view token) { takeMoment(token, log.StartDate, log.StartTime); }},
    {19, NoiseAtWork | Environmental,
     [](clsInsData&, clsLog& log, std::string_view token) { takeMoment(token, log.EndDate, log.EndTime); }},
    {23, NoiseAtWork | Environmental,
     [](clsInsData&, clsLog& log, std::string_view token) { log.FreqWeightA(characters(token, 21, 1)); }},
    {25, NoiseAtWork | Environmental,
     [](clsInsData&, clsLog& log, std::string_view token) { log.TimeWeightA(trimmed(characters(token, 16))); }},
    {29, NoiseAtWork | Environmental, takeOverall<&LogData::LeqCumA, 5>},
    {31, NoiseAtWork | Environmental, takeLevel<&LogData::SELCumA, 5>},
    {33, NoiseAtWork, [](clsInsData&, clsLog& log, std::string_view token) { takeDose(log.DoseETCumA, token); }},
    {33, Environmental, takeLn<1>},
    {37, NoiseAtWork, takeOverall<&LogData::LmaxCumA, 6>},
    {37, Environmental, takeLn<2>},
    {39, Environmental, takeOverall<&LogData::LmaxCumA, 7>},
    {40, NoiseAtWork, takeLevel<&LogData::PeakCumA, 6>},
    {43, Environmental, takeOverall<&LogData::LminCumA, 7>},
};

// Returns the next token; raises 62 when there is none or it may be cut off.
std::string_view takeToken(DelimitedText& tokens) {
    const auto token = tokens.next();
    if (!token || tokens.isCut()) raisePastEnd();
    return *token;
}

// Raises 13 when a token is left that is not empty, because it has no known place.
void requireNothingLeft(DelimitedText& tokens) {
    while (const auto token = tokens.next()) {
        if (!trimmed(*token).empty()) raiseTypeMismatch();
    }
}

// The seconds since midnight of a text whose first two characters are hours and whose last two are minutes.
std::int32_t secondsOf(std::string_view token) {
    constexpr std::size_t kShortest = 4;
    token = trimmed(token);
    if (token.size() < kShortest) raiseTypeMismatch();
    return clockPart(token.substr(0, 2), 24) * 3600 + clockPart(token.substr(token.size() - 2), 60) * 60;
}

// Takes rows that consist of tokensOfRow tokens each: the time, Leq, one that is not kept, Lmax, and others that are
// not kept. The last token of the last row may be missing, since it would follow the comma that ends the row.
void takeRows(DelimitedText& tokens, std::size_t tokensOfRow, IntervalColumns& rows) {
    const std::size_t most = tokens.leftAtMost() / tokensOfRow + 1;
    rows.resize(most, most);
    std::size_t row = 0;
    while (const auto time = tokens.next()) {
        if (trimmed(*time).empty()) {
            requireNothingLeft(tokens);
            break;
        }
        rows.set(rows.StartTime, row, secondsOf(*time));
        for (std::size_t i = 1; i < tokensOfRow; ++i) {
            const bool isKept = i == 1 || i == 3;
            const auto token = tokens.next();
            if (!token && i + 1 == tokensOfRow) break;
            if (!token) raisePastEnd();
            if (!isKept) continue;
            const float value = level(*token);
            rows.setLevel(i == 1 ? Quantity::LeqA : Quantity::LmaxA, 0, row, {value, value});
        }
        ++row;
    }
    rows.setCount(row);
}

// Takes a log with a head of fixed places and rows behind it.
void takeReport(Kind kind, DelimitedText& tokens, clsInsData& data, clsLog& log) {
    const bool isAtWork = kind == NoiseAtWork;
    log.LocationType(isAtWork ? NoiseAtWorkLocation : EnvironmentLocation);
    log.IsLnNumbersOn = !isAtWork;
    if (log.IsLnNumbersOn) {
        log.LnNumberA(1, 10);
        log.LnNumberA(2, 90);
    }
    constexpr std::size_t kLongest = 1000;
    int number = 0;
    for (const HeadToken& head : kHead) {
        if ((head.kinds & kind) == 0) continue;
        std::string_view token;
        for (; number < head.number; ++number)
            token = takeToken(tokens);
        if (token.size() > kLongest) raiseTypeMismatch();
        head.take(data, log, token);
    }
    const int firstRow = isAtWork ? 52 : 56;
    while (++number < firstRow && tokens.next()) {
    }
    takeRows(tokens, isAtWork ? 7 : 8, log.LogIntervals.Columns());
}

// The band of a label such as "31.5", "31.5 Hz" or "1 kHz"; 0 when these files have no such band.
int bandOf(std::string_view label) {
    constexpr std::string_view kUnit = "Hz";
    constexpr std::size_t kLongest = 16;
    if (label.size() > kLongest) return 0;
    std::string text(label);
    std::erase(text, ' ');
    if (text.ends_with(kUnit)) text.resize(text.size() - kUnit.size());
    for (int band = kFirstBand; band <= kLastBand; ++band) {
        if (text == eStr(modeFullOctave, band)) return band;
    }
    return 0;
}

// Takes a log of band levels: each level follows the label of its band and ":", and all of them are in the head. Tokens
// behind the head must be empty, because they have no known place.
void takeOctaves(DelimitedText& tokens, clsLog& log) {
    constexpr int kHeadTokens = 17;
    log.Mode(modeFullOctave);
    int found = 0;
    for (int number = 1; number <= kHeadTokens; ++number) {
        const auto token = tokens.next();
        if (!token) break;
        const std::size_t colon = token->find(':');
        const int band = colon == std::string_view::npos ? 0 : bandOf(token->substr(0, colon));
        if (band == 0) continue;
        if (tokens.isCut()) raisePastEnd();
        const std::string_view figure = token->substr(colon + 1);
        if (trimmed(figure).empty() || (found & 1 << band) != 0) raiseTypeMismatch();
        log.LeqCumA(band).Value(level(figure));
        found |= 1 << band;
    }
    for (int band = kFirstBand; band <= kLastBand; ++band) {
        if ((found & 1 << band) == 0) raiseTypeMismatch();
    }
    requireNothingLeft(tokens);
}

// Takes a file of the oldest meters. None of their figures has a known place, so only a file without figures is
// accepted.
void takeOldTallix(DelimitedText& tokens, std::string_view insName) {
    while (const auto token = tokens.next()) {
        const std::string_view word = trimmed(*token);
        if (!word.empty() && word != insName && word != "Time and date not set") raiseTypeMismatch();
    }
}

std::string stemOf(const clsFile& file) {
    const std::string name = file.ShortenedFileName();
    return name.substr(0, name.rfind('.'));
}

void add(clsFile& file, std::unique_ptr<clsInsData> data, std::unique_ptr<clsLog> log) {
    log->InsName = data->InsName();
    data->logsOf(log->Mode()).push_back(std::move(log));
    file.InstrumentDatas.push_back(std::move(data));
}

} // namespace

void ReadSoundCsv(clsFile& file, std::string_view text) {
    const auto [kind, insName] = kindOf(text);
    auto data = std::make_unique<clsInsData>(file.session());
    auto log = std::make_unique<clsLog>(file.session());
    data->InsName(toUtf8(insName));
    log->Name = stemOf(file);
    DelimitedText tokens(text);
    naming(
        [&, kind = kind, insName = insName] {
            if (kind == Octave) return takeOctaves(tokens, *log);
            if (kind == OldTallix) return takeOldTallix(tokens, insName);
            takeReport(kind, tokens, *data, *log);
        },
        [&] { return placeIn(file.session(), text, tokens.last()); });
    if (kind != Octave) {
        SetInterval(*log);
        SetSampleDates(*log);
    }
    add(file, std::move(data), std::move(log));
}

void ReadSoundFile(clsFile& file, std::string_view text) {
    auto log = std::make_unique<clsLog>(file.session());
    log->Name = stemOf(file);
    log->Mode(modeFullOctave);
    DelimitedText tokens(text);
    const auto nextWord = [&tokens] {
        std::string_view word;
        while (word.empty())
            word = trimmed(takeToken(tokens));
        return word;
    };
    naming(
        [&] {
            while (bandOf(nextWord()) != kFirstBand) {
            }
            for (int band = kFirstBand + 1; band <= kLastBand; ++band) {
                if (bandOf(nextWord()) != band) raiseTypeMismatch();
            }
            for (int band = kFirstBand; band <= kLastBand; ++band)
                log->LeqCumA(band).Value(level(nextWord()));
            requireNothingLeft(tokens);
        },
        [&] { return placeIn(file.session(), text, tokens.last()); });
    auto data = std::make_unique<clsInsData>(file.session());
    data->NameX = log->Name;
    add(file, std::move(data), std::move(log));
}

} // namespace kestrane
