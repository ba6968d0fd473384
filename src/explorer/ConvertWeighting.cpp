#include "explorer/ConvertWeighting.h"

#include "calc/ConvertedLog.h"
#include "calc/Recalculation.h"
#include "explorer/Edits.h"

namespace kestrane {

bool ConvertFrequencyWeighting(clsLog& displayed, clsLog& inView, const AskChoice& ask) {
    Session& session = displayed.session();
    const std::string before = displayed.FreqWeightA();
    return editLog(displayed, Text::StepFrequencyWeighting, [&] {
        const std::optional<std::string> weight = ask(session.LoadText(Text::AskWeighting), {"A", "C", "Z"}, before);
        if (!weight || *weight == before) return false;
        const Button answer =
            session.ShowMessage(session.LoadText(Text::AskConvertIntervals), kButtonsYesNo | kIconQuestion);
        if (answer != Button::Yes) return false;
        convertLog(displayed, *weight);
        if (&displayed != &inView) {
            convertLog(inView, *weight);
            RecalcValues(inView, kCalcFull);
        }
        displayed.RaiseLogValuesChanged();
        return true;
    });
}

} // namespace kestrane
