#include <iostream>

#include "Workbench.h"

int main(int argc, char** argv) {
    return workbench::Main(argc, argv, std::cout, std::cerr);
}
