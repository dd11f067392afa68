#include "LoopbackServer.h"
#include "fakes/TemporaryFolder.h"
#include "platform/qt/EventLoop.h"
#include "scenario/machine/VirtualClock.h"
#include "support/Base64.h"
#include "support/FileSystem.h"
#include "update/FeedUpdateService.h"

#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <optional>
#include <span>
#include <string>
#include <variant>

#include <sodium.h>

namespace cindertop {

namespace {

/// A pair of keys, always the same for the same seed.
class SigningKey {
public:
    explicit SigningKey(unsigned char seed) {
        std::array<unsigned char, crypto_sign_SEEDBYTES> seeds{};
        seeds.fill(seed);
        ::crypto_sign_seed_keypair(public_.data(), secret_.data(), seeds.data());
    }

    std::string publicKey() const { return base64Text(std::as_bytes(std::span(public_))); }

    std::string signature(const std::string& text) const {
        std::array<unsigned char, crypto_sign_BYTES> bytes{};
        ::crypto_sign_detached(bytes.data(), nullptr, reinterpret_cast<const unsigned char*>(text.data()),
                               text.size(), secret_.data());
        return base64Text(std::as_bytes(std::span(bytes)));
    }

private:
    std::array<unsigned char, crypto_sign_PUBLICKEYBYTES> public_{};
    std::array<unsigned char, crypto_sign_SECRETKEYBYTES> secret_{};
};

const SigningKey& makers() {
    static const SigningKey key(1);
    return key;
}

const SigningKey& somebodys() {
    static const SigningKey key(2);
    return key;
}

constexpr auto ownPage = "https://releases.test/";

std::string entry(const std::string& version, const std::string& signature,
                  const std::string& page = ownPage) {
    return R"({"version":")" + version + R"(","page":")" + page + R"(","summary":"Cooler","signature":")" +
           signature + "\"}";
}

std::string release(const std::string& version, const SigningKey& key = makers(),
                    const std::string& page = ownPage) {
    return entry(version, key.signature(signedText(version, page, "Cooler")), page);
}

QByteArray feed(const std::string& releases) {
    return LoopbackServer::page(QByteArray::fromStdString(R"({"releases":[)" + releases + "]}"));
}

bool isOnLoopback(const QUrl& address) {
    return FeedUpdateService::isSecure(address) || address.host() == "127.0.0.1";
}

/// The version of a newer release, "current", or the beginning of what went wrong.
std::string word(const UpdateResult& result) {
    if (const auto* const newer = std::get_if<Release>(&result)) {
        return newer->version;
    }
    const auto* const failure = std::get_if<UpdateFailure>(&result);
    return failure != nullptr ? failure->sentence : "current";
}

class FeedUpdateServiceTest : public ::testing::Test {
protected:
    DeploymentFile deployment(const std::string& address, const std::string& key) {
        const auto file = folder.path() / "Info.plist";
        std::ofstream(file) << "<plist version=\"1.0\"><dict><key>SUFeedURL</key><string>" << address
                            << "</string><key>SUPublicEDKey</key><string>" << key
                            << "</string></dict></plist>";
        return {files, file};
    }

    std::unique_ptr<FeedUpdateService> service(const std::string& address, const std::string& key,
                                               FeedUpdateService::AddressPolicy policy = isOnLoopback) {
        return std::make_unique<FeedUpdateService>(
            deployment(address, key), *ReleaseVersion::parse("0.9"), clock,
            [this](const UpdateResult& result) { told = word(result); }, std::move(policy));
    }

    void runDue() {
        while (clock.runNextDue()) {
        }
    }

    /// What a look tells. The clock does not move by itself.
    std::string look(FeedUpdateService& updates) {
        told.reset();
        updates.checkForUpdates();
        EXPECT_FALSE(told);
        runDue();
        desktop::runUntil([this] { return told.has_value(); });
        return told.value_or("nothing");
    }

    QCoreApplication& loop = desktop::application();
    fakes::TemporaryFolder folder;
    PosixFileSystem files;
    simulated::VirtualClock clock{Instant(std::chrono::hours(1))};
    LoopbackServer server;
    std::optional<std::string> told;
};

} // namespace

