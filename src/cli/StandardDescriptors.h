#pragma once

namespace cindertop::cli {

/// A file that is opened later must not take the number of a standard descriptor that was closed, and our
/// output with it. What is opened here refuses the wrong direction, so that writing still fails. Called first
/// of all.
void occupyStandardDescriptors();

} // namespace cindertop::cli
