// The program `kvdesign`.

#include <iostream>

#include "host/Commands.h"

int main(int Count, char** Arguments) {
    std::ios::sync_with_stdio(false);
    return kv::host::RunProgram(Count, Arguments, std::cin, std::cout, std::cerr);
}
