// Presents a chart to assistive programs with the role of a chart; the parts that draw it are not presented.
#pragma once

namespace kestrane {

class chaTab;

void makeChartsHeard(); // for every chaTab; calling it once is enough

// Makes a screen reader say the description of a chart that has changed.
void tellDescription(chaTab& chart);

} // namespace kestrane
