#include "platform/connection/QtHttp.h"

#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

#include <gtest/gtest.h>

#include <chrono>
#include <map>

namespace kestrane {
namespace {

constexpr std::int64_t kMost = 64 << 20;

// A server on the loopback that answers each path with the bytes given for it, then closes the connection or not.
struct Server {
    struct Answer {
        QByteArray bytes;
        bool closes = true;
    };

    QTcpServer tcp;
    std::map<QByteArray, Answer> answers;

    Server() {
        EXPECT_TRUE(tcp.listen(QHostAddress::LocalHost));
        QObject::connect(&tcp, &QTcpServer::newConnection, &tcp, [this] {
            QTcpSocket* socket = tcp.nextPendingConnection();
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] { answer(*socket); });
        });
    }

    void answer(QTcpSocket& socket) {
        const QByteArray request = socket.readAll();
        const auto found = answers.find(request.split(' ').value(1));
        if (found == answers.end()) return;
        socket.write(found->second.bytes);
        if (found->second.closes) socket.disconnectFromHost();
    }

    std::string url(const char* path) const { return "http://127.0.0.1:" + std::to_string(tcp.serverPort()) + path; }
};

HttpAnswer get(
    const std::string& url, const Http::GoOn& goOn = [](auto, auto) { return true; }) {
    return QtHttp(std::chrono::milliseconds(600)).Get(url, kMost, goOn);
}

TEST(QtHttp, BringsTheWholeBodyAlsoBehindRedirections) {
    Server server;
    const QByteArray body(100'000, 'x');
    const QByteArray length = QByteArray::number(body.size());
    server.answers["/whole"] = {"HTTP/1.1 200 OK\r\nContent-Length: " + length + "\r\n\r\n" + body};
    server.answers["/open-ended"] = {"HTTP/1.0 200 OK\r\n\r\n" + body};
    server.answers["/moved"] = {"HTTP/1.1 302 Found\r\nLocation: /whole\r\nContent-Length: 0\r\n\r\n"};
    for (const char* path : {"/whole", "/open-ended", "/moved"}) {
        const HttpAnswer answer = get(server.url(path));
        EXPECT_EQ(answer.end, HttpAnswer::End::Complete) << path << answer.Reason;
        EXPECT_EQ(answer.Body, body.toStdString()) << path;
    }
}

TEST(QtHttp, AnythingLessFailsWithAReason) {
    Server server;
    const QByteArray some(5000, 'x');
    server.answers["/missing"] = {"HTTP/1.1 404 Not Found\r\nContent-Length: 5000\r\n\r\n" + some};
    server.answers["/nothing"] = {"HTTP/1.1 204 No Content\r\n\r\n"};
    server.answers["/short"] = {"HTTP/1.1 200 OK\r\nContent-Length: 9000\r\n\r\n" + some};
    server.answers["/stalls"] = {"HTTP/1.1 200 OK\r\nContent-Length: 9000\r\n\r\n" + some, false};
    server.answers["/silent"] = {"", false};
    server.answers["/closes"] = {"HTTP/1.1 200"};
    server.answers["/huge"] = {"HTTP/1.1 200 OK\r\nContent-Length: 2147483648\r\n\r\n" + some, false};
    server.answers["/endless"] = {"HTTP/1.0 200 OK\r\n\r\n" + QByteArray(kMost + 1, 'x'), false};
    server.answers["/loop"] = {"HTTP/1.1 302 Found\r\nLocation: /loop\r\nContent-Length: 0\r\n\r\n"};
    for (const auto& [path, unused] : server.answers) {
        const HttpAnswer answer = get(server.url(path.constData()));
        EXPECT_EQ(answer.end, HttpAnswer::End::Failed) << path.toStdString();
        EXPECT_TRUE(answer.Body.empty()) << path.toStdString();
        EXPECT_FALSE(answer.Reason.empty()) << path.toStdString();
    }
    server.tcp.close();
    for (const std::string& url : {server.url("/whole"), std::string("file:///etc/hostname"), std::string()})
        EXPECT_EQ(get(url).end, HttpAnswer::End::Failed) << url;
}

TEST(QtHttp, CanBeGivenUpWhileTheServerStalls) {
    Server server;
    server.answers["/stalls"] = {"HTTP/1.1 200 OK\r\nContent-Length: 9000\r\n\r\nxxx", false};
    std::int64_t received = 0;
    std::int64_t total = 0;
    int looks = 0;
    const HttpAnswer answer = get(server.url("/stalls"), [&](std::int64_t bytes, std::int64_t all) {
        received = bytes;
        total = all;
        return ++looks < 3;
    });
    EXPECT_EQ(answer.end, HttpAnswer::End::Cancelled);
    EXPECT_EQ(received, 3);
    EXPECT_EQ(total, 9000);
}

} // namespace
} // namespace kestrane
