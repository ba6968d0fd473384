// Says where in a file the text is that could not be read, for the message that declines the file.
#pragma once

#include "model/Session.h"
#include "platform/RuntimeError.h"

#include <string>
#include <string_view>

namespace kestrane {

// A content in quotes, cut to a length that can be shown.
std::string quoted(std::string_view content);

// The line number of a part of a text, and the part: ", line 3 "abc"". Empty when there is no part.
std::string placeIn(const Session& session, std::string_view text, std::string_view part);

// Calls read; when it raises an error, the place is appended to the error's text. Error 7 (out of memory) passes
// unchanged.
template <class Read, class Place>
auto naming(Read read, Place place) {
    try {
        return read();
    } catch (const RuntimeError& error) {
        if (error.Number == kErrorOutOfMemory) throw;
        throw RuntimeError(error.Number, error.what() + place());
    }
}

} // namespace kestrane
