// What looks into new files (against viruses, for a search) holds them for a moment, and whoever
// wants to replace or remove one then is refused.
#pragma once

#include <utility>

#include "support/windows_api.h"

namespace bw {

// Calls `call` until it gives true, for some seconds at most and as long as `mayPass` says of the
// system's word for the failure that it may be another one soon. The word of the last call stays.
template <typename Call, typename MayPass>
bool WithPatience(const Call& call, const MayPass& mayPass) {
    constexpr int kTries = 60;
    constexpr DWORD kBetween = 50;  // ms
    for (int i = 0; i < kTries; ++i) {
        if (i > 0) Sleep(kBetween);
        if (call()) return true;
        const DWORD error = GetLastError();
        const bool again = mayPass(error);
        SetLastError(error);
        if (!again) return false;
    }
    return false;
}

// Of a name that is to be given or removed.
inline bool IsHeldElsewhere(DWORD error) {
    return error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED ||
           error == ERROR_LOCK_VIOLATION || error == ERROR_USER_MAPPED_FILE;
}

}  // namespace bw
