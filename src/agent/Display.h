#pragma once

namespace cindertop::agent {

/// Whether windows can be shown: a display is named and answers. Qt would end the program where none does.
bool hasDisplay();

} // namespace cindertop::agent
