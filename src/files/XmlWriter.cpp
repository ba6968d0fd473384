#include "files/XmlWriter.h"

#include "files/XmlElements.h"
#include "model/Session.h"
#include "platform/Numbers.h"
#include "platform/Utf8.h"

#include <array>
#include <string_view>

namespace kestrane {

namespace {

const Locale kPlainLocale{}; // for forms that do not depend on the locale

// The tags of an element of rows, made once, because the speed of saving depends on them.
struct Tag {
    std::string open, close;

    explicit Tag(std::string_view name = {}) :
        open("<" + std::string(name) + ">"), close("</" + std::string(name) + ">") {}
};

// Writes the value forms. Each form writes nothing for its default value.
class Elements {
public:
    Elements(clsStringBuffer& out, const Locale& locale) : out_(out), locale_(locale) {}

    void text(std::string_view name, const std::string& value) {
        if (value.empty()) return;
        if (name.find("time") != std::string_view::npos && value == "00:00:00") return;
        whole(name, escapeText(value));
    }

    void integer(std::string_view name, std::int32_t value) {
        if (value != 0) whole(name, std::to_string(value));
    }

    void flag(std::string_view name, bool value) {
        if (value) whole(name, "-1");
    }

    void level(std::string_view name, float value) {
        if (value != 0) whole(name, singleText(value));
    }

    // In the locale's own notation; written even when it is 0.
    void rawLevel(std::string_view name, float value) { whole(name, localeText(value)); }

    std::string localeText(float value) const { return ReplaceText(singleText(value), ".", locale_.DecimalSeparator); }

    void date(std::string_view name, const clsDate& value) { text(name, value.Format("dd/mm/yyyy")); }

    void clock(std::string_view name, const clsTime& value) { text(name, value.hh_mm_ss()); }

    void whole(std::string_view name, std::string_view content) {
        open(name);
        out_.append(content);
        close(name);
    }

    void open(std::string_view name) {
        out_.append("<");
        out_.append(name);
        out_.append(">");
    }

    void close(std::string_view name) {
        out_.append("</");
        out_.append(name);
        out_.append(">");
    }

    void attribute(std::string_view name, const std::string& value) {
        out_.append(" ");
        out_.append(name);
        out_.append("=\"");
        out_.append(escapeText(value));
        out_.append("\"");
    }

private:
    clsStringBuffer& out_;
    const Locale& locale_;
};

// Writes levels by band as children of an element whose opening tag is given; nothing when all are 0. levelAt(band)
// returns the level.
template <class LevelAt>
void writeBands(clsStringBuffer& out, std::string_view open, std::string_view close, const std::vector<Tag>& bands,
                LevelAt levelAt) {
    bool isOpen = false;
    for (std::size_t band = 0; band < bands.size(); ++band) {
        const float value = levelAt(static_cast<int>(band));
        if (value == 0) continue;
        if (!isOpen) out.append(open);
        isOpen = true;
        out.append(bands[band].open);
        out.written(writeSingle(out.reserve(kSingleTextSize), value));
        out.append(bands[band].close);
    }
    if (isOpen) out.append(close);
}

std::vector<Tag> bandTags(LogMode mode) {
    std::vector<Tag> tags;
    for (int band = 0; band <= lastBand(mode); ++band)
        tags.emplace_back(bandElement(mode, band));
    return tags;
}

void writeBands(clsStringBuffer& out, std::string_view name, const BandValues& values, const std::vector<Tag>& bands) {
    const Tag tag(name);
    writeBands(out, tag.open, tag.close, bands, [&](int band) { return values(band).CalcValue(); });
}

// Escapes a text whose characters are written as they are, except those that would break the markup.
std::string markupEscaped(const std::string& text) {
    return ReplaceText(ReplaceText(ReplaceText(text, "&", "&amp;"), "<", "&lt;"), ">", "&gt;");
}

class LogWriter {
public:
    LogWriter(const clsLog& log, clsStringBuffer& out, clsStringBuffer& display) :
        log_(log),
        out_(out),
        display_(display),
        locale_(log.session().locale),
        put_(out, locale_),
        bands_(bandTags(log.Mode())),
        isShort_(isShortForm(log.InsName, log.FirmwareVersion)) {}

