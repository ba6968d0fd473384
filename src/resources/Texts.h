#pragma once
// Expanded texts: the numbered texts with the brand's words and the version put in, and the rule by which a caption
// names its text. Main owns the one object; it must not know windows or settings, so that any layer may hold it.

#include <string>
#include <string_view>

#include "resources/TextNames.h"
#include "resources/basSoftwareByFirm.h"

namespace kestrane {

// Replaces every occurrence of find, left to right, case-sensitive; what was put in is not searched again. The text
// comes back as it is when find is empty or not there.
std::string ReplaceText(std::string text, std::string_view find, std::string_view with);

// The caption without its mnemonic mark: "&" goes, "&&" becomes "&".
std::string PlainCaption(std::string_view caption);

class Texts {
public:
    Texts(Brand brand, int major, int minor, int revision);

    // The text of the id with all tokens expanded; "^" and "*" stay for the caller. An id without a text gives the id
    // in decimal. For the second brand the contact ids 10001 to 10012 mean its own block, and the open filter 6541 is
    // the save filter 6540.
    std::string LoadText(Text::Id id) const;

    // A caption such as "1184-&About ..." names text 1184 and is replaced by it; any other caption stays. Only a whole
    // number from 0 to 32767 in front of the first "-" counts, blanks around it allowed.
    std::string LocaliseCaption(std::string_view designCaption) const;

    const Brand& brand() const { return brand_; }

private:
    Brand brand_;
    std::string version_;
};

} // namespace kestrane
