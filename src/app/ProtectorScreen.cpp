#include "app/ProtectorScreen.h"

#include "app/DownloadHPD.h"
#include "calc/FreqWeight.h"
#include "model/Session.h"
#include "model/SettingsText.h"
#include "platform/Format.h"
#include "platform/Numbers.h"
#include "platform/Paths.h"
#include "platform/RuntimeError.h"
#include "platform/Trimmed.h"
#include "protection/Attenuation.h"
#include "protection/RankTable.h"
#include "views/HPDComparison.h"

#include <algorithm>
#include <filesystem>

namespace kestrane {

namespace {

constexpr std::string_view kFormat = "##0.0";
constexpr std::string_view kCorrectionKey = "Correction";
constexpr Text::Id kCorrectionTexts[] = {Text::CorrectionNone, Text::Correction2StdDevs, Text::Correction4dB,
                                         Text::Correction1StdDev}; // indexed by correction
constexpr Text::Id kTypes[] = {Text::Earplug, Text::Earmuff};

using Bands = ProtectorEntries::Bands;

// The name as one line, because a record of the file is a line.
std::string nameOf(std::string entry) {
    std::replace_if(
        entry.begin(), entry.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
    return std::string(trimmed(entry));
}

std::optional<float> numberOf(std::string_view entry, const Locale& locale) {
    if (!isNumeric(entry, locale)) return std::nullopt;
    try {
        return toSingle(entry, locale);
    } catch (const RuntimeError&) { // too large for a single
        return std::nullopt;
    }
}

// A group of boxes and the message when one of them is no number, in the order of the checks.
struct NumericBoxes {
    Text::Id fault;
    std::vector<const std::string*> entries;
};

std::vector<NumericBoxes> numericBoxes(const ProtectorEntries& entries) {
    const auto both = [](const Bands& a, const Bands& b) {
        std::vector<const std::string*> all;
        for (const Bands* bands : {&a, &b})
            for (const std::string& entry : *bands)
                all.push_back(&entry);
        return all;
    };
    return {{Text::MeansNotNumeric, both(entries.Mean, entries.MeanUS)},
            {Text::DeviationsNotNumeric, both(entries.SD, entries.SDUS)},
            {Text::HMLNotNumeric, {&entries.HML[0], &entries.HML[1], &entries.HML[2]}},
            {Text::SNRNotNumeric, {&entries.SNR}},
            {Text::NRRNotNumeric, {&entries.NRR}}};
}

// Calls visit(entry, figure) for every numeric box and the figure that it stands for.
template <class Entries, class Protector, class Visit>
void forEachNumber(Entries& entries, Protector& hp, Visit visit) {
    for (int band = 1; band <= kProtectorBands; ++band) {
        const auto i = static_cast<std::size_t>(band) - 1;
        visit(entries.Mean[i], hp.Mean(band));
        visit(entries.SD[i], hp.SD(band));
        visit(entries.MeanUS[i], hp.MeanUS(band));
        visit(entries.SDUS[i], hp.SDUS(band));
    }
    visit(entries.HML[0], hp.High);
    visit(entries.HML[1], hp.Medium);
    visit(entries.HML[2], hp.Low);
    visit(entries.SNR, hp.SNR);
    visit(entries.NRR, hp.NRR);
}

CorrectionKind readCorrection(const Session& session) {
    const std::string text = session.settings.read(kPreferences, kCorrectionKey, {});
    for (const CorrectionKind correction : kCorrections)
        if (text == std::to_string(correction)) return correction;
    return correctionOf(session, text, session.Options.HPDCalc);
}

} // namespace

ProtectorScreen::ProtectorScreen(Session& session) :
    session_(session), collection_(*session.protectors), isUS_(session.Options.IsUSHPDMode()) {}

ProtectorScreen::ProtectorScreen(Session& session, const clsLog& log) : ProtectorScreen(session) {
    log_ = &log;
    correction_ = readCorrection(session);
    if (!log.IsOctaveLog() || log.FreqWeightA() == "Z") return;
    linear_ = std::make_unique<clsLog>(session);
    linear_->Copy(log, 0, 0);
    AdjustFreqWeight(*linear_, "Z", false);
}

ProtectorScreen::~ProtectorScreen() = default;

std::vector<std::string> ProtectorScreen::Captions() const {
    std::vector<std::string> captions;
    for (const Text::Id text : {Text::ProtectorName, Text::ProtectorType, Text::OctaveMethod})
        captions.push_back(session_.LoadText(text));
    if (isUS_) {
        captions.push_back(session_.LoadText(Text::NRRMethod));
    } else {
        captions.push_back(session_.LoadText(Text::HMLMethod));
        captions.push_back(session_.LoadText(Text::SNRMethod));
    }
    if (IsSelection()) {
        captions.push_back(levelName(session_, session_.Options.HPDCalc));
        captions.push_back(session_.LoadText(Text::FigureVerdict));
    }
    return captions;
}

std::vector<ProtectorCell> ProtectorScreen::Cells(const clsHP& hp) const {
    const auto figure = [this](bool isThere, float value) {
        return isThere ? ProtectorCell{shownNumber(value), value} : ProtectorCell{};
    };
    const bool hasOctaves = isUS_ ? hp.HasOctavesUS() : hp.HasOctaves();
    std::vector<ProtectorCell> cells = {{hp.Name, {}},
                                        {session_.LoadText(kTypes[hp.Tipe == 1 ? 1 : 0]), {}},
                                        {hasOctaves ? session_.labels.Yes : std::string(), {}}};
    if (isUS_) {
        cells.push_back(figure(hp.HasNRR(), hp.NRR));
    } else {
        const std::string hml = shownNumber(hp.High) + " / " + shownNumber(hp.Medium) + " / " + shownNumber(hp.Low);
        cells.push_back(hp.HasHML() ? ProtectorCell{hml, hp.Medium} : ProtectorCell{});
        cells.push_back(figure(hp.HasSNR(), hp.SNR));
    }
    if (IsSelection()) {
        const std::optional<float> result = level(hp);
        cells.push_back(figure(result.has_value(), result.value_or(0)));
        const Verdict verdict =
            judgeByStandards(*log_, hp, session_.Options, correction_, HPDCalcMethodToUse(*log_, session_.Options, hp),
                             result.value_or(kCannotCompute))
                .Verdict;
        cells.push_back({verdictText(session_, verdict), static_cast<float>(verdict), verdict});
    }
    return cells;
}

std::vector<std::string> ProtectorScreen::Corrections() const {
    std::vector<std::string> texts;
    for (const Text::Id text : kCorrectionTexts)
        texts.push_back(session_.LoadText(text));
    return texts;
}

void ProtectorScreen::SetCorrection(const std::string& text) {
    correction_ = correctionOf(session_, text, session_.Options.HPDCalc);
}

std::optional<float> ProtectorScreen::level(const clsHP& hp) const {
    const bool isByOctaves = HPDCalcMethodToUse(*log_, session_.Options, hp) == "Octave";
    const clsLog& log = isByOctaves && linear_ != nullptr ? *linear_ : *log_;
    const float result = APL_PAR_ENL(hp, log, session_.Options, correction_);
    return result == -1 ? std::nullopt : std::optional(result);
}

std::string ProtectorScreen::shownNumber(float value) const {
    return formatNumber(static_cast<double>(value), kFormat, session_.locale);
}

ProtectorEntries ProtectorScreen::EntriesOf(const clsHP* protector) const {
    ProtectorEntries entries;
    const clsHP hp = protector == nullptr ? clsHP() : *protector;
    entries.Name = hp.Name;
    if (protector != nullptr) entries.Type = hp.GetTipeStr();
    forEachNumber(entries, hp, [this](std::string& entry, float figure) { entry = shownNumber(figure); });
    return entries;
}

std::string ProtectorScreen::AcceptedNumber(const std::string& entry, const std::string& before) const {
    const std::optional<float> number = numberOf(trimmed(entry), session_.locale);
    return number ? shownNumber(*number) : before;
}

Text::Id ProtectorScreen::faultOf(const ProtectorEntries& entries, const clsHP* self) const {
    const std::string name = nameOf(entries.Name);
    if (name.empty()) return Text::NameNotEntered;
    const auto isTaken = [&](const clsHP& other) { return &other != self && other.Name == name; };
    if (self != nullptr && std::any_of(Protectors().begin(), Protectors().end(), isTaken)) return Text::NameInUse;
    if (entries.Type.empty()) return Text::TypeNotEntered;
    for (const NumericBoxes& boxes : numericBoxes(entries))
        for (const std::string* entry : boxes.entries)
            if (!numberOf(trimmed(*entry), session_.locale)) return boxes.fault;
    return Text::None;
}

// Stores the entries in the record. A figure whose entry has not been changed keeps the decimals that are not shown.
void ProtectorScreen::take(const ProtectorEntries& entries, clsHP& hp) const {
    hp.Name = nameOf(entries.Name);
    hp.SetTipeFromStr(entries.Type);
    forEachNumber(entries, hp, [this](const std::string& entry, float& figure) {
        if (trimmed(entry) != shownNumber(figure)) figure = numberOf(trimmed(entry), session_.locale).value_or(figure);
    });
}

clsHP ProtectorScreen::Draft(const ProtectorEntries& entries) const {
    clsHP draft;
    take(entries, draft);
    return draft;
}

std::optional<std::size_t> ProtectorScreen::Store(const ProtectorEntries& entries, std::optional<std::size_t> index) {
    if (IsReadOnly()) return std::nullopt;
    std::vector<clsHP>& records = collection_.Protectors;
    if (const Text::Id fault = faultOf(entries, index ? &records.at(*index) : nullptr); fault != Text::None) {
        session_.ShowMessage(session_.LoadText(fault), kIconExclamation);
        return std::nullopt;
    }
    if (!index) {
        const std::string name = nameOf(entries.Name);
        const auto same =
            std::find_if(records.begin(), records.end(), [&](const clsHP& record) { return record.Name == name; });
        const std::string question = ReplaceText(session_.LoadText(Text::AskReplace), "^", name);
        if (same != records.end() &&
            session_.ShowMessage(question, kButtonsOkCancel | kIconQuestion | kDefaultSecond) != Button::Ok)
            return std::nullopt;
        index = static_cast<std::size_t>(same - records.begin());
        if (same == records.end()) {
            int last = 0;
            for (const clsHP& record : records)
                last = std::max(last, record.HPDId);
            records.emplace_back().HPDId = last + 1;
        }
    }
    take(entries, records[*index]);
    collection_.IsChanged = true;
    return index;
}

bool ProtectorScreen::Delete(std::size_t index) {
    if (IsReadOnly()) return false;
    if (session_.ShowMessage(session_.LoadText(Text::AreYouSure), kButtonsOkCancel | kIconQuestion | kDefaultSecond) !=
        Button::Ok)
        return false;
    collection_.Protectors.erase(collection_.Protectors.begin() + static_cast<std::ptrdiff_t>(index));
    collection_.IsChanged = true;
    return true;
}

bool ProtectorScreen::MayLose(const ProtectorEntries& entries, const clsHP* protector) const {
    return entries == EntriesOf(protector) ||
           session_.ShowMessage(session_.LoadText(Text::LoseChanges), kButtonsOkCancel | kIconQuestion) == Button::Ok;
}

std::optional<ProtectorChoice> ProtectorScreen::Choose(std::size_t index) const {
    const clsHP& hp = Protectors().at(index);
    if (level(hp)) return ProtectorChoice{hp, correction_};
    session_.ShowMessage(ReplaceText(session_.LoadText(Text::CorrectionNotPossible), "^", Captions().back()),
                         kIconExclamation);
    return std::nullopt;
}

void ProtectorScreen::writeSafely(const std::function<void()>& write) const {
    try {
        write();
    } catch (const RuntimeError& error) {
        session_.ShowMessage(std::to_string(error.Number) + ": " + error.what(), kIconExclamation);
    }
}

void ProtectorScreen::SaveReadable(const AskText& askName) const {
    const std::filesystem::path file = pathOf(collection_.File);
    const std::string proposal =
        (file.parent_path() / file.stem()).generic_string() + "_readable" + file.extension().string();
    const std::optional<std::string> name = askName(session_.LoadText(Text::SaveReadableRecords), proposal);
    if (name) writeSafely([&] { kestrane::SaveReadable(session_, collection_, *name); });
}

void ProtectorScreen::KeepDamaged() {
    writeSafely([this] {
        const std::string kept = keepDamagedFile(collection_.File);
        collection_.Damage.clear();
        collection_.IsChanged = true; // what has been read must still be saved over the damaged file
        session_.ShowMessage(ReplaceText(session_.LoadText(Text::DamagedFileKept), "^", kept), kIconInformation);
    });
}

void ProtectorScreen::Close() {
    if (IsSelection()) {
        writeSafely([this] { session_.settings.write(kPreferences, kCorrectionKey, std::to_string(correction_)); });
    } else if (collection_.IsChanged && !IsReadOnly()) {
        writeSafely([this] {
            keepOldDatabase(collection_.File, collection_.File);
            saveProtectors(collection_.File, collection_.Protectors);
            collection_.IsChanged = false;
        });
    }
}

} // namespace kestrane
