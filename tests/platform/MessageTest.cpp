#include "platform/Message.h"

#include <gtest/gtest.h>

#include <sstream>

namespace kestrane {
namespace {

TEST(ConsoleMessages, PrintsTheBoxAndTakesTheAnswer) {
    struct Case {
        std::optional<Button> answer;
        MessageFlags flags;
        Button taken;
        const char* printed; // behind "Title: "
    };

    const Case cases[] = {
        {std::nullopt, kButtonsOk | kIconStop, Button::Ok, "Text\n"},
        {Button::Cancel, kButtonsOk | kSystemModal, Button::Ok, "Text\n"},
        {std::nullopt, kButtonsYesNo | kIconQuestion, Button::Yes, "Text -> yes\n"},
        {std::nullopt, kButtonsYesNo | kDefaultSecond, Button::No, "Text -> no\n"},
        {Button::Ok, kButtonsYesNo | kDefaultSecond, Button::No, "Text -> no\n"},
        {std::nullopt, kButtonsYesNoCancel | kDefaultThird, Button::Cancel, "Text -> cancel\n"},
        {std::nullopt, kButtonsYesNo | kDefaultThird, Button::Yes, "Text -> yes\n"},
        {Button::No, kButtonsYesNoCancel | kIconQuestion | kSystemModal, Button::No, "Text -> no\n"},
        {std::nullopt, kButtonsOkCancel, Button::Ok, "Text -> ok\n"},
        {std::nullopt, kButtonsRetryCancel, Button::Cancel, "Text -> cancel\n"},
        {Button::Yes, kButtonsRetryCancel, Button::Cancel, "Text -> cancel\n"},
        {Button::Retry, kButtonsRetryCancel, Button::Retry, "Text -> retry\n"},
    };
    for (const Case& c : cases) {
        std::ostringstream out;
        EXPECT_EQ(ConsoleMessages(out, c.answer).show("Text", c.flags, "Title"), c.taken) << c.flags;
        EXPECT_EQ(out.str(), std::string("Title: ") + c.printed) << c.flags;
    }

    std::ostringstream out;
    ConsoleMessages(out, std::nullopt).show("One\r\n\r\nTwo", kButtonsYesNo, "Title");
    EXPECT_EQ(out.str(), "Title: One\n\nTwo -> yes\n");
}

} // namespace
} // namespace kestrane
