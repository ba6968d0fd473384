// One running program for a user: a second start gives its files to the first one, through a socket that only this user
// can open. Whatever is wrong with lock or socket, a start goes on; then there are two programs.
#pragma once

#include "platform/FileLock.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

class QLocalServer;
class QLocalSocket;

namespace kestrane {

class OneProcess {
public:
    // Paths as they were given to the other start; none for a start without files. Called on the owner thread.
    using TakePaths = std::function<void(const std::vector<std::string>& paths)>;

    // stateFolder ends with "/"; the programs that share it are one.
    explicit OneProcess(std::string stateFolder);
    ~OneProcess();

    // Gives the paths to the running program. Returns false when there is none, or when it does not take them within a
    // few seconds; then this program is to go on, and Listen makes it the one that is asked.
    bool HandOver(const std::vector<std::string>& paths);

    // Takes paths from other starts from now on. Does nothing when another program does that already.
    void Listen(TakePaths take);

private:
    std::string socketPath() const;
    static void receive(QLocalServer& server, QLocalSocket& socket, const TakePaths& take);

    const std::string folder_;
    std::shared_ptr<FileLock> lock_; // held by the program that is asked
    std::unique_ptr<QLocalServer> server_;
};

} // namespace kestrane
