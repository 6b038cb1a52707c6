#include "mutant.h"

#include <cstdlib>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

bool isReady = false;
int chosen = -1;
unsigned char *reached =
    nullptr; // A byte for each mutant, in memory that is a file's: a killed process tells as well.

// Before any constant is computed, and before a process shuts itself in.
__attribute__((constructor(101))) void prepare()
{
    if (isReady) {
        return;
    }
    isReady = true;
    if (const char *number = std::getenv("TALLYFOLD_MUTANT")) {
        chosen = std::atoi(number);
    }
    if (const char *path = std::getenv("TALLYFOLD_MUTANTS_REACHED")) {
        const int file = ::open(path, O_RDWR | O_CLOEXEC);
        struct stat status {};
        if (file < 0 || ::fstat(file, &status) != 0) {
            std::abort();
        }
        void *bytes =
            ::mmap(nullptr, static_cast<size_t>(status.st_size), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
        if (bytes == MAP_FAILED) {
            std::abort();
        }
        reached = static_cast<unsigned char *>(bytes);
        ::close(file);
    }
}

} // namespace

bool tallyfoldMutant(int number)
{
    prepare();
    if (reached != nullptr) {
        reached[number] = 1;
    }
    return number == chosen;
}
