#include "update/FeedUpdateService.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <algorithm>
#include <utility>

namespace cindertop {

namespace {

constexpr int mostRedirects = 5;

/// Tells the server no more than it needs to know. Redirects stay on its own origin.
QNetworkRequest requestOf(const QUrl& address) {
    QNetworkRequest request(address);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::SameOriginRedirectPolicy);
    request.setMaximumRedirectsAllowed(mostRedirects);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    request.setHeader(QNetworkRequest::UserAgentHeader, "cindertop");
    request.setRawHeader("Accept-Language", "en");
    request.setRawHeader("Accept-Encoding", "identity"); // what arrives is as long as it says
    return request;
}

} // namespace

struct FeedUpdateService::Look {
    std::unique_ptr<Timer> timer; ///< until it begins, then its deadline, then its end
    std::unique_ptr<QNetworkAccessManager> manager;
    QNetworkReply* reply = nullptr; ///< of the manager, when it has asked

    void abort() const {
        if (reply != nullptr) {
            reply->disconnect();
            reply->abort();
        }
    }
};

bool FeedUpdateService::isSecure(const QUrl& address) {
    return address.isValid() && address.scheme() == "https" && !address.host().isEmpty();
}

FeedUpdateService::FeedUpdateService(const DeploymentFile& deployment, ReleaseVersion own, Timers& timers,
                                     Presenter present, AddressPolicy isAllowed)
    : address_(QString::fromStdString(deployment.text("SUFeedURL").value_or("")), QUrl::StrictMode),
      key_(deployment.text("SUPublicEDKey").value_or("")),
      own_(std::move(own)),
      timers_(timers),
      present_(std::move(present)),
      isAllowed_(std::move(isAllowed)) {}

FeedUpdateService::~FeedUpdateService() = default;

bool FeedUpdateService::isConfigured() const {
    return address_.isValid() && !key_.empty();
}

void FeedUpdateService::checkForUpdates() {
    if (look_) {
        return;
    }
    look_ = std::make_unique<Look>();
    look_->timer = timers_.start(std::chrono::seconds{0}, [this] { begin(); });
}

void FeedUpdateService::begin() {
    if (!isAllowed_(address_)) {
        fail("The address of the release list is not a secure one.");
        return;
    }
    const auto key = ReleaseKey::parse(key_);
    if (!key) {
        fail("The key that releases are signed with is damaged.");
        return;
    }
    look_->timer = timers_.start(timeLimit, [this] { fail("The release list did not come in time."); });
    look_->manager = std::make_unique<QNetworkAccessManager>();
    look_->reply = look_->manager->get(requestOf(address_));
    const auto* const reply = look_->reply;
    QObject::connect(reply, &QNetworkReply::readyRead, reply, [this] { limitSize(); });
    QObject::connect(reply, &QNetworkReply::finished, reply, [this, key = *key] { takeReply(key); });
}

void FeedUpdateService::limitSize() {
    if (look_->reply->bytesAvailable() > sizeLimit) {
        fail("The release list is too long.");
    }
}

void FeedUpdateService::takeReply(const ReleaseKey& key) {
    auto& reply = *look_->reply;
    if (reply.error() != QNetworkReply::NoError) {
        fail("The release list cannot be read: " + reply.errorString().toStdString());
        return;
    }
    if (reply.bytesAvailable() > sizeLimit) {
        fail("The release list is too long.");
        return;
    }
    finish(resultOf(reply.readAll().toStdString(), key));
}

void FeedUpdateService::fail(const std::string& sentence) {
    finish(UpdateFailure{sentence});
}

/// The manager may be the sender of the signal that brought this here, so it goes a little later; it may not
/// stay until the program exits either, for it has a thread.
void FeedUpdateService::finish(const UpdateResult& result) {
    look_->abort();
    ended_ = std::move(look_);
    ended_->timer = timers_.start(std::chrono::seconds{0}, [this] { ended_.reset(); });
    present_(result);
}

UpdateResult FeedUpdateService::resultOf(const std::string& feed, const ReleaseKey& key) const {
    const auto releases = signedReleases(feed, key);
    if (!releases) {
        return UpdateFailure{"What came is no release list."};
    }
    if (releases->empty()) {
        return UpdateFailure{"The release list has no valid signature."};
    }
    const auto& newest = *std::ranges::max_element(*releases, {}, &Release::number);
    return newest.number > own_ ? UpdateResult(newest) : UpToDate{};
}

} // namespace cindertop
