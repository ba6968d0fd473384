// The Corvane instruments: a list of files, and each file fetched by its name as machine log text.
#pragma once

#include "sim/Holdings.h"
#include "sim/Instrument.h"

#include <string>
#include <vector>

namespace kestrane {

// The text in which the instrument keeps a log.
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
