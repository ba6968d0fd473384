#include "explorer/ConvertWeighting.h"

#include "calc/FreqWeight.h"
#include "explorer/Edits.h"

namespace kestrane {

bool ConvertFrequencyWeighting(clsLog& displayed, clsLog& inView, const AskChoice& ask) {
    Session& session = displayed.session();
    const std::string before = displayed.FreqWeightA();
    return editLog(displayed, Text::StepFrequencyWeighting, [&] {
        const std::optional<std::string> weight = ask(session.LoadText(Text::AskWeighting), {"A", "C", "Z"}, before);
        if (!weight || *weight == before) return false;
        Button answer = Button::No;
        if (displayed.LogIntervals.Count() > 0)
            answer =
                session.ShowMessage(session.LoadText(Text::AskConvertIntervals), kButtonsYesNoCancel | kIconQuestion);
        if (answer == Button::Cancel) return false;
        AdjustFreqWeight(displayed, *weight, answer == Button::Yes);
        if (&displayed != &inView) AdjustFreqWeight(inView, *weight, answer == Button::Yes);
        displayed.RaiseLogValuesChanged();
        return true;
    });
}

} // namespace kestrane