    void write(bool blnIncludeIntervals) {
        out_.append("<log");
        if (!log_.Name.empty()) put_.attribute("name", log_.Name);
        out_.append(">");
        header();
        channelA();
        if (log_.IsChannelBOn) channelB();
        if (blnIncludeIntervals) rowsAndPeaks();
        if (log_.SaveDoseCalc && !log_.DoseLogIntervals.empty()) {
            put_.open("dl-intvls");
            for (const clsDoseLogSample& sample : log_.DoseLogIntervals)
                SetTagData(sample, out_);
            put_.close("dl-intvls");
        }
        SetTagData(log_.objLogOptions, display_);
        put_.close("log");
    }

private:
    void header() {
        put_.integer("md", log_.Mode());
        put_.flag("calc", log_.FullyCalculated);
        put_.level("sl", log_.objLogOptions.ExposureTime);
        put_.integer("cri", log_.Criterion);
        put_.integer("ex", log_.Exchange);
        if (log_.Mode() == modeBroadband) put_.text("lcn", log_.LocationType());
        put_.text("note", log_.Note);
        put_.date("fdt", log_.FactoryCalibDate);
        put_.date("cdt", log_.CalibDate);
        put_.clock("ctm", log_.CalibTime);
        put_.date("sdt", log_.StartDate);
        put_.clock("stm", log_.StartTime);
        put_.date("edt", log_.EndDate);
        put_.clock("etm", log_.EndTime);
        put_.integer("mti", log_.MeasurementTimeFromInstrument);
        put_.flag("ol", log_.IsLoggingOverLoaded);
        put_.integer("interval", log_.Interval);
        if (isShort_) put_.text("region", log_.Region);
        put_.text("th", log_.Threshold);
        put_.text("rng", log_.Range);
    }

    void channelA() {
        put_.open("ca");
        put_.text("tw", log_.TimeWeightA());
        put_.text("fw", log_.FreqWeightA());
        if (isShort_) {
            shortFigures();
        } else {
            fullFigures();
        }
        if (log_.IsLnNumbersOn) lns();
        put_.close("ca");
    }

    void shortFigures() {
        for (const BandedElement& e : kBanded) {
            const float value = (log_.*e.member)(0).CalcValue();
            if (value != 0) put_.whole(e.name, "<f>" + singleText(value) + "</f>");
        }
        put_.rawLevel("lavg", log_.LAvgCumA.CalcValue());
        put_.level("le", log_.SELCumA.CalcValue());
        put_.level("lex", log_.LepdETCumA.CalcValue());
        put_.rawLevel("dose", log_.DoseHourA.CalcValue()); // this is meant: the short form has no other dose
        put_.rawLevel("dh", log_.DoseHourA.CalcValue());
        put_.rawLevel("pa2h", log_.Pa2hCumA.CalcValue());
    }

    void fullFigures() {
        for (const BandedElement& e : kBanded)
            writeBands(out_, e.name, log_.*e.member, bands_);
        put_.level("peak", log_.PeakCumA.CalcValue());
        for (const ExtremeElement& e : kExtremes) {
            put_.date(e.dateName, log_.*e.date);
            put_.clock(e.timeName, log_.*e.time);
        }
        for (const FigureElement& e : kFiguresA)
            put_.level(e.name, (log_.*e.member).CalcValue());
    }

    void lns() {
        for (int ln = 1; ln <= NumberOfLns; ++ln) {
            if (log_.LnNumberA(ln) == 0) continue;
            const std::string name(kLnNames[static_cast<std::size_t>(ln) - 1]);
            const std::string open = "<" + name + " no=\"" + std::to_string(log_.LnNumberA(ln)) + "\">";
            writeBands(out_, open, "</" + name + ">", bands_,
                       [&](int band) { return log_.LnCumA(ln, band).CalcValue(); });
        }
    }

    void channelB() {
        put_.open("cb");
        put_.text("tw", log_.TimeWeightB());
        put_.text("fw", log_.FreqWeightB());
        for (const FigureElement& e : kLevelsB)
            put_.level(e.name, (log_.*e.member).CalcValue());
        if (!isShort_) {
            for (const FigureElement& e : kFiguresB)
                put_.level(e.name, (log_.*e.member).CalcValue());
        }
        put_.close("cb");
    }

