// Reads pages of PDF files for the program that started it, and nothing else: it is handed files already
// open, on its standard input, a socket. It may be ended at any time, and ends itself when the other side
// does.

#include "reader/Answers.h"
#include "reader/Limits.h"
#include "reader/Sandbox.h"

#include <chrono>
#include <cstdlib>
#include <unistd.h>

using namespace tallyfold::reader;

int main()
{
    // A reader that is not held by what it could be held by does not read.
    if (!limitResources() || enterSandbox(STDIN_FILENO) == SandboxEntry::refused) {
        return EXIT_FAILURE;
    }
    Answers answers(std::chrono::seconds(10));
    while (answers.next(STDIN_FILENO)) {
    }
    std::_Exit(EXIT_SUCCESS); // Nothing to tidy up, and nothing to look for.
}
