// Instruments with a log or two, each answer written by hand.
#pragma once

#include "ScriptedLine.h"
#include "Wire.h"

#include <map>
#include <string>

namespace kestrane {

struct SampleInstrument {
    std::string Settings = "19200,n,8,2";
    std::map<std::string, std::string> Answers; // by question; silent to any other
};

SampleInstrument brevik(std::int32_t firmware = 230, std::int32_t type = 0); // 104-byte rows; early: 88
SampleInstrument halcyr(std::int32_t firmware, std::int32_t type);           // 88-byte rows; early: 112
SampleInstrument tallix(const std::string& model);
SampleInstrument merrowan(const std::string& model);
SampleInstrument corvane();

// One log of a binary instrument: its directory entry and its block from the first data offset on.
struct BinaryLog {
    std::string Entry, Block;
    std::size_t FirstData;
};

BinaryLog brevikLog(bool isEarly);
BinaryLog halcyrLog(bool isEarly);

// An instrument with these logs, that names itself by a record of 12 bytes.
SampleInstrument binaryInstrument(std::int32_t firmware, std::int32_t type, const std::vector<BinaryLog>& logs);

// What comes in place of the reply to a question; exchanges are counted from 0, the first is the identification.
using Spoil = std::function<std::string(int exchange, const std::string& reply)>;

void connect(ScriptedComm& comm, const SampleInstrument& instrument, const Spoil& spoil = {});

} // namespace kestrane
