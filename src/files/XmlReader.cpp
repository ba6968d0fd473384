#include "files/XmlReader.h"

#include "files/FaultPlace.h"
#include "files/XmlElements.h"
#include "files/XmlIntervals.h"
#include "files/XmlValues.h"
#include "model/InstrumentFamilies.h"
#include "model/Session.h"
#include "platform/RuntimeError.h"
#include "resources/Texts.h"

#include <cmath>
#include <vector>

namespace kestrane {

namespace {

// The texts of one element, all looked up in one pass.
class NodeTexts {
public:
    NodeTexts(const XmlDocument& document, const XmlElement& element, std::vector<std::string_view> names,
              const Locale& locale) :
        document_(document), names_(std::move(names)), found_(document.firstTexts(element, names_)), locale_(locale) {}

    bool has(std::string_view name) const { return element(name).has_value(); }

    const std::optional<XmlElement>& element(std::string_view name) const {
        std::size_t i = 0;
        while (names_[i] != name)
            ++i;
        return found_[i];
    }

    std::string raw(std::string_view name) const {
        const auto& content = element(name);
        return content ? document_.serialised(*content) : std::string();
    }

    std::string text(std::string_view name) const { return unescapeText(raw(name)); }

    // Calls read; when it raises an error, the name of the element and its content are appended to the error's text.
    template <class Read>
    auto naming(std::string_view name, Read read) const {
        return kestrane::naming(read, [&] { return ", <" + std::string(name) + "> " + quoted(raw(name)); });
    }

    std::int16_t integer(std::string_view name) const {
        return naming(name, [&] { return readInteger(raw(name), locale_); });
    }

    std::int32_t whole(std::string_view name) const {
        return naming(name, [&] { return readLong(raw(name), locale_); });
    }

    float level(std::string_view name) const {
        return naming(name, [&] { return readLevel(raw(name), locale_); });
    }

    bool flag(std::string_view name) const {
        return naming(name, [&] { return readFlag(raw(name), locale_); });
    }

    void date(std::string_view name, clsDate& value) const {
        naming(name, [&] { value.setDate(text(name), locale_); });
    }

    void time(std::string_view name, clsTime& value) const {
        naming(name, [&] { value.setTime(text(name), locale_); });
    }

private:
    const XmlDocument& document_;
    std::vector<std::string_view> names_;
    std::vector<std::optional<XmlElement>> found_;
    const Locale& locale_;
};

// Reads an attribute with read(text, locale). When that raises an error, the element, the attribute and its text are
// appended to the error's text.
template <class Read>
auto readAttribute(const XmlDocument& document, const XmlElement& node, std::string_view element, std::string_view name,
                   const Locale& locale, Read read) {
    const std::string text = document.attribute(node, name);
    return naming([&] { return read(text, locale); },
                  [&] { return ", <" + std::string(element) + " " + std::string(name) + "=" + quoted(text) + ">"; });
}

class LogReader {
public:
    LogReader(std::shared_ptr<XmlDocument> document, clsLog& log) :
        document_(std::move(document)), log_(log), locale_(log.session().locale) {}

    void read(const XmlElement& node) {
        header(node);
        if (const auto ca = document_->child(node, "ca")) channelA(*ca);
        if (const auto cb = document_->child(node, "cb")) channelB(*cb);
        exposureRows(node);
        peaks(node);
        selection(node);
        if (const auto disp = document_->child(node, "disp")) display(*disp);
        if (const auto intvls = document_->child(node, "intvls")) planRows(*intvls);
        if (log_.has(Trait::NoExposureOnChannelB)) {
            for (clsValue* value :
                 {&log_.LepdETCumB, &log_.LepdMTCumB, &log_.DoseETCumB, &log_.DoseMTCumB, &log_.DoseHourB}) {
                value->CalcValue(0);
            }
        }
    }

private:
    NodeTexts texts(const XmlElement& node, std::vector<std::string_view> names) const {
        return {*document_, node, std::move(names), locale_};
    }

    void header(const XmlElement& node) {
        const NodeTexts t = texts(node, {kLogTexts.begin(), kLogTexts.end()});
        log_.Name = unescapeText(document_->attribute(node, "name"));
        const std::int16_t mode = t.integer("md");
        t.naming("md", [&] { log_.Mode(toLogMode(mode)); });
        if (log_.Mode() == modeBroadband) log_.LocationType(locationCode(t.text("lcn")));
        log_.FullyCalculated = t.flag("calc");
        if (t.has("sl")) log_.objLogOptions.ExposureTime = t.level("sl");
        if (t.has("cri")) log_.Criterion = t.integer("cri");
        if (t.has("ex")) log_.Exchange = t.integer("ex");
        log_.Note = t.text("note");
        t.date("fdt", log_.FactoryCalibDate);
        t.date("cdt", log_.CalibDate);
        t.date("sdt", log_.StartDate);
        t.date("edt", log_.EndDate);
        t.time("ctm", log_.CalibTime);
        t.time("stm", log_.StartTime);
        t.time("etm", log_.EndTime);
        log_.MeasurementTimeFromInstrument = t.whole("mti");
        log_.IsLoggingOverLoaded = t.flag("ol");
        log_.Interval = t.whole("interval");
        log_.Threshold = t.text("th");
        log_.Range = t.text("rng");
        log_.IsChannelBOn = false;
        log_.IsLnNumbersOn = false;
    }

