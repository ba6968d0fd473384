#include "sim/Line.h"

#include "SimTest.h"

#include <atomic>
#include <thread>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace kestrane {
namespace {

// Answers "long" with many bytes, anything else with its echo; "bye" hangs up.
class Answering : public Instrument {
public:
    Reply answer(std::string_view bytes) override {
        if (bytes == "long") return {{{std::string(100'000, 'x')}}};
        return {{{std::string(bytes)}}, bytes == "bye"};
    }
};

// A line that is served on a thread of its own, and a program's end of it.
struct LineTest : testing::Test {
    Line line;
    Answering instrument;
    int stop[2] = {-1, -1};
    int program = -1;
    std::thread server;

    void serve(int baud) {
        ASSERT_EQ(pipe(stop), 0);
        program = open(line.path().c_str(), O_RDWR | O_NOCTTY);
        ASSERT_GE(program, 0);
        server = std::thread([this, baud] { line.serve(baud, instrument, stop[0]); });
    }

    ~LineTest() override {
        if (server.joinable()) {
            close(stop[1]);
            server.join();
            close(stop[0]);
        }
        if (program >= 0) close(program);
    }

    void send(std::string_view bytes) const {
        ASSERT_EQ(write(program, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    }

    // The bytes that come, up to size of them; less when none come for a second or the line is closed.
    std::string receive(std::size_t size) const {
        std::string received;
        while (received.size() < size) {
            pollfd handle{program, POLLIN, 0};
            char buffer[4096];
            if (poll(&handle, 1, 1000) <= 0) break;
            const ssize_t count = read(program, buffer, std::min(sizeof buffer, size - received.size()));
            if (count <= 0) break;
            received.append(buffer, static_cast<std::size_t>(count));
        }
        return received;
    }
};

TEST_F(LineTest, CarriesEveryByteUnchanged) {
    serve(0);
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all += static_cast<char>(byte);
    send(all);
    EXPECT_EQ(receive(all.size()), all);
    send("long");
    EXPECT_EQ(receive(100'000).size(), 100'000U);
    close(program); // programs come and go
    program = open(line.path().c_str(), O_RDWR | O_NOCTTY);
    send("a");
    EXPECT_EQ(receive(1), "a");
}

TEST_F(LineTest, SendsAtItsSpeed) {
    serve(19200);
    const std::string text(175, 'a'); // a tenth of a second
    const auto begin = std::chrono::steady_clock::now();
    send(text);
    EXPECT_EQ(receive(text.size()), text);
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
    EXPECT_GT(taken.count(), 0.08);
    send("long"); // 57 s of it
    receive(1);
    send("b");
    const std::string rest = receive(2000);
    EXPECT_LT(rest.size(), 2000U);
    EXPECT_EQ(rest.back(), 'b') << "a new command ends an answer";
}

} // namespace
} // namespace kestrane
