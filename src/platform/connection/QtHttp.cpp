#include "platform/connection/QtHttp.h"

#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTimer>

#include <memory>
#include <string_view>

namespace kestrane {

namespace {

constexpr int kLook = 100; // milliseconds between two questions whether to go on
constexpr int kOk = 200;
constexpr std::string_view kTooLarge = "The answer is too large";

// One fetch under way. Ends its reply by itself when the user gives up or the body grows too large.
class Fetch {
public:
    Fetch(QNetworkReply& reply, std::int64_t mostBytes, const Http::GoOn& goOn) :
        reply_(reply), mostBytes_(mostBytes), goOn_(goOn) {
        QObject::connect(&reply_, &QNetworkReply::metaDataChanged, &loop_, [this] { checkSize(announced()); });
        QObject::connect(&reply_, &QNetworkReply::readyRead, &loop_, [this] { take(); });
        QObject::connect(&reply_, &QNetworkReply::finished, &loop_, [this] { loop_.quit(); });
        QObject::connect(&look_, &QTimer::timeout, &loop_, [this] { ask(); });
        look_.start(kLook);
    }

    HttpAnswer run() {
        ask(); // asked at once, so that progress is shown and windows are blocked from the start
        if (!reply_.isFinished()) loop_.exec();
        look_.stop();
        if (isCancelled_) return {HttpAnswer::End::Cancelled, {}, {}};
        const std::string reason = fault();
        if (!reason.empty()) return {HttpAnswer::End::Failed, {}, reason};
        return {HttpAnswer::End::Complete, std::move(body_), {}};
    }

private:
    std::int64_t announced() const {
        const QVariant length = reply_.header(QNetworkRequest::ContentLengthHeader);
        return length.isValid() ? length.toLongLong() : -1;
    }

    void checkSize(std::int64_t size) {
        if (size <= mostBytes_ || isTooLarge_) return;
        isTooLarge_ = true;
        reply_.abort();
    }

    void take() {
        if (isTooLarge_ || isCancelled_) return;
        const QByteArray part = reply_.readAll();
        body_.append(part.constData(), static_cast<std::size_t>(part.size()));
        checkSize(static_cast<std::int64_t>(body_.size()));
    }

    void ask() {
        if (isCancelled_ || goOn_(static_cast<std::int64_t>(body_.size()), announced())) return;
        isCancelled_ = true;
        reply_.abort();
    }

    // Why the answer is not complete; empty when the body is whole.
    std::string fault() const {
        if (isTooLarge_) return std::string(kTooLarge);
        const int status = reply_.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        if (reply_.error() != QNetworkReply::NoError || status != kOk) {
            const std::string reason = reply_.errorString().toStdString();
            return reply_.error() != QNetworkReply::NoError && !reason.empty()
                       ? reason
                       : "HTTP status " + std::to_string(status);
        }
        const std::int64_t length = announced();
        const auto size = static_cast<std::int64_t>(body_.size());
        // No more can come than is announced, so when there is more, that length is of the answer that led here.
        return size < length ? "The connection was closed early" : std::string();
    }

    QNetworkReply& reply_;
    std::int64_t mostBytes_;
    const Http::GoOn& goOn_;
    QEventLoop loop_;
    QTimer look_;
    std::string body_;
    bool isTooLarge_ = false;
    bool isCancelled_ = false;
};

} // namespace

HttpAnswer QtHttp::Get(const std::string& address, std::int64_t mostBytes, const GoOn& goOn) {
    QNetworkAccessManager network;
    QNetworkRequest request(QUrl(QString::fromStdString(address)));
    request.setTransferTimeout(static_cast<int>(silence_.count()));
    request.setRawHeader("Accept-Encoding", "identity"); // so that the announced length is that of the body
    const std::unique_ptr<QNetworkReply> reply(network.get(request));
    return Fetch(*reply, mostBytes, goOn).run();
}

} // namespace kestrane
