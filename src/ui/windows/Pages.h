#pragma once

#include "app/DeploymentFile.h"

#include <filesystem>
#include <optional>
#include <string>

namespace cindertop::ui {

/// What the program opens in the user's browser.
enum class Page { help, terms, privacy, releases, website };

/// The addresses of the pages: what the deployment file names, else the document that lies with the program.
class Pages {
public:
    /// `programFolder` is where the program's file is.
    Pages(DeploymentFile deployment, const std::filesystem::path& programFolder);

    /// Leads somewhere, or is absent. The website without an address of its own is the help.
    std::optional<std::string> address(Page page) const;

private:
    std::optional<std::string> namedAddress(Page page) const;

    DeploymentFile deployment_;
    std::filesystem::path documents_;
};

} // namespace cindertop::ui
