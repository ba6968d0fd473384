// A text under construction; the XML writer writes everything through it. When it has a drain, finished pieces of the
// text are passed to the drain as they come, so that a document of any size is written with little memory.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace kestrane {

class clsStringBuffer {
public:
    clsStringBuffer() = default;

    // drain receives the text from its beginning, piece by piece; flush passes on what is left.
    explicit clsStringBuffer(std::function<void(std::string_view)> drain);

    void initialise();

    void append(std::string_view text) {
        if (text.size() > buffer_.size() - length_) makeRoom(text.size());
        text.copy(buffer_.data() + length_, text.size());
        length_ += text.size();
    }

    // Returns room for a text of at most size characters at the end of the content. Call written() with the end of the
    // text that was put there.
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
