#include "platform/Message.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace kestrane {

namespace {

constexpr int kButtonsMask = 15;

bool isOneOf(Button button, const std::vector<Button>& buttons) {
    return std::find(buttons.begin(), buttons.end(), button) != buttons.end();
}

std::string_view answerText(Button button) {
    constexpr std::array<std::string_view, 8> kNames = {"", "ok", "cancel", "", "retry", "", "yes", "no"};
    return kNames.at(static_cast<std::size_t>(button));
}

} // namespace

std::vector<Button> buttonsOf(MessageFlags flags) {
    switch (flags & kButtonsMask) {
    case kButtonsOkCancel:
        return {Button::Ok, Button::Cancel};
    case kButtonsYesNoCancel:
        return {Button::Yes, Button::No, Button::Cancel};
    case kButtonsYesNo:
        return {Button::Yes, Button::No};
    case kButtonsRetryCancel:
        return {Button::Retry, Button::Cancel};
    default:
        return {Button::Ok};
    }
}

Button defaultButtonOf(MessageFlags flags) {
    const std::vector<Button> buttons = buttonsOf(flags);
    const std::size_t index = (flags & kDefaultThird) != 0 ? 2 : (flags & kDefaultSecond) != 0 ? 1 : 0;
    return index < buttons.size() ? buttons[index] : buttons.front();
}

Button unansweredButtonOf(MessageFlags flags) {
    return isOneOf(Button::Retry, buttonsOf(flags)) ? Button::Cancel : defaultButtonOf(flags);
}

Button ConsoleMessages::show(const std::string& prompt, MessageFlags flags, const std::string& title) {
    const std::vector<Button> buttons = buttonsOf(flags);
    Button taken = unansweredButtonOf(flags);
    if (answer_ && isOneOf(*answer_, buttons)) taken = *answer_;

    std::string text = title + ": " + prompt;
    for (std::size_t at = 0; (at = text.find("\r\n", at)) != std::string::npos;)
        text.erase(at, 1);
    if (buttons.size() > 1) text.append(" -> ").append(answerText(taken));
    out_ << text << '\n' << std::flush;
    return taken;
}

Button ScriptedMessages::show(const std::string& prompt, MessageFlags flags, const std::string& title) {
    Boxes.push_back({prompt, flags, title});
    if (Answers.empty()) return unansweredButtonOf(flags);
    const Button answer = Answers.front();
    Answers.erase(Answers.begin());
    return answer;
}

} // namespace kestrane