    // Some files contain the words that are shown to the user instead of the code.
    std::string locationCode(const std::string& text) const {
        if (text == log_.session().LoadText(Text::FileWordNoiseAtWork)) return std::string(NoiseAtWorkLocation);
        if (text == log_.session().LoadText(Text::FileWordEnvironmental)) return std::string(EnvironmentLocation);
        return text;
    }

    std::vector<std::string_view> bandNames() const {
        std::vector<std::string_view> names;
        for (int band = 0; band <= lastBand(log_.Mode()); ++band)
            names.push_back(bandElement(log_.Mode(), band));
        return names;
    }

    void bands(const XmlElement& node, BandValues& values) const {
        const std::vector<std::string_view> names = bandNames();
        const NodeTexts t = texts(node, names);
        for (int band = 0; band <= values.last(); ++band) {
            values(band).Value(t.level(names[static_cast<std::size_t>(band)]));
        }
    }

    void channelA(const XmlElement& ca) {
        std::vector<std::string_view> names = {"tw", "fw", "lavg", "peak"};
        for (const BandedElement& e : kBanded)
            names.push_back(e.name);
        for (const ExtremeElement& e : kExtremes)
            names.insert(names.end(), {e.dateName, e.timeName});
        for (const FigureElement& e : kFiguresA)
            names.push_back(e.name);
        const NodeTexts t = texts(ca, names);
        log_.TimeWeightA(t.text("tw"));
        log_.FreqWeightA(t.text("fw"));
        if (t.has("lavg")) log_.LAvgCumA.Value(t.level("lavg"));
        for (const BandedElement& e : kBanded) {
            if (t.has(e.name)) bands(*t.element(e.name), log_.*e.member);
        }
        log_.PeakCumA.Value(t.level("peak"));
        for (const ExtremeElement& e : kExtremes) {
            t.date(e.dateName, log_.*e.date);
            t.time(e.timeName, log_.*e.time);
        }
        for (const FigureElement& e : kFiguresA)
            (log_.*e.member).Value(t.level(e.name));
        for (int ln = 1; ln <= NumberOfLns; ++ln) {
            const std::string_view name = kLnNames[static_cast<std::size_t>(ln) - 1];
            const auto node = document_->child(ca, name);
            if (!node) continue;
            log_.LnNumberA(ln, readAttribute(*document_, *node, name, "no", locale_, readInteger));
            if (log_.LnNumberA(ln) == 0) continue;
            bands(*node, log_.LnCumA.of(ln));
            log_.IsLnNumbersOn = true;
        }
    }

    void channelB(const XmlElement& cb) {
        std::vector<std::string_view> names = {"tw", "fw"};
        for (const FigureElement& e : kLevelsB)
            names.push_back(e.name);
        for (const FigureElement& e : kFiguresB)
            names.push_back(e.name);
        const NodeTexts t = texts(cb, names);
        log_.IsChannelBOn = true;
        log_.TimeWeightB(t.text("tw"));
        log_.FreqWeightB(t.text("fw"));
        for (const FigureElement& e : kLevelsB)
            (log_.*e.member).Value(t.level(e.name));
        for (const FigureElement& e : kFiguresB)
            (log_.*e.member).Value(t.level(e.name));
    }

    std::vector<XmlElement> grandchildren(const XmlElement& node, std::string_view parent,
                                          std::string_view name) const {
        const auto found = document_->child(node, parent);
        return found ? document_->children(*found, name) : std::vector<XmlElement>();
    }

    void exposureRows(const XmlElement& node) {
        for (const XmlElement& row : grandchildren(node, "dl-intvls", "dl-intvl")) {
            const NodeTexts t = texts(row, {"cri", "ex", "date", "time", "note", "leq", "duration", "is-included"});
            document_->charge(sizeof(clsDoseLogSample));
            log_.SaveDoseCalc = true;
            clsDoseLogSample& sample = log_.DoseLogIntervals.emplace_back();
            sample.Criterion = t.integer("cri");
            sample.Exchange = t.integer("ex");
            t.date("date", sample.SampleDate);
            t.time("time", sample.SampleTime);
            sample.Note = t.text("note");
            sample.Leq.Value(t.level("leq"));
            t.time("duration", sample.Duration);
            sample.IsIncluded = t.flag("is-included");
        }
    }