TEST_F(FeedUpdateServiceTest, TellsTheNewestReleaseOfTheMakerOnly) {
    const auto updates = service(server.address().toStdString(), makers().publicKey());
    const auto signedByMakers = makers().signature(signedText("0.10", ownPage, "Cooler"));
    for (const auto& [answer, expected] : std::to_array<std::pair<QByteArray, std::string>>({
             {feed(release("0.8") + "," + release("0.10") + "," + release("0.9.5")), "0.10"},
             {feed(release("0.9.0")), "current"},
             {feed(release("0.8") + "," + release("2.0", somebodys())), "current"},
             {feed(release("2.0", somebodys())), "The release list has no valid signature."},
             {feed(entry("0.10", "")), "The release list has no valid signature."},
             {feed(entry("0.11", signedByMakers)), "The release list has no valid signature."},
             {feed(entry("0.10", signedByMakers, "https://elsewhere.test/")),
              "The release list has no valid signature."},
             {feed(release("0.10", makers(), "http://releases.test/")),
              "The release list has no valid signature."},
             {feed(release("0.10-beta")), "The release list has no valid signature."},
             {feed("7"), "The release list has no valid signature."},
             {feed("{"), "What came is no release list."},
             {LoopbackServer::page("[]"), "What came is no release list."},
             {LoopbackServer::page(QByteArray(FeedUpdateService::sizeLimit + 1, ' ')),
              "The release list is too long."},
         })) {
        server.answer = answer;
        EXPECT_EQ(look(*updates), expected) << answer.left(300).toStdString();
    }
}

TEST_F(FeedUpdateServiceTest, FollowsNoRedirectionToAnotherPlace) {
    LoopbackServer elsewhere;
    elsewhere.answer = feed(release("2.0"));
    server.answer = LoopbackServer::redirection(elsewhere.address());
    const auto updates = service(server.address().toStdString(), makers().publicKey());
    EXPECT_TRUE(look(*updates).starts_with("The release list cannot be read"));
    EXPECT_EQ(server.requests, 1);
    EXPECT_EQ(elsewhere.requests, 0);
}

TEST_F(FeedUpdateServiceTest, GivesUpASlowServerAndThenLooksAgain) {
    const auto updates = service(server.address().toStdString(), makers().publicKey());
    updates->checkForUpdates();
    runDue();
    desktop::runUntil([this] { return server.requests == 1; });
    updates->checkForUpdates();
    clock.advanceTo(clock.now() + FeedUpdateService::timeLimit);
    runDue();
    EXPECT_EQ(told, "The release list did not come in time.");
    server.answer = feed(release("0.10"));
    EXPECT_EQ(look(*updates), "0.10");
    EXPECT_EQ(server.requests, 2) << "one look at a time";
}

TEST_F(FeedUpdateServiceTest, AsksNobodyWithoutASecureAddressAndASoundKey) {
    const auto open = server.address().toStdString();
    EXPECT_EQ(look(*service(open, makers().publicKey(), FeedUpdateService::isSecure)),
              "The address of the release list is not a secure one.");
    EXPECT_EQ(look(*service(open, "c2hvcnQ=")), "The key that releases are signed with is damaged.");
    EXPECT_EQ(server.requests, 0);
    EXPECT_TRUE(service("https://releases.test/feed", "any")->isConfigured());
    EXPECT_FALSE(service("https://releases.test/feed", "")->isConfigured());
    EXPECT_FALSE(service("", "any")->isConfigured());
    EXPECT_FALSE(service("http://[", "any")->isConfigured());
}

TEST(ReleaseVersion, ComparesNumberByNumber) {
    const auto parsed = [](std::string_view text) { return ReleaseVersion::parse(text); };
    EXPECT_LT(parsed("0.9"), parsed("0.10"));
    EXPECT_LT(parsed("1.2.3"), parsed("1.2.3.1"));
    EXPECT_EQ(parsed("1"), parsed("1.0.0"));
    for (const auto* const wrong :
         {"", ".", "1.", ".1", "1..2", "v1", "1.-2", "1.+2", "1 ", "1.2.3.4.5", "4294967296"}) {
        EXPECT_FALSE(parsed(wrong)) << wrong;
    }
}

} // namespace cindertop