    void rowsAndPeaks() {
        if (log_.LogIntervals.Count() > 0) {
            put_.open("intvls");
            rows();
            put_.close("intvls");
            if (!log_.LogIntervals.CutIntervals.empty()) selection();
        }
        if (log_.Peaks.empty()) return;
        put_.open("peak-intvls");
        for (const clsPeak& peak : log_.Peaks)
            SetTagData(peak, out_);
        put_.close("peak-intvls");
    }

    // Writes the rows. The rows of a log carry no instrument name of their own, so they are written in the full form
    // whatever the form of the log; that is meant. They are read directly from the columns, because a row object for
    // each would cost more than all the rest of saving.
    void rows() {
        const IntervalColumns& columns = log_.LogIntervals.Columns();

        struct Banded {
            Tag tag;
            Quantity quantity;
        };

        std::vector<Banded> banded;
        banded.reserve(kBanded.size());
        for (const BandedElement& e : kBanded)
            banded.push_back({Tag(e.name), e.rows});
        std::vector<Banded> lns;
        lns.reserve(kLnNames.size());
        for (int ln = 1; ln <= NumberOfLns; ++ln)
            lns.push_back({Tag(kLnNames[static_cast<std::size_t>(ln) - 1]), lnQuantity(ln)});
        const auto write = [&](const Banded& b, std::size_t row) {
            writeBands(out_, b.tag.open, b.tag.close, bands_,
                       [&](int band) { return columns.level(b.quantity, band, row).CalcValue; });
        };
        const auto figure = [&](std::string_view name, Quantity quantity, std::size_t row) {
            const float value = columns.level(quantity, 0, row).CalcValue;
            if (value == 0) return;
            put_.open(name);
            out_.written(writeSingle(out_.reserve(kSingleTextSize), value));
            put_.close(name);
        };
        for (std::size_t row = 0; row < columns.count(); ++row) {
            put_.open("intvl");
            date(columns.StartDate.at(row));
            time("time", columns.StartTime.at(row));
            put_.open("ca");
            for (const Banded& b : banded)
                write(b, row);
            figure("peak", Quantity::PeakA, row);
            time("lmintm", columns.LminTimeA.at(row));
            time("lmaxtm", columns.LmaxTimeA.at(row));
            time("peaktm", columns.PeakTimeA.at(row));
            for (const RowElement& e : kRowFiguresA)
                figure(e.name, e.quantity, row);
            put_.flag("ol", columns.OverloadedA.at(row) != 0);
            for (const Banded& b : lns)
                write(b, row);
            put_.close("ca");
            if (log_.IsChannelBOn) {
                put_.open("cb");
                for (const RowElement& e : kRowFiguresB)
                    figure(e.name, e.quantity, row);
                put_.flag("ol", columns.OverloadedB.at(row) != 0);
                put_.close("cb");
            }
            put_.close("intvl");
        }
    }

    // The date of a row is usually the same as that of the row before.
    void date(CalendarTime value) {
        if (value != lastDate_) {
            clsDate parts;
            if (value != 0) {
                const CivilDate civil = toCivil(value);
                parts = {static_cast<std::int16_t>(civil.Day), static_cast<std::int16_t>(civil.Month),
                         static_cast<std::int16_t>(civil.Year)};
            }
            const std::string text = parts.Format("dd/mm/yyyy");
            lastDateElement_ = text.empty() ? std::string() : "<date>" + escapeText(text) + "</date>";
            lastDate_ = value;
        }
        out_.append(lastDateElement_);
    }

    void time(std::string_view name, std::int32_t seconds) {
        clsTime value;
        value.setTimeFromSeconds(seconds);
        if (name == "time" && seconds == 0) return;
        if (seconds < 0 || seconds >= 360000) return put_.clock(name, value);
        put_.open(name);
        char* at = out_.reserve(8);
        const auto two = [&](std::int32_t part) {
            *at++ = static_cast<char>('0' + part / 10);
            *at++ = static_cast<char>('0' + part % 10);
        };
        two(value.Hours);
        *at++ = ':';
        two(value.Mins);
        *at++ = ':';
        two(value.Secs);
        out_.written(at);
        put_.close(name);
    }

    void selection() {
        out_.append(log_.LogIntervals.IntervalsToBeIncluded ? "<cutintvls incl=\"true\">"
                                                            : "<cutintvls incl=\"false\">");
        for (const std::string& range : log_.LogIntervals.CutIntervals)
            put_.whole("cutintvl", markupEscaped(range));
        put_.close("cutintvls");
    }

