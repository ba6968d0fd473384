// Text under construction. All of the XML writer goes through it. With a drain, whole pieces of the text leave for the
// drain as they come, so that a document of any size is written in little memory.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace kestrane {

class clsStringBuffer {
public:
    clsStringBuffer() = default;

    // drain takes the text from its beginning, piece by piece; flush hands over what is left.
    explicit clsStringBuffer(std::function<void(std::string_view)> drain);

    void initialise();

    void append(std::string_view text) {
        if (text.size() > buffer_.size() - length_) makeRoom(text.size());
        text.copy(buffer_.data() + length_, text.size());
        length_ += text.size();
    }

    // Room for a text of at most size characters at the end of the content; written() then says how many it took.
    char* reserve(std::size_t size) {
        if (size > buffer_.size() - length_) makeRoom(size);
        return buffer_.data() + length_;
    }

    void written(const char* end) { length_ = static_cast<std::size_t>(end - buffer_.data()); }

    std::size_t getLength() const { return length_; }

    std::string getString() const { return buffer_.substr(0, length_); }

    void flush();

private:
    void makeRoom(std::size_t size);

    std::function<void(std::string_view)> drain_;
    std::string buffer_;
    std::size_t length_ = 0;
};

} // namespace kestrane
