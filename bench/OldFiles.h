// How fast the older formats are read.
#pragma once

namespace kestrane::bench {

class Table;

void measureOldFiles(Table& table);

} // namespace kestrane::bench