    const clsLog& log_;
    clsStringBuffer& out_;
    clsStringBuffer& display_; // receives the display options; usually the same object as out_
    const Locale& locale_;
    Elements put_;
    std::vector<Tag> bands_;
    bool isShort_;
    CalendarTime lastDate_ = 0;
    std::string lastDateElement_;
};

} // namespace

std::string_view bandElement(LogMode mode, int band) {
    static const auto kNames = [] {
        std::array<std::vector<std::string>, 3> names;
        for (const LogMode m : kLogModes) {
            for (int b = 0; b <= lastBand(m); ++b) {
                std::string name(eStr(m, b));
                for (char& c : name)
                    c = c == 'k' ? 'K' : c;
                names[static_cast<std::size_t>(m)].push_back("f" + name);
            }
        }
        return names;
    }();
    return kNames[static_cast<std::size_t>(mode)][static_cast<std::size_t>(band)];
}

std::string escapeText(std::string text) {
    constexpr std::pair<std::string_view, std::string_view> kEscapes[] = {
        {"'", "&#39;"}, {"\"", "&quot;"}, {"&", "&amp;"}, {"/", "&#47;"}, {"<", "&lt;"},
        {">", "&gt;"},  {"|", "&#124;"},  {"\r\n", " "},  {"\n", " "}};
    for (const auto& [plain, escaped] : kEscapes)
        text = ReplaceText(std::move(text), plain, escaped);
    std::string ascii;
    for (std::size_t at = 0; at < text.size();) {
        const char32_t c = nextCodePoint(text, at);
        if (c == 0xFFFE || c == 0xFFFF || (c < 0x20 && c != '\t')) {
            ascii += ' ';
        } else if (c < 0x7F) {
            ascii += static_cast<char>(c);
        } else {
            ascii += "&#" + std::to_string(static_cast<std::uint32_t>(c)) + ";";
        }
    }
    return ascii;
}

void SetTagData(const clsPeak& peak, clsStringBuffer& out) {
    Elements put(out, kPlainLocale);
    put.open("peak-intvl");
    put.clock("peaktm", peak.PeakTime);
    put.level("duration", peak.SampleDuration);
    put.close("peak-intvl");
}

void SetTagData(const clsDoseLogSample& sample, clsStringBuffer& out) {
    Elements put(out, kPlainLocale);
    put.open("dl-intvl");
    put.integer("cri", sample.Criterion);
    put.integer("ex", sample.Exchange);
    put.date("date", sample.SampleDate);
    put.clock("time", sample.SampleTime);
    put.text("note", sample.Note);
    put.level("leq", sample.Leq.Value());
    put.clock("duration", sample.Duration);
    put.flag("is-included", sample.IsIncluded);
    put.close("dl-intvl");
}

void SetTagData(const clsLogOptions& options, clsStringBuffer& out) {
    Elements put(out, kPlainLocale);
    put.open("disp");
    for (const LogChannel channel : kChannels) {
        for (const FigureKind kind : kFigureKinds) {
            const std::string suffix = "-" + std::to_string(channel) + "-" + std::to_string(kind);
            for (const Parameter p : kDisplayOrder) {
                put.flag(std::string(parameterInfo(p).displayElement) + suffix, options.IsPlotted(channel, kind, p));
            }
        }
    }
    put.close("disp");
}

void SetTagData(const clsLogInterval& row, bool bChannelBOn, const Locale& locale, clsStringBuffer& out) {
    Elements put(out, locale);
    const std::vector<Tag> bands = bandTags(row.Mode());
    const bool isShort = isShortForm(row.InsName, row.FirmwareVersion);
    put.open("intvl");
    put.date("date", row.StartDate);
    put.clock("time", row.StartTime);
    put.open("ca");
    if (isShort) {
        put.rawLevel("leq", row.LeqA(0).CalcValue());
        put.rawLevel("lmin", row.LminA(0).CalcValue());
        put.rawLevel("lmax", row.LmaxA(0).CalcValue());
        put.level("lex", row.LepdA.CalcValue());
        put.level("le", row.SELA.CalcValue());
        put.flag("ol", row.OverloadedA);
        for (int ln = 1; ln <= 3; ++ln) {
            put.whole(kLnNames[static_cast<std::size_t>(ln) - 1],
                      "<f>" + put.localeText(row.LnA(ln, 0).CalcValue()) + "</f>");
        }
    } else {
        writeBands(out, "leq", row.LeqA, bands);
        writeBands(out, "lmin", row.LminA, bands);
        writeBands(out, "lmax", row.LmaxA, bands);
        put.level("peak", row.PeakA.CalcValue());
        put.clock("lmintm", row.LminTimeA);
        put.clock("lmaxtm", row.LmaxTimeA);
        put.clock("peaktm", row.PeakTimeA);
        put.level("dose", row.DoseA.CalcValue());
        put.level("lex", row.LepdA.CalcValue());
        put.level("le", row.SELA.CalcValue());
        put.level("ltm3", row.Ltm3A.CalcValue());
        put.level("ltm5", row.Ltm5A.CalcValue());
        put.level("pa2h", row.Pa2hA.CalcValue());
        put.flag("ol", row.OverloadedA);
        for (int ln = 1; ln <= NumberOfLns; ++ln)
            writeBands(out, kLnNames[static_cast<std::size_t>(ln) - 1], row.LnA.of(ln), bands);
    }
    put.close("ca");
    if (bChannelBOn) {
        put.open("cb");
        put.level("leq", row.LeqB.CalcValue());
        put.level("lmin", row.LminB.CalcValue());
        put.level("lmax", row.LmaxB.CalcValue());
        put.level("peak", row.PeakB.CalcValue());
        if (!isShort) {
            put.level("dose", row.DoseB.CalcValue());
            put.level("lex", row.LepdB.CalcValue());
            put.level("le", row.SELB.CalcValue());
            put.level("pa2h", row.Pa2hB.CalcValue());
        }
        put.flag("ol", row.OverloadedB);
        put.close("cb");
    }
    put.close("intvl");
}

namespace {

void writeCollection(const clsInsData& data, bool blnIncludeIntervals, clsStringBuffer& out, clsStringBuffer& display) {
    Elements put(out, data.session().locale);
    put.open("instrument-data");
    out.append("<instrument-detail");
    put.attribute("name", data.NameX);
    put.attribute("instrument-name", data.InsName());
    put.attribute("instrument-serial", data.InsSerial);
    put.attribute("instrument-type", std::to_string(data.InsType));
    if (data.FirmwareVersion != 0) put.attribute("instrument-firmware", singleText(data.FirmwareVersion));
    out.append("/>");
    if (data.hasLogs()) {
        put.open("logs");
        forEachLog(data, [&](const clsLog& log) { LogWriter(log, out, display).write(blnIncludeIntervals); });
        put.close("logs");
    }
    put.close("instrument-data");
}

void writeDocument(const clsFile& file, bool blnIncludeIntervals, clsStringBuffer& out, clsStringBuffer& display) {
    out.append("<?xml version=\"1.0\"?><instruments>");
    for (const auto& data : file.InstrumentDatas)
        writeCollection(*data, blnIncludeIntervals, out, display);
    out.append("</instruments>");
}

} // namespace

void SetTagData(const clsLog& log, bool blnIncludeIntervals, clsStringBuffer& out) {
    LogWriter(log, out, out).write(blnIncludeIntervals);
}

void SetTagData(const clsInsData& data, bool blnIncludeIntervals, clsStringBuffer& out) {
    writeCollection(data, blnIncludeIntervals, out, out);
}

void SetTagData(const clsFile& file, bool blnIncludeIntervals, clsStringBuffer& out) {
    writeDocument(file, blnIncludeIntervals, out, out);
}

DocumentMark MarkOf(const clsFile& file) {
    constexpr std::uint64_t kBasis = 14695981039346656037U; // the start value of the Fowler-Noll-Vo hash
    constexpr std::uint64_t kPrime = 1099511628211U;
    DocumentMark mark{kBasis, kBasis};
    const auto hashInto = [](std::uint64_t& hash) {
        return [&hash](std::string_view piece) {
            for (const char c : piece)
                hash = (hash ^ static_cast<unsigned char>(c)) * kPrime;
        };
    };
    clsStringBuffer rest(hashInto(mark.rest)), display(hashInto(mark.display));
    writeDocument(file, false, rest, display);
    rest.flush();
    display.flush();
    return mark;
}

std::string DocumentText(const clsFile& file, bool blnIncludeIntervals) {
    clsStringBuffer out;
    SetTagData(file, blnIncludeIntervals, out);
    return out.getString();
}

} // namespace kestrane
