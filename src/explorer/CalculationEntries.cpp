#include "explorer/CalculationEntries.h"

#include "calc/Recalculation.h"
#include "explorer/Edits.h"
#include "model/Session.h"
#include "views/Zoom.h"

#include <algorithm>
#include <optional>

namespace kestrane {

namespace {

template <std::size_t N>
std::vector<std::string> choices(const int (&usual)[N], std::int16_t own) {
    std::vector<int> values(std::begin(usual), std::end(usual));
    if (own != 0 && std::find(values.begin(), values.end(), own) == values.end()) values.push_back(own);
    std::sort(values.begin(), values.end());
    std::vector<std::string> texts(values.size());
    std::transform(values.begin(), values.end(), texts.begin(), [](int value) { return std::to_string(value); });
    return texts;
}

// Reads an entry from 1 to highest. The log's own value, own, is accepted whatever it is.
std::optional<std::int16_t> wholeNumber(const std::string& text, std::int16_t own, int highest) {
    if (text == std::to_string(own)) return own;
    const bool isDigits = !text.empty() && text.size() <= 3 &&
                          std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
    if (!isDigits) return std::nullopt;
    const int value = std::stoi(text);
    return value >= kLowestEntry && value <= highest ? std::optional(static_cast<std::int16_t>(value)) : std::nullopt;
}

std::optional<clsDate> dateOf(const Session& session, const std::string& text) {
    clsDate date;
    try {
        date.Year = 0; // a text that is no date leaves the date at 0
        date.Day = date.Month = 0;
        date.setDate(text, session.locale);
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
    return date.IsDate() ? std::optional(date) : std::nullopt;
}

// The values of the entries, once they are known to be valid.
struct Changes {
    std::int16_t criterion, exchange;
    clsDate userCal;
};

bool isWithoutDate(const clsLog& log, const std::string& text) {
    return text.empty() && log.CalibDate.Format().empty();
}

void storeAndRecalculate(clsLog& log, const Changes& changes) {
    log.CalibDate = changes.userCal;
    setCriterion(log, {changes.criterion, changes.exchange});
    RecalcValues(log, kCalcFull);
}

std::optional<Changes> checked(clsLog& log, const CalculationEntries& entries,
                               const std::function<void(CalculationField)>& focus) {
    Session& session = log.session();
    const auto refuse = [&](CalculationField field, Text::Id text) {
        focus(field);
        session.ShowMessage(session.LoadText(text), kIconExclamation, session.LoadText(Text::Error));
        return std::nullopt;
    };
    const auto criterion = wholeNumber(entries.Criterion, log.Criterion, kHighestCriterion);
    if (!criterion) return refuse(CalculationField::Criterion, Text::InvalidCriterion);
    const auto exchange = wholeNumber(entries.Exchange, log.Exchange, kHighestExchange);
    if (!exchange) return refuse(CalculationField::Exchange, Text::InvalidExchangeRate);
    if (isWithoutDate(log, entries.UserCal)) return Changes{*criterion, *exchange, log.CalibDate};
    const auto userCal = dateOf(session, entries.UserCal);
    if (!userCal) return refuse(CalculationField::UserCal, Text::InvalidUserCalibrationDate);
    return Changes{*criterion, *exchange, *userCal};
}

enum class Stored { Nowhere, InView, Displayed };

bool isDateAlone(const clsLog& log, const Changes& changes) {
    return changes.criterion == log.Criterion && changes.exchange == log.Exchange;
}

// Stores the changes and recalculates, asking the user where that is needed.
Stored store(clsLog& displayed, clsLog& inView, const Changes& changes) {
    Session& session = inView.session();
    if (isDateAlone(inView, changes)) {
        displayed.CalibDate = inView.CalibDate = changes.userCal;
        return Stored::Displayed;
    }
    if (&displayed == &inView) {
        if (session.ShowMessage(session.LoadText(Text::AskProceed), kButtonsYesNo | kIconQuestion) != Button::Yes)
            return Stored::Nowhere;
        storeAndRecalculate(displayed, changes);
        return Stored::Displayed;
    }
    const Button answer = session.ShowMessage(session.LoadText(Text::AskRecalculateOpenedLog),
                                              kButtonsYesNoCancel | kIconQuestion | kDefaultSecond);
    if (answer == Button::Cancel) return Stored::Nowhere;
    storeAndRecalculate(inView, changes);
    if (answer != Button::Yes) return Stored::InView;
    storeAndRecalculate(displayed, changes);
    return Stored::Displayed;
}

} // namespace

CalculationEntries calculationEntries(const clsLog& log) {
    return {std::to_string(log.Criterion), std::to_string(log.Exchange), log.CalibDate.Format()};
}

std::vector<std::string> criterionChoices(const clsLog& log) {
    return choices(kCriterionLevels, log.Criterion);
}

std::vector<std::string> exchangeChoices(const clsLog& log) {
    return choices(kExchangeRates, log.Exchange);
}

std::string acceptedUserCal(const Session& session, const std::string& entered, const std::string& before) {
    const auto date = dateOf(session, entered);
    return date ? date->Format() : before;
}

bool applyChanges(clsLog& displayed, clsLog& inView, const CalculationEntries& entries,
                  const std::function<void(CalculationField)>& focus) {
    const std::optional<Changes> changes = checked(inView, entries, focus);
    if (!changes) return false;
    const Text::Id title = isDateAlone(inView, *changes) ? Text::StepCalibrationDate : Text::StepCalculation;
    Stored stored = Stored::Nowhere;
    editLog(displayed, title, [&] {
        stored = store(displayed, inView, *changes);
        return stored == Stored::Displayed;
    });
    if (stored == Stored::Nowhere) return false;
    AmendedDisplayValues(inView);
    return true;
}

bool FullRecalc(clsLog& displayed, clsLog& inView) {
    Session& session = displayed.session();
    const bool isLong = displayed.Warn() || isLongZoom(inView);
    if (isLong && session.ShowMessage(session.LoadText(Text::AskRecalculationTakesTime),
                                      kButtonsYesNo | kIconQuestion) != Button::Yes) {
        return false;
    }
    return editLog(displayed, Text::StepRecalculation, [&] {
        RecalcValues(displayed, kCalcFull);
        if (&displayed != &inView) RecalcValues(inView, kCalcFull);
        return true;
    });
}

} // namespace kestrane
