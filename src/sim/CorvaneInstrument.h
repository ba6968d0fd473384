// The Corvane instruments: they send a list of files, and each file by its name as machine log text.
#pragma once

#include "sim/Holdings.h"
#include "sim/Instrument.h"

#include <string>
#include <vector>

namespace kestrane {

// A log as the text in which the instrument keeps it.
std::string machineLogText(const clsLog& log, const std::string& instrument, const std::string& serial);

class CorvaneInstrument : public CommandInstrument {
public:
    explicit CorvaneInstrument(Holdings holdings);

protected:
    std::size_t commandLength(std::string_view bytes) const override;
    std::string reply(std::string_view command) override;

private:
    struct StoredFile {
        std::string name;
        const clsLog* log;
    };

    Holdings holdings_;
    std::vector<StoredFile> files_;
};

} // namespace kestrane
