// The reader process: reads pages of PDF files for the program that started it. It receives open files
// through its standard input, a socket. It may be killed at any time, and ends with the connection.

#include "reader/Limits.h"
#include "reader/Log.h"
#include "reader/RequestHandler.h"
#include "reader/Sandbox.h"

#include <chrono>
#include <cstdlib>
#include <unistd.h>

using namespace tallyfold::reader;

int main()
{
    // Without its limits, or without the sandbox on a system that has it, nothing is read.
    if (!limitResources()) {
        qCInfo(readerLog) << "the system refuses the limits of resources";
        return EXIT_FAILURE;
    }
    switch (enterSandbox(STDIN_FILENO)) {
    case SandboxEntry::entered:
        break;
    case SandboxEntry::leftOut:
        qCInfo(readerLog) << "there is no filter of system calls";
        break;
    case SandboxEntry::refused:
        qCInfo(readerLog) << "the system refuses the filter of system calls";
        return EXIT_FAILURE;
    }
    RequestHandler handler(std::chrono::seconds(10));
    while (handler.next(STDIN_FILENO)) {
    }
    std::_Exit(EXIT_SUCCESS); // Skips destructors and leak checks.
}
