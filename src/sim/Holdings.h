// What an instrument of the simulator has in its memory: its model, its serial number and the logs of a data file, with
// their rows.
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

// Takes the logs of all collections of a document, loading their rows at once, and the serial number of the first
// collection. Raises when rows cannot be read.
Holdings holdingsOf(clsFile& file, std::string model);

} // namespace kestrane
