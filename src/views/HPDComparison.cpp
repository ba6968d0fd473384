#include "views/HPDComparison.h"

#include "calc/FreqWeight.h"
#include "calc/Recalculation.h"
#include "model/Acoustics.h"
#include "model/Captions.h"
#include "model/Session.h"
#include "platform/Format.h"
#include "platform/Utf8.h"
#include "protection/RankTable.h"

#include <algorithm>
#include <array>

namespace kestrane {

namespace {

constexpr float kLimit = 87;                                          // dB
constexpr float kLoudestOrange = 80;                                  // dB
constexpr Text::Id kLevelNames[] = {Text::APL, Text::PAR, Text::ENL}; // indexed by mode
// Indexed by correction.
constexpr Text::Id kCorrectionWords[] = {Text::NoCorrection, Text::Correction2StandardDeviations,
                                         Text::Correction4Decibel, Text::Correction1StandardDeviation};
constexpr std::string_view kOctaves = "Octave"; // the method by octave bands
constexpr std::string_view kLevel = "##0.0 dB";
constexpr std::string_view kPlain = "##0.0";

// The first size characters of a text, followed by blanks when there are fewer.
std::string padded(const std::string& text, std::size_t size) {
    std::string out;
    std::size_t at = 0;
    std::size_t count = 0;
    for (; count < size && at < text.size(); ++count)
        appendUtf8(out, nextCodePoint(text, at));
    return out + std::string(size - count, ' ');
}

class Comparison {
public:
    Comparison(const clsLog& log, const clsHP& protector, const clsOptions& options, CorrectionKind correction) :
        log_(log), session_(log.session()), hp_(protector), options_(options), correction_(correction) {}

    HPDComparison build() {
        out_.LevelName = levelName(session_, options_.HPDCalc);
        out_.Method = HPDCalcMethodToUse(log_, options_, hp_);
        out_.ChartTitle = session_.LoadText(Text::ProtectorComparisonTitle) + " " + log_.Name + " / " + hp_.Name;

        struct Builder {
            std::string_view method;
            void (Comparison::*build)();
        };

        constexpr std::array<Builder, 4> kBuilders = {{{kOctaves, &Comparison::byOctaves},
                                                       {"HML", &Comparison::byHML},
                                                       {"SNR", &Comparison::bySNR},
                                                       {"NRR", &Comparison::byNRR}}};
        const auto* const builder =
            std::find_if(kBuilders.begin(), kBuilders.end(), [&](const Builder& b) { return b.method == out_.Method; });
        if (builder != kBuilders.end()) (this->*builder->build)();
        StandardJudgement judged = judgeByStandards(log_, hp_, options_, correction_, out_.Method, out_.Result);
        out_.Standard = std::move(judged.Figures);
        out_.Verdict = judged.Verdict;
        return std::move(out_);
    }

private:
    std::string text(Text::Id id) const { return session_.LoadText(id); }

    std::string number(float value, std::string_view format) const {
        return formatNumber(static_cast<double>(value), format, session_.locale);
    }

    std::string levelLabel(std::string_view weight) const {
        return ReplaceText(session_.labels.WeightedLeq, "^", std::string(weight));
    }

    void setResult(float result) {
        out_.Result = result;
        out_.Grade = gradeOf(result);
        out_.ExceedsLimit = result > kLimit;
    }

    std::string resultText() const { return number(out_.Result, kLevel); }

    std::string limitText() const {
        return out_.ExceedsLimit ? "   " + text(Text::ExceedingLimitValue) : std::string();
    }

    std::string start() const {
        const std::string method = out_.Method == kOctaves ? text(Text::OctaveMethod) : out_.Method;
        return ReplaceText(text(Text::UsingMethod), "^", method);
    }

    void byOctaves() {
        const std::unique_ptr<clsLog> converted = log_.FreqWeightA() == "Z" ? nullptr : convertedToZ(log_);
        const clsLog& log = converted ? *converted : log_;
        setResult(APL_PAR_ENL(hp_, log, options_, correction_));
        const std::array<double, 10> levels = octaveLevels(log);
        double total = 0;
        for (const double level : levels)
            total += energyOf(level);
        for (int band = 1; band <= kProtectorBands; ++band) {
            if (hp_.Mean(band) == 0) continue;
            const double level = levels[static_cast<std::size_t>(band)];
            const double with = std::max(0.0, level - assumedAttenuation(hp_, band, correction_));
            out_.Bars.push_back({std::string(protectorBand(band)) + text(Text::Hertz), static_cast<float>(level),
                                 static_cast<float>(with)});
        }
        out_.ResultLine = text(Text::OctaveBandCentreFrequency) + std::string(out_.ExceedsLimit ? 3 : 20, ' ') +
                          captioned(session_, out_.LevelName, resultText()) + limitText();
        footnote(log, static_cast<float>(levelOf(total)));
    }

