#pragma once

#include <sys/prctl.h>

namespace tallyfold::tests {

/// Why no sandbox can be tried here; null where one can. Known from elsewhere than the sandbox says of
/// itself: one that left itself out would be tried by nobody.
inline const char *whyThereIsNoSandbox()
{
    if (!TALLYFOLD_HAS_SECCOMP) {
        return "built without libseccomp, so that there is no sandbox to be tried";
    }
    return ::prctl(PR_GET_SECCOMP) < 0
               ? "the system has no filters of calls, so that there is no sandbox to be tried"
               : nullptr;
}

} // namespace tallyfold::tests
