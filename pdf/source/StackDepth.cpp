#include "pdf/source/StackDepth.h"

#include <cstddef>
#include <cstdint>
#include <pthread.h>

namespace tallyfold::pdf {

namespace {

/// Enough for everything that does not recurse, with the sanitizers' larger frames.
constexpr std::size_t spare = 256 * 1024;

/// The address below which only the spare part of this thread's stack is left; 0 when that cannot be found
/// out.
std::uintptr_t lastGoodAddress()
{
    pthread_attr_t attributes;
    if (pthread_getattr_np(pthread_self(), &attributes) != 0) {
        return 0;
    }
    void *lowest = nullptr;
    std::size_t size = 0;
    const int error = pthread_attr_getstack(&attributes, &lowest, &size);
    pthread_attr_destroy(&attributes);
    return error == 0 ? reinterpret_cast<std::uintptr_t>(lowest) + spare : 0;
}

} // namespace

bool isStackNearlyFull()
{
    thread_local const std::uintptr_t lastGood = lastGoodAddress();
    return reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0)) < lastGood;
}

} // namespace tallyfold::pdf
