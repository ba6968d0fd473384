// The message box of the desktop. Texts are shown as they are, never as rich text, since they hold what users typed.
// Delivers events of the event pump while a box is open. The captions of the buttons come from the caller.
#pragma once

#include "platform/Message.h"

#include <functional>

namespace kestrane {

class DesktopMessages : public MessageInterface {
public:
    using Caption = std::function<std::string(Button)>;

    explicit DesktopMessages(Caption caption) : caption_(std::move(caption)) {}

    // Escape, and closing the box, mean Cancel or a single OK; a box with neither can only be left by pressing a
    // button. The box lies above the active window.
    Button show(const std::string& prompt, MessageFlags flags, const std::string& title) override;

private:
    Caption caption_;
};

} // namespace kestrane
