#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace cindertop {

/// Takes out of a name what tells whose machine it comes from.
class Anonymizer {
public:
    /// `privateWords` are names of the user and the host. A word hides only where no letter or digit touches
    /// it; empty ones are ignored.
    explicit Anonymizer(std::vector<std::string> privateWords);

    /// Paths, which start a word with "/", keep their last component only, and private words become
    /// "private". Never empty.
    std::string operator()(std::string_view text) const;

private:
    std::vector<std::string> privateWords_;
};

} // namespace cindertop
