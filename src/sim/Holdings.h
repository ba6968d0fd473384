// What an instrument of the simulator has in its memory: its name plate and the logs of a data file, rows included.
#pragma once

#include "model/clsFile.h"

#include <memory>
#include <string>
#include <vector>

namespace kestrane {

struct Holdings {
    std::string Model;
    std::string Serial;
    std::vector<const clsLog*> Locations, Octaves, ThirdOctaves; // owned by the document
};

// The logs of all collections of a document, their rows loaded here and now; the serial number of the first. Raises
// when rows cannot be read.
Holdings holdingsOf(clsFile& file, std::string model);

} // namespace kestrane
