#include "ui/windows/Pages.h"

#include <QUrl>
#include <array>
#include <cstddef>
#include <system_error>
#include <utility>

namespace cindertop::ui {

namespace {

struct PageEntry {
    const char* key; ///< in the deployment file
    const char* document;
};

/// In the order of `Page`.
constexpr std::array entries{
    PageEntry{"CindertopHelpPage", "help.html"},       PageEntry{"CindertopTermsPage", "terms.html"},
    PageEntry{"CindertopPrivacyPage", "privacy.html"}, PageEntry{"CindertopReleasesPage", "releases.html"},
    PageEntry{"CindertopWebsite", "help.html"},
};

const PageEntry& entryOf(Page page) {
    return entries.at(static_cast<std::size_t>(page));
}

/// A browser is given nothing but pages of the web.
bool isWebAddress(const QUrl& address) {
    return address.isValid() && (address.scheme() == "https" || address.scheme() == "http") &&
           !address.host().isEmpty();
}

} // namespace

Pages::Pages(DeploymentFile deployment, const std::filesystem::path& programFolder)
    : deployment_(std::move(deployment)),
      documents_((programFolder / "../share/doc/cindertop").lexically_normal()) {}

std::optional<std::string> Pages::address(Page page) const {
    if (auto named = namedAddress(page)) {
        return named;
    }
    const auto document = documents_ / entryOf(page).document;
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(document, ignored)) {
        return std::nullopt;
    }
    return QUrl::fromLocalFile(QString::fromStdString(document.string())).toEncoded().toStdString();
}

std::optional<std::string> Pages::namedAddress(Page page) const {
    auto named = deployment_.text(entryOf(page).key);
    if (!named || !isWebAddress(QUrl(QString::fromStdString(*named), QUrl::StrictMode))) {
        return std::nullopt;
    }
    return named;
}

} // namespace cindertop::ui
