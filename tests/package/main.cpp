// A program of another project that uses the installed core.
#include <iostream>

#include "resources/Messages.h"

int main() {
    std::cout << "KvDesign " << KVDESIGN_VERSION << '\n';
    return 0;
}
