#pragma once

#include "platform/GraphicsUsage.h"

#include <vector>

namespace cindertop::fakes {

/// Graphics clients that a test writes down.
class FakeGraphicsUsage final : public GraphicsUsage {
public:
    std::vector<GraphicsClient> current;

    std::vector<GraphicsClient> clients() override { return current; }
};

} // namespace cindertop::fakes
