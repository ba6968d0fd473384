// The message box of the program, as an interface: a desktop box, a command-line form and a scripted one for tests.
#pragma once

#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace kestrane {

// The flags of a box: buttons, icon and default button, added up.
constexpr int kButtonsOk = 0;
constexpr int kButtonsOkCancel = 1;
constexpr int kButtonsYesNoCancel = 3;
constexpr int kButtonsYesNo = 4;
constexpr int kButtonsRetryCancel = 5;
constexpr int kIconStop = 16;
constexpr int kIconQuestion = 32;
constexpr int kIconExclamation = 48;
constexpr int kIconInformation = 64;
constexpr int kDefaultSecond = 256;
constexpr int kDefaultThird = 512;
constexpr int kSystemModal = 4096;

enum class Button { Ok = 1, Cancel = 2, Retry = 4, Yes = 6, No = 7 };

// The buttons of a box, left to right, and the one that Enter presses.
std::vector<Button> buttonsOf(int flags);
Button defaultButtonOf(int flags);

// How a line of text is asked for, and one of a list. Nothing: the user cancels.
using AskText = std::function<std::optional<std::string>(const std::string& prompt, const std::string& proposal)>;
using AskChoice = std::function<std::optional<std::string>(
    const std::string& prompt, const std::vector<std::string>& choices, const std::string& proposal)>;

class MessageInterface {
public:
    virtual ~MessageInterface() = default;
    virtual Button show(const std::string& prompt, int flags, const std::string& title) = 0;
};

// Command-line form: prints "TITLE: TEXT" and, for a question (more than one button), " -> " and the answer taken in
// lower case. The answer is the one given, when the box has that button; else the default button, and Cancel for a
// retry question.
class ConsoleMessages : public MessageInterface {
public:
    ConsoleMessages(std::ostream& out, std::optional<Button> answer) : out_(out), answer_(answer) {}

    Button show(const std::string& prompt, int flags, const std::string& title) override;

private:
    std::ostream& out_;
    std::optional<Button> answer_;
};

// For tests: gives the answers in order, then the default buttons, and keeps what was shown.
class ScriptedMessages : public MessageInterface {
public:
    struct Shown {
        std::string Prompt;
        int Flags;
        std::string Title;
    };

    Button show(const std::string& prompt, int flags, const std::string& title) override;

    std::vector<Button> Answers;
    std::vector<Shown> Boxes;
};

} // namespace kestrane
