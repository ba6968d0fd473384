// Words that go into a file are English, whatever language the program speaks: then a file does not depend on the user
// who made it.
#pragma once

#include "model/Session.h"

namespace kestrane {

// Shows everything in English as long as it lives.
class InEnglish {
public:
    explicit InEnglish(Session& session) : session_(session), before_(session.texts.Shown()) { session.Show({}); }

    ~InEnglish() { session_.Show(before_); }

    InEnglish(const InEnglish&) = delete;
    InEnglish& operator=(const InEnglish&) = delete;

private:
    Session& session_;
    const Language before_;
};

} // namespace kestrane
