// Another language than the program's, for as long as something is written in it.
#pragma once

#include "model/Session.h"

#include <utility>

namespace kestrane {

// Shows everything in a language as long as it lives. What was shown before is kept, so that giving it back takes no
// memory.
class Speaking {
public:
    Speaking(Session& session, const Language& language) :
        session_(session), before_(session.texts.Shown()), labels_(session.labels), dateWords_(session.dateWords) {
        try {
            session.Show(language);
        } catch (...) {
            giveBack();
            throw;
        }
    }

    ~Speaking() { giveBack(); }

    Speaking(const Speaking&) = delete;
    Speaking& operator=(const Speaking&) = delete;

private:
    void giveBack() noexcept {
        session_.texts.Show(before_);
        session_.labels = std::move(labels_);
        session_.dateWords = std::move(dateWords_);
    }

    Session& session_;
    const Language before_;
    LabelTexts labels_;
    DateWords dateWords_;
};

// Words that go into a file are English, whatever language the program speaks: then a file does not depend on the user
// who made it.
inline Speaking inEnglish(Session& session) {
    return {session, {}};
}

// The language of reports, which is that of the program unless the user has chosen another.
inline Speaking inLanguageOfReports(Session& session) {
    const std::string& code = session.Options.ReportLanguage;
    return {session, code.empty() ? session.texts.Shown() : LanguageOf(code)};
}

} // namespace kestrane
