#include "explorer/ConvertWeighting.h"

#include "calc/FreqWeight.h"
#include "explorer/Edits.h"

namespace kestrane {

bool ConvertFrequencyWeighting(clsLog& displayed, clsLog& inView, const AskChoice& ask) {
    Session& session = displayed.session();
    const std::string before = displayed.FreqWeightA();
    return editLog(displayed, kTitleFrequencyWeighting, [&] {
        const std::optional<std::string> weight = ask(session.LoadText(9200), {"A", "C", "Z"}, before);
        if (!weight || *weight == before) return false;
        Button answer = Button::No;
        if (displayed.LogIntervals.Count() > 0)
            answer = session.ShowMessage(session.LoadText(4637), kButtonsYesNoCancel + kIconQuestion);
        if (answer == Button::Cancel) return false;
        AdjustFreqWeight(displayed, *weight, answer == Button::Yes);
        if (&displayed != &inView) AdjustFreqWeight(inView, *weight, answer == Button::Yes);
        displayed.RaiseLogValuesChanged();
        return true;
    });
}

} // namespace kestrane
