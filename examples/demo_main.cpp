// math demo: a tour of what a host application typically asks of the library.
#include <iostream>

#include "demo_sections.h"

int main() {
    std::cout << "math demo\n=========\n";
    DemoVectors();
    DemoMatrices();
    DemoAffineDecomposition();
    DemoRotations();
    DemoRotationClass();
    DemoRootsAndRandom();
    DemoSignal();
    return 0;
}
