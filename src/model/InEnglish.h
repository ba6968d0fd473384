// Words that go into a file are English, whatever language the program speaks: then a file does not depend on the user
// who made it.
#pragma once

#include "model/Session.h"

#include <utility>

namespace kestrane {

// Shows everything in English as long as it lives. What was shown before is kept, so that giving it back takes no
// memory.
class InEnglish {
public:
    explicit InEnglish(Session& session) :
        session_(session), before_(session.texts.Shown()), labels_(session.labels), dateWords_(session.dateWords) {
        try {
            session.Show({});
        } catch (...) {
            giveBack();
            throw;
        }
    }

    ~InEnglish() { giveBack(); }

    InEnglish(const InEnglish&) = delete;
    InEnglish& operator=(const InEnglish&) = delete;

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

} // namespace kestrane
