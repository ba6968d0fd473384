#pragma once
// Expanded texts: the numbered texts in the user's language with the brand's words and the version put in, and the rule
// by which a caption names its text. The main function owns the one object. It must not know windows or settings, so
// that any layer may hold it.

#include <string>
#include <string_view>

#include "resources/Languages.h"
#include "resources/TextNames.h"
#include "resources/basSoftwareByFirm.h"

namespace kestrane {

// Replaces every occurrence of find, from left to right and case-sensitively; the replacements are not searched again.
// The text is returned unchanged when find is empty or does not occur.
std::string ReplaceText(std::string text, std::string_view find, std::string_view with);

// The caption without its mnemonic mark: "&" is removed and "&&" becomes "&".
std::string PlainCaption(std::string_view caption);

class Texts {
public:
    Texts(Brand brand, int major, int minor, int revision, const Wording& wording = {});

    // The text of the id in the language of its use, with all tokens expanded except "^" and "*", which are left to the
    // caller. An id without a text gives the id in decimal. For the second brand the contact ids 10001 to 10012 mean
    // its own block, and the file filter of the open dialog, 6541, is that of the save dialog, 6540.
    std::string LoadText(Text::Id id) const;

    // The same in the language of messages, for a text that is also part of what is shown.
    std::string LoadMessage(Text::Id id) const;

    // The same in English, for a text that is also shown and here goes into a file.
    std::string LoadData(Text::Id id) const { return load(id, {}); }

    // What is shown is in this language from now on.
    void Show(const Language& language) { wording_.Shown = language; }

    const Language& Shown() const { return wording_.Shown; }

    // A caption such as "1184-&About ..." names text 1184 and is replaced by it; any other caption is returned
    // unchanged. The part in front of the first "-" counts only when it is a whole number from 0 to 32767; blanks
    // around it are allowed.
    std::string LocaliseCaption(std::string_view designCaption) const;

    const Brand& brand() const { return brand_; }

private:
    std::string load(Text::Id id, std::span<const TextEntry> words) const;

    Brand brand_;
    std::string version_;
    Wording wording_;
};

} // namespace kestrane