    // Reads attributes, whereas the writer writes elements, so that of saved peaks only their number is read back. That
    // is meant.
    void peaks(const XmlElement& node) {
        for (const XmlElement& row : grandchildren(node, "peak-intvls", "peak-intvl")) {
            document_->charge(sizeof(clsPeak));
            clsPeak& peak = log_.Peaks.emplace_back();
            readAttribute(
                *document_, row, "peak-intvl", "peak-time", locale_,
                [&peak](std::string_view text, const Locale& locale) { peak.PeakTime.setTime(text, locale); });
            peak.SampleDuration = readAttribute(*document_, row, "peak-intvl", "duration", locale_, readLevel);
        }
    }

    void selection(const XmlElement& node) {
        const auto cut = document_->child(node, "cutintvls");
        if (!cut) return;
        log_.LogIntervals.IntervalsToBeIncluded =
            readAttribute(*document_, *cut, "cutintvls", "incl", locale_, readFlag);
        for (const XmlElement& range : document_->children(*cut, "cutintvl")) {
            document_->charge(sizeof(std::string));
            log_.LogIntervals.CutIntervals.push_back(document_->decoded(range));
        }
    }

    void display(const XmlElement& disp) {
        std::vector<std::string> names;
        std::vector<std::string_view> views;
        for (const LogChannel channel : kChannels) {
            for (const FigureKind kind : kFigureKinds) {
                for (const Parameter p : kDisplayOrder) {
                    names.push_back(std::string(parameterInfo(p).displayElement) + "-" + std::to_string(channel) + "-" +
                                    std::to_string(kind));
                }
            }
        }
        views.assign(names.begin(), names.end());
        const NodeTexts t = texts(disp, views);
        auto name = names.begin();
        for (const LogChannel channel : kChannels) {
            for (const FigureKind kind : kFigureKinds) {
                for (const Parameter p : kDisplayOrder)
                    setPlotted(log_, channel, kind, p, t.flag(*name++));
            }
        }
    }

    void planRows(const XmlElement& intvls) {
        const IntervalsBlock* block = document_->blockAt(intvls.begin);
        if (block == nullptr || block->rows == 0) return;
        const auto rows = std::make_shared<XmlIntervals>(document_, *block, log_.Mode(), locale_);
        log_.LoadRanges = rows->ranges();
        log_.IntervalNodes = rows;
        log_.IntervalsToLoad = true;
    }

    std::shared_ptr<XmlDocument> document_;
    clsLog& log_;
    const Locale& locale_;
};

std::unique_ptr<clsInsData> readCollection(Session& session, const std::shared_ptr<XmlDocument>& document,
                                           const XmlElement& node) {
    auto data = std::make_unique<clsInsData>(session);
    if (const auto detail = document->child(node, "instrument-detail")) {
        data->NameX = document->attribute(*detail, "name");
        data->InsName(document->attribute(*detail, "instrument-name"));
        data->InsSerial = document->attribute(*detail, "instrument-serial");
        const auto read = [&](std::string_view name, auto reader) {
            return readAttribute(*document, *detail, "instrument-detail", name, session.locale, reader);
        };
        data->InsType = read("instrument-type", readInteger);
        data->FirmwareVersion = read("instrument-firmware", readLevel);
    }
    const auto logs = document->child(node, "logs");
    if (!logs) return data;
    for (const XmlElement& element : document->children(*logs, "log")) {
        document->charge(sizeof(clsLog));
        auto log = std::make_unique<clsLog>(session);
        log->InsName = data->InsName();
        log->FirmwareVersion = data->FirmwareVersion;
        LogReader(document, *log).read(element);
        document->charge(memoryOf(*log, log->IntervalsToLoad) - sizeof(clsLog));
        data->logsOf(log->Mode()).push_back(std::move(log));
    }
    return data;
}

} // namespace

std::string unescapeText(std::string text) {
    if (text.find('&') == std::string::npos) return text;
    constexpr std::pair<std::string_view, std::string_view> kEscapes[] = {
        {"&#39;", "'"}, {"&quot;", "\""}, {"&amp;", "&"}, {"&#47;", "/"},
        {"&lt;", "<"},  {"&gt;", ">"},    {"&#124;", "|"}};
    for (const auto& [escaped, plain] : kEscapes)
        text = ReplaceText(std::move(text), escaped, plain);
    return text;
}

void GetData(clsFile& file, const std::shared_ptr<XmlDocument>& document) {
    const XmlElement whole = document->whole();
    const XmlElement parent = document->child(whole, "instruments").value_or(whole);
    for (const XmlElement& node : document->children(parent, "instrument-data")) {
        auto data = readCollection(file.session(), document, node);
        if (data->hasLogs()) file.InstrumentDatas.push_back(std::move(data));
    }
}

} // namespace kestrane
