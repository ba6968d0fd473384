#include "SampleInstruments.h"

namespace kestrane {

namespace {

std::string little(std::uint32_t value) {
    return Record(4).at(0, static_cast<std::int32_t>(value));
}

// The fields of a payload; blanks are for the reader.
std::string fields(std::string text) {
    std::erase(text, ' ');
    return text;
}

std::string framed(const std::string& bytes) {
    return "abc" + bytes + "z"; // neither header nor trailer means anything
}

} // namespace

BinaryLog brevikLog(bool isEarly) {
    Record entry(isEarly ? 80 : 84);
    entry.at(0x14, 0).at(0x18, 1).at(0x1C, 3600);
    entry.stamp(0x20, {23, 30, 0, 28, 2, 19}).stamp(0x26, {9, 5, 7, 1, 2, 19}).stamp(0x2C, {1, 2, 3, 4, 5, 18});
    const std::size_t criterion = isEarly ? 0x34 : 0x38;
    if (!isEarly) entry.at(0x34, 1);
    entry.at(criterion, 85).at(criterion + 4, 5).at(criterion + 8, 70);
    entry.byte(criterion + 12, 1).byte(criterion + 13, 2).at(criterion + 16, 1).at(criterion + 20, 1);
    entry.at(criterion + 24, 50);

    std::string block;
    for (int row = 0; row < 2; ++row) {
        Record record(isEarly ? 88 : 104);
        const double base = 60 + 10 * row;
        record.at(0x00, base + 0.125).at(0x08, base + 1).at(0x10, base + 2).at(0x18, base + 3);
        if (!isEarly) record.at(0x20, base + 4).at(0x28, base + 5);
        const std::size_t le = isEarly ? 0x20 : 0x30;
        record.at(le, base + 6).at(le + 8, base + 7).at(le + 16, base + 8.0).at(le + 24, base + 9);
        record.at(le + 32, base + 10).at(le + 40, base + 11);
        record.byte(isEarly ? 0x50 : 0x60, static_cast<char>(row)).byte(isEarly ? 0x51 : 0x61, 0);
        block += record;
    }
    Record summary(isEarly ? 128 : 160);
    summary.stamp(0, {1, 30, 0, 1, 3, 19}).at(0x08, 7200).at(0x0C, -1).at(0x10, 12.5).at(0x18, 6.25).at(0x20, 0.75);
    if (!isEarly) summary.at(0x28, 71.5).at(0x58, 58.0).at(0x60, 59.0).byte(0x99, 1);
    const std::size_t leq = isEarly ? 0x28 : 0x38;
    summary.at(leq, 72.0).at(leq + 8, 73.0).at(leq + 16, 74.0).at(leq + 24, 75.0);
    const std::size_t sel = isEarly ? 0x48 : 0x68;
    summary.at(sel, 110.5).at(sel + 8, 66.0).at(sel + 16, 80.0).at(sel + 24, 55.0).at(sel + 32, 65.0);
    summary.at(sel + 40, 120.25);
    block += summary;

    const std::size_t firstData = isEarly ? 76 : 80;
    entry.at(0, static_cast<std::int32_t>(firstData + block.size()));
    return {entry, block, firstData};
}

BinaryLog halcyrLog(bool isEarly) {
    Record entry(76);
    entry.at(0x10, 1).at(0x14, 2).at(0x18, 60);
    entry.stamp(0x1C, {8, 0, 0, 3, 6, 19}).stamp(0x22, {7, 0, 0, 3, 6, 19}).stamp(0x28, {0, 0, 0, 9, 9, 17});
    entry.at(0x30, 90).at(0x34, 3).at(0x38, -1).byte(0x3C, 0).byte(0x3D, 1).at(0x40, 0).at(0x44, 1).at(0x48, 95);

    Record row(isEarly ? 112 : 88);
    row.at(0x00, 81.0).at(0x08, 82.0).at(0x10, 83.0).at(0x18, 84.0).at(0x20, 98.5).at(0x28, 54.5);
    row.at(0x30, 85.0).at(0x38, 70.0).at(0x40, 69.0).at(isEarly ? 0x60 : 0x48, 121.0);
    row.byte(isEarly ? 0x69 : 0x51, 1);

    Record summary(128);
    summary.stamp(0, {8, 1, 0, 3, 6, 19}).at(0x08, 60);
    if (isEarly) {
        summary.at(0x10, 81.0).at(0x18, 82.0).at(0x20, 83.0).at(0x28, 84.0).at(0x30, 98.5).at(0x38, 54.5);
        summary.at(0x40, 85.0).at(0x48, 70.0).at(0x50, 69.0).at(0x58, 1.25).at(0x68, 2.5).at(0x70, 121.0);
    } else {
        summary.at(0x10, 1.25).at(0x18, 2.5).at(0x20, 0.5).at(0x28, 81.0).at(0x30, 82.0).at(0x38, 83.0);
        summary.at(0x40, 84.0).at(0x48, 98.5).at(0x50, 54.5).at(0x58, 85.0).at(0x60, 70.0).at(0x68, 69.0);
        summary.at(0x70, 121.0);
    }
    const std::string block = std::string(row) + std::string(summary);
    constexpr std::size_t kFirstData = 72;
    entry.at(0, static_cast<std::int32_t>(kFirstData + block.size()));
    return {entry, block, kFirstData};
}

SampleInstrument binaryInstrument(std::int32_t firmware, std::int32_t type, const std::vector<BinaryLog>& logs) {
    constexpr std::size_t kChunk = 255;
    SampleInstrument instrument;
    instrument.Answers[bytesOf("02010003")] = "abc" + std::string(Record(12).at(0, firmware).at(4, type).at(8, 4711));
    instrument.Answers[bytesOf("02020003")] = framed(little(static_cast<std::uint32_t>(logs.size())));
    for (std::uint32_t i = 0; i < logs.size(); ++i) {
        const BinaryLog& log = logs[i];
        instrument.Answers[bytesOf("020304") + little(i) + "\x03"] = framed(log.Entry);
        for (std::size_t at = 0; at < log.Block.size(); at += kChunk) {
            const auto offset = static_cast<std::uint32_t>(log.FirstData + at);
            instrument.Answers[bytesOf("020408") + little(i) + little(offset) + "\x03"] =
                framed(log.Block.substr(at, kChunk));
        }
    }
    return instrument;
}

SampleInstrument brevik(std::int32_t firmware, std::int32_t type) {
    return binaryInstrument(firmware, type, {brevikLog(firmware <= 105)});
}

SampleInstrument halcyr(std::int32_t firmware, std::int32_t type) {
    return binaryInstrument(firmware, type, {halcyrLog(firmware <= 100)});
}

SampleInstrument tallix(const std::string& model) {
    // Log 001A: 3 rows of 10 minutes from 23:50 on 31/12/19. Log 001B is empty.
    const std::string cumulative =
        fields("0003 01F4 02BC 00FA 0258 ...... 00 0A 0064 ............ 0352 01.25 Z 173200 1F0C13");
    SampleInstrument instrument{"2400,n,8,2", {}};
    instrument.Answers[textFrame("00")] = textFrame(" 0042" + model);
    instrument.Answers[textFrame("03")] = textFrame("T-778");
    instrument.Answers[textFrame("01")] = textFrame("001A.........001B.........");
    instrument.Answers[textFrame("02001A00")] = textFrame(cumulative);
    instrument.Answers[textFrame("02001B00")] = textFrame("0000");
    instrument.Answers[textFrame("02001A01")] = textFrame("00C800000064");
    instrument.Answers[textFrame("02001A03")] = textFrame("035203840000");
    return instrument;
}

SampleInstrument merrowan(const std::string& model) {
    const std::string header = fields("...... 0002 080000 030613 080200 030613");
    const std::string work = header + fields("0201 11 0352 03E8 0456 0384 08001E 030613 04B0 08010A 030613");
    const std::string environment =
        header + fields("0102 01 0352 0384 080001 030613 0190 080102 030613 0370 .... 01C2 .......... 0456");
    const std::string other = header + fields("0709 77");
    const std::string octaves = fields("01F4 01FE 0208 0212 021C 0226 0230 023A 0244 024E 0A0F10 040613");
    SampleInstrument instrument{"2400,n,8,2", {}};
    instrument.Answers[textFrame("00")] = textFrame("0322" + model);
    instrument.Answers[textFrame("03")] = textFrame("M-9");
    instrument.Answers[textFrame("01")] = textFrame(fields("00010800....030613 00020900....030613 00070A00....030613"));
    instrument.Answers[textFrame("02000100")] = textFrame(work);
    instrument.Answers[textFrame("02000101")] =
        textFrame(fields("0800 000A 0352 0384 08001E 04B0 08000A .. 0801 0014 035C 038E 080103 04BA 080104 .."));
    instrument.Answers[textFrame("02000200")] = textFrame(environment);
    instrument.Answers[textFrame("02000201")] = textFrame(fields(
        "0800 0352 0384 080001 0190 080002 0370 .... 01C2 .. 0801 035C 038E 080103 019A 080104 037A .... 01CC .."));
    instrument.Answers[textFrame("02000300")] = textFrame(other);
    instrument.Answers[textFrame("02000301")] = textFrame("");
    instrument.Answers[textFrame("05")] = textFrame("0003");
    const std::string rest(24, '.');
    instrument.Answers[textFrame("06")] =
        textFrame(octaves + "010002" + rest + octaves + "020101" + rest + octaves + "030900" + rest);
    return instrument;
}

SampleInstrument corvane() {
    const std::string head = "Corvane 5,C\x01-12,01/02/2018,03/06/2019,08:00:00,85,5,SLM,Fast,A,OFF,Slow,C,70,1,1,ON,"
                             "10,50,90,95,99,1,5,03/06/2019,09:00:00,";
    const std::string rows = "09:00:00,80.5,70,90,120,1,60,95,81,82,85,80,70,69,68,90,88,0,\r\n"
                             "09:01:00,82.5,72,92,122,1,60,95,81,82,85,80,70,69,68,90,88,0,\r\n";
    const std::string closing =
        "stoplog,1,03/06/2019,09:02:00,81.6,70,92,122,10,2,62,54,102,83,84,86,81,71,70,69,91,89,";
    SampleInstrument instrument;
    instrument.Answers[bytesOf("0205")] = "*Corvane \xA6 5\rC-12\r";
    instrument.Answers[bytesOf("0204")] = "*A1\rB\xE9\rC3\r\xFErubbish\r";
    instrument.Answers[bytesOf("0206 0341 0331 FF")] = head + rows + closing;
    instrument.Answers[bytesOf("0206 0342 03E9 FF")] = "no log at all";
    instrument.Answers[bytesOf("0206 0343 0333 FF")] = head + closing;
    return instrument;
}

void connect(ScriptedComm& comm, const SampleInstrument& instrument, const Spoil& spoil) {
    comm.Answer = [&comm, instrument, spoil,
                   exchange = 0](const std::string& sent) mutable -> std::vector<ScriptedComm::Arrival> {
        const auto answer = instrument.Answers.find(sent);
        if (answer == instrument.Answers.end() || comm.LineSettings != instrument.Settings) return {};
        return {{milliseconds(40), spoil ? spoil(exchange++, answer->second) : answer->second}};
    };
}

} // namespace kestrane
