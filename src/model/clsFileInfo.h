// What the file system says of a file.
#pragma once

#include "platform/Calendar.h"

#include <cstdint>
#include <string>

namespace kestrane {

class clsFileInfo {
public:
    // Takes the name and reads the other fields from the file system; for a file that does not exist all four stay
    // unset.
    void Name(const std::string& name);

    const std::string& Name() const { return name_; }

    std::int64_t Size() const { return size_; } // bytes

    CalendarTime Modified() const { return modified_; } // local time

    const std::string& Extension() const { return extension_; } // behind the last ".", without the point

private:
    std::string name_;
    std::int64_t size_ = 0;
    CalendarTime modified_ = 0;
    std::string extension_;
};

} // namespace kestrane
