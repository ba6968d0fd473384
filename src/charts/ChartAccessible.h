// A chart to assistive programs: its role is that of a chart, and what it is drawn with is no part of what is heard.
#pragma once

namespace kestrane {

class chaTab;

void makeChartsHeard(); // of every chaTab; once is enough

// Has a screen reader say a chart's description, which has changed.
void tellDescription(chaTab& chart);

} // namespace kestrane
