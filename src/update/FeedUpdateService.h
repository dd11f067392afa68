#pragma once

#include "app/DeploymentFile.h"
#include "app/UpdateService.h"
#include "platform/Timers.h"
#include "update/UpdateResult.h"

#include <QUrl>
#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace cindertop {

/// Fetches the signed list of releases (docs/updates.md) whose address and key the deployment file names,
/// only when it is asked to. It never fetches or installs a release. Main thread, whose event loop brings the
/// answer; between two looks it holds no connection.
class FeedUpdateService final : public UpdateService {
public:
    using Presenter = std::function<void(const UpdateResult&)>;
    using AddressPolicy = std::function<bool(const QUrl&)>;

    static constexpr std::chrono::seconds timeLimit{10};     ///< for all of a look
    static constexpr qint64 sizeLimit = qint64{1024} * 1024; ///< bytes

    /// Whether an address is encrypted.
    static bool isSecure(const QUrl& address);

    /// `timers` must outlive this. The presenter is told each result, never within `checkForUpdates`; a look
    /// that ends with this object has none. Only addresses that `isAllowed` are asked.
    FeedUpdateService(const DeploymentFile& deployment, ReleaseVersion own, Timers& timers, Presenter present,
                      AddressPolicy isAllowed = isSecure);
    ~FeedUpdateService() override;

    /// An address and a key are named; whether they are any good shows when they are used.
    bool isConfigured() const override;
    /// Does nothing while a look is under way.
    void checkForUpdates() override;

private:
    struct Look;

    void begin();
    void limitSize();
    void takeReply(const ReleaseKey& key);
    void fail(const std::string& sentence);
    void finish(const UpdateResult& result);
    UpdateResult resultOf(const std::string& feed, const ReleaseKey& key) const;

    QUrl address_;    ///< not valid without one
    std::string key_; ///< as it is written down; empty without one
    ReleaseVersion own_;
    Timers& timers_;
    Presenter present_;
    AddressPolicy isAllowed_;
    std::unique_ptr<Look> look_;  ///< the one under way
    std::unique_ptr<Look> ended_; ///< until no signal of it is under way
};

} // namespace cindertop
