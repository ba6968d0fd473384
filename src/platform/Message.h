// The message box of the program, as an interface: a desktop box, a command-line form and a scripted one for tests.
#pragma once

#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace kestrane {

// The flags of a box: one value each for buttons, icon and default button, combined with |.
enum MessageFlags : int {
    kButtonsOk = 0,
    kButtonsOkCancel = 1,
    kButtonsYesNoCancel = 3,
    kButtonsYesNo = 4,
    kButtonsRetryCancel = 5,
    kIconStop = 16,
    kIconQuestion = 32,
    kIconExclamation = 48,
    kIconInformation = 64,
    kDefaultSecond = 256,
    kDefaultThird = 512,
    kSystemModal = 4096,
};

constexpr MessageFlags operator|(MessageFlags one, MessageFlags other) {
    return static_cast<MessageFlags>(static_cast<int>(one) | static_cast<int>(other));
}

enum class Button { Ok = 1, Cancel = 2, Retry = 4, Yes = 6, No = 7 };

// The buttons of a box from left to right, and the one that Enter presses.
std::vector<Button> buttonsOf(MessageFlags flags);
Button defaultButtonOf(MessageFlags flags);

// What a question gets where nobody answers it: the default button, or Cancel where it offers to try again, since that
// might go on for ever.
Button unansweredButtonOf(MessageFlags flags);

// Functions that ask the user for a line of text or for one entry of a list. They return nothing when the user cancels.
using AskText = std::function<std::optional<std::string>(const std::string& prompt, const std::string& proposal)>;
using AskChoice = std::function<std::optional<std::string>(
    const std::string& prompt, const std::vector<std::string>& choices, const std::string& proposal)>;

class MessageInterface {
public:
    virtual ~MessageInterface() = default;
    virtual Button show(const std::string& prompt, MessageFlags flags, const std::string& title) = 0;
};

// The command-line form prints "TITLE: TEXT"; for a question (a box with more than one button) it adds " -> " and the
// answer taken, in lower case. The answer is the one given to the constructor when the box has that button. Otherwise
// nobody answers.
class ConsoleMessages : public MessageInterface {
public:
    ConsoleMessages(std::ostream& out, std::optional<Button> answer) : out_(out), answer_(answer) {}

    Button show(const std::string& prompt, MessageFlags flags, const std::string& title) override;

private:
    std::ostream& out_;
    std::optional<Button> answer_;
};

// For tests: gives Answers in order, then the default buttons, and records what was shown.
class ScriptedMessages : public MessageInterface {
public:
    struct Shown {
        std::string Prompt;
        MessageFlags Flags;
        std::string Title;
    };

    Button show(const std::string& prompt, MessageFlags flags, const std::string& title) override;

    std::vector<Button> Answers;
    std::vector<Shown> Boxes;
};

} // namespace kestrane
