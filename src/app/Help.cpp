#include "app/Help.h"

#include "app/HelpPages.h"
#include "platform/Files.h"

namespace kestrane {

std::string helpPage(const Session& session, const std::string& folder, const std::string& name) {
    const std::string language = "." + std::string(session.texts.Shown().Code);
    const std::string first(kFirstHelpTopic);
    for (const std::string& page : {name + language, name, first + language})
        if (fileExists(folder + page + ".html")) return folder + page + ".html";
    return folder + first + ".html";
}

void OpenHelpFile(Session& session, const Desktop& desktop, const std::string& path) {
    if (fileExists(path) && desktop.Open(path)) return;
    session.ShowMessage(session.LoadText(Text::NoHelpFile), kIconExclamation);
}

void OpenPage(Session& session, const Desktop& desktop, const std::string& address) {
    if (desktop.Open(address)) return;
    session.ShowMessage(ReplaceText(session.LoadText(Text::UnableToOpen), "^", address), kIconExclamation);
}

void GetManual(Session& session, const Desktop& desktop, const std::string& path) {
    if (desktop.HasProgramFor("application/pdf")) return OpenHelpFile(session, desktop, path);
    const auto answer = session.ShowMessage(session.LoadText(Text::AskGetDocumentReader), kButtonsYesNo | kIconQuestion,
                                            session.LoadText(Text::DocumentReaderNotFound));
    if (answer == Button::Yes) OpenPage(session, desktop, session.LoadText(Text::ContactDocumentReader));
}

} // namespace kestrane
