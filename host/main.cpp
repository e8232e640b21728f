// The program `kvdesign`.

#include <csignal>
#include <iostream>

#include "host/Commands.h"

int main(int Count, char** Arguments) {
    std::ios::sync_with_stdio(false);
#ifdef SIGPIPE
    std::signal(SIGPIPE, SIG_IGN);  // a reader that went away is told by the exit code
#endif
    return kv::host::RunProgram(Count, Arguments, std::cin, std::cout, std::cerr);
}
