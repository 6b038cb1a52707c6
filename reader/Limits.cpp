#include "reader/Limits.h"

#include "files/UnderSanitizer.h"

#include <csignal>
#include <sys/prctl.h>
#include <sys/resource.h>

namespace tallyfold::reader {

namespace {

bool limit(__rlimit_resource resource, rlim_t maximum)
{
    const rlimit limits{maximum, maximum};
    return ::setrlimit(resource, &limits) == 0;
}

} // namespace

bool limitResources()
{
    constexpr rlim_t maxMemory = rlim_t{1} << 30U;
    constexpr rlim_t maxTime = 3600; // Seconds: hundreds of thousands of files.
    // A write beyond the limit fails; it need not end the process.
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && ::signal(SIGXFSZ, SIG_IGN) != SIG_ERR &&
           limit(RLIMIT_CORE, 0) && limit(RLIMIT_FSIZE, 0) && limit(RLIMIT_CPU, maxTime) &&
           (isUnderSanitizer || limit(RLIMIT_AS, maxMemory));
}

} // namespace tallyfold::reader
