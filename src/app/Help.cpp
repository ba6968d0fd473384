#include "app/Help.h"

#include "platform/Files.h"

namespace kestrane {

void OpenHelpFile(Session& session, const Desktop& desktop, const std::string& path) {
    if (fileExists(path) && desktop.Open(path)) return;
    session.ShowMessage(session.LoadText(6536), kIconExclamation);
}

void OpenPage(Session& session, const Desktop& desktop, const std::string& address) {
    if (desktop.Open(address)) return;
    session.ShowMessage(ReplaceText(session.LoadText(8401), "^", address), kIconExclamation);
}

void GetManual(Session& session, const Desktop& desktop, const std::string& path) {
    if (desktop.HasProgramFor("application/pdf")) return OpenHelpFile(session, desktop, path);
    const auto answer =
        session.ShowMessage(session.LoadText(8100), kButtonsYesNo + kIconQuestion, session.LoadText(8101));
    if (answer == Button::Yes) OpenPage(session, desktop, session.LoadText(10014));
}

} // namespace kestrane
