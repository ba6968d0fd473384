#include "platform/desktop/OneProcess.h"

#include "platform/Files.h"
#include "platform/RuntimeError.h"
#include "platform/Sha256.h"

#include <QDataStream>
#include <QLocalServer>
#include <QLocalSocket>
#include <QStringList>

#include <chrono>
#include <cstdlib>
#include <thread>
#include <utility>

namespace kestrane {

namespace {

constexpr int kPatience = 5000; // milliseconds, for the other program to answer
constexpr qint64 kMostBytes = 1 << 20;
constexpr char kTaken = '+';

// The other program may just be starting, and not listen yet.
bool connectTo(QLocalSocket& socket, const QString& path) {
    constexpr int kNextTry = 100; // milliseconds
    for (int waited = 0; waited < kPatience; waited += kNextTry) {
        socket.connectToServer(path);
        if (socket.waitForConnected(kPatience)) return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(kNextTry));
    }
    return false;
}

} // namespace

OneProcess::OneProcess(std::string stateFolder) : folder_(std::move(stateFolder)) {}

OneProcess::~OneProcess() = default;

// The path of a socket is limited to about a hundred bytes, so that the state folder may be too deep for it.
std::string OneProcess::socketPath() const {
    constexpr std::size_t kDigits = 16;
    const char* const runtime = std::getenv("XDG_RUNTIME_DIR");
    if (runtime == nullptr || runtime[0] != '/') return folder_ + "one-process.socket";
    return std::string(runtime) + "/kestrane-" + sha256Of(folder_).substr(0, kDigits) + ".socket";
}

bool OneProcess::HandOver(const std::vector<std::string>& paths) {
    try {
        const std::string path = folder_ + "one-process.lock";
        makeFolderOf(path);
        lock_ = FileLock::take(path);
    } catch (const RuntimeError&) {
        return false; // whether another program is running cannot be told
    }
    if (lock_ != nullptr) return false;
    QLocalSocket socket;
    if (!connectTo(socket, QString::fromStdString(socketPath()))) return false;
    QStringList texts;
    for (const std::string& path : paths)
        texts.push_back(QString::fromStdString(path));
    QDataStream stream(&socket);
    stream << texts;
    char answer = 0;
    while (socket.bytesAvailable() == 0)
        if (!socket.waitForReadyRead(kPatience)) return false;
    return socket.read(&answer, 1) == 1 && answer == kTaken;
}

void OneProcess::Listen(TakePaths take) {
    if (lock_ == nullptr) return;
    server_ = std::make_unique<QLocalServer>();
    server_->setSocketOptions(QLocalServer::UserAccessOption);
    const QString path = QString::fromStdString(socketPath());
    QLocalServer::removeServer(path); // left by a program that was killed: this one holds the lock
    QLocalServer& server = *server_;
    QObject::connect(&server, &QLocalServer::newConnection, &server, [&server, take = std::move(take)] {
        while (QLocalSocket* const socket = server.nextPendingConnection()) {
            QObject::connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
            const auto read = [&server, socket, take] { receive(server, *socket, take); };
            QObject::connect(socket, &QLocalSocket::readyRead, socket, read);
            read(); // what came before it was connected
        }
    });
    server.listen(path);
}

// Does nothing before the paths are complete. Whatever else comes in over the socket is dropped. The paths are taken
// once the socket's signal is over: opening files runs events, and the socket may go with one of them.
void OneProcess::receive(QLocalServer& server, QLocalSocket& socket, const TakePaths& take) {
    if (socket.bytesAvailable() > kMostBytes) return socket.abort();
    QDataStream stream(&socket);
    stream.startTransaction();
    QStringList texts;
    stream >> texts;
    if (!stream.commitTransaction()) return;
    socket.putChar(kTaken);
    socket.flush();
    std::vector<std::string> paths;
    for (const QString& text : texts)
        paths.push_back(text.toStdString());
    QMetaObject::invokeMethod(
        &server, [take, paths = std::move(paths)] { take(paths); }, Qt::QueuedConnection);
}

} // namespace kestrane
