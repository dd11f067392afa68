#include "cli/StoredSettings.h"

#include "persistence/AppSettingsStore.h"
#include "persistence/UnstoredUserDefaults.h"

namespace cindertop::cli {

AppSettings storedSettings(const UserDefaults& defaults, const AppSettings& standard) {
    UnstoredUserDefaults copy(defaults);
    return AppSettingsStore(copy, standard).load();
}

} // namespace cindertop::cli
