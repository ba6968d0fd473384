// Where in a file stood what could not be read, for the message that declines the file.
#pragma once

#include "model/Session.h"
#include "platform/RuntimeError.h"

#include <string>
#include <string_view>

namespace kestrane {

// A content in quotes, cut to a length that can be shown.
std::string quoted(std::string_view content);

// The line of a part of a text, and the part; nothing for no part: ", line 3 "abc"".
std::string placeIn(const Session& session, std::string_view text, std::string_view part);

// Gives what read raises the place behind its text. Lack of memory has none.
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