    void footnote(const clsLog& log, float total) {
        out_.Footnote.push_back(padded(withColon(session_, log.LeqTextA()), 10) + padded(number(total, kLevel), 20) +
                                padded(log.OctaveType(), 30));
        out_.Footnote.push_back(
            padded(withColon(session_, text(Text::FrequencyWeightingShort)), 10) + padded(log.FreqWeightA(), 20) +
            padded(withColon(session_, text(Text::TimeWeightingShort)), 10) + padded(log.TimeWeightA(), 20));
        out_.Footnote.push_back(ReplaceText(ReplaceText(text(Text::RecordedOn), "*", log.StartDate.Format()), "^",
                                            log.StartTime.hh_mm_ss()));
        if (correction_ >= kCorrectionNone && correction_ <= kCorrectionOneDeviation)
            out_.Footnote.push_back(text(kCorrectionWords[correction_]));
    }

    void addPanel(const std::string& label, float value) { out_.Panel.emplace_back(label, number(value, kPlain)); }

    void addBar(const std::string& label, float level) { out_.Bars.push_back({label, level, 0}); }

    void byHML() {
        const std::string a = levelLabel("A");
        const std::string c = levelLabel("C");
        const float levelA = LeqFreqWA(log_);
        const float levelC = LeqFreqWC(log_);
        setResult(APL_PAR_ENL(hp_, log_, options_, correction_));
        addBar(a, levelA);
        addBar(c, levelC);
        addBar(out_.LevelName, out_.Result);
        addPanel(a, levelA);
        addPanel(c, levelC);
        addPanel(text(Text::ProtectorHigh), hp_.High);
        addPanel(text(Text::ProtectorMedium), hp_.Medium);
        addPanel(text(Text::ProtectorLow), hp_.Low);
        const bool isTight = out_.ExceedsLimit; // to make room for the text about the limit
        const std::string gap = isTight ? " " : "  ";
        const std::string comma = isTight ? ", " : ",  ";
        out_.ResultLine = start() + gap + "(" + text(Text::ProtectorHigh) + "=" + number(hp_.High, kLevel) + comma +
                          text(Text::ProtectorMedium) + "=" + number(hp_.Medium, kLevel) + comma +
                          text(Text::ProtectorLow) + "=" + number(hp_.Low, kLevel) + "), " + (isTight ? "" : "  ") + a +
                          "=" + number(levelA, kLevel) + comma + c + "=" + number(levelC, kLevel) +
                          (isTight ? withColon(session_, {}) + " " : "   :   ") + out_.LevelName + "=" + resultText() +
                          limitText();
    }

    void bySNR() {
        const std::string c = levelLabel("C");
        const float levelC = LeqFreqWC(log_);
        setResult(APL_PAR_ENL(hp_, log_, options_, correction_));
        addBar(c, levelC);
        addBar(out_.LevelName, out_.Result);
        addPanel(c, levelC);
        addPanel(text(Text::SNRMethod), hp_.SNR);
        out_.ResultLine = start() + "  " + c + "=" + number(levelC, kLevel) + "   :   " + out_.LevelName + "=" +
                          resultText() + limitText();
    }

    void byNRR() {
        const std::string weight = FreqW_NRR(log_);
        setResult(APL_PAR_ENL(hp_, log_, options_, correction_));
        addBar(levelLabel(weight), Leq_NRR(log_));
        addBar(out_.LevelName, out_.Result);
        out_.Panel.emplace_back(text(Text::FrequencyWeightingShortest), weight);
        addPanel(text(Text::DoseWord), DoseMT_NRR(log_));
        addPanel(text(Text::TWA8), TWA8CumA(log_));
        addPanel(text(Text::NRRMethod), hp_.NRR);
        clsValue dose;
        dose.Value(DoseMT_NRR(log_));
        out_.ResultLine = start() + "  " + text(Text::DoseMT) + "=" +
                          dose.Format(Zeros::Shown, Reading::Computed, "##0.0 %", session_.locale) + "   :   " +
                          out_.LevelName + "=" + resultText() + limitText();
    }

    const clsLog& log_;
    const Session& session_;
    const clsHP& hp_;
    const clsOptions& options_;
    CorrectionKind correction_;
    HPDComparison out_;
};

} // namespace

ProtectionGrade gradeOf(float level) {
    if (level >= 70 && level <= 75) return ProtectionGrade::Green;
    return level >= 65 && level <= kLoudestOrange ? ProtectionGrade::Orange : ProtectionGrade::Red;
}

std::string gradeText(const Session& session, const HPDComparison& comparison) {
    const bool isComputed = comparison.Result >= 0;
    const Verdict outside = comparison.Result > kLoudestOrange ? Verdict::Insufficient : Verdict::OverProtected;
    const Verdict verdict = comparison.Grade == ProtectionGrade::Green    ? Verdict::Good
                            : comparison.Grade == ProtectionGrade::Orange ? Verdict::Acceptable
                            : isComputed                                  ? outside
                                                                          : Verdict::None;
    return verdictText(session, verdict);
}

std::string figuresLine(const HPDComparison& comparison) {
    std::string text;
    for (const auto& [label, value] : comparison.Panel) {
        if (!text.empty()) text += "    ";
        text.append(label).append(" ").append(value);
    }
    return text;
}

std::string levelName(const Session& session, std::int16_t mode) {
    return session.LoadText(kLevelNames[std::clamp<int>(mode, eHPDModeEUHSE, eHPDModeUSNIOSH)]);
}

HPDComparison compareWithProtector(const clsLog& log, const clsHP& protector, const clsOptions& options,
                                   CorrectionKind iCorrectionFactor) {
    return Comparison(log, protector, options, iCorrectionFactor).build();
}

} // namespace kestrane
